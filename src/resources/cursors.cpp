#include "resources/cursors.h"

#include "omcursor.h"
#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omresmgr.h"
#include "omtrinketwindow.h"

#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kLibrary = "cursors.rsc";
constexpr std::string_view kType = "CURSOR";
constexpr std::size_t kMostReported = 1024;

bool isThere(int id) { return id > 0 && OMResMgrFindFile(id, kType) != nullptr; }

} // namespace

RCursors::RCursors() {
    for (int id = kOMCursorArrow; id >= kOMCursorCross; --id)
        cursors_.emplace(id, OMCursor::load(id));
    OMTrinketWindow::setCursorLocator([this](int id) { return find(id); });
}

RCursors::~RCursors() {
    OMTrinketWindow::setCursorLocator(nullptr);
    closeLibrary();
}

void RCursors::forgetResources() {
    std::erase_if(cursors_, [](const auto& kept) { return kept.first >= 0; });
    reported_.clear();
    closeLibrary();
}

std::shared_ptr<const OMCursor> RCursors::find(int id) {
    if (const auto kept = cursors_.find(id); kept != cursors_.end()) return kept->second;
    std::shared_ptr<const OMCursor> cursor = load(id);
    if (!cursor) return cursors_.at(kOMCursorArrow);
    keep(cursor);
    return cursor;
}

/// Null when there is no such cursor.
std::shared_ptr<const OMCursor> RCursors::load(int id) {
    if (id >= 0 && !isThere(id)) {
        openLibrary();
        if (!isThere(id)) {
            reportOnce(id, "is in no active library");
            return nullptr;
        }
    }
    std::shared_ptr<const OMCursor> cursor = OMCursor::load(id);
    if (cursor->id() == id) return cursor;
    reportOnce(id, id < 0 ? "is not one of -1 to -4" : "is damaged, pack it anew");
    return nullptr;
}

void RCursors::openLibrary() {
    if (library_ != Library::NotAskedFor) return;
    const auto path = OMPathResolveFilename(kLibrary);
    if (path && OMPlatform().files().exists(*path)) {
        library_ = Library::Open;
        OMResMgrUseDLL16(kLibrary, true);
    } else {
        library_ = Library::Missing;
        OMLog::writef(OMLog::Kind::Warning, "%s is not there, arrows are shown: pack one",
                      std::string(kLibrary).c_str());
    }
}

/// It is asked for again when it is needed.
void RCursors::closeLibrary() {
    if (std::exchange(library_, Library::NotAskedFor) == Library::Open)
        OMResMgrStopUsing(kLibrary, true);
}

void RCursors::keep(const std::shared_ptr<const OMCursor>& cursor) {
    if (cursors_.size() >= kMostKept)
        std::erase_if(cursors_, [](const auto& kept) {
            return kept.first >= 0 && kept.second.use_count() == 1;
        });
    cursors_.emplace(cursor->id(), cursor);
}

void RCursors::reportOnce(int id, const char* problem) {
    if (reported_.size() >= kMostReported || !reported_.insert(id).second) return;
    OMLog::writef(OMLog::Kind::Error, "Cursor %d %s: the arrow is shown", id, problem);
}
