// Outline fonts of the host, and those of files that the program adds. The machine is asked when
// the first face is, as its list of fonts takes a while to read.
//
// Where the type-face libraries are missing there are no faces.
#pragma once

#include "platform/typefaces.h"

#include <memory>
#include <string>
#include <string_view>

namespace platform {

class OutlineFaces {
  public:
    OutlineFaces();
    ~OutlineFaces();
    OutlineFaces& operator=(OutlineFaces&&) = delete;

    /// Whether this program was built with the libraries.
    static const bool kAvailable;

    [[nodiscard]] bool hasFamily(std::string_view family);
    [[nodiscard]] std::unique_ptr<Typeface> open(const TypefaceRequest& request);

    /// Host paths. False when no face can be read from the file.
    bool addFile(const std::string& path);
    /// Without effect on a file that was not added.
    void removeFile(const std::string& path);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace platform
