#include "efwindow.h"

#include "formats/picture/palette.h"
#include "omapp.h"
#include "omcursor.h"
#include "omdebug.h"
#include "omistream.h"
#include "omlog.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "scene/rscenprt.h"
#include "yengine.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

namespace {

int nowMs() { return static_cast<int>(OMMilliseconds()); }

} // namespace

EffectsWindow::EffectsWindow(Point corner, std::string_view title, ScenePause* pause)
    : OMTrinketWindow(Rect{corner.x, corner.y, corner.x + kWidth, corner.y + kHeight}, nullptr,
                      title),
      pause_(pause) {
    // Animations that are made before the first scene have colours too.
    if (backBuffer().depth() > OMCanvas::kIndexedDepth && !AOPaletteRecord::current())
        AOPaletteRecord::setCurrent(std::make_shared<AOPaletteRecord>(canvas().devicePalette()));
}

// Display

void EffectsWindow::goToBlack() {
    canvas().removeClipRegion();
    canvas().setColor(OMColor(OMColor::kBlack));
    canvas().fillRect(canvas().bounds());
    YEngine::charge(YEngine::kPictureCost);
    OMPlatform().clock().sleep(0); // it is seen, however long the script goes on
    setPresenting(false);
    setBackgroundDeaf(true);
}

void EffectsWindow::displayScreen() {
    setPresenting(true);
    setBackgroundDeaf(false);
    invalidateAll();
    update();
    OMApp::getApp()->discardInput();
}

/// One cycle, not one inside the other.
void EffectsWindow::update() {
    if (updating_) return;
    updating_ = true;
    YEngine::charge(YEngine::kPictureCost);
    cycle();
    updating_ = false;
}

void EffectsWindow::endTransitionQuickly() {
    setPresenting(true);
    setBackgroundDeaf(false);
    if (isResting()) update(); // there is no next turn to do it
    OMApp::getApp()->discardInput();
}

void EffectsWindow::setBackgroundDeaf(bool deaf) {
    if (!background()) return;
    const std::uint32_t mask = background()->eventMask();
    background()->setEventMask(deaf ? mask | OMTBackground::kIgnoreMouseDown
                                    : mask & ~OMTBackground::kIgnoreMouseDown);
}

// Transitions

void EffectsWindow::startTransition() {
    OMLog::writef(OMLog::Kind::Message, "\nStarting Transition, current ms: %d", nowMs());
    showWaitCursor();
    goToBlack();
    if (pause_) pause_->raise(RScenePort::exists());
}

void EffectsWindow::endTransition(bool quickly) {
    if (quickly)
        endTransitionQuickly();
    else
        displayScreen();
    if (pause_) pause_->lower();
    restoreCursor();
    OMLog::writef(OMLog::Kind::Message, "Ending Transition, current ms: %d\n", nowMs());
}

void EffectsWindow::showWaitCursor() {
    if (savedCursor_) return;
    savedCursor_ = canvas().cursor();
    canvas().setCursor(OMCursor::load(kOMCursorWait));
}

void EffectsWindow::restoreCursor() {
    if (savedCursor_) canvas().setCursor(std::exchange(savedCursor_, nullptr));
}

// Background and palette

AOBackground* EffectsWindow::picture() { return dynamic_cast<AOBackground*>(background()); }

void EffectsWindow::abandonTransitions() {
    if (!isPresenting()) displayScreen();
    if (pause_) pause_->end();
    if (savedCursor_) restoreCursor();
}

void EffectsWindow::freezeScreen() {
    OMMemCanvas* canvas = background() ? background()->picture() : nullptr;
    if (!canvas) return;
    dropStamps();
    const Rect all = backBuffer().bounds();
    canvas->blt(backBuffer(), 0, 0, all.width(), all.height(), 0, 0);
}

bool EffectsWindow::restorePalette(int imageId, int paletteId) {
    if (!OMDebug::check(static_cast<bool>(backgroundLocator_), "backgroundURL == NULL",
                        "Background URL is not installed in EffectsWindow"))
        return false;
    const std::unique_ptr<OMIStream> stream = backgroundLocator_(imageId);
    if (!stream) return false;
    YEngine::charge(YEngine::kPictureCost);
    std::string problem;
    std::shared_ptr<const AOImage> image = AOImage::read(stream->readAll(), problem);
    if (!image) {
        OMLogResource(OMLog::Kind::Error, "Background", imageId, *stream,
                      "cannot be used: " + problem);
        return false;
    }
    installPicture(std::move(image));
    if (!OMDebug::check(static_cast<bool>(paletteLocator_), "paletteURL == NULL",
                        "Palette URL is not installed in EffectsWindow"))
        return false;
    installPalette(paletteId);
    return true;
}

bool EffectsWindow::restorePalette(int imageId, int paletteId, OMScriptableObject& object) {
    if (!restorePalette(imageId, paletteId)) return false;
    picture()->attach(object.makeDuplicate());
    return true;
}

void EffectsWindow::installPicture(std::shared_ptr<const AOImage> image) {
    if (AOBackground* old = picture()) {
        old->setImage(std::move(image));
        dropStamps();
        invalidateAll();
        compose();
        return;
    }
    setBackground(
        std::make_unique<AOBackground>(canvas().width(), canvas().height(), std::move(image)));
    canvas().setColor(std::nullopt);
    backBuffer().setColor(OMColor(OMColor::kBlack));
}

void EffectsWindow::installPalette(int id) {
    const std::unique_ptr<OMIStream> stream = paletteLocator_(id);
    if (!stream) return;
    std::optional<OMPalette> colors = OMReadPalette(stream->readAll());
    if (!colors) {
        OMLogResource(OMLog::Kind::Error, "Palette", id, *stream,
                      OMFormat("cannot be used: it is cut short, to %d bytes of %d",
                               static_cast<int>(stream->length()),
                               static_cast<int>(formats::picture::kPaletteSize)));
        return;
    }
    filterPalette(*colors);
    if (backBuffer().depth() > OMCanvas::kIndexedDepth)
        AOPaletteRecord::setCurrent(std::make_shared<AOPaletteRecord>(OMGamePalette(*colors)));
    setPalette(*colors, false);
}

// Input

void EffectsWindow::doubleClick(Point point) {
    if (doubleClicksDisabled_)
        mouseDown(point);
    else
        OMTrinketWindow::doubleClick(point);
}

void EffectsWindow::showCursor(int id) {
    if (!savedCursor_) OMTrinketWindow::showCursor(id);
}

void EffectsWindow::putCursor(std::shared_ptr<const OMCursor> cursor) {
    if (savedCursor_)
        savedCursor_ = std::move(cursor);
    else
        OMTrinketWindow::putCursor(std::move(cursor));
}

void RLiftPalette(OMPalette& colors) {
    const auto lift = [](const OMColor& stored) -> OMColor {
        const auto shown = formats::picture::lift({stored.red(), stored.green(), stored.blue()});
        return {shown.red, shown.green, shown.blue};
    };
    std::transform(colors.begin() + platform::kFirstFreeColour,
                   colors.begin() + platform::kFirstHighStaticColour,
                   colors.begin() + platform::kFirstFreeColour, lift);
}
