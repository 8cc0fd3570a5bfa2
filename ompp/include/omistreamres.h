// A stream over one resource of a module.
#pragma once

#include "omistream.h"
#include "omres.h"

#include <memory>
#include <string>

class OMIStreamRes final : public OMIStream {
  public:
    /// Null is the program's own module. Empty, after a failed check, when a parameter is wrong (id
    /// below 1, an empty type, a buffer mode below -1) or there is no such resource.
    OMIStreamRes(int id, std::string_view type, OMResFile* file, int bufferMode,
                 std::span<std::byte> buffer = {});
    OMIStreamRes(const OMIStreamRes& other);
    ~OMIStreamRes() override;

    [[nodiscard]] std::string_view className() const override { return "OMIStreamRes"; }

  protected:
    bool openSource() override;
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override;
    void closeSource() override;

  private:
    std::shared_ptr<OMRes> resource_;  ///< loaded; copies of the stream share it
    const std::byte* bytes_ = nullptr; ///< of the locked resource while the source is open
};
