#include "omresmgr.h"

#include "formats/base/latin1.h"
#include "formats/base/scanner.h"
#include "omdebug.h"
#include "omexchangeorder.h"
#include "omformat.h"
#include "omistreamdll16.h"
#include "omistreamres.h"
#include "omlog.h"
#include "ompath.h"

#include <algorithm>
#include <limits>
#include <map>

namespace {

constexpr std::size_t kTableTextLimit = 65536; ///< bytes; a table's text must be shorter
constexpr std::size_t kTableLineLength = 81;

struct Lists {
    std::map<std::string, OMResMgrResType, std::less<>> types;
    /// By lower-case names. Below the types: files clean up in them.
    std::map<std::string, std::unique_ptr<OMResMgrFile>, std::less<>> files;
};

Lists& lists() {
    static Lists theLists;
    return theLists;
}

OMResMgrFile* findByName(std::string_view name) {
    const auto place = lists().files.find(formats::lowerLatin1(name));
    return place == lists().files.end() ? nullptr : place->second.get();
}

/// Null, after a failed check of `operation`, when the file is not in use.
OMResMgrFile* requireUsed(std::string_view name, const char* operation) {
    OMResMgrFile* file = findByName(name);
    if (!file)
        OMDebug::check(
            false, "file == NULL",
            OMFormat("%s - file %s not being used!", operation, std::string(name).c_str()));
    return file;
}

bool isResourceName(int id, std::string_view type) { return id > 0 && !type.empty(); }

/// `addResources` is told of a file that was not in use before.
template <class File, class AddResources>
void useFile(std::string_view name, bool activate, AddResources addResources) {
    OMResMgrFile* file = findByName(name);
    if (!file) {
        auto made = std::make_unique<File>(name);
        file = made.get();
        lists().files.emplace(formats::lowerLatin1(name), std::move(made));
        addResources(*file);
    }
    file->changeUseCount(1);
    if (activate) OMResMgrActivate(name);
}

std::string wholeText(OMIStream& stream) {
    std::string text;
    stream.seek(0);
    while (stream.fill() > 0)
        text.append(reinterpret_cast<const char*>(stream.current().data()),
                    stream.current().size());
    return text;
}

bool fitsId(int id) {
    return id >= std::numeric_limits<std::int16_t>::min() &&
           id <= std::numeric_limits<std::int16_t>::max();
}

/// "%d" takes it, however large it is.
bool beginsAsNumber(std::string_view word) {
    const bool isSigned = word.starts_with('+') || word.starts_with('-');
    return word.size() > isSigned && word[isSigned] >= '0' && word[isSigned] <= '9';
}

/// The entries point into `text`. One line of the log tells of all ids that fit no entry.
std::vector<OMResMgrEntry> parseTable(std::string_view file, std::string_view text) {
    std::vector<OMResMgrEntry> entries;
    std::string firstWrong;
    int wrong = 0;
    formats::TextScanner lines(text);
    for (lines.skipControls(); !lines.atEnd(); lines.skipControls()) {
        formats::TextScanner line(lines.line(kTableLineLength));
        const std::string_view idText = formats::TextScanner(line).word();
        const std::optional<int> id = line.number();
        const std::string_view type = line.word();
        if (type.empty() || !beginsAsNumber(idText)) continue;
        if (id && fitsId(*id))
            entries.push_back({static_cast<std::int16_t>(*id), type});
        else if (wrong++ == 0)
            firstWrong = std::string(idText).append(" ").append(type);
    }
    if (wrong > 0)
        OMLog::writef(OMLog::Kind::Error,
                      "Ids beyond 16 bits in the resource table of %s: %d, the first in \"%s\". "
                      "These resources are left out; give them ids from 1 to 32767",
                      std::string(file).c_str(), wrong, firstWrong.c_str());
    return entries;
}

template <class File>
void useWithOwnTable(std::string_view name, bool activate) {
    useFile<File>(name, activate, [](OMResMgrFile& file) { file.addOwnResources(); });
}

template <class File>
void useWithTable(std::string_view name, std::span<const OMResMgrEntry> table, bool activate) {
    useFile<File>(name, activate, [&](OMResMgrFile& file) { file.addToResTypeList(table); });
}

template <class File>
void useWithText(const char* operation, std::string_view name, OMIStream& table, bool activate) {
    if (!OMDebug::check(table.length() < kTableTextLimit, "length >= 65536",
                        OMFormat("%s - resource table cannot be larger than 64K!", operation)))
        return;
    useFile<File>(name, activate, [&](OMResMgrFile& file) {
        const std::string text = wholeText(table);
        file.addToResTypeList(parseTable(name, text));
    });
}

std::span<const OMResMgrEntry> countedTable(OMResMgrTerminated table) {
    const OMResMgrEntry* end = table.entries;
    while (end->id != 0 || !end->type.empty()) ++end;
    return {table.entries, end};
}

} // namespace

OMResMgrFile::~OMResMgrFile() {
    auto& types = lists().types;
    for (const std::string& name : types_) {
        const auto type = types.find(name);
        type->second.remove(*this);
        if (type->second.empty()) types.erase(type);
    }
}

void OMResMgrFile::addToResTypeList(std::span<const OMResMgrEntry> entries) {
    std::map<std::string_view, std::vector<std::int16_t>> groups;
    for (const OMResMgrEntry& entry : entries) groups[entry.type].push_back(entry.id);
    for (const auto& [type, ids] : groups) {
        const auto [place, isNew] = lists().types.try_emplace(std::string(type));
        if (OMDebug::check(place->second.addInFront(ids, *this), "tooMany",
                           "OMResMgrFile::addToResTypeList - too many resources!"))
            types_.insert(place->first);
        else if (isNew)
            lists().types.erase(place);
    }
}

void OMResMgrFile::addOwnResources() {
    const std::vector<std::string> types = getResTypes();
    std::vector<OMResMgrEntry> entries;
    for (const std::string& type : types)
        for (int id : getResIDs(type)) entries.push_back({static_cast<std::int16_t>(id), type});
    addToResTypeList(entries);
}

std::unique_ptr<OMIStream> OMResMgrFileDLL16::getIStream(int id, std::string_view type,
                                                         int bufferMode) const {
    return std::make_unique<OMIStreamDLL16>(id, type, name(), bufferMode);
}

std::vector<std::string> OMResMgrFileDLL16::getResTypes() const {
    return OMIStreamDLL16::getResTypes(name());
}

std::vector<int> OMResMgrFileDLL16::getResIDs(std::string_view type) const {
    return OMIStreamDLL16::getResIDs(name(), type);
}

OMResMgrFileRes::OMResMgrFileRes(std::string_view name)
    : OMResMgrFile(name),
      module_(name.empty() ? std::make_unique<OMResFile>() : std::make_unique<OMResFile>(name)) {}

std::unique_ptr<OMIStream> OMResMgrFileRes::getIStream(int id, std::string_view type,
                                                       int bufferMode) const {
    return std::make_unique<OMIStreamRes>(id, type, module_.get(), bufferMode);
}

std::vector<std::string> OMResMgrFileRes::getResTypes() const { return module_->getResTypes(); }

std::vector<int> OMResMgrFileRes::getResIDs(std::string_view type) const {
    return module_->getResIDs(type);
}

bool OMResMgrResType::addInFront(std::span<const std::int16_t> ids, OMResMgrFile& file) {
    if (entries_.size() + ids.size() > kMaxEntries) return false;
    std::vector<Entry> added;
    added.reserve(ids.size() + entries_.size());
    for (std::int16_t id : ids) added.push_back({id, &file});
    added.insert(added.end(), entries_.begin(), entries_.end());
    entries_ = std::move(added);
    sorted_ = false;
    return true;
}

void OMResMgrResType::remove(const OMResMgrFile& file) {
    std::erase_if(entries_, [&](const Entry& entry) { return entry.file == &file; });
}

OMResMgrFile* OMResMgrResType::findActive(int id) {
    if (!sorted_) sort();
    const auto isBelow = [](const Entry& entry, int wanted) { return entry.id < wanted; };
    const auto isActive = [](const Entry& entry) { return entry.file->isActive(); };
    const auto begin = std::lower_bound(entries_.begin(), entries_.end(), id, isBelow);
    const auto end =
        std::find_if(begin, entries_.end(), [&](const Entry& entry) { return entry.id != id; });
    const auto found = std::find_if(begin, end, isActive);
    if (found == end) return nullptr;
    if (std::any_of(found + 1, end, isActive))
        OMDebug::check(false, "duplicate",
                       OMFormat("OMResMgrFindFile - active, duplicate id %d found!", id));
    return found->file;
}

void OMResMgrResType::sort() {
    std::vector<std::int16_t> ids;
    ids.reserve(entries_.size());
    for (const Entry& entry : entries_) ids.push_back(entry.id);
    std::vector<Entry> ordered;
    ordered.reserve(entries_.size());
    for (std::size_t index : OMExchangeOrder(ids)) ordered.push_back(entries_[index]);
    entries_ = std::move(ordered);
    sorted_ = true;
}

void OMResMgrUseDLL16(std::string_view name, bool activate) {
    useWithOwnTable<OMResMgrFileDLL16>(name, activate);
}

void OMResMgrUseDLL16(std::string_view name, OMIStream& table, bool activate) {
    useWithText<OMResMgrFileDLL16>("OMResMgrUseDLL16", name, table, activate);
}

void OMResMgrUseDLL16(std::string_view name, OMResMgrTerminated table, bool activate) {
    OMResMgrUseDLL16(name, countedTable(table), activate);
}

void OMResMgrUseDLL16(std::string_view name, std::span<const OMResMgrEntry> table, bool activate) {
    useWithTable<OMResMgrFileDLL16>(name, table, activate);
}

void OMResMgrUseRes(std::string_view name, bool activate) {
    useWithOwnTable<OMResMgrFileRes>(name, activate);
}

void OMResMgrUseRes(std::string_view name, OMIStream& table, bool activate) {
    useWithText<OMResMgrFileRes>("OMResMgrUseRes", name, table, activate);
}

void OMResMgrUseRes(std::string_view name, OMResMgrTerminated table, bool activate) {
    OMResMgrUseRes(name, countedTable(table), activate);
}

void OMResMgrUseRes(std::string_view name, std::span<const OMResMgrEntry> table, bool activate) {
    useWithTable<OMResMgrFileRes>(name, table, activate);
}

void OMResMgrActivate(std::string_view name) {
    if (OMResMgrFile* file = requireUsed(name, "OMResMgrActivate")) file->changeActivationCount(1);
}

void OMResMgrDeactivate(std::string_view name) {
    OMResMgrFile* file = requireUsed(name, "OMResMgrDeactivate");
    if (!file) return;
    if (file->isActive())
        file->changeActivationCount(-1);
    else
        OMDebug::check(false, "file->getActivationCount() < 0",
                       OMFormat("OMResMgrDeactivate - too many deactivates for file %s!",
                                file->name().c_str()));
}

void OMResMgrStopUsing(std::string_view name, bool deactivate) {
    OMResMgrFile* file = requireUsed(name, "OMResMgrStopUsing");
    if (!file) return;
    if (deactivate && file->isActive()) file->changeActivationCount(-1);
    if (file->useCount() > 0) file->changeUseCount(-1);
    if (file->useCount() > 0) return;
    if (!file->isActive())
        lists().files.erase(formats::lowerLatin1(name));
    else
        OMDebug::check(
            false, "file->getActivationCount() > 0",
            OMFormat("OMResMgrStopUsing - file %s is still active!", file->name().c_str()));
}

bool OMResMgrGetIStreamInfo(int id, std::string_view type) {
    return OMDebug::check(isResourceName(id, type), "!ok",
                          "OMResMgrGetIStreamInfo - invalid parameter!") &&
           OMResMgrFindFile(id, type) != nullptr;
}

std::unique_ptr<OMIStream> OMResMgrGetIStream(int id, std::string_view type, int bufferMode) {
    if (!OMDebug::check(isResourceName(id, type), "!ok", "OMResMgrGetIStream - invalid parameter!"))
        return nullptr;
    if (const OMResMgrFile* file = OMResMgrFindFile(id, type))
        return file->getIStream(id, type, bufferMode);
    OMDebug::check(false, "file == NULL",
                   OMFormat("OMResMgrGetIStream - resource (id %d type %s) not found!", id,
                            std::string(type).c_str()));
    return nullptr;
}

OMResMgrFile* OMResMgrFindFile(int id, std::string_view type) {
    const auto place = lists().types.find(type);
    return place == lists().types.end() ? nullptr : place->second.findActive(id);
}

void OMResMgrClear() {
    lists().files.clear();
    lists().types.clear();
}
