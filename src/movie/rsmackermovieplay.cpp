// How movies play: the task that shows one frame after the other, where the frames go, and the
// palette.
#include "movie/rsmackermovie.h"

#include "aodeep.h"
#include "omapp.h"
#include "omcachedfile.h"
#include "omplatform.h"
#include "scene/efwindow.h"

#include <algorithm>
#include <cstring>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr std::uint32_t kMoviePriority = 50; ///< in each pass after the sound, before the scripts
constexpr int kBitsPerByte = 8;

/// An 8-bit component c as one of 16 bits.
std::uint16_t component(std::uint8_t c) { return static_cast<std::uint16_t>(c * 257); }

OMPalette gamePalette(const std::array<platform::Rgb, platform::kPaletteSize>& colors) {
    OMPalette palette;
    std::ranges::transform(colors, palette.begin(), [](const platform::Rgb& color) {
        return OMColor(component(color.red), component(color.green), component(color.blue));
    });
    return palette;
}

using RowWriter = void (*)(std::uint8_t* to, const std::uint8_t* from, int width,
                           const AOPixelTable& pixels);

/// Bytes of a pixel lie lowest first.
template <int kBytes>
void putRow(std::uint8_t* to, const std::uint8_t* from, int width, const AOPixelTable& pixels) {
    for (int x = 0; x < width; ++x, to += kBytes) {
        const std::uint32_t pixel = pixels[from[x]];
        for (int i = 0; i < kBytes; ++i)
            to[i] = static_cast<std::uint8_t>(pixel >> (kBitsPerByte * i));
    }
}

void copyRow(std::uint8_t* to, const std::uint8_t* from, int width, const AOPixelTable&) {
    std::memcpy(to, from, static_cast<std::size_t>(width));
}

/// Writes a row of 8-bit pixels in those of a canvas.
RowWriter rowWriter(int bytesPerPixel) {
    switch (bytesPerPixel) {
    case 1: return copyRow;
    case 2: return putRow<2>;
    case 3: return putRow<3>;
    default: return putRow<4>;
    }
}

} // namespace

// Playback

void RSmackerMovie::start() {
    if (playing_) return setPlaying(true);
    if (!movie_ || !window()) return fireCompletion();
    playing_ = true;
    halted_ = false;
    wholeDue_ = decoded_; // the window has covered it meanwhile, and has its own colours
    paletteDue_ = true;
    if (!collected_) takeScreen();
    if (!options_.preload) OMCachedFile::suspendBkgd();
    task_ = std::make_unique<OMTask>(OMLinkToObj(this, &RSmackerMovie::play), kMoviePriority);
    runUnlessHeld();
}

void RSmackerMovie::setPlaying(bool on) {
    if (!playing_ || on == !halted_) return;
    halted_ = !on;
    runUnlessHeld();
}

void RMovies::hold(bool on) {
    holds_ = std::max(holds_ + (on ? 1 : -1), 0);
    for (RSmackerMovie* movie : all_)
        if (movie->playing_) movie->runUnlessHeld();
}

void RMovies::holdInBackground(bool on) {
    if (std::exchange(inBackground_, on) != on) hold(on);
}

void RSmackerMovie::runUnlessHeld() { movie_->run(!halted_ && shared_.holds_ == 0); }

void RSmackerMovie::stop() {
    if (!playing_) return;
    endPlayback();
    // A handler may have it played again and wait for that, or destroy it.
    const OMLink completion = takeCompletion();
    const OMLink finished = options_.finished;
    if (finished)
        finished();
    else
        fireEvent("finished");
    completion();
}

void RSmackerMovie::endPlayback() {
    playing_ = false;
    halted_ = false;
    task_.reset();
    movie_->run(false);
    leaveScreen();
    if (!options_.preload) OMCachedFile::resumeBkgd();
    givePaletteBack();
}

void RSmackerMovie::takeScreen() {
    rest_.emplace(*window());
    presentations_ = window()->presentations();
    shared_.current_ = this;
    OMApp::getApp()->setWaitForMessages(false);
}

/// To one that still has the screen, if this is the current one.
void RSmackerMovie::handCurrentOn() {
    if (shared_.current_ != this) return;
    const auto other = std::ranges::find_if(
        shared_.all_, [](const RSmackerMovie* movie) { return movie->rest_.has_value(); });
    shared_.current_ = other == shared_.all_.end() ? nullptr : *other;
}

void RSmackerMovie::leaveScreen() {
    rest_.reset();
    if (window())
        for (const Rect& part : covered_.rectangles()) window()->invalidate(part);
    covered_.clear();
}

/// In every pass of the main loop, while it plays.
void RSmackerMovie::play() {
    if (!window()) return stop();
    if (isCovered()) show({});
    if (halted_ || movie_->wait()) return;
    usePalette();
    movie_->doFrame();
    decoded_ = true;
    show(takeChanged());
    if (movie_->frame() >= movie_->frameCount() - 1)
        stop();
    else
        goOn();
}

/// To the next frame, unless a handler of the signal has written another one or closed the movie.
void RSmackerMovie::goOn() {
    jumped_ = false;
    if (signals_[static_cast<std::size_t>(movie_->frame())]) sendSignal();
    if (movie_ && !jumped_) movie_->nextFrame();
}

void RSmackerMovie::sendSignal() {
    const OMLink signal = options_.signal;
    if (signal)
        signal();
    else
        fireEvent("signal");
}

// Frames

/// Whether the window, though it rests, has presented something over what was shown. Then the
/// picture is shown anew in the same pass.
bool RSmackerMovie::isCovered() const {
    return rest_ && decoded_ && !wholeDue_ && presentations_ != window()->presentations();
}

/// Shows what of the picture changed, or all of it where that is due.
void RSmackerMovie::show(const OMRegion& changed) {
    if (isCovered()) wholeDue_ = true;
    presentations_ = window()->presentations();
    if (!canShow()) {
        wholeDue_ = true;
        return;
    }
    const std::uint32_t begunMs = OMMilliseconds();
    const Point corner{x(), y()};
    OMCanvas& canvas = collected_ ? static_cast<OMCanvas&>(*collected_) : window()->canvas();
    const bool isElsewhere = !collected_ && corner != shownAt_;
    const bool isRecolored = canvas.depth() > OMCanvas::kIndexedDepth && copiedColors_ != colors();
    const bool whole = std::exchange(wholeDue_, false) || isElsewhere || isRecolored;
    shownAt_ = corner;
    copyTo(canvas, whole ? OMRegion(movie_->picture().bounds()) : changed,
           collected_ ? Point{} : corner);
    movie_->addBlitTime(OMMilliseconds() - begunMs);
}

/// Straight onto the window nothing is shown that is invisible or that has no screen.
bool RSmackerMovie::canShow() {
    if (collected_) return true;
    if (window()->restoreScreen()) wholeDue_ = true;
    return isShown() && !OMPlatform().display().isLost();
}

OMRegion RSmackerMovie::takeChanged() {
    OMRegion changed;
    while (const std::optional<Rect> part = movie_->takeChanged()) changed.unite(*part);
    changed.intersect(movie_->picture().bounds());
    return changed;
}

void RSmackerMovie::copyTo(OMCanvas& canvas, const OMRegion& part, Point corner) {
    OMRegion region = part;
    region.offset(corner.x, corner.y);
    region = canvas.clipped(region.boundingBox(), &region);
    if (region.isEmpty()) return;
    const platform::Surface& picture = movie_->picture();
    const OMPixels to = canvas.pixels();
    const RowWriter write = rowWriter(to.bytesPerPixel);
    const AOPixelTable pixels =
        to.bytesPerPixel > 1 ? AOPixelsOf(colors(), canvas) : kAOIndexPixels;
    for (const Rect& area : region.rectangles())
        for (int y = area.top; y < area.bottom; ++y)
            write(to.at(area.left, y), picture.row(y - corner.y) + (area.left - corner.x),
                  area.width(), pixels);
    copiedColors_ = colors();
    canvas.changed(region);
    if (!collected_) return covered_.unite(region);
    region.offset(x(), y());
    for (const Rect& area : region.rectangles()) window()->invalidate(area);
}

void RSmackerMovie::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    if (collected_)
        canvas.blt(*collected_, 0, 0, collected_->width(), collected_->height(), x(), y(),
                   OMRasterOp::SrcCopy, &clip);
}

bool RSmackerMovie::containsPoint(Point point) const {
    return (playing_ || collected_) && OMTrinket::containsPoint(point);
}

void RSmackerMovie::dragBy(int& dx, int& dy) {
    if (collected_) return OMTrinket::dragBy(dx, dy);
    dx = 0;
    dy = 0;
}

// Collecting

void RSmackerMovie::setCollecting(bool on) {
    if (on == isCollecting() || !window()) return;
    if (on)
        startCollecting();
    else
        stopCollecting();
}

void RSmackerMovie::startCollecting() {
    if (!movie_) return;
    auto canvas = std::make_unique<OMMemCanvas>(width(), height(), OMApp::bufferDepth());
    canvas->setPalette(window()->canvas().getPalette());
    // An indexed canvas cannot have what a deeper screen shows.
    OMCanvas& seen = canvas->depth() == window()->canvas().depth()
                         ? static_cast<OMCanvas&>(window()->canvas())
                         : window()->backBuffer();
    canvas->blt(seen, x(), y(), width(), height(), 0, 0, OMRasterOp::SrcCopy);
    collected_ = std::move(canvas);
    if (&seen != &window()->canvas() && playing_ && decoded_)
        copyTo(*collected_, movie_->picture().bounds(), {});
    leaveScreen();
    handCurrentOn();
    markWhole();
}

void RSmackerMovie::stopCollecting() {
    if (shared_.current_ && shared_.current_ != this) return;
    const std::unique_ptr<OMMemCanvas> picture = std::exchange(collected_, nullptr);
    if (movie_) shared_.current_ = this;
    invalidate(); // also for when the window wakes again
    if (!playing_) return;
    takeScreen();
    wholeDue_ = !canShow();
    if (wholeDue_) return;
    shownAt_ = {x(), y()};
    picture->setPalette(window()->canvas().getPalette());
    window()->canvas().blt(*picture, 0, 0, picture->width(), picture->height(), x(), y());
}

// Colours

void RSmackerMovie::usePalette() {
    if (!options_.useMoviePalette || !(movie_->hasNewPalette() || paletteDue_)) return;
    installPalette();
    movie_->clearNewPalette();
}

/// Without blackening the window before: that would be seen as a flash, and what a movie shows is
/// replaced at once.
void RSmackerMovie::installPalette() {
    paletteDue_ = false;
    if (!shared_.savedPalette_) savePalette();
    OMPalette palette = gamePalette(movie_->palette());
    if (const auto* game = dynamic_cast<EffectsWindow*>(window())) game->filterPalette(palette);
    ownColors_ = OMGamePalette(palette);
    shared_.moviePalette_ = ownColors_;
    window()->setPalette(palette, false);
    if (collected_) collected_->setPalette(palette);
}

const OMDevicePalette& RSmackerMovie::colors() {
    return options_.useMoviePalette ? ownColors_ : window()->canvas().devicePalette();
}

/// What a movie has set is not what is to come back one day.
void RSmackerMovie::savePalette() {
    if (!options_.useMoviePalette) return;
    OMWndCanvas& canvas = window()->canvas();
    if (!shared_.savedPalette_ || shared_.moviePalette_ != canvas.devicePalette())
        shared_.savedPalette_ = canvas.getPalette();
}

void RSmackerMovie::forgetPalette() {
    if (std::ranges::any_of(shared_.all_, &RSmackerMovie::usesOwnPalette)) return;
    shared_.savedPalette_.reset();
    shared_.moviePalette_.reset();
}

/// To another movie that plays, else to what was there before all movies.
void RSmackerMovie::givePaletteBack() {
    if (!options_.useMoviePalette || !window() || !shared_.savedPalette_) return;
    const auto other = std::ranges::find_if(shared_.all_, [this](const RSmackerMovie* movie) {
        return movie != this && movie->playing_ && movie->decoded_ && movie->usesOwnPalette();
    });
    if (other != shared_.all_.end()) return (*other)->installPalette();
    window()->setPalette(*shared_.savedPalette_, false);
    shared_.savedPalette_.reset();
    shared_.moviePalette_.reset();
}

void RMovies::restoreWindowPalette() {
    if (!current_ || !current_->usesOwnPalette() || !current_->window() || !savedPalette_) return;
    current_->window()->setPalette(*savedPalette_, false);
    moviePalette_.reset();
}
