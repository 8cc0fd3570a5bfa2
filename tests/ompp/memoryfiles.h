// A machine that lives in memory: files with the naming rules of the platform, a clock that the
// test sets, a plain screen, a queue of messages, boxes that are recorded. Nothing outside the test
// process is touched.
#pragma once

#include "platform/platform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::byte>;

inline Bytes toBytes(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
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
    /// Paths handed to `open`, in order, failed ones too.
    std::vector<std::string> opened;
    /// Number of listings and existence questions.
    mutable int questions = 0;
    std::size_t sector = 2048;
    std::size_t readsUntilError = kNever; ///< by ReadSequential, in all files together
    std::size_t bytesUntilFull = kNever;  ///< by WriteThrough
    std::vector<std::size_t> readSizes;   ///< wanted by each read by ReadSequential
    static constexpr std::size_t kNever = ~std::size_t{0};

    void put(std::string_view path, Bytes content) {
        const std::lock_guard lock(mutex_);
        const std::string full = fullPath(path);
        entries_[key(full)] = {full, std::make_shared<Bytes>(std::move(content)), false};
    }
    void put(std::string_view path, std::string_view text) { put(path, toBytes(text)); }
    void putFolder(std::string_view path) { entries_[key(path)] = {fullPath(path), nullptr, true}; }
    void erase(std::string_view path) { remove(path); }
    bool remove(std::string_view path) override {
        const std::lock_guard lock(mutex_);
        return entries_.erase(key(path)) > 0;
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
        if (reads && !entry) return nullptr;
        if (!reads && !writeProtected.empty() && key(path).starts_with(key(writeProtected) + "\\"))
            return nullptr;
        if (!entry || mode == platform::OpenMode::Write || mode == platform::OpenMode::WriteThrough)
            put(path, Bytes());
        const std::shared_ptr<Bytes> content = entries_[key(path)].content;
        const std::size_t start = mode == platform::OpenMode::Append ? content->size() : 0;
        return std::make_unique<OpenFile>(*this, content, start, mode);
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
    std::optional<std::uint64_t> freeSpace(char) const override { return std::uint64_t{1} << 30; }
    std::size_t sectorSize(char) const override { return sector; }

  private:
    struct Entry {
        std::string path;
        std::shared_ptr<Bytes> content; // open files keep it
        bool isFolder = false;
    };

    class OpenFile final : public platform::File {
      public:
        OpenFile(MemoryFiles& files, std::shared_ptr<Bytes> content, std::size_t position,
                 platform::OpenMode mode)
            : files_(files), content_(std::move(content)), position_(position), mode_(mode) {}

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
            if (mode_ == platform::OpenMode::WriteThrough &&
                !take(files_.bytesUntilFull, bytes.size()))
                return false;
            content_->resize(std::max(content_->size(), position_ + bytes.size()));
            std::copy(bytes.begin(), bytes.end(), content_->begin() + offset(position_));
            position_ += bytes.size();
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
        for (char& c : result)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        return result;
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

struct MemoryDisplay final : platform::Display {
    platform::Surface pixels{640, 480, 8};
    std::array<platform::Rgb, platform::kPaletteSize> colours = platform::staticPalette();
    std::string title;
    int cursor = -1;

    platform::ScreenMode mode() const override {
        return {pixels.width(), pixels.height(), pixels.depth()};
    }
    platform::Surface& screen() override { return pixels; }
    void present(const platform::Rect&) override {}
    void setPalette(int first, std::span<const platform::Rgb> set) override {
        std::copy(set.begin(), set.end(), colours.begin() + first);
    }
    const std::array<platform::Rgb, platform::kPaletteSize>& palette() const override {
        return colours;
    }
    void setTitle(std::string_view text) override { title = text; }
    void setCursor(int id) override { cursor = id; }
};

struct MemoryEvents final : platform::Events {
    std::deque<platform::Message> queue;
    bool captured = false;

    bool take(platform::Message& message) override {
        if (queue.empty()) return false;
        message = queue.front();
        queue.pop_front();
        return true;
    }
    bool wait(platform::Message& message) override { return take(message); }
    void discardInput() override { queue.clear(); }
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

    platform::Button messageBox(std::string_view text, std::string_view caption,
                                std::uint32_t style) override {
        boxes.push_back({std::string(text), std::string(caption), style});
        return answer;
    }
    platform::WarningAnswer warning(const platform::WarningRequest& request) override {
        boxes.push_back({request.text, request.caption, 0});
        return {};
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
    std::map<std::string, std::string, std::less<>> strings;
    /// The functions that each library exports.
    std::map<std::string, std::map<std::string, void (*)()>, std::less<>> libraries;
    std::vector<std::string> loaded; ///< paths handed to `load`, in order, failed ones too
    int unloaded = 0;

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

class MemoryPlatform final : public platform::Platform {
  public:
    MemoryFiles& files() override { return files_; }
    MemoryClock& clock() override { return clock_; }
    MemoryDisplay& display() override { return display_; }
    MemoryEvents& events() override { return events_; }
    MemoryDialogs& dialogs() override { return dialogs_; }
    MemoryModules& modules() override { return modules_; }

    void mainLoopBegins() override {}
    void passEnded() override {}
    void programEnds(int) override {}
    /// The boxes shown so far go to standard error, for tests of fatal errors.
    [[noreturn]] void terminate(int exitCode) override {
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
};

} // namespace testing_support
