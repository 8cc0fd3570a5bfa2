// A resource that lies in memory.
#pragma once

#include "omistream.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace testing_support {

class MemoryStream final : public OMIStream {
  public:
    explicit MemoryStream(std::vector<std::byte> bytes)
        : OMIStream(kOMIStreamCache, {}), bytes_(std::move(bytes)) {
        setLength(bytes_.size());
    }
    std::string_view className() const override { return "MemoryStream"; }

  protected:
    bool openSource() override { return true; }
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override {
        std::copy_n(bytes_.data() + position, buffer.size(), buffer.begin());
        return buffer.size();
    }
    void closeSource() override {}

  private:
    std::vector<std::byte> bytes_;
};

} // namespace testing_support
