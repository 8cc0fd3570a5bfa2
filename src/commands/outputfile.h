// The file that a script writes texts into. One is open at a time, and what all of them take in a
// run is bounded: a script that goes round without end does not fill the player's disk.
#pragma once

#include "platform/files.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class ROutputFile {
  public:
    static constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;
    static constexpr int kMostFiles = 1000; ///< that were not there before

    /// Closes the open one; the new one is empty. What fails is told in the log, and so
    /// is a saved game, which is none of a script's.
    void open(const std::string& path);
    /// Nothing without an open file. Of a text that does not go into the file, the log tells once
    /// for each file.
    void write(std::string_view text);
    void close() { file_.reset(); }

  private:
    void tellNotOpen(const std::string& why) const;

    std::unique_ptr<platform::File> file_;
    std::string path_;
    int files_ = 0;
    std::uint64_t bytes_ = 0;
};
