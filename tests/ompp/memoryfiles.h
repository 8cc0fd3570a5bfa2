// A machine that lives in memory: files with the naming rules of the platform, a clock that the
// test sets, a plain screen, a queue of messages, boxes that are recorded, a wave-out device that
// keeps what it played. Nothing outside the test process is touched.
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/latin1.h"
#include "omregion.h"

#include "platform/host/screen/hostdisplay.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::byte>;

inline Bytes toBytes(formats::ByteSpan numbers) {
    const auto bytes = std::as_bytes(numbers);
    return {bytes.begin(), bytes.end()};
}
inline Bytes toBytes(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

inline Bytes toBytes(const formats::Bytes& bytes) {
    const auto all = std::as_bytes(std::span(bytes));
    return {all.begin(), all.end()};
}

inline std::string toText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Files in memory, for several threads. Folders exist where files lie. The current directory is
/// C:\GAME.
class MemoryFiles final : public platform::Files {
  public:
    std::string current = "C:\\GAME";
    std::string home = "C:\\HOME";
    std::string writeProtected; ///< folder in which nothing can be written
    std::string unreadable;     ///< a file that is there and cannot be opened for reading
    /// What was done to the disk, in order: "make", "write", "flush", "rename", "remove", "names"
    /// (flushFolder), each with the path or paths.
    std::vector<std::string> changes;
    /// Paths handed to `open`, in order, failed ones too.
    std::vector<std::string> opened;
    /// Number of listings and existence questions.
    mutable int questions = 0;
    std::size_t sector = 2048;
    std::uint64_t space = std::uint64_t{1} << 30; ///< free bytes of every drive
    std::size_t readsUntilError = kNever;         ///< by ReadSequential, in all files together
    std::size_t bytesUntilFull = kNever;          ///< by WriteThrough
    std::vector<std::size_t> readSizes;           ///< wanted by each read by ReadSequential
    static constexpr std::size_t kNever = ~std::size_t{0};

    void put(std::string_view path, Bytes content) {
        const std::lock_guard lock(mutex_);
        const std::string full = fullPath(path);
        entries_[key(full)] = {full, std::make_shared<Bytes>(std::move(content)), false};
    }
    void put(std::string_view path, std::string_view text) { put(path, toBytes(text)); }
    void put(std::string_view path, const formats::Bytes& bytes) { put(path, toBytes(bytes)); }
    /// Makes a file shorter under the hands of whoever has it open.
    void truncate(std::string_view path, std::size_t size) {
        const std::lock_guard lock(mutex_);
        entries_.at(key(path)).content->resize(size);
    }
    void putFolder(std::string_view path) { entries_[key(path)] = {fullPath(path), nullptr, true}; }
    void erase(std::string_view path) { remove(path); }
    bool remove(std::string_view path) override {
        const std::lock_guard lock(mutex_);
        changes.push_back("remove " + fullPath(path));
        return entries_.erase(key(path)) > 0;
    }
    bool rename(std::string_view from, std::string_view to) override {
        const std::lock_guard lock(mutex_);
        changes.push_back("rename " + fullPath(from) + " " + fullPath(to));
        const Entry* source = find(from);
        const auto target = entries_.find(key(to));
        const bool replaces = target != entries_.end() && key(from) != key(to);
        if (!source || folderOf(from) != folderOf(to) || isProtected(to)) return false;
        if (replaces && target->second.isFolder) return false;
        const Entry renamed{replaces ? target->second.path : fullPath(to), source->content, false};
        entries_.erase(key(from));
        entries_[key(to)] = renamed;
        return true;
    }
    bool flushFolder(std::string_view path) override {
        const std::lock_guard lock(mutex_);
        changes.push_back("names " + fullPath(path));
        const auto first = entries_.lower_bound(key(path) + "\\");
        return first != entries_.end() && first->first.starts_with(key(path) + "\\");
    }
    [[nodiscard]] std::string text(std::string_view path) const {
        const std::lock_guard lock(mutex_);
        const Entry* entry = find(path);
        return entry ? toText(*entry->content) : std::string();
    }

    std::unique_ptr<platform::File> open(std::string_view path, platform::OpenMode mode) override {
        const std::lock_guard lock(mutex_);
        opened.emplace_back(path);
        const Entry* entry = find(path);
        const bool reads =
            mode == platform::OpenMode::Read || mode == platform::OpenMode::ReadSequential;
        const bool refuses = reads ? key(path) == key(unreadable) : isProtected(path);
        setLastRefusal(std::make_error_code(refuses           ? std::errc::permission_denied
                                            : reads && !entry ? std::errc::no_such_file_or_directory
                                                              : std::errc()));
        if (lastRefusal()) return nullptr;
        if (!reads) changes.push_back("make " + fullPath(path));
        if (!entry || mode == platform::OpenMode::Write || mode == platform::OpenMode::WriteThrough)
            put(path, Bytes());
        const std::shared_ptr<Bytes> content = entries_[key(path)].content;
        const std::size_t start = mode == platform::OpenMode::Append ? content->size() : 0;
        return std::make_unique<OpenFile>(*this, fullPath(path), content, start, mode);
    }
    bool exists(std::string_view path) const override {
        const std::lock_guard lock(mutex_);
        ++questions;
        return find(path) != nullptr;
    }
    bool isWritable(std::string_view path) const override { return exists(path); }

    std::vector<platform::DirectoryEntry> list(std::string_view directory) const override {
        const std::lock_guard lock(mutex_);
        ++questions;
        std::vector<platform::DirectoryEntry> result;
        const std::string prefix = key(directory) + "\\";
        for (const auto& [path, entry] : entries_) {
            if (!path.starts_with(prefix)) continue;
            const auto end = std::min(path.find('\\', prefix.size()), path.size());
            const std::string name = entry.path.substr(prefix.size(), end - prefix.size());
            if (result.empty() || result.back().name != name)
                result.push_back({name, entry.isFolder || end != path.size()});
        }
        return result;
    }
    std::string fullPath(std::string_view path) const override {
        std::string drive = current.substr(0, 2);
        std::vector<std::string> parts;
        if (path.starts_with("\\\\")) {
            drive = "\\"; // a network name
        } else if (path.size() >= 2 && path[1] == ':') {
            drive = std::string(path.substr(0, 2));
            path.remove_prefix(2);
        } else if (path.empty() || (path[0] != '\\' && path[0] != '/')) {
            addParts(parts, std::string_view(current).substr(2));
        }
        addParts(parts, path);
        std::string result = drive;
        for (const std::string& part : parts) result += "\\" + part;
        return parts.empty() ? result + "\\" : result;
    }
    std::string currentDirectory() const override { return current; }
    std::string homeDirectory() const override { return home; }
    std::optional<std::uint64_t> freeSpace(std::string_view) const override { return space; }
    std::size_t sectorSize(char) const override { return sector; }

  private:
    struct Entry {
        std::string path;
        std::shared_ptr<Bytes> content; // open files keep it
        bool isFolder = false;
    };

    class OpenFile final : public platform::File {
      public:
        OpenFile(MemoryFiles& files, std::string path, std::shared_ptr<Bytes> content,
                 std::size_t position, platform::OpenMode mode)
            : files_(files), path_(std::move(path)), content_(std::move(content)),
              position_(position), mode_(mode) {}

        std::size_t read(std::span<std::byte> buffer) override {
            const std::lock_guard lock(files_.mutex_);
            if (mode_ == platform::OpenMode::ReadSequential) {
                files_.readSizes.push_back(buffer.size());
                if (!take(files_.readsUntilError, 1)) return 0;
            }
            if (position_ >= content_->size()) return 0;
            const std::size_t count = std::min(buffer.size(), content_->size() - position_);
            std::copy_n(content_->begin() + offset(position_), count, buffer.begin());
            position_ += count;
            return count;
        }
        bool write(std::span<const std::byte> bytes) override {
            const std::lock_guard lock(files_.mutex_);
            files_.changes.push_back("write " + path_);
            if (mode_ == platform::OpenMode::WriteThrough &&
                !take(files_.bytesUntilFull, bytes.size()))
                return false;
            content_->resize(std::max(content_->size(), position_ + bytes.size()));
            std::copy(bytes.begin(), bytes.end(), content_->begin() + offset(position_));
            position_ += bytes.size();
            return true;
        }
        bool flush() override {
            const std::lock_guard lock(files_.mutex_);
            files_.changes.push_back("flush " + path_);
            return true;
        }
        bool seek(std::uint64_t position) override {
            position_ = static_cast<std::size_t>(position);
            return true;
        }
        std::uint64_t size() const override {
            const std::lock_guard lock(files_.mutex_);
            return content_->size();
        }

      private:
        static bool take(std::size_t& left, std::size_t count) {
            if (left == kNever) return true;
            if (left < count) return false;
            left -= count;
            return true;
        }
        static std::ptrdiff_t offset(std::size_t position) {
            return static_cast<std::ptrdiff_t>(position);
        }

        MemoryFiles& files_;
        std::string path_;
        std::shared_ptr<Bytes> content_;
        std::size_t position_;
        platform::OpenMode mode_;
    };

    static void addParts(std::vector<std::string>& parts, std::string_view path) {
        while (!path.empty()) {
            const auto end = std::min(path.find_first_of("\\/"), path.size());
            const std::string part(path.substr(0, end));
            if (part == ".." && !parts.empty()) parts.pop_back();
            if (!part.empty() && part != "." && part != "..") parts.push_back(part);
            path.remove_prefix(std::min(end + 1, path.size()));
        }
    }
    [[nodiscard]] std::string key(std::string_view path) const {
        std::string result = fullPath(path);
        while (result.ends_with('\\')) result.pop_back();
        return formats::lowerAscii(result);
    }
    [[nodiscard]] std::string folderOf(std::string_view path) const {
        const std::string full = key(path);
        return full.substr(0, full.rfind('\\'));
    }
    [[nodiscard]] bool isProtected(std::string_view path) const {
        return !writeProtected.empty() && key(path).starts_with(key(writeProtected) + "\\");
    }
    [[nodiscard]] const Entry* find(std::string_view path) const {
        const auto found = entries_.find(key(path));
        return found == entries_.end() || found->second.isFolder ? nullptr : &found->second;
    }

    mutable std::recursive_mutex mutex_;
    std::map<std::string, Entry> entries_; // by lower-case full path
};

struct MemoryClock final : platform::Clock {
    std::uint32_t now = 0;
    std::int64_t calendar = 0;
    std::uint32_t milliseconds() const override { return now; }
    std::int64_t calendarSeconds() const override { return calendar; }
    void sleep(std::uint32_t ms) override { now += ms; }
};

/// A screen that remembers what it was asked to show.
struct MemoryDisplay final : platform::HostDisplay {
    std::string title;
    int cursor = -1;
    bool cursorIsShown = true;
    std::vector<int> cursors;                          ///< all that were set
    std::map<int, platform::CursorImage> cursorImages; ///< those made of pictures, by number
    OMRegion presented;
    int busyFlips = 0; ///< as many flips find the device drawing
    bool refusesExclusive = false;

    explicit MemoryDisplay(const platform::ScreenMode& mode = {}) : HostDisplay(mode) {}
    void setTitle(std::string_view text) override { title = text; }
    using HostDisplay::makeCursor;
    std::unique_ptr<platform::Cursor> makeCursor(int id,
                                                 const platform::CursorImage& image) override {
        cursorImages[id] = image;
        return HostDisplay::makeCursor(id, image);
    }
    void setCursor(const platform::Cursor& shown) override {
        cursors.push_back(cursor = shown.id());
    }
    void showCursor(bool on) override { cursorIsShown = on; }
    void present(const platform::Rect& area) override {
        presented.unite(area);
        HostDisplay::present(area);
    }
    platform::FlipResult flip() override {
        return busyFlips-- > 0 ? platform::FlipResult::Busy : HostDisplay::flip();
    }
    bool canBeExclusive(const platform::ScreenMode& mode) const override {
        return !refusesExclusive && HostDisplay::canBeExclusive(mode);
    }
};

struct MemoryEvents final : platform::Events {
    std::deque<platform::Message> queue;
    bool captured = false;
    bool releaseDropped = false;

    bool take(platform::Message& message) override {
        if (queue.empty()) return false;
        message = queue.front();
        queue.pop_front();
        return true;
    }
    bool wait(platform::Message& message) override { return take(message); }
    void discardInput() override { queue.clear(); }
    bool releaseWasDropped() override { return std::exchange(releaseDropped, false); }
    bool quitWaits() override {
        return std::ranges::count(queue, platform::Message::Kind::Quit, &platform::Message::kind);
    }
    void captureMouse(bool capture) override { captured = capture; }
};

struct MemoryDialogs final : platform::Dialogs {
    struct Box {
        std::string text;
        std::string caption;
        std::uint32_t style;
    };
    std::vector<Box> boxes;
    platform::Button answer = platform::Button::Ok; ///< to every box
    platform::WarningAnswer warningAnswer;          ///< to every warning

    platform::Button messageBox(std::string_view text, std::string_view caption,
                                std::uint32_t style) override {
        boxes.push_back({std::string(text), std::string(caption), style});
        return answer;
    }
    platform::WarningAnswer warning(const platform::WarningRequest& request) override {
        boxes.push_back({request.text, request.caption, 0});
        return warningAnswer;
    }
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override {
        asked.push_back(std::string(title) + " " + std::string(pattern) + " " +
                        std::to_string(limit));
        return chosen;
    }
    std::string chosen;             ///< the file of the next open-file dialog
    std::vector<std::string> asked; ///< title, pattern and limit of each
};

struct MemoryModules final : platform::Modules {
    std::map<std::pair<std::string, int>, Bytes> resources;
    std::map<std::string, std::string, std::less<>> strings{{"ProductName", "Zorbet"},
                                                            {"ProductVersion", "9.9"}};
    /// The functions that each library exports.
    std::map<std::string, std::map<std::string, void (*)()>, std::less<>> libraries;
    std::vector<std::string> loaded; ///< paths handed to `load`, in order, failed ones too
    int unloaded = 0;

    std::string error; ///< of every load

    std::string loadError() const override { return error; }
    std::unique_ptr<platform::Library> load(std::string_view path) override {
        loaded.emplace_back(path);
        const auto found = libraries.find(path);
        if (found == libraries.end()) return nullptr;
        return std::make_unique<LoadedLibrary>(found->second, unloaded);
    }
    std::optional<std::span<const std::byte>> resource(std::string_view type,
                                                       int id) const override {
        const auto found = resources.find({std::string(type), id});
        if (found == resources.end()) return std::nullopt;
        return std::span<const std::byte>(found->second);
    }
    std::vector<platform::ResourceName> resourceNames() const override {
        std::vector<platform::ResourceName> names;
        names.reserve(resources.size());
        for (const auto& [name, bytes] : resources) names.push_back({name.first, name.second});
        return names;
    }
    std::string versionString(std::string_view key) const override {
        const auto found = strings.find(key);
        return found == strings.end() ? std::string() : found->second;
    }

  private:
    class LoadedLibrary final : public platform::Library {
      public:
        LoadedLibrary(std::map<std::string, void (*)()> entries, int& unloaded)
            : entries_(std::move(entries)), unloaded_(unloaded) {}
        ~LoadedLibrary() override { ++unloaded_; }
        void (*entry(const char* name))() override {
            const auto found = entries_.find(name);
            return found == entries_.end() ? nullptr : found->second;
        }

      private:
        std::map<std::string, void (*)()> entries_;
        int& unloaded_;
    };
};

/// A wave-out device that plays when the test says so, or by the clock when it has a rate.
class MemoryWaveOut final : public platform::WaveOut {
  public:
    explicit MemoryWaveOut(const MemoryClock& clock) : clock_(clock) {}

    bool available = true;
    std::string silence;             ///< why nothing is heard; empty when it is
    std::vector<int> opened;         ///< rates of all successful openings
    std::vector<std::uint8_t> heard; ///< every byte that was played
    std::uint32_t bytesPerMs = 0;    ///< 0: only `play` moves the queue
    bool paused = false;
    int pauses = 0;

    /// Plays up to `bytes` bytes of the queue; the done flags wait for the next poll.
    void play(std::size_t bytes) {
        if (paused) return;
        for (Queued& queued : queue_) {
            const auto part = queued.buffer->data.subspan(queued.played);
            const std::size_t count = std::min(bytes, part.size());
            heard.insert(heard.end(), part.begin(),
                         part.begin() + static_cast<std::ptrdiff_t>(count));
            queued.played += count;
            bytes -= count;
        }
    }
    [[nodiscard]] std::size_t queuedBytes() const {
        std::size_t bytes = 0;
        for (const Queued& queued : queue_) bytes += queued.buffer->data.size() - queued.played;
        return bytes;
    }

    bool open(int rate) override {
        close();
        if (!available || rate < kMinRate || rate > kMaxRate) return false;
        rate_ = rate;
        opened.push_back(rate);
        paused = false;
        polledMs_ = clock_.now;
        return true;
    }
    void close() override {
        if (isOpen()) drop();
        rate_ = 0;
    }
    bool isOpen() const override { return rate_ != 0; }
    std::string whySilent() const override { return silence; }
    int rate() const override { return rate_; }
    void write(platform::WaveBuffer& buffer) override {
        if (!isOpen()) return;
        buffer.prepared = true;
        buffer.done = false;
        queue_.push_back({&buffer, 0});
    }
    void poll() override {
        play(std::size_t{clock_.now - polledMs_} * bytesPerMs);
        polledMs_ = clock_.now;
        while (!queue_.empty() && queue_.front().played == queue_.front().buffer->data.size()) {
            queue_.front().buffer->done = true;
            queue_.pop_front();
        }
    }
    void pause() override {
        ++pauses;
        paused = isOpen();
    }
    void restart() override { paused = false; }
    void reset() override {
        if (!isOpen()) return;
        drop();
    }

  protected:
    void beginChange() override { poll(); }
    void endChange() override {}

  private:
    struct Queued {
        platform::WaveBuffer* buffer;
        std::size_t played;
    };

    void drop() {
        for (const Queued& queued : queue_) queued.buffer->done = true;
        queue_.clear();
        paused = false;
    }

    const MemoryClock& clock_;
    std::deque<Queued> queue_;
    std::uint32_t polledMs_ = 0;
    int rate_ = 0;
};

/// Faces whose characters are filled boxes: every one as wide as half of the size, the system font
/// has the size 8.
class MemoryTypefaces final : public platform::Typefaces {
  public:
    explicit MemoryTypefaces(MemoryFiles& files) : files_(files) {}

    std::vector<std::string> families;              ///< that are installed
    std::vector<std::string> resources;             ///< font resource files that were added
    std::string newFamily;                          ///< what the next added file brings
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
    bool createFontResource(std::string_view resource, std::string_view font) override {
        if (!files_.exists(font) || files_.exists(resource)) return false;
        files_.put(resource, font);
        return true;
    }
    bool addFontResource(std::string_view resource) override {
        if (!files_.exists(resource)) return false;
        resources.emplace_back(resource);
        if (!newFamily.empty()) families.push_back(std::exchange(newFamily, {}));
        return true;
    }
    void removeFontResource(std::string_view resource) override { std::erase(resources, resource); }

  private:
    class Box final : public platform::Typeface {
      public:
        explicit Box(int size) : size_(size) {
            const int width = size / 2;
            const auto bytes = static_cast<std::size_t>((width + 7) / 8 * size + 1);
            picture_ = {0, size, width, size, width + 1, std::vector<std::uint8_t>(bytes, 0xFF)};
        }
        platform::FaceMetrics metrics() const override { return {size_, size_ / 4, 1}; }
        const platform::GlyphPicture& glyph(unsigned char) override { return picture_; }

      private:
        int size_;
        platform::GlyphPicture picture_;
    };

    MemoryFiles& files_;
};

/// At most one text window at a time; the test does to it what a person would do.
struct MemoryTextWindows {
    class Window;

    bool refused = false; ///< no window can be opened
    int opened = 0;
    platform::TextWindowRequest request; ///< of the last one
    Window* window = nullptr;            ///< the one that is open

    std::unique_ptr<platform::TextWindow> open(const platform::TextWindowRequest& wanted,
                                               platform::TextWindowOwner& owner);
};

class MemoryTextWindows::Window final : public platform::TextWindow {
  public:
    Window(MemoryTextWindows& all, platform::TextWindowOwner& itsOwner)
        : owner(itsOwner), place(all.request.rectangle), all_(all) {
        all_.window = this;
    }
    ~Window() override { all_.window = nullptr; }
    Window& operator=(Window&&) = delete;

    platform::TextWindowOwner& owner;
    platform::Rect place;
    bool minimised = false;
    std::vector<std::string> shown; ///< the lines that can be seen
    std::size_t fresh = 0;          ///< as told with them
    int paints = 0;

    int lineHeight() const override { return 20; }
    platform::Rect rectangle() const override { return place; }
    bool isMinimised() const override { return minimised; }
    void move(platform::Point corner) override {
        place = {corner.x, corner.y, corner.x + place.width(), corner.y + place.height()};
    }
    void show(std::span<const std::string> lines, std::size_t freshLines) override {
        shown.assign(lines.begin(), lines.end());
        fresh = freshLines;
        ++paints;
    }
    void resize(int height) {
        place.bottom = place.top + height;
        owner.resized();
    }

  private:
    MemoryTextWindows& all_;
};

inline std::unique_ptr<platform::TextWindow>
MemoryTextWindows::open(const platform::TextWindowRequest& wanted,
                        platform::TextWindowOwner& owner) {
    if (refused) return nullptr;
    ++opened;
    request = wanted;
    return std::make_unique<Window>(*this, owner);
}

struct MemoryMachine final : platform::Machine {
    bool intel386 = false;
    std::uint64_t memory = std::uint64_t{64} << 20;
    bool hasIntel386() const override { return intel386; }
    std::uint64_t availableMemory() const override { return memory; }
    std::uint64_t usedMemory() const override { return 0; }
};

class MemoryPlatform final : public platform::Platform {
  public:
    explicit MemoryPlatform(const platform::ScreenMode& mode = {}) : display_(mode) {}

    MemoryFiles& files() override { return files_; }
    MemoryClock& clock() override { return clock_; }
    MemoryDisplay& display() override { return display_; }
    MemoryEvents& events() override { return events_; }
    MemoryDialogs& dialogs() override { return dialogs_; }
    MemoryModules& modules() override { return modules_; }
    MemoryWaveOut& waveOut() override { return waveOut_; }
    MemoryTypefaces& typefaces() override { return typefaces_; }
    platform::Movies& movies() override { return installedMovies ? *installedMovies : noMovies_; }
    platform::Movies* installedMovies = nullptr; ///< a test's own
    MemoryMachine& machine() override { return machine_; }

    std::unique_ptr<platform::TextWindow>
    openTextWindow(const platform::TextWindowRequest& request,
                   platform::TextWindowOwner& owner) override {
        return textWindows.open(request, owner);
    }
    MemoryTextWindows textWindows;
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
        for (const MemoryDialogs::Box& box : dialogs_.boxes)
            std::fprintf(stderr, "%s\n", box.text.c_str());
        std::_Exit(exitCode);
    }

  private:
    MemoryFiles files_;
    MemoryClock clock_;
    MemoryDisplay display_;
    MemoryEvents events_;
    MemoryDialogs dialogs_;
    MemoryModules modules_;
    MemoryWaveOut waveOut_{clock_};
    MemoryTypefaces typefaces_{files_};
    class NoMovies final : public platform::Movies {
        std::unique_ptr<platform::Movie> open(const platform::MovieRequest&) override { return {}; }
    };
    NoMovies noMovies_;
    MemoryMachine machine_;
};

} // namespace testing_support
