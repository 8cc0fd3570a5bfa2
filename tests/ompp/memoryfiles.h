// A machine that lives in memory: files, a clock that the test sets, a plain screen, a queue of
// messages, boxes that are recorded, a wave-out device that keeps what it played.
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/latin1.h"

#include "platform/host/screen/hostdisplay.h"
#include "platform/host/sound/wavequeue.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>

namespace testing_support {

using Bytes = std::vector<std::byte>;

inline Bytes toBytes(formats::ByteSpan numbers) {
    const auto bytes = std::as_bytes(numbers);
    return {bytes.begin(), bytes.end()};
}
inline Bytes toBytes(std::string_view text) {
    return toBytes(formats::asNumbers(std::as_bytes(std::span(text))));
}
inline std::string toText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Files in memory, for several threads. Folders exist where files lie. The current directory is
/// C:\GAME.
class MemoryFiles final : public platform::Files {
  public:
    static constexpr std::size_t kNever = ~std::size_t{0};

    std::string writeProtected; ///< folder in which nothing can be written
    std::string unreadable;     ///< a file that is there and cannot be opened for reading
    /// What was done to the disk, in order: "make", "write", "flush", "rename", "remove", "names"
    /// (flushFolder), each with the path or paths.
    std::vector<std::string> changes;
    std::vector<std::string> opened; ///< paths handed to `open`, in order, failed ones too
    std::size_t sector = 2048;
    std::size_t readsUntilError = kNever; ///< by ReadSequential, in all files together
    std::size_t bytesUntilFull = kNever;  ///< by WriteThrough
    std::vector<std::size_t> readSizes;   ///< wanted by each read by ReadSequential

    void put(std::string_view path, Bytes content) {
        const Lock lock(mutex_);
        entries_[key(path)] = {fullPath(path), std::make_shared<Bytes>(std::move(content))};
    }
    void put(std::string_view path, std::string_view text) { put(path, toBytes(text)); }
    void put(std::string_view path, formats::ByteSpan bytes) { put(path, toBytes(bytes)); }
    void putFolder(std::string_view path) { entries_[key(path)] = {fullPath(path), nullptr}; }
    /// Makes a file shorter under the hands of whoever has it open.
    void truncate(std::string_view path, std::size_t size) { find(path)->content->resize(size); }
    [[nodiscard]] std::string text(std::string_view path) const {
        const Lock lock(mutex_);
        const Entry* entry = find(path);
        return entry ? toText(*entry->content) : std::string();
    }
    void erase(std::string_view path) { remove(path); }

    bool remove(std::string_view path) override {
        const Lock lock(mutex_);
        note("remove " + fullPath(path));
        return entries_.erase(key(path)) > 0;
    }
    bool rename(std::string_view from, std::string_view to) override {
        const Lock lock(mutex_);
        note("rename " + fullPath(from) + " " + fullPath(to));
        const Entry* source = find(from);
        if (!source) return false;
        const Entry* target = find(to);
        const Entry renamed{target ? target->path : fullPath(to), source->content};
        entries_.erase(key(from));
        entries_[key(to)] = renamed;
        return true;
    }
    bool flushFolder(std::string_view path) override { return note("names " + fullPath(path)); }
    std::unique_ptr<platform::File> open(std::string_view path, platform::OpenMode mode) override {
        using enum platform::OpenMode;
        const Lock lock(mutex_);
        opened.emplace_back(path);
        const bool reads = mode == Read || mode == ReadSequential;
        std::errc refusal{};
        if (reads ? key(path) == key(unreadable)
                  : !writeProtected.empty() && key(path).starts_with(key(writeProtected)))
            refusal = std::errc::permission_denied;
        else if (reads && !find(path))
            refusal = std::errc::no_such_file_or_directory;
        setLastRefusal(std::make_error_code(refusal));
        if (lastRefusal()) return nullptr;
        if (!reads) note("make " + fullPath(path));
        if (!find(path) || mode == Write || mode == WriteThrough) put(path, Bytes());
        return std::make_unique<OpenFile>(*this, *find(path), mode);
    }
    bool exists(std::string_view path) const override {
        const Lock lock(mutex_);
        return find(path) != nullptr;
    }
    bool isWritable(std::string_view path) const override { return exists(path); }
    std::vector<platform::DirectoryEntry> list(std::string_view directory) const override {
        const Lock lock(mutex_);
        std::vector<platform::DirectoryEntry> result;
        const std::string prefix = key(directory) + "\\";
        for (const auto& [path, entry] : entries_) {
            if (!path.starts_with(prefix)) continue;
            const auto end = std::min(path.find('\\', prefix.size()), path.size());
            const std::string name = entry.path.substr(prefix.size(), end - prefix.size());
            if (result.empty() || result.back().name != name)
                result.push_back({name, !entry.content || end != path.size()});
        }
        return result;
    }
    std::string fullPath(std::string_view path) const override {
        std::string all(path);
        std::ranges::replace(all, '\\', '/');
        if (all.starts_with("//")) return std::string(path); // on no drive
        if (all.find(':') != 1) all = (all.starts_with('/') ? "C:" : "C:/GAME/") + all;
        all = std::filesystem::path(all).lexically_normal().string();
        std::ranges::replace(all, '/', '\\');
        if (all.ends_with('\\') && all.size() > 3) all.pop_back();
        return all;
    }
    std::string currentDirectory() const override { return "C:\\GAME"; }
    std::string homeDirectory() const override { return "C:\\HOME"; }
    std::optional<std::uint64_t> freeSpace(std::string_view) const override { return 1 << 30; }
    std::size_t sectorSize(char) const override { return sector; }

  private:
    using Lock = std::lock_guard<std::recursive_mutex>;

    struct Entry {
        std::string path;
        std::shared_ptr<Bytes> content; // open files keep it; null: a folder
    };

    class OpenFile final : public platform::File {
      public:
        OpenFile(MemoryFiles& files, Entry entry, platform::OpenMode mode)
            : files_(files), path_(entry.path), bytes_(std::move(entry.content)), mode_(mode) {
            if (mode == platform::OpenMode::Append) position_ = bytes_->size();
        }
        std::size_t read(std::span<std::byte> buffer) override {
            const Lock lock(files_.mutex_);
            if (mode_ == platform::OpenMode::ReadSequential) {
                files_.readSizes.push_back(buffer.size());
                if (!take(files_.readsUntilError, 1)) return 0;
            }
            const std::size_t at = std::min(position_, bytes_->size());
            const std::size_t count = std::min(buffer.size(), bytes_->size() - at);
            std::copy_n(bytes_->data() + at, count, buffer.begin());
            position_ += count;
            return count;
        }
        bool write(std::span<const std::byte> bytes) override {
            const Lock lock(files_.mutex_);
            files_.note("write " + path_);
            if (mode_ == platform::OpenMode::WriteThrough &&
                !take(files_.bytesUntilFull, bytes.size()))
                return false;
            bytes_->resize(std::max(bytes_->size(), position_ + bytes.size()));
            std::ranges::copy(bytes, bytes_->data() + position_);
            position_ += bytes.size();
            return true;
        }
        bool flush() override { return files_.note("flush " + path_); }
        bool seek(std::uint64_t position) override { return (position_ = position, true); }
        std::uint64_t size() const override {
            const Lock lock(files_.mutex_);
            return bytes_->size();
        }

      private:
        static bool take(std::size_t& left, std::size_t count) {
            if (left < count) return false;
            if (left != kNever) left -= count;
            return true;
        }

        MemoryFiles& files_;
        std::string path_;
        std::shared_ptr<Bytes> bytes_;
        platform::OpenMode mode_;
        std::size_t position_ = 0;
    };

    bool note(const std::string& change) {
        const Lock lock(mutex_);
        changes.push_back(change);
        return true;
    }
    [[nodiscard]] std::string key(std::string_view path) const {
        std::string result = formats::lowerAscii(fullPath(path));
        if (result.ends_with('\\')) result.pop_back();
        return result;
    }
    [[nodiscard]] const Entry* find(std::string_view path) const {
        const auto found = entries_.find(key(path));
        return found == entries_.end() || !found->second.content ? nullptr : &found->second;
    }

    mutable std::recursive_mutex mutex_;
    std::map<std::string, Entry> entries_; // by lower-case full path
};

struct MemoryClock final : platform::Clock {
    std::uint32_t now = 0;
    std::uint32_t milliseconds() const override { return now; }
    std::int64_t calendarSeconds() const override { return 0; }
    void sleep(std::uint32_t ms) override {
        now += ms;
        if (whileAsleep) whileAsleep(ms);
    }
    std::function<void(std::uint32_t ms)> whileAsleep;
};

/// A screen that remembers its cursor.
struct MemoryDisplay final : platform::HostDisplay {
    int cursor = -1;

    using HostDisplay::HostDisplay;
    void setTitle(std::string_view) override {}
    void setCursor(const platform::Cursor& shown) override { cursor = shown.id(); }
    void showCursor(bool) override {}
};

struct MemoryEvents final : platform::Events {
    std::deque<platform::Message> queue;

    bool take(platform::Message& message) override {
        if (queue.empty()) return false;
        message = queue.front(), queue.pop_front();
        return true;
    }
    bool wait(platform::Message& message) override { return take(message); }
    void discardInput() override { queue.clear(); }
    bool releaseWasDropped() override { return false; }
    bool quitWaits() override { return false; }
    void captureMouse(bool) override {}
};

struct MemoryDialogs final : platform::Dialogs {
    std::vector<std::string> boxes;                 ///< their texts
    platform::Button answer = platform::Button::Ok; ///< to every box
    std::string chosen;                             ///< the file of the next open-file dialog
    std::vector<std::string> asked;                 ///< title, pattern and limit of each

    platform::Button messageBox(std::string_view text, std::string_view, std::uint32_t) override {
        boxes.emplace_back(text);
        return answer;
    }
    platform::WarningAnswer warning(const platform::WarningRequest& request) override {
        boxes.push_back(request.text);
        return {};
    }
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override {
        asked.push_back(std::string(title) + " " + std::string(pattern) + " " +
                        std::to_string(limit));
        return chosen;
    }
};

struct MemoryModules final : platform::Modules {
    using Functions = std::map<std::string, void (*)()>;

    std::map<std::pair<std::string, int>, Bytes> resources;
    std::map<std::string, Functions, std::less<>> libraries; ///< what each exports
    std::vector<std::string> loaded; ///< paths handed to `load`, in order, failed ones too
    int unloaded = 0;

    std::string loadError() const override { return {}; }
    std::unique_ptr<platform::Library> load(std::string_view path) override {
        loaded.emplace_back(path);
        const auto found = libraries.find(path);
        if (found == libraries.end()) return nullptr;
        return std::make_unique<Loaded>(found->second, unloaded);
    }
    std::optional<std::span<const std::byte>> resource(std::string_view type,
                                                       int id) const override {
        const auto found = resources.find({std::string(type), id});
        return found == resources.end() ? std::nullopt : std::optional(std::span(found->second));
    }
    std::vector<platform::ResourceName> resourceNames() const override {
        std::vector<platform::ResourceName> names;
        for (const auto& [name, bytes] : resources) names.push_back({name.first, name.second});
        return names;
    }
    std::string versionString(std::string_view) const override { return "9.9"; }

  private:
    struct Loaded final : platform::Library {
        Loaded(Functions exported, int& count) : functions(std::move(exported)), unloaded(count) {}
        ~Loaded() override { ++unloaded; }
        void (*entry(const char* name))() override { return functions[name]; }
        Functions functions;
        int& unloaded;
    };
};

/// A wave-out device that plays when the test says so.
class MemoryWaveOut final : public platform::WaveOut {
  public:
    bool available = true;
    std::string silence;             ///< why nothing is heard; empty when it is
    std::vector<int> opened;         ///< rates of all successful openings
    std::vector<std::uint8_t> heard; ///< every byte that was played
    bool paused = false;

    /// Plays up to `bytes` bytes of the queue; the done flags wait for the next poll.
    void play(std::size_t bytes) {
        if (paused) return;
        queue_.play(bytes, [this](std::span<const std::uint8_t> piece) {
            heard.insert(heard.end(), piece.begin(), piece.end());
        });
    }

    bool open(int rate) override {
        close();
        if (!available || rate < kMinRate || rate > kMaxRate) return false;
        opened.push_back(rate_ = rate);
        return true;
    }
    void close() override { reset(), rate_ = 0; }
    bool isOpen() const override { return rate_ != 0; }
    std::string whySilent() const override { return silence; }
    int rate() const override { return rate_; }
    void write(platform::WaveBuffer& buffer) override {
        if (isOpen()) queue_.add(buffer);
    }
    void poll() override { queue_.settle(); }
    void pause() override { paused = isOpen(); }
    void restart() override { paused = false; }
    void reset() override { queue_.drop(), paused = false; }

  protected:
    void beginChange() override { poll(); }
    void endChange() override {}

  private:
    platform::WaveQueue queue_;
    int rate_ = 0;
};

/// Faces whose characters are filled boxes: every one as wide as half of the size, the system font
/// has the size 8.
struct MemoryTypefaces final : platform::Typefaces {
    std::vector<std::string> families;              ///< that are installed
    std::optional<platform::TypefaceRequest> asked; ///< the last one; its family has no text

    std::unique_ptr<platform::Typeface> systemFont() override { return std::make_unique<Box>(8); }
    bool hasFamily(std::string_view family) override {
        return std::ranges::find(families, family) != families.end();
    }
    std::unique_ptr<platform::Typeface> open(const platform::TypefaceRequest& request) override {
        if (!hasFamily(request.family)) return nullptr;
        asked = request;
        asked->family = {};
        return std::make_unique<Box>(request.size);
    }
    bool createFontResource(std::string_view, std::string_view) override { return false; }
    bool addFontResource(std::string_view) override { return false; }
    void removeFontResource(std::string_view) override {}

  private:
    struct Box final : platform::Typeface {
        explicit Box(int itsSize) : size(itsSize) {
            picture.bits.assign(static_cast<std::size_t>((size / 2 + 7) / 8 * size + 1), 0xFF);
        }
        platform::FaceMetrics metrics() const override { return {size, size / 4, 1}; }
        const platform::GlyphPicture& glyph(unsigned char) override { return picture; }
        int size;
        platform::GlyphPicture picture{0, size, size / 2, size, size / 2 + 1, {}};
    };
};

struct MemoryMachine final : platform::Machine {
    bool hasIntel386() const override { return false; }
    std::uint64_t availableMemory() const override { return 0; }
    std::uint64_t usedMemory() const override { return 0; }
};

class MemoryPlatform final : public platform::Platform {
  public:
    explicit MemoryPlatform(const platform::ScreenMode& mode = {}) : display_(mode) {}

    platform::Movies* installedMovies = nullptr; ///< a test's own

    MemoryFiles& files() override { return files_; }
    MemoryClock& clock() override { return clock_; }
    MemoryDisplay& display() override { return display_; }
    MemoryEvents& events() override { return events_; }
    MemoryDialogs& dialogs() override { return dialogs_; }
    MemoryModules& modules() override { return modules_; }
    MemoryWaveOut& waveOut() override { return waveOut_; }
    MemoryTypefaces& typefaces() override { return typefaces_; }
    platform::Movies& movies() override { return *installedMovies; }
    MemoryMachine& machine() override { return machine_; }

    std::unique_ptr<platform::TextWindow> openTextWindow(const platform::TextWindowRequest&,
                                                         platform::TextWindowOwner&) override {
        return nullptr;
    }
    std::function<void()> atEnd; ///< called before the process ends at once

    void keepSettings(std::string_view) override {}
    void complain(std::string_view) override {}
    void closeIn() override {}
    void mainLoopBegins() override {}
    void passEnded() override {}
    void programEnds(int) override {}
    /// The boxes shown so far go to standard error, for tests of fatal errors.
    [[noreturn]] void terminate(int exitCode) override {
        if (atEnd) atEnd();
        for (const std::string& box : dialogs_.boxes) std::fprintf(stderr, "%s\n", box.c_str());
        std::_Exit(exitCode);
    }

  private:
    MemoryFiles files_;
    MemoryClock clock_;
    MemoryDisplay display_;
    MemoryEvents events_;
    MemoryDialogs dialogs_;
    MemoryModules modules_;
    MemoryWaveOut waveOut_;
    MemoryTypefaces typefaces_;
    MemoryMachine machine_;
};

} // namespace testing_support
