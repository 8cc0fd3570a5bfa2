#include "omapp.h"

#include "omdebug.h"
#include "omplatform.h"
#include "omunderway.h"
#include "omwndcanvas.h"

#include <algorithm>
#include <utility>

using platform::Message;
using platform::Point;
using platform::Rect;

OMApp* OMApp::instance_ = nullptr;

namespace {

void fillScreen(const Rect& area, const OMColor& color) {
    OMWndCanvas canvas(area);
    canvas.setColor(color);
    canvas.fillRect(canvas.bounds());
}

Point relativeTo(const OMWindow& window, Point point) {
    return {point.x - window.rectangle().left, point.y - window.rectangle().top};
}

} // namespace

void OMApp::useGDI() {
    if (OMDebug::check(instance_ == nullptr, "theApp != NULL",
                       "OMApp::useGDI - cannot useGDI after an OMApp has been instantiated!"))
        wantsDirectDraw_ = false;
}

void OMApp::useDirectDraw() {
    if (OMDebug::check(instance_ == nullptr, "theApp != NULL",
                       "OMApp::useDirectDraw - cannot useDirectDraw after an OMApp has been "
                       "instantiated!"))
        wantsDirectDraw_ = true;
}

bool OMApp::usingDirectDraw() {
    OMDebug::require(instance_ != nullptr, "theApp == NULL",
                     "OMApp::usingDirectDraw - must have an OMApp instance first!");
    return OMCanvas::areSurfaces();
}

int OMApp::bufferDepth() {
    return usingDirectDraw() ? OMPlatform().display().screen().depth() : OMCanvas::kIndexedDepth;
}

OMApp::OMApp(DisplayMode mode, const OMColor& background, const Rect& rectangle, int depth,
             int monitor)
    : displayMode_(mode), background_(background), rectangle_(rectangle), depth_(depth),
      monitor_(monitor) {
    OMDebug::require(instance_ == nullptr, "instance == NULL",
                     "OMApp::OMApp - global instances of OMApp are not allowed!");
    instance_ = this;
    OMDebug::noteApp(true);
    OMCanvas::setSurfaces(wantsDirectDraw_);
    readVersion();
    OMPlatform().display().setTitle(productName_);
    startDisplay();
}

void OMApp::readVersion() {
    const platform::Modules& modules = OMPlatform().modules();
    productName_ = modules.versionString("ProductName");
    productVersion_ = modules.versionString("ProductVersion");
    OMDebug::check(!productName_.empty(), "*productName == NULL",
                   "OMAppGetNameVersion - bad or missing VERSIONINFO resource.\nAll KVO Windows "
                   "Apps are required to have this resource.");
}

void OMApp::startDisplay() {
    platform::Display& display = OMPlatform().display();
    if (displayMode_ == DisplayMode::FullScreen && !usingDirectDraw())
        displayMode_ = DisplayMode::PopUp;
    if (displayMode_ == DisplayMode::FullScreen &&
        !OMDebug::check(display.enterExclusive({rectangle_.width(), rectangle_.height(), depth_}),
                        "result != DD_OK", "OMApp::OMApp - DirectDraw failed to initialize!")) {
        OMCanvas::setSurfaces(false);
        displayMode_ = DisplayMode::PopUp;
    }
    fillScreen(mainWindow(), background_);
}

/// It covers the desktop, but for an overlapped one, and for one of surfaces, which stands at the
/// upper left.
Rect OMApp::mainWindow() const {
    if (displayMode_ == DisplayMode::Overlapped) return rectangle_;
    if (usingDirectDraw() && displayMode_ == DisplayMode::PopUp)
        return {0, 0, rectangle_.width(), rectangle_.height()};
    return OMPlatform().display().screen().bounds();
}

OMApp::~OMApp() {
    OMPlatform().display().leaveExclusive();
    instance_ = nullptr;
    OMDebug::noteApp(false);
}

void OMApp::begin() {
    windows_.all.apply([](OMWindow& window) { window.expose(); });
    running_ = true;
    OMPlatform().mainLoopBegins();
}

void OMApp::run() {
    begin();
    while (pass()) {
    }
}

void OMApp::stop() {
    if (std::exchange(running_, false)) stopLink_();
}

bool OMApp::pass() {
    Message message;
    if (takeMessage(message)) {
        const OMUnderWay underWay;
        beforeMessage(message);
        dispatch(message);
        afterMessage(message);
    }
    if (!waitForMessages_ && !leaving_) {
        idle();
        windows_.all.apply([](OMWindow& window) { window.idle(); });
        tasks_.runAll();
    }
    OMPlatform().passEnded();
    return running_;
}

bool OMApp::takeMessage(Message& message) {
    if (!posted_.empty()) {
        message = posted_.front();
        posted_.pop_front();
        return true;
    }
    platform::Events& events = OMPlatform().events();
    return (waitForMessages_ ? events.wait(message) : events.take(message)) &&
           !messageFilter_(message);
}

void OMApp::alert(std::string_view text, std::uint32_t style, std::string_view caption) {
    warningLink_(text);
    box(text, style, caption);
}

bool OMApp::ask(std::string_view text, std::string_view caption) {
    return box(text, kAskStyle, caption) == platform::Button::Yes;
}

void OMApp::tellPlayer(std::string_view text, std::string_view caption) {
    aroundBox([=] { OMPlatform().tellPlayer(text, caption); });
}

platform::Button OMApp::box(std::string_view text, std::uint32_t style, std::string_view caption) {
    platform::Button answer{};
    aroundBox([&] { answer = OMPlatform().dialogs().messageBox(text, caption, style); });
    alertedLink_();
    return answer;
}

void OMApp::aroundBox(const OMLink& showBox) {
    boxLink_(true);
    showBox();
    boxLink_(false);
    leaving_ = leaving_ || OMPlatform().events().quitWaits();
    tellDroppedRelease();
}

void OMApp::about() { box("KVO:" + productName_ + " " + productVersion_, kAlertStyle, "About"); }

void OMApp::discardInput() {
    OMPlatform().events().discardInput();
    windows_.capture = nullptr;
    const auto posted = std::exchange(posted_, {});
    if (std::ranges::any_of(
            posted, [](const Message& each) { return each.kind == Message::Kind::MouseUp; }))
        tellReleaseLost();
    tellDroppedRelease();
}

void OMApp::tellDroppedRelease() {
    if (OMPlatform().events().releaseWasDropped()) tellReleaseLost();
}

void OMApp::tellReleaseLost() {
    windows_.all.apply([](OMWindow& window) { window.mouseReleaseLost(); });
}

void OMApp::dispatch(const Message& message) {
    switch (message.kind) {
    case Message::Kind::Null: return;
    case Message::Kind::MouseDown:
    case Message::Kind::MouseUp:
    case Message::Kind::MouseMove:
    case Message::Kind::DoubleClick: {
        OMWindow* window = mouseWindow(message);
        if (!window) return;
        const Point point = relativeTo(*window, message.position);
        if (message.kind == Message::Kind::MouseDown) window->mouseDown(point);
        if (message.kind == Message::Kind::MouseUp) window->mouseUp(point);
        if (message.kind == Message::Kind::MouseMove) window->mouseMove(point);
        if (message.kind == Message::Kind::DoubleClick) window->doubleClick(point);
        return;
    }
    case Message::Kind::Key: {
        const bool wasRunning = running_;
        tryAccelerators(message.key);
        if (wasRunning && !running_) return; // the key has done its work
        if (OMWindow* window = windows_.all.last()) window->key(message.key);
        return;
    }
    case Message::Kind::Command:
        if (message.command == platform::kAboutCommand)
            about();
        else
            commandHandler_(message.command);
        return;
    case Message::Kind::Background: backgroundLink_(); return;
    case Message::Kind::Foreground: foregroundLink_(); return;
    case Message::Kind::Expose:
        windows_.all.apply([](OMWindow& window) { window.expose(); });
        return;
    case Message::Kind::KeysOn:
    case Message::Kind::KeysOff: return; // for who plays with keys, by the filter
    case Message::Kind::SpeechOn:
    case Message::Kind::SpeechOff: speechLink_(message.kind == Message::Kind::SpeechOn); return;
    case Message::Kind::Quit: stop(); return;
    }
}

void OMApp::setAccelerators(std::vector<OMAccelerator> table, OMLinkTo<bool()> isTyping) {
    accelerators_ = std::move(table);
    isTyping_ = std::move(isTyping);
}

void OMApp::tryAccelerators(const platform::KeyPress& key) {
    const auto found = std::ranges::find_if(accelerators_, [&](const OMAccelerator& each) {
        return each.key.code == key.code && each.key.control == key.control;
    });
    if (found != accelerators_.end() && !isTyping_()) commandHandler_(found->command);
}

OMWindow* OMApp::mouseWindow(const Message& message) {
    OMWindow* window = windows_.capture;
    if (!window)
        window = windows_.all.findLast(
            [&](const OMWindow& w) { return OMContains(w.rectangle(), message.position); });
    if (message.kind == Message::Kind::MouseDown || message.kind == Message::Kind::DoubleClick) {
        windows_.capture = window;
        OMPlatform().events().captureMouse(window != nullptr);
    } else if (message.kind == Message::Kind::MouseUp && windows_.capture) {
        windows_.capture = nullptr;
        OMPlatform().events().captureMouse(false);
    }
    return window;
}
