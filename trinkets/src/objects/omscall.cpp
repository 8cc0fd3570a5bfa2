#include "omscall.h"

#include "omformat.h"

#include <utility>

namespace {

constexpr std::size_t kMaxCallContext = 980;

struct CallState {
    bool running = false;
    std::string context;
    OMLinkTo<void(std::string_view)> warn;
};

CallState& callState() {
    static CallState state;
    return state;
}

} // namespace

OMSCall::OMSCall(Kind kind, std::string_view name)
    : outer_(callState().running), outerContext_(std::move(callState().context)) {
    const int length = static_cast<int>(name.size());
    callState().running = true;
    callState().context = kind == Kind::SettingProperty
                              ? OMFormat("Setting property \"%.*s\"\ncaused ", length, name.data())
                              : OMFormat("Invoking method \"%.*s\"\ncaused ", length, name.data());
}

OMSCall::~OMSCall() {
    callState().running = outer_;
    callState().context = std::move(outerContext_);
}

bool OMSCall::isRunning() { return callState().running; }

void OMSCall::noteIgnored(std::string_view event) {
    std::string& context = callState().context;
    if (context.size() >= kMaxCallContext) return;
    context += OMFormat("event \"%.*s\" (ignored)\n", static_cast<int>(event.size()), event.data());
    if (context.size() > kMaxCallContext) context.resize(kMaxCallContext);
}

void OMSCall::warn() {
    const std::string text = std::exchange(callState().context, {});
    callState().warn(text);
}

void OMSCall::setWarningLink(OMLinkTo<void(std::string_view)> link) {
    callState().warn = std::move(link);
}
