#include "platform/host/files/hostfiles.h"

#include "formats/base/latin1.h"
#include "platform/host/files/folderlock.h"
#include "platform/host/files/hostfile.h"
#include "platform/host/files/userfolders.h"

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

constexpr std::string_view kLibraryExtensions[] = {".rsc", ".map"};

constexpr std::size_t kUsualSector = 4096;
constexpr std::size_t kLargestSector = 65536;

bool isSeparator(char c) { return c == '\\' || c == '/'; }

char driveLetter(char c) { return static_cast<char>(formats::upperLatin1(c)); }

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
    return formats::latin1FromUtf8(hostName);
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

/// What a game cannot reach although it is there.
std::error_code forbidden() { return std::make_error_code(std::errc::operation_not_permitted); }

bool isLink(const std::string& hostPath) {
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(hostPath, error));
}

/// The host's name of the entry that `part` means; none, and why, when it finds no such entry.
std::optional<std::string> matchingName(const std::string& hostFolder, const std::string& part,
                                        std::error_code& why) {
    const std::string exact = formats::utf8FromLatin1(part);
    if (fs::exists(fs::symlink_status(hostFolder + "/" + exact, why))) return exact;
    if (!why) why = missing();
    std::optional<std::string> best;
    eachEntry(hostFolder, [&](const fs::directory_entry&, const std::string& hostName,
                              const std::string& name) {
        if (formats::equalIgnoringCase(name, part) && (!best || hostName < *best)) best = hostName;
    });
    return best;
}

/// Tells the refusal. False.
bool refuse(std::error_code why) {
    Files::setLastRefusal(why);
    return false;
}

bool isFile(const std::string& hostPath) {
    std::error_code error;
    return fs::is_regular_file(hostPath, error);
}

/// A file by this name, or a link that is taken for one.
bool isFileOrLink(const std::string& hostPath) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(hostPath, error).type();
    return type == fs::file_type::regular || type == fs::file_type::symlink;
}

/// Whether a file may get this name: nobody has it, or a file that it replaces.
bool isNameForFile(const std::string& hostPath) {
    std::error_code error;
    return isFileOrLink(hostPath) || !fs::exists(fs::symlink_status(hostPath, error));
}

bool isLibraryName(std::string_view name) {
    return std::ranges::any_of(kLibraryExtensions, [&](std::string_view extension) {
        return name.size() > extension.size() &&
               formats::equalIgnoringCase(name.substr(name.size() - extension.size()), extension);
    });
}

/// What is written to is not followed when it is a link.
bool isWriting(OpenMode mode) { return mode != OpenMode::Read && mode != OpenMode::ReadSequential; }

} // namespace

HostFiles::HostFiles(const HostOptions& options)
    : trusted_(options.trusted), drives_{{kHostDrive, ""}},
      hostHome_(absoluteHostPath(options.home.empty() ? userDataFolder() : options.home)),
      hostContent_(absoluteHostPath(options.content)),
      current_(anchor(hostContent_, kContentDrive)), home_(anchor(hostHome_, kHomeDrive)),
      claimedSpace_(options.freeSpace) {
    std::vector<Fence::Ground> fence{{hostContent_, true}, {hostHome_, true}};
    grounds_ = {{current_, true}, {home_, true}};
    if (!options.cd.empty()) {
        drives_.push_back({kCdDrive, absoluteHostPath(options.cd)});
        fence.push_back({drives_.back().root, false});
        grounds_.push_back({{kCdDrive, {}}, false});
    }
    for (const char* name : {"RSC", "scripts"}) addNeighbour(name, fence);
    libraries_ = current_;
    libraries_.parts.emplace_back("RSC");
    permits_ = absoluteHostPath(userConfigurationFolder());
    // The name that the player gave is one of the folder's too.
    std::error_code error;
    const std::string given = fs::absolute(options.content, error).lexically_normal().string();
    if (const auto place = error ? std::nullopt : placeBelow(kHostDrive, given))
        grounds_.push_back({*place, true});
    if (trusted_) fence = {{"", true}};
    fence_.emplace(std::move(fence));
}

/// One that is a link may lead anywhere, and is none.
void HostFiles::addNeighbour(const std::string& name, std::vector<Fence::Ground>& fence) {
    if (current_.parts.empty()) return;
    const std::string folder = hostContent_.substr(0, hostContent_.rfind('/'));
    std::error_code unknown;
    const auto found = matchingName(folder, name, unknown);
    if (found && !isLink(folder + '/' + *found)) fence.push_back({folder + '/' + *found, false});
    Place place = current_;
    place.parts.back() = name;
    grounds_.push_back({std::move(place), false});
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
    if (path.size() >= 2 && path[1] == ':' && formats::isAsciiLetter(path[0])) {
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

std::string HostFiles::Spot::name() const {
    return path.empty() ? "." : path.substr(path.rfind('/') + 1);
}

bool HostFiles::isBelow(const Place& place, const Place& folder) {
    return place.drive == folder.drive && place.parts.size() >= folder.parts.size() &&
           std::equal(folder.parts.begin(), folder.parts.end(), place.parts.begin(),
                      formats::equalIgnoringCase);
}

bool HostFiles::mayBe(const Place& place, Fence::Use use) const {
    if (trusted_ || !driveOf(place.drive)) return true; // what has no drive is missing anyway
    const bool inside = std::ranges::any_of(grounds_, [&](const Ground& ground) {
        return (ground.writable || use == Fence::Use::Read) && isBelow(place, ground.place);
    });
    return inside || (use == Fence::Use::Read && isAdmitted(place));
}

bool HostFiles::isAdmitted(const Place& place) const {
    const std::scoped_lock lock(mutex_);
    return admitted_.contains(textOf(place));
}

void HostFiles::refuseFenced(const Place& place, std::error_code& why) const {
    constexpr std::size_t kMostTold = 1000;
    why = forbidden();
    const std::string text = textOf(place);
    FenceLink link;
    {
        const std::scoped_lock lock(mutex_);
        if (told_.size() < kMostTold && told_.insert(text).second) link = fenceLink_;
    }
    if (link) link(text);
}

std::optional<HostFiles::Spot> HostFiles::locate(const Place& place, Wanted wanted,
                                                 std::error_code& why) const {
    if (!mayBe(place, wanted.use)) {
        refuseFenced(place, why);
        why = missing();
        return std::nullopt;
    }
    auto found = find(place, wanted, why);
    if (!found) return std::nullopt;
    const bool isPermits = !trusted_ && wanted.use == Fence::Use::Write &&
                           (found->path + '/').starts_with(permits_ + '/');
    if (!isPermits && fence_->encloses(found->path, wanted.use)) return found;
    // Its text is inside, so a link leads out.
    if (wanted.use == Fence::Use::Read &&
        (wanted.isListed || (isBelow(place, libraries_) && isLibraryName(found->path))))
        return found;
    refuseFenced(place, why);
    return std::nullopt;
}

std::optional<HostFiles::Spot> HostFiles::find(const Place& place, Wanted wanted,
                                               std::error_code& why) const {
    why = missing();
    const Drive* drive = driveOf(place.drive);
    if (!drive) return std::nullopt;
    Spot spot{drive->root};
    for (const std::string& part : place.parts) {
        if (part.find('\0') != std::string::npos) return std::nullopt;
        const bool isLast = &part == &place.parts.back();
        std::optional<std::string> name = matchingName(spot.path, part, why);
        if (!name && isLast && wanted.mayBeMissing) name = formats::utf8FromLatin1(part);
        if (!name) return std::nullopt;
        spot.path += '/' + *name;
        spot.isLink = isLink(spot.path);
        if (!spot.isLink || (isLast && !wanted.followsLast)) continue;
        const fs::path real = fs::canonical(spot.path, why);
        if (why) {
            why = forbidden(); // the name is taken, wherever it leads
            return std::nullopt;
        }
        spot = {real == "/" ? std::string() : real.string()};
    }
    return spot;
}

std::optional<HostFiles::Spot> HostFiles::locateFor(const Place& place, Wanted wanted) const {
    std::error_code why;
    auto found = locate(place, wanted, why);
    if (!found) refuse(why);
    return found;
}

std::optional<HostFiles::Spot> HostFiles::locateFile(const Place& place) const {
    auto found = locateFor(place, {.use = Fence::Use::Write, .followsLast = false});
    if (!found || isFileOrLink(found->path)) return found;
    refuse(std::make_error_code(std::errc::is_a_directory));
    return std::nullopt;
}

FolderClaim HostFiles::claimFolder(std::string_view folder) {
    const Place place = placeOf(folder);
    std::error_code notMade;
    if (isBelow(place, home_)) fs::create_directories(hostHome_, notMade);
    std::error_code why;
    const auto found = locate(place, {Fence::Use::Write}, why);
    if (!found) return {.refusal = notMade ? notMade : why};
    return claimHostFolder(fence_->openFolder(found->path));
}

std::unique_ptr<File> HostFiles::open(std::string_view path, OpenMode mode) {
    const Place place = placeOf(path);
    Wanted wanted;
    if (isWriting(mode)) {
        wanted = {Fence::Use::Write, true, trusted_ && mode != OpenMode::WriteThrough};
        if (isBelow(place, home_)) {
            std::error_code error; // a folder that cannot be made shows when the file cannot be
            fs::create_directories(hostHome_, error);
        }
    }
    const auto spot = locateFor(place, wanted);
    if (!spot) return nullptr;
    if (spot->isLink && mode != OpenMode::WriteThrough) {
        std::error_code why;
        refuseFenced(place, why);
        refuse(why);
        return nullptr;
    }
    const Descriptor folder = fence_->openFolder(spot->folder());
    if (!folder.isOpen()) {
        tellDone(false);
        return nullptr;
    }
    auto file = openHostFile(folder, spot->name(), mode, trusted_);
    if (!file && lastRefusal() == std::errc::too_many_links) {
        std::error_code why; // it is another file too
        refuseFenced(place, why);
        refuse(why);
    }
    return file;
}

bool HostFiles::remove(std::string_view path) {
    const auto found = locateFile(placeOf(path));
    if (!found) return false;
    const Descriptor folder = fence_->openFolder(found->folder());
    return tellDone(folder.isOpen() && ::unlinkat(folder.number(), found->name().c_str(), 0) == 0);
}

bool HostFiles::inSameFolder(const Place& one, const Place& other) {
    return one.drive == other.drive && one.parts.size() == other.parts.size() &&
           !one.parts.empty() &&
           std::equal(one.parts.begin(), one.parts.end() - 1, other.parts.begin(),
                      formats::equalIgnoringCase);
}

bool HostFiles::rename(std::string_view from, std::string_view to) {
    const Place oldPlace = placeOf(from);
    const Place newPlace = placeOf(to);
    if (!inSameFolder(oldPlace, newPlace))
        return refuse(std::make_error_code(std::errc::cross_device_link));
    const auto source = locateFile(oldPlace);
    const auto target =
        source ? locateFor(newPlace, {Fence::Use::Write, true, false}) : std::nullopt;
    if (!target) return false;
    if (!isNameForFile(target->path))
        return refuse(std::make_error_code(std::errc::is_a_directory));
    const std::string name = target->path == source->path
                                 ? formats::utf8FromLatin1(newPlace.parts.back())
                                 : target->name();
    const Descriptor folder = fence_->openFolder(source->folder());
    return tellDone(folder.isOpen() && ::renameat(folder.number(), source->name().c_str(),
                                                  folder.number(), name.c_str()) == 0);
}

bool HostFiles::flushFolder(std::string_view path) {
    const auto found = locateFor(placeOf(path), {});
    if (!found) return false;
    const Descriptor folder = fence_->openFolder(found->path);
    return folder.isOpen() ? flushHostFolder(folder) : tellDone(false);
}

bool HostFiles::exists(std::string_view path) const {
    const auto found = hostPath(path);
    return found && isFile(*found);
}

bool HostFiles::isWritable(std::string_view path) const {
    std::error_code unknown;
    const auto found = locate(placeOf(path), {.use = Fence::Use::Write}, unknown);
    return found && isFile(found->path) && ::access(found->path.c_str(), W_OK) == 0;
}

std::vector<DirectoryEntry> HostFiles::list(std::string_view directory) const {
    std::vector<DirectoryEntry> entries;
    std::error_code unknown;
    const auto folder = locate(placeOf(directory), {.isListed = true}, unknown);
    if (!folder) return entries;
    const Place place = placeOf(directory);
    const bool isOurs = fence_->encloses(folder->path, Fence::Use::Read);
    const bool hasLibraries = isBelow(place, libraries_);
    eachEntry(folder->path,
              [&](const fs::directory_entry& entry, const std::string&, std::string name) {
                  std::error_code error;
                  if (isOurs || (hasLibraries && isLibraryName(name)))
                      entries.push_back({std::move(name), entry.is_directory(error)});
              });
    if (!isOurs && !hasLibraries) refuseFenced(place, unknown);
    std::ranges::sort(entries, formats::lessIgnoringCase, &DirectoryEntry::name);
    return entries;
}

std::string HostFiles::fullPath(std::string_view path) const { return textOf(placeOf(path)); }

std::string HostFiles::hostName(std::string_view path) const {
    const Place place = placeOf(path);
    std::error_code unknown;
    const auto found = mayBe(place, Fence::Use::Read) ? find(place, {.followsLast = false}, unknown)
                                                      : std::nullopt;
    if (found) return formats::latin1FromUtf8(found->path).value_or(textOf(place));
    const Drive* drive = driveOf(place.drive);
    if (!drive) return textOf(place);
    std::string name =
        formats::latin1FromUtf8(drive->root).value_or(std::string(1, place.drive) + ':');
    for (const std::string& part : place.parts) name += '/' + part;
    return name;
}

std::string HostFiles::currentDirectory() const { return textOf(current_); }

std::string HostFiles::homeDirectory() const { return textOf(home_); }

/// The nearest one that is there: the home directory may be made later.
std::string nearestFolder(fs::path folder, const std::string& otherwise) {
    std::error_code error;
    while (folder.has_relative_path() && !fs::is_directory(folder, error))
        folder = folder.parent_path();
    return folder.empty() ? otherwise : folder.string();
}

std::string HostFiles::measuredFolder(const Drive& drive) const {
    const bool holdsHome = drive.letter == kHostDrive || drive.letter == kHomeDrive;
    return nearestFolder(holdsHome ? hostHome_ : drive.root, "/");
}

std::optional<std::uint64_t> HostFiles::freeSpace(std::string_view folder) const {
    const Place place = placeOf(folder);
    const Drive* drive = driveOf(place.drive);
    if (!drive) return std::nullopt;
    if (claimedSpace_) return claimedSpace_;
    fs::path measured = drive->root.empty() ? "/" : drive->root;
    std::error_code unknown;
    const auto found = mayBe(place, Fence::Use::Read) ? find(place, {}, unknown) : std::nullopt;
    if (found) {
        measured = found->path;
    } else {
        for (const std::string& part : place.parts) measured /= part;
    }
    struct statvfs status {};
    if (::statvfs(nearestFolder(measured, "/").c_str(), &status) != 0) return std::nullopt;
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

void HostFiles::setFenceLink(FenceLink link) {
    const std::scoped_lock lock(mutex_);
    fenceLink_ = std::move(link);
}

void HostFiles::admit(std::string_view path) {
    std::error_code unknown;
    const Place place = placeOf(path);
    const auto file = find(place, {}, unknown);
    if (!file || !isFile(file->path)) return;
    fence_->admit(file->path);
    const std::scoped_lock lock(mutex_);
    admitted_.insert(textOf(place));
}

std::vector<std::string> HostFiles::writableFolders() const {
    std::vector<std::string> folders;
    for (const Fence::Ground& ground : fence_->grounds()) {
        std::string folder = nearestFolder(ground.folder, "/");
        if (ground.writable && folder != "/") folders.push_back(std::move(folder));
    }
    return folders;
}

std::optional<std::string> HostFiles::hostPath(std::string_view path) const {
    std::error_code unknown;
    const auto found = locate(placeOf(path), {}, unknown);
    if (!found) return std::nullopt;
    return found->path.empty() ? "/" : found->path;
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
