#include "startup/makegame.h"

#include "formats/base/latin1.h"
#include "formats/base/scanner.h"

#include "platform/commandline/commandline.h"
#include "platform/host/machine/installation.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr const char* kTemplate = "newgame";
constexpr const char* kInfo = "game.ini";
constexpr std::size_t kMaxTitle = 200; ///< bytes, as game.ini takes them
constexpr std::size_t kMaxName = 40;   ///< letters of an identifier that are the folder's

/// Why no game can be made.
class NoGame : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

std::string shown(const fs::path& path) { return formats::inQuotes(path.string()); }

/// Files and folders of the template, relative to it; folders come before what is in them.
std::vector<fs::path> templateFiles(const fs::path& source) {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator file(source, error), end; !error && file != end;
         file.increment(error))
        files.push_back(file->path().lexically_relative(source));
    if (error || std::ranges::find(files, fs::path(kInfo)) == files.end())
        throw NoGame("the game that is copied is not in " + shown(source) +
                     ", as it should be; install the program anew, or build it with "
                     "\"cmake --build\" and without a target");
    return files;
}

/// Copies that are taken away again unless they are kept.
class Copies {
  public:
    explicit Copies(fs::path folder) : folder_(std::move(folder)) { claim(); }
    Copies(const Copies&) = delete;
    Copies& operator=(const Copies&) = delete;
    ~Copies() {
        std::error_code ignored;
        for (auto path = made_.rbegin(); path != made_.rend(); ++path) fs::remove(*path, ignored);
    }
    void keep() { made_.clear(); }

    void copy(const fs::path& source, const fs::path& name) {
        const fs::path target = folder_ / name;
        std::error_code error;
        if (fs::is_directory(source / name)) {
            makeFolder(target);
        } else {
            fs::copy_file(source / name, target, error);
            if (error != std::errc::file_exists) made_.push_back(target); // perhaps a part of it
            if (!error) // that of a program for all users may not be written to
                fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write,
                                fs::perm_options::add, error);
            check(error, target);
        }
    }

  private:
    /// Takes a folder that is empty, or makes it.
    void claim() {
        std::error_code error;
        const fs::file_status status = fs::status(folder_, error);
        if (fs::is_directory(status)) {
            const bool empty = fs::is_empty(folder_, error);
            check(error, folder_);
            if (!empty)
                throw NoGame("the folder " + shown(folder_) +
                             " is not empty, and nothing in it is replaced; name a folder that is "
                             "not there yet");
        } else if (fs::exists(fs::symlink_status(folder_, error))) {
            throw NoGame(shown(folder_) +
                         " is there already and is no folder; name a folder that is not there yet");
        } else {
            const fs::path parent = fs::absolute(folder_).parent_path();
            if (!fs::is_directory(parent, error))
                throw NoGame("there is no folder " + shown(parent) +
                             " to make the game in; make that first, or name another one");
            makeFolder(folder_);
        }
    }

    void makeFolder(const fs::path& folder) {
        std::error_code error;
        if (fs::create_directory(folder, error)) made_.push_back(folder);
        check(error, folder);
    }

    static void check(const std::error_code& error, const fs::path& path) {
        if (!error) return;
        throw NoGame(shown(path) + " cannot be made: " + error.message() +
                     ". Nothing was made; choose a place where you may write and the disk has "
                     "space");
    }

    fs::path folder_;
    std::vector<fs::path> made_;
};

/// Without a slash at its end.
fs::path plainFolder(const std::string& folder) {
    const fs::path path = folder;
    return path.has_filename() ? path : path.parent_path();
}

/// The last name of a path, also of ".".
std::string lastName(const fs::path& folder) {
    return plainFolder(fs::absolute(folder).lexically_normal().string()).filename().string();
}

/// A text that game.ini gives back as it was.
std::string checkedTitle(const std::string& title) {
    const std::string text = formats::utf8FromAuthor(title);
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; };
    if (text.empty() || text.front() == ' ' || text.back() == ' ' || text.size() > kMaxTitle ||
        std::ranges::any_of(text, isControl))
        throw NoGame(formats::inQuotes(text) +
                     " is no title; one is a line of 1 to 200 bytes without blanks around it. "
                     "--title \"The Pond\" gives the game another one than its folder's name");
    return text;
}

std::string identifierFor(std::string_view name) {
    std::string letters;
    for (const char c : name.substr(0, kMaxName)) {
        const bool isPlain = formats::isAsciiLetter(c) || (c >= '0' && c <= '9') || c == '-';
        if (isPlain)
            letters += c;
        else if (!letters.empty() && letters.back() != '_')
            letters += '_';
    }
    if (letters.ends_with('_')) letters.pop_back();
    return "org.example." + (letters.empty() ? "game" : formats::lowerAscii(letters));
}

void writeInfo(const fs::path& file, const std::string& identifier, const std::string& title) {
    std::ostringstream text;
    std::ifstream old(file, std::ios::binary);
    for (std::string line; std::getline(old, line);) {
        if (line.starts_with("identifier="))
            text << "identifier=" << identifier << '\n';
        else if (line.starts_with("title="))
            text << "title=" << title << '\n';
        else
            text << line << '\n';
    }
    old.close();
    std::ofstream info(file, std::ios::binary | std::ios::trunc);
    info << text.str();
    info.close();
    if (!info)
        throw NoGame(shown(file) + " cannot be written; see that the disk has space. Nothing was "
                                   "made");
}

/// As a word of a command in a terminal.
std::string asWord(const std::string& path) {
    constexpr std::string_view kPlain = "./_-+,@";
    const auto isPlain = [&](char c) {
        return formats::isAsciiLetter(c) || (c >= '0' && c <= '9') || kPlain.find(c) != kPlain.npos;
    };
    if (std::ranges::all_of(path, isPlain)) return path;
    std::string word = "'";
    for (const char c : path) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + '\'';
}

void tellWhatNext(const std::string& folder, const std::string& title, std::ostream& out) {
    out << "The game \"" << title << "\" is ready. ";
    if (folder == ".")
        out << "From within its folder:\n\n";
    else
        out << "Go into its folder:\n\n  cd " << asWord(folder) << "\n\nFrom there:\n\n";
    out << "  zorbet --content .                         play the game\n"
           "  zorbet-rsc pack resources.manifest -o RSC  after a change of pictures or sounds\n"
           "  zorbet-mps check .                         find mistakes in its scripts\n"
           "  zorbet test .                              play its tests\n\n"
           "README.md tells what each file is, and what to change first.\n";
}

} // namespace

int makeGame(const NewGame& game, std::ostream& out, std::ostream& errors) {
    try {
        const fs::path folder = plainFolder(game.folder);
        const fs::path source = platform::dataNamed(kTemplate);
        const std::string name = lastName(folder);
        const std::string title = checkedTitle(game.title.value_or(name));
        const std::vector<fs::path> files = templateFiles(source);
        Copies copies(folder);
        for (const fs::path& file : files) copies.copy(source, file);
        writeInfo(folder / kInfo, identifierFor(name), title);
        copies.keep();
        tellWhatNext(folder.string(), title, out);
        return 0;
    } catch (const std::runtime_error& problem) { // also of the host's folders
        errors << "zorbet new: " << problem.what() << "\n";
        return commandline::kFailed;
    }
}
