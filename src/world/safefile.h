// A file that is stored as a whole, so that whoever looks, at any moment and after any failure,
// finds the old bytes or the new ones. Beside ZORBET.DAT there are, with the same name:
//
//     .NEW   the bytes that are being stored; gets the file's name as the last step
//     .TMP   a copy that is being made
//     .BAK   the file as it was before the last store that changed it
//     .BAD   a file that was not understood, before it was replaced; .BAD.1 to .BAD.9 further ones
//
// .NEW and .TMP are left only by a process that ended in the middle, and the next store makes them
// anew. .NEW is held during the whole store, so a second program that stores meanwhile is refused.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

class RSafeFile {
  public:
    enum class State : std::uint8_t {
        Missing,
        Whole,
        Unreadable, ///< there, but not to be opened or read, or larger than the limit
    };
    struct Contents {
        State state = State::Missing;
        std::string bytes{}; ///< empty unless Whole
    };

    static constexpr std::size_t kLimit = 256 * 1024 * 1024; ///< of what is read, in bytes

    /// The path has a folder. `files` must outlive this.
    RSafeFile(platform::Files& files, std::string path, std::size_t limit = kLimit);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// What the file holds. One that is Unreadable is treated as after keepBeside, and a line in
    /// the log tells why, once for each reason.
    [[nodiscard]] Contents read();

    /// The file was read, but its reader could not use all of it: no store replaces it before its
    /// bytes lie beside it as .BAD.
    void keepBeside();

    /// Replaces the file. Does nothing when the last store of this object had the same bytes and
    /// the file is still there. False when a step failed, of which a line in the log tells why;
    /// then the file is the old one (only if the last step failed, the new one, which a power cut
    /// may still undo), and the next store tries everything again. A file that is protected against
    /// writing is not replaced.
    [[nodiscard]] bool store(const std::string& bytes);

  private:
    class Draft;

    /// What a store has to do with the file that it finds.
    enum class Old : std::uint8_t { Backup, KeepBeside, IsKept };

    [[nodiscard]] std::string beside(const std::string& extension) const;
    /// Files::lastRefusal tells why it is Unreadable.
    [[nodiscard]] Contents readWhole(const std::string& path) const;
    [[nodiscard]] bool keepOld(const std::string& bytes);
    [[nodiscard]] bool keepBad(const Contents& old);
    [[nodiscard]] bool copyTo(const std::string& target);
    [[nodiscard]] bool flushNames();
    bool failed(const char* problem, const std::string& path,
                std::error_code why = platform::Files::lastRefusal()) const;

    platform::Files& files_;
    std::string path_;
    std::string folder_; ///< ends in a backslash
    std::size_t limit_;
    Old old_ = Old::Backup;
    std::optional<std::string> stored_; ///< by this object, and on the disk
    std::error_code told_;              ///< why it could not be read
};
