#include "platform/host/hostfiles.h"

#include "platform/host/datafolder.h"
#include "platform/host/folderlock.h"
#include "platform/host/hostfile.h"
#include "platform/host/latin1.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <filesystem>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kNetwork = '\0'; // a place that no drive letter leads to
constexpr char kHostDrive = 'C';
constexpr char kCdDrive = 'D';
constexpr char kContentDrive = 'E';
constexpr char kHomeDrive = 'F';

constexpr std::size_t kUsualSector = 4096;
constexpr std::size_t kLargestSector = 65536;

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool isDriveLetter(char c) { return upperLatin1(c) >= 'A' && upperLatin1(c) <= 'Z'; }

char driveLetter(char c) { return static_cast<char>(upperLatin1(c)); }

/// Cuts the text before the next separator off `path`.
std::string_view takePart(std::string_view& path) {
    const auto end = std::ranges::find_if(path, isSeparator);
    const std::string_view part(path.begin(), end);
    path.remove_prefix(std::min(part.size() + 1, path.size()));
    return part;
}

void appendParts(std::vector<std::string>& parts, std::string_view path) {
    while (!path.empty()) {
        const std::string_view part = takePart(path);
        if (part.empty() || part == ".") continue;
        if (part != "..") {
            parts.emplace_back(part);
        } else if (!parts.empty()) {
            parts.pop_back();
        }
    }
}

/// The program's form of one name of the host; none when it has none.
std::optional<std::string> programName(const std::string& hostName) {
    if (hostName.find('\\') != std::string::npos) return std::nullopt;
    return latin1FromUtf8(hostName);
}

std::string absoluteHostPath(const std::string& hostPath) {
    std::error_code error;
    fs::path absolute = fs::weakly_canonical(hostPath.empty() ? "." : hostPath, error);
    if (error || absolute.is_relative()) absolute = fs::absolute(hostPath, error);
    std::string text = absolute.lexically_normal().string();
    while (!text.empty() && text.back() == '/') text.pop_back();
    return text;
}

/// Calls `visit` with the host's and the program's name of each entry that has both.
template <class Visit>
void eachEntry(const std::string& hostFolder, Visit visit) {
    std::error_code error;
    fs::directory_iterator entry(hostFolder + "/", error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string hostName = entry->path().filename().string();
        if (auto name = programName(hostName)) visit(*entry, hostName, *std::move(name));
    }
}

std::error_code missing() { return std::make_error_code(std::errc::no_such_file_or_directory); }

/// The host's name of the entry that `part` means; none, and why, when it finds no such entry.
std::optional<std::string> matchingName(const std::string& hostFolder, const std::string& part,
                                        std::error_code& why) {
    const std::string exact = utf8FromLatin1(part);
    if (fs::exists(fs::symlink_status(hostFolder + "/" + exact, why))) return exact;
    if (!why) why = missing();
    std::optional<std::string> best;
    eachEntry(hostFolder, [&](const fs::directory_entry&, const std::string& hostName,
                              const std::string& name) {
        if (equalIgnoringCase(name, part) && (!best || hostName < *best)) best = hostName;
    });
    return best;
}

/// Tells the refusal. False.
bool refuse(std::error_code why) {
    Files::setLastRefusal(why);
    return false;
}

bool isFile(const std::optional<std::string>& hostPath) {
    std::error_code error;
    return hostPath && fs::is_regular_file(*hostPath, error);
}

/// Whether a file may get this name: nobody has it, or a file that it replaces.
bool isNameForFile(const std::string& hostPath) {
    std::error_code error;
    const fs::file_type type = fs::status(hostPath, error).type();
    return type == fs::file_type::not_found || type == fs::file_type::regular;
}

} // namespace

HostFiles::HostFiles(const HostOptions& options)
    : drives_{{kHostDrive, ""}},
      hostHome_(absoluteHostPath(options.home.empty() ? userDataFolder() : options.home)),
      current_(anchor(absoluteHostPath(options.content), kContentDrive)),
      home_(anchor(hostHome_, kHomeDrive)), claimedSpace_(options.freeSpace) {
    if (!options.cd.empty()) drives_.push_back({kCdDrive, absoluteHostPath(options.cd)});
}

HostFiles::Place HostFiles::anchor(const std::string& hostPath, char ownDrive) {
    if (auto place = placeBelow(kHostDrive, hostPath)) return *std::move(place);
    drives_.push_back({ownDrive, hostPath});
    return {ownDrive, {}};
}

std::optional<HostFiles::Place> HostFiles::placeBelow(char drive, const std::string& hostPath) {
    const auto name = programName(hostPath);
    if (!name) return std::nullopt;
    Place place{drive, {}};
    appendParts(place.parts, *name);
    return place;
}

std::string HostFiles::textOf(const Place& place) {
    std::string text =
        place.drive == kNetwork ? std::string("\\\\") : place.drive + std::string(":\\");
    for (std::size_t i = 0; i < place.parts.size(); ++i) {
        if (i > 0) text += '\\';
        text += place.parts[i];
    }
    return text;
}

HostFiles::Place HostFiles::placeOf(std::string_view path) const {
    const bool rooted = !path.empty() && isSeparator(path[0]);
    Place place{current_.drive, {}};
    if (path.size() >= 2 && path[1] == ':' && isDriveLetter(path[0])) {
        place.drive = driveLetter(path[0]);
        path.remove_prefix(2);
        // "C:name" starts from the drive's own current directory; only one drive has one.
        const bool fromRoot = !path.empty() && isSeparator(path[0]);
        if (!fromRoot && place.drive == current_.drive) place.parts = current_.parts;
    } else if (rooted && path.size() >= 2 && isSeparator(path[1])) {
        place.drive = kNetwork;
    } else if (!rooted) {
        place.parts = current_.parts;
    }
    appendParts(place.parts, path);
    return place;
}

const HostFiles::Drive* HostFiles::driveOf(char letter) const {
    const auto found = std::ranges::find(drives_, driveLetter(letter), &Drive::letter);
    return found == drives_.end() ? nullptr : &*found;
}

bool HostFiles::isInHome(const Place& place) const {
    return place.drive == home_.drive && place.parts.size() >= home_.parts.size() &&
           std::equal(home_.parts.begin(), home_.parts.end(), place.parts.begin(),
                      equalIgnoringCase);
}

std::optional<std::string> HostFiles::locate(const Place& place, bool create,
                                             std::error_code& why) const {
    why = missing();
    const Drive* drive = driveOf(place.drive);
    if (!drive) return std::nullopt;
    std::string hostPath = drive->root;
    for (const std::string& part : place.parts) {
        if (part.find('\0') != std::string::npos) return std::nullopt;
        std::optional<std::string> name = matchingName(hostPath, part, why);
        if (!name && create && &part == &place.parts.back()) name = utf8FromLatin1(part);
        if (!name) return std::nullopt;
        hostPath += '/';
        hostPath += *name;
    }
    return hostPath.empty() ? "/" : hostPath;
}

std::optional<std::string> HostFiles::locateFor(const Place& place, bool create) const {
    std::error_code why;
    auto found = locate(place, create, why);
    if (!found) refuse(why);
    return found;
}

std::optional<std::string> HostFiles::locateFile(const Place& place) const {
    auto found = locateFor(place, false);
    if (!found || isFile(found)) return found;
    refuse(std::make_error_code(std::errc::is_a_directory));
    return std::nullopt;
}

FolderClaim HostFiles::claimFolder(std::string_view folder) {
    const Place place = placeOf(folder);
    std::error_code notMade;
    if (isInHome(place)) fs::create_directories(hostHome_, notMade);
    std::error_code why;
    const auto hostPath = locate(place, false, why);
    if (!hostPath) return {.refusal = notMade ? notMade : why};
    return claimHostFolder(*hostPath);
}

std::unique_ptr<File> HostFiles::open(std::string_view path, OpenMode mode) {
    const bool writes = mode != OpenMode::Read && mode != OpenMode::ReadSequential;
    const Place place = placeOf(path);
    if (writes && isInHome(place)) {
        std::error_code error; // a folder that cannot be made shows when the file cannot be
        fs::create_directories(hostHome_, error);
    }
    const auto hostPath = locateFor(place, writes);
    return hostPath ? openHostFile(*hostPath, mode) : nullptr;
}

bool HostFiles::remove(std::string_view path) {
    const auto found = locateFile(placeOf(path));
    return found && tellDone(::unlink(found->c_str()) == 0);
}

bool HostFiles::inSameFolder(const Place& one, const Place& other) {
    return one.drive == other.drive && one.parts.size() == other.parts.size() &&
           !one.parts.empty() &&
           std::equal(one.parts.begin(), one.parts.end() - 1, other.parts.begin(),
                      equalIgnoringCase);
}

bool HostFiles::rename(std::string_view from, std::string_view to) {
    const Place oldPlace = placeOf(from);
    const Place newPlace = placeOf(to);
    if (!inSameFolder(oldPlace, newPlace))
        return refuse(std::make_error_code(std::errc::cross_device_link));
    const auto source = locateFile(oldPlace);
    auto target = source ? locateFor(newPlace, true) : std::nullopt;
    if (!target) return false;
    if (!isNameForFile(*target)) return refuse(std::make_error_code(std::errc::is_a_directory));
    if (*target == *source) {
        target = source->substr(0, source->rfind('/') + 1) + utf8FromLatin1(newPlace.parts.back());
    }
    return tellDone(::rename(source->c_str(), target->c_str()) == 0);
}

bool HostFiles::flushFolder(std::string_view path) {
    const auto found = locateFor(placeOf(path), false);
    return found && flushHostFolder(*found);
}

bool HostFiles::exists(std::string_view path) const { return isFile(hostPath(path)); }

bool HostFiles::isWritable(std::string_view path) const {
    const auto found = hostPath(path);
    return isFile(found) && ::access(found->c_str(), W_OK) == 0;
}

std::vector<DirectoryEntry> HostFiles::list(std::string_view directory) const {
    std::vector<DirectoryEntry> entries;
    const auto folder = hostPath(directory);
    if (!folder) return entries;
    eachEntry(*folder, [&](const fs::directory_entry& entry, const std::string&, std::string name) {
        std::error_code error;
        entries.push_back({std::move(name), entry.is_directory(error)});
    });
    std::ranges::sort(entries, lessIgnoringCase, &DirectoryEntry::name);
    return entries;
}

std::string HostFiles::fullPath(std::string_view path) const { return textOf(placeOf(path)); }

std::string HostFiles::hostName(std::string_view path) const {
    const Place place = placeOf(path);
    if (const auto found = hostPath(path)) return latin1FromUtf8(*found).value_or(textOf(place));
    const Drive* drive = driveOf(place.drive);
    if (!drive) return textOf(place);
    std::string name = latin1FromUtf8(drive->root).value_or(std::string(1, place.drive) + ':');
    for (const std::string& part : place.parts) name += '/' + part;
    return name;
}

std::string HostFiles::currentDirectory() const { return textOf(current_); }

std::string HostFiles::homeDirectory() const { return textOf(home_); }

/// The nearest one that is there: the home directory may be made later.
std::string HostFiles::measuredFolder(fs::path folder) {
    std::error_code error;
    while (folder.has_relative_path() && !fs::is_directory(folder, error))
        folder = folder.parent_path();
    return folder.empty() ? "/" : folder.string();
}

std::string HostFiles::measuredFolder(const Drive& drive) const {
    const bool holdsHome = drive.letter == kHostDrive || drive.letter == kHomeDrive;
    return measuredFolder(fs::path(holdsHome ? hostHome_ : drive.root));
}

std::optional<std::uint64_t> HostFiles::freeSpace(std::string_view folder) const {
    const Place place = placeOf(folder);
    const Drive* drive = driveOf(place.drive);
    if (!drive) return std::nullopt;
    if (claimedSpace_) return claimedSpace_;
    fs::path measured = drive->root.empty() ? "/" : drive->root;
    std::error_code unknown;
    if (const auto found = locate(place, false, unknown)) {
        measured = *found;
    } else {
        for (const std::string& part : place.parts) measured /= part;
    }
    struct statvfs status {};
    if (::statvfs(measuredFolder(measured).c_str(), &status) != 0) return std::nullopt;
    return std::uint64_t{status.f_bavail} * status.f_frsize;
}

std::size_t HostFiles::sectorSize(char drive) const {
    const Drive* found = driveOf(drive);
    struct statvfs status {};
    if (!found || ::statvfs(measuredFolder(*found).c_str(), &status) != 0) return kUsualSector;
    // Some hosts name sizes that are no unit of anything; readers count in powers of two.
    const std::size_t size = status.f_frsize;
    const bool usable = std::has_single_bit(size) && size >= 512 && size <= kLargestSector;
    return usable ? size : kUsualSector;
}

std::optional<std::string> HostFiles::hostPath(std::string_view path) const {
    std::error_code unknown;
    return locate(placeOf(path), false, unknown);
}

std::optional<std::string> HostFiles::programPath(std::string_view hostPath) const {
    const std::string absolute = absoluteHostPath(std::string(hostPath));
    for (const Drive& drive : drives_) {
        if (!absolute.starts_with(drive.root + "/")) continue;
        const auto place = placeBelow(drive.letter, absolute.substr(drive.root.size()));
        if (place) return textOf(*place);
    }
    return std::nullopt;
}

} // namespace platform
