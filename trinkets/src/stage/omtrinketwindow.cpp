#include "omtrinketwindow.h"

#include "omapp.h"
#include "omcursor.h"
#include "omdebug.h"
#include "omid.h"
#include "omplatform.h"
#include "omtcrsr.h"
#include "yengine.h"

#include <cstdio>

using platform::Point;
using platform::Rect;

OMTrinketWindow* OMTrinketWindow::main_ = nullptr;
OMTrinketWindow::CursorLocator OMTrinketWindow::cursorLocator_;

namespace {

constexpr int kNothing = 0; ///< palette index of the fill where there is no background
/// Palette indices of the marker colour of each page: full red, and half as bright. They are fixed
/// entries, which canvases of all depths have.
constexpr std::array<int, kOMPages> kMarkers{249, 1};
constexpr std::uint32_t kReportMs = 1000;
constexpr std::size_t kPassedForACost = 16; ///< trinkets, on the way to the place of a new one

const Rect& checkedForApp(const Rect& rectangle) {
    (void)OMApp::usingDirectDraw();
    return rectangle;
}

/// There is one chain of pages behind the screen, and its pages lie where the screen does.
bool canFlip(const Rect& rectangle) {
    platform::Display& display = OMPlatform().display();
    return OMApp::usingDirectDraw() && display.isExclusive() && display.back() == nullptr &&
           rectangle.left == 0 && rectangle.top == 0;
}

void fill(OMCanvas& canvas, const OMRegion& region, int index) {
    const std::optional<OMColor> pen = canvas.color();
    canvas.setColor(OMColor(index));
    canvas.fillRegion(region);
    canvas.setColor(pen);
}

/// Hooks may replace themselves while they run.
void run(OMLink hook) { hook(); }

} // namespace

OMTrinketWindow::OMTrinketWindow(const Rect& rectangle, std::unique_ptr<OMTBackground> background,
                                 std::string_view title, Showing showing)
    : OMWindow(checkedForApp(rectangle)), canvas_(rectangle),
      backBuffer_(rectangle.width(), rectangle.height(), OMApp::bufferDepth(),
                  showing == Showing::Flipping ? OMMemCanvas::Kind::Flippable
                                               : OMMemCanvas::Kind::Fixed),
      background_(std::move(background)), lastReportMs_(OMMilliseconds()),
      timeBase_(OMMilliseconds()) {
    if (showing == Showing::Flipping && canFlip(rectangle) &&
        canvas_.attachToFlipChain(backBuffer_))
        pagesInUse_ = kOMPages;
    if (!main_) main_ = this;
    if (!title.empty()) OMPlatform().display().setTitle(title);
    invalidateAll();
}

OMTrinketWindow::~OMTrinketWindow() {
    hooks_ = {};
    if (isResting()) OMPlatform().display().showCursor(true);
    if (managedCursor_) managedCursor_->windowGone();
    canvas_.setPalette(OMPaletteFromDevice(OMDefaultPalette()));
    trinkets_.apply([](OMTrinket& trinket) { trinket.window_ = nullptr; });
    if (isFlipping() && OMPlatform().display().isExclusive())
        canvas_.detachFromFlipChain(backBuffer_);
    if (main_ == this) main_ = nullptr;
}

// Trinkets

void OMTrinketWindow::add(OMTrinket& trinket) {
    YEngine::charge(static_cast<int>(trinkets_.count() / kPassedForACost));
    trinkets_.insertInOrder(&trinket,
                            [&](const OMTrinket& listed) { return listed.z_ > trinket.z_; });
}

void OMTrinketWindow::remove(OMTrinket& trinket) {
    trinkets_.remove(&trinket);
    stamps_.forget(&trinket);
    input_.trinketGoes(trinket);
}

void OMTrinketWindow::resort(OMTrinket& trinket) {
    if (trinkets_.remove(&trinket)) add(trinket);
}

int OMTrinketWindow::indexOf(const OMTrinket& trinket) const {
    OMListLocator<OMTrinket> locator(trinkets_);
    int index = 0;
    while (const OMTrinket* listed = locator.next()) {
        if (listed == &trinket) return index;
        ++index;
    }
    return -1;
}

void OMTrinketWindow::setMinimumDepth(int z) {
    if (z == minimumDepth_) return;
    minimumDepth_ = z;
    invalidateAll();
}

// Dirty regions

void OMTrinketWindow::addDirty(std::size_t page, const OMRegion& region) {
    OMRegion inside = region;
    inside.intersect(backBuffer_.bounds());
    pages_[page].compose.unite(inside);
    needsRedraw_ = true;
}

void OMTrinketWindow::addUnshown(const Rect& rectangle) {
    const Rect inside = platform::intersection(rectangle, backBuffer_.bounds());
    for (std::size_t page = 0; page < pagesInUse_; ++page) pages_[page].present.unite(inside);
    needsRedraw_ = true;
}

void OMTrinketWindow::invalidate(const Rect& rectangle) {
    for (std::size_t page = 0; page < pagesInUse_; ++page) addDirty(page, OMRegion(rectangle));
}

void OMTrinketWindow::invalidateAll() {
    const Rect all = backBuffer_.bounds();
    invalidate(all);
    addUnshown(all);
    OMListLocator<OMTrinket> locator(trinkets_);
    while (OMTrinket* trinket = locator.next())
        if (OMOverlap(trinket->boundingRectangle(), all)) trinket->markWhole();
}

// Redrawing

void OMTrinketWindow::setBackground(std::unique_ptr<OMTBackground> background) {
    stamps_.clear();
    background_ = std::move(background);
    invalidateAll();
}

void OMTrinketWindow::setPalette(const OMPalette& colors, bool reset) {
    const bool indexed = canvas_.depth() == OMCanvas::kIndexedDepth;
    const bool blackens = reset && indexed && canvas_.devicePalette() != OMGamePalette(colors);
    if (blackens) drawOnScreen(OMRegion(canvas_.bounds()), kNothing);
    backBuffer_.setPalette(colors);
    if (background_) background_->setPalette(colors);
    canvas_.setPalette(colors);
    // Deeper pixels keep the old colours until they are made again.
    if (backBuffer_.depth() > OMCanvas::kIndexedDepth)
        invalidateAll();
    else if (!indexed || blackens)
        addUnshown(backBuffer_.bounds());
}

OMTrinketWindow::Rest::Rest(OMTrinketWindow& window) : window_(window), count_(window.rests_) {
    if (++*window.rests_ == 1) OMPlatform().display().showCursor(false);
}

OMTrinketWindow::Rest::~Rest() {
    const std::shared_ptr<int> count = count_.lock();
    if (count && --*count == 0) window_.wake();
}

void OMTrinketWindow::wake() {
    OMPlatform().display().showCursor(true);
    needRedraw();
}

void OMTrinketWindow::idle() {
    const OMUnderWay underWay;
    input_.tellLostRelease();
    if (!isResting()) cycle();
}

void OMTrinketWindow::cycle() {
    run(hooks_.first);
    run(hooks_.beforeAnimation);
    stepTrinkets();
    run(hooks_.afterAnimation);
    if (needsRedraw_) {
        needsRedraw_ = false;
        compose();
        if (presenting_ || presentAlways_) present();
    }
    run(hooks_.last);
}

void OMTrinketWindow::stepTrinkets() {
    const std::uint32_t now = clock();
    // A trinket that a handler lists anew further back has had its step.
    const std::uint32_t cycle = ++cycles_;
    trinkets_.apply([now, cycle](OMTrinket& trinket) {
        if (std::exchange(trinket.steppedIn_, cycle) != cycle) trinket.step(now);
    });
}

void OMTrinketWindow::compose() {
    collectChanges();
    if (backgroundPainting_) paintBackground();
    run(hooks_.beforeTrinkets);
    paintTrinkets();
    run(hooks_.afterTrinkets);
}

void OMTrinketWindow::collectChanges() {
    OMRegion& dirty = pages_[page_].compose;
    OMListLocator<OMTrinket> locator(trinkets_);
    while (OMTrinket* trinket = locator.next()) trinket->takeChanges(page_, dirty);
    dirty.intersect(backBuffer_.bounds());
}

void OMTrinketWindow::paintBackground() {
    Page& page = pages_[page_];
    if (page.compose.isEmpty() && page.overpainted.isEmpty()) return;
    if (flashDelayMs_ > 0) fill(backBuffer_, page.compose, kMarkers[page_]);
    if (!background_) {
        fill(backBuffer_, page.compose, kNothing);
        return;
    }
    OMRegion more = background_->paint(backBuffer_, page.compose);
    more.subtract(page.compose);
    page.compose.unite(more);
    OMRegion missed = std::exchange(page.overpainted, {});
    if (isFlipping()) pages_[nextPage()].overpainted.unite(more);
    missed.subtract(page.compose);
    if (missed.isEmpty()) return;
    page.compose.unite(missed);
    page.compose.unite(background_->paint(backBuffer_, missed));
}

void OMTrinketWindow::paintTrinkets() {
    const OMRegion dirty = std::exchange(pages_[page_].compose, {});
    if (dirty.isEmpty()) return;
    pages_[page_].present.unite(dirty);
    OMListLocator<OMTrinket> locator(trinkets_);
    while (OMTrinket* trinket = locator.next())
        if (trinket->isShown() && dirty.intersects(trinket->boundingRectangle()))
            trinket->paint(backBuffer_, dirty);
}

bool OMTrinketWindow::restoreScreen() {
    if (!OMWndCanvas::restore()) return false;
    invalidateAll();
    return true;
}

void OMTrinketWindow::present() {
    if (restoreScreen()) compose();
    if (OMPlatform().display().isLost()) return;
    const OMRegion region = std::exchange(pages_[page_].present, {});
    if (region.isEmpty()) return;
    ++presentations_;
    countFrame();
    if (flashDelayMs_ > 0) flash(region);
    if (isFlipping())
        flipPages();
    else
        copyToScreen(region);
    run(hooks_.afterPresent);
}

void OMTrinketWindow::copyToScreen(const OMRegion& region) {
    const Rect box = region.boundingBox();
    canvas_.blt(backBuffer_, box.left, box.top, box.width(), box.height(), box.left, box.top,
                OMRasterOp::SrcCopy, &region);
}

void OMTrinketWindow::flipPages() {
    page_ = nextPage();
    canvas_.flip();
}

void OMTrinketWindow::countFrame() {
    ++frames_;
    const std::uint32_t now = OMMilliseconds();
    if (now - lastReportMs_ < kReportMs) return;
    char title[24];
    std::snprintf(title, sizeof title, "%ld", frames_);
    OMPlatform().display().setTitle(title);
    frames_ = 0;
    lastReportMs_ = now;
}

void OMTrinketWindow::flash(const OMRegion& region) {
    drawOnScreen(region, kMarkers[page_]);
    OMPlatform().clock().sleep(static_cast<std::uint32_t>(flashDelayMs_));
}

/// When pages flip, the screen is the page that comes next.
void OMTrinketWindow::drawOnScreen(const OMRegion& region, int index) {
    fill(canvas_, region, index);
    if (isFlipping()) pages_[nextPage()].compose.unite(region);
}

void OMTrinketWindow::expose() { OMPlatform().display().present(rectangle()); }

// Stamps

OMMemCanvas* OMTrinketWindow::backgroundPicture() {
    return background_ ? background_->picture() : nullptr;
}

void OMTrinketWindow::paintIntoBackground(const Rect& rectangle, const OMStampPainter& painter) {
    OMMemCanvas* picture = backgroundPicture();
    if (!picture) return;
    stamps_.paintOver(*picture, rectangle, painter);
    invalidate(rectangle);
}

bool OMTrinketWindow::stamp(const OMTrinket& trinket, const Rect& rectangle,
                            const OMStampPainter& painter) {
    OMMemCanvas* picture = backgroundPicture();
    if (!picture) return false;
    const std::optional<Rect> changed = stamps_.stamp(*picture, &trinket, rectangle, painter);
    if (changed) invalidate(*changed);
    return changed.has_value();
}

bool OMTrinketWindow::unstamp(const OMTrinket& trinket) {
    OMMemCanvas* picture = stamps_.count() > 0 ? backgroundPicture() : nullptr;
    if (!picture) return false;
    const std::optional<Rect> changed = stamps_.unstamp(*picture, &trinket);
    if (changed) invalidate(*changed);
    return changed.has_value();
}

// Time

std::uint32_t OMTrinketWindow::clock() const { return OMMilliseconds() - timeBase_ - pauseMs_; }

void OMTrinketWindow::resetClock() { timeBase_ = OMMilliseconds() - pauseMs_; }

void OMTrinketWindow::addPauseTime(std::uint32_t ms) {
    if (pausing_) pauseMs_ += ms;
}

// Cursors

std::shared_ptr<const OMCursor> OMTrinketWindow::findCursor(int id) {
    auto cursor = cursorLocator_ ? cursorLocator_(id) : id < 0 ? OMCursor::load(id) : nullptr;
    return cursor ? cursor : OMCursor::load(kOMCursorArrow);
}

void OMTrinketWindow::showCursor(int id) {
    if (!managedCursor_ && canvas_.cursor()->id() != id) putCursor(findCursor(id));
}

void OMTrinketWindow::putCursor(std::shared_ptr<const OMCursor> cursor) {
    canvas_.setCursor(std::move(cursor));
}

void OMSetCursors(OMTrinket& trinket, std::optional<int> normal, std::optional<int> grab,
                  const char* message) {
    if (!OMDebug::check(OMTrinketWindow::hasCursorLocator(), "cursorURL == NULL", message)) return;
    const auto numberOf = [](int id) { return OMTrinketWindow::findCursor(OMNarrowId(id))->id(); };
    const int normalId = normal.value_or(OMTrinket::defaultCursor);
    const int grabId = grab.value_or(normal.value_or(OMTrinket::defaultGrabCursor));
    trinket.setCursors(numberOf(normalId), numberOf(grabId));
    if (OMTrinketWindow* window = trinket.window()) window->input().updateCursor();
}
