#include "omcursor.h"

#include "formats/picture/cursor.h"
#include "omdebug.h"
#include "omplatform.h"
#include "omresmgr.h"

#include "platform/cursor.h"

namespace {

constexpr const char* kType = "CURSOR";

std::unique_ptr<platform::Cursor> ownCursor(int id) {
    const bool exists = OMDebug::check(id >= kOMCursorCross, "id < kOMCursorCross",
                                       "OMCursor::OMCursor - invalid cursor id!");
    return OMPlatform().display().makeCursor(exists ? id : kOMCursorArrow);
}

/// Null when no active file has it.
std::unique_ptr<OMIStream> findResource(int id) {
    const bool isName = id > 0 && id <= kOMCursorMaxId;
    if (!isName || !OMResMgrFindFile(id, kType)) return nullptr;
    return OMResMgrGetIStream(id, kType, kOMIStreamCache);
}

} // namespace

OMCursor::OMCursor(int id) {
    if (id < 0) {
        handle_ = ownCursor(id);
        return;
    }
    const std::unique_ptr<OMIStream> stream = findResource(id);
    makeFrom(id, stream ? stream->readAll() : std::span<const std::byte>());
}

OMCursor::OMCursor(int id, std::span<const std::byte> resource) { makeFrom(id, resource); }

OMCursor::~OMCursor() = default;

void OMCursor::makeFrom(int id, std::span<const std::byte> resource) {
    platform::Display& display = OMPlatform().display();
    if (auto stored = formats::picture::readCursor(formats::asNumbers(resource))) {
        const auto& [x, y] = stored->hotSpot;
        handle_ = display.makeCursor(
            id, {stored->width, stored->height, {x, y}, std::move(stored->pixels)});
    }
    if (!handle_) handle_ = display.makeCursor(kOMCursorArrow);
}

int OMCursor::id() const { return handle_->id(); }
