// A file that is stored as a whole, so that whoever looks, at any moment and after any failure,
// finds the old bytes or the new ones. Beside ZORBET.DAT there are, with the same name:
//
//     .NEW   the bytes that are being stored; gets the file's name as the last step
//     .TMP   a copy that is being made
//     .BAK   the file as it was before the last store that changed it
//     .BAD   a file that was not understood, before it was replaced; .BAD.1 to .BAD.9 further ones
//     .OTHER a file that somebody else put there, neither read nor stored by who replaced it;
//            .OTHER.1 to .OTHER.9 further ones
//
// The last two are never replaced themselves. What could not be read is left alone altogether.
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
        Unreadable, ///< perhaps there, but not to be opened or read, or larger than the limit
    };
    /// Why something is refused, as far as a person can do something about it.
    enum class Trouble : std::uint8_t { Full, Forbidden, InUse, IsFolder, Other };
    struct Contents {
        State state = State::Missing;
        std::string bytes{}; ///< empty unless Whole
    };

    static constexpr std::size_t kLimit = 256 * 1024 * 1024; ///< of what is read, in bytes

    [[nodiscard]] static Trouble troubleOf(std::error_code why);
    /// What a person can do about it, for the log: " Make room on that disk.", or nothing.
    [[nodiscard]] static const char* remedyFor(std::error_code why);

    /// The path has a folder. `files` must outlive this.
    RSafeFile(platform::Files& files, std::string path, std::size_t limit = kLimit);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// What the file holds. One that is Unreadable is left alone by all stores of this object, also
    /// when it can be read later: what is stored knows nothing of what it holds. A line in the log
    /// tells why, once for each reason.
    [[nodiscard]] Contents read();

    /// The file was read, but its reader could not use all of it: no store replaces it before its
    /// bytes lie beside it as .BAD.
    void keepBeside();

    /// Replaces the file. Does nothing when the last store of this object had the same bytes and
    /// the file is still there. False when a step failed, of which a line in the log tells why;
    /// then the file is the old one (only if the last step failed, the new one, which a power cut
    /// may still undo), and the next store tries everything again. A file that is protected against
    /// writing is not replaced, nor is one that cannot be read.
    [[nodiscard]] bool store(const std::string& bytes);
    /// Why the last store that failed did, or no error where the host gave no reason.
    [[nodiscard]] std::error_code whyNotStored() const { return whyNotStored_; }

  private:
    class Draft;

    [[nodiscard]] std::string beside(const std::string& extension) const;
    /// Files::lastRefusal tells why it is Unreadable.
    [[nodiscard]] Contents readWhole(const std::string& path) const;
    /// Of the file that is about to get these bytes.
    [[nodiscard]] bool keepOld(const std::string& bytes);
    [[nodiscard]] bool keepForGood(const std::string& old, const std::string& extension);
    [[nodiscard]] bool copyTo(const std::string& target, const std::string& old);
    [[nodiscard]] bool flushNames();
    bool failed(const char* problem, const std::string& path,
                std::error_code why = platform::Files::lastRefusal());

    platform::Files& files_;
    std::string path_;
    std::string folder_; ///< ends in a backslash
    std::size_t limit_;
    std::optional<std::string> known_; ///< last read or stored by this object
    bool isStored_ = false;            ///< by this object, and on the disk
    bool notUnderstood_ = false;       ///< what was read
    std::optional<std::error_code> unreadable_;
    std::error_code whyNotStored_;
};
