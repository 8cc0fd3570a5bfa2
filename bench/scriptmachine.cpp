#include "scriptmachine.h"

#include "omistream.h"
#include "omplatform.h"
#include "omsregistry.h"
#include "yheap.h"
#include "ykeyword.h"

#include <algorithm>
#include <stdexcept>

namespace {

/// A name that is no file, so that the thread asks for it.
constexpr const char* kScriptName = "<benchmark>";
constexpr platform::Rect kScreen{0, 0, 640, 480};
constexpr int kDepth = 8;

class TextStream final : public OMIStream {
  public:
    explicit TextStream(std::string text) : OMIStream(kOMIStreamCache, {}), text_(std::move(text)) {
        setLength(text_.size());
    }
    [[nodiscard]] std::string_view className() const override { return "TextStream"; }

  protected:
    bool openSource() override { return true; }
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override {
        const auto bytes = std::as_bytes(std::span(text_)).subspan(position, buffer.size());
        std::copy(bytes.begin(), bytes.end(), buffer.begin());
        return bytes.size();
    }
    void closeSource() override {}

  private:
    std::string text_;
};

platform::HeadlessOptions options(std::ostream& report) {
    platform::HeadlessOptions made;
    made.report = &report;
    return made;
}

} // namespace

ScriptMachine::ScriptMachine() : platform_(options(report_)) {
    OMSetPlatform(&platform_);
    app_.emplace(OMApp::DisplayMode::PopUp, OMColor(), kScreen, kDepth);
    engine_.emplace();
    app_->begin();
}

ScriptMachine::~ScriptMachine() {
    unload();
    engine_.reset();
    YHeap::recreate();
    OMSRegistry::global().unregisterAll();
    YCommands::clear();
    app_.reset();
    OMSetPlatform(nullptr);
}

void ScriptMachine::unload() {
    if (thread_) thread_->unload();
    thread_.reset();
}

void ScriptMachine::load(std::string script) {
    unload();
    std::replace(script.begin(), script.end(), '\n', '\r');
    thread_ = std::make_unique<YThread>(*engine_, kScriptName, [&script](std::string_view) {
        return std::make_unique<TextStream>(script);
    });
    throwOnBox();
    thread_->run();
}

void ScriptMachine::runUntilBlocked() {
    do app_->pass();
    while (thread_->isRunning() && !thread_->isWaiting() &&
           thread_->status() != YThread::Status::Blocked);
    throwOnBox();
}

std::string ScriptMachine::value(std::string_view variable) const {
    YHeap& heap = YHeap::current();
    const int index = heap.lookup(variable);
    if (index < 0) throw std::runtime_error("no variable " + std::string(variable));
    YScratch scratch;
    return std::string(heap.get(index).string(scratch));
}

void ScriptMachine::throwOnBox() {
    const std::string told = report_.str();
    if (told.find("\tbox\t") != std::string::npos) throw std::runtime_error("zorbet: " + told);
}
