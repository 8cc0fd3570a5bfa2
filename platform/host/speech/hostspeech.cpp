#include "platform/host/speech/hostspeech.h"

#include "formats/base/latin1.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <system_error>
#include <thread>
#include <utility>

namespace platform {

namespace {

using Moments = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kPatience = 5s;           ///< with a call, before there counts as no voice
constexpr auto kBeforeNextTry = 10s;     ///< after a connection that failed
constexpr auto kAtTheEnd = 200ms;        ///< for the last call
constexpr std::size_t kMostWaiting = 32; ///< texts; the oldest go

struct Utterance {
    std::string text; ///< UTF-8
    std::string language;
};

struct Work {
    bool stops = false; ///< what is being spoken, first
    std::optional<Utterance> next;
};

/// The server's end of a connection may close while it is written to, which ends no program here.
/// No other signal: a server that is started by the library would be deaf to them, too.
void blockBrokenPipes() {
    sigset_t broken;
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &broken, nullptr);
}

} // namespace

struct HostSpeech::Shared {
    mutable std::mutex lock;
    std::condition_variable changed;
    std::deque<Utterance> waiting;
    bool stops = false;
    bool ends = false;
    bool hasStarted = false;
    bool hasEnded = false;
    Voice voice = Voice::Unknown;
    std::string complaint;
    std::optional<Moments::time_point> callSince; ///< to the server, that is under way

    void run(std::unique_ptr<Synthesizer> synthesizer);
    void work(Synthesizer& synthesizer);
    /// Waits; none at the end.
    std::optional<Work> take();
    void tell(const std::string& failure);
    template <class Call>
    auto timed(Call call);
};

template <class Call>
auto HostSpeech::Shared::timed(Call call) {
    const auto note = [this](std::optional<Moments::time_point> since) {
        const std::lock_guard guard(lock);
        callSince = since;
    };
    note(Moments::now());
    auto result = call();
    note(std::nullopt);
    return result;
}

void HostSpeech::Shared::run(std::unique_ptr<Synthesizer> synthesizer) {
    blockBrokenPipes();
    work(*synthesizer);
    synthesizer.reset();
    const std::lock_guard guard(lock);
    hasEnded = true;
    changed.notify_all();
}

/// A server that has gone is called once more at once, as it may have been started anew.
void HostSpeech::Shared::work(Synthesizer& synthesizer) {
    bool isConnected = false;
    std::optional<Moments::time_point> failed;
    while (const auto now = take()) {
        const auto perform = [&] {
            return timed([&] {
                return (!now->stops || synthesizer.stop()) &&
                       (!now->next || synthesizer.say(now->next->text, now->next->language));
            });
        };
        if (isConnected && perform()) continue;
        isConnected = false;
        if (!now->next || (failed && Moments::now() - *failed < kBeforeNextTry)) continue;
        std::string failure = timed([&] { return synthesizer.connect(); });
        if (failure.empty() && !perform()) failure = "Speech Dispatcher has ended";
        isConnected = failure.empty();
        failed = isConnected ? std::nullopt : std::optional(Moments::now());
        tell(failure);
    }
}

std::optional<Work> HostSpeech::Shared::take() {
    std::unique_lock guard(lock);
    changed.wait(guard, [this] { return ends || stops || !waiting.empty(); });
    if (ends) return std::nullopt;
    Work work{std::exchange(stops, false), {}};
    if (!waiting.empty()) {
        work.next = std::move(waiting.front());
        waiting.pop_front();
    }
    return work;
}

void HostSpeech::Shared::tell(const std::string& failure) {
    const std::lock_guard guard(lock);
    voice = failure.empty() ? Voice::Ready : Voice::Missing;
    complaint = failure;
}

HostSpeech::HostSpeech(Maker maker)
    : maker_(std::move(maker)), shared_(std::make_shared<Shared>()) {}

HostSpeech::~HostSpeech() {
    std::unique_lock guard(shared_->lock);
    shared_->ends = true;
    shared_->changed.notify_all();
    if (shared_->hasStarted)
        shared_->changed.wait_for(guard, kAtTheEnd, [this] { return shared_->hasEnded; });
}

void HostSpeech::say(std::string_view text, std::string_view language, Turn turn) {
    const std::lock_guard guard(shared_->lock);
    if (turn == Turn::AtOnce) {
        shared_->waiting.clear();
        shared_->stops = true;
    }
    if (shared_->waiting.size() == kMostWaiting) shared_->waiting.pop_front();
    shared_->waiting.push_back({formats::utf8FromLatin1(text), std::string(language)});
    shared_->changed.notify_all();
    if (std::exchange(shared_->hasStarted, true)) return;
    try {
        std::thread([shared = shared_, synthesizer = maker_()]() mutable {
            shared->run(std::move(synthesizer));
        }).detach();
    } catch (const std::system_error&) {
        shared_->hasEnded = true;
        shared_->voice = Voice::Missing;
        shared_->complaint = "there is no thread for it";
    }
}

void HostSpeech::hush() {
    const std::lock_guard guard(shared_->lock);
    shared_->waiting.clear();
    shared_->stops = true;
    shared_->changed.notify_all();
}

Speech::Voice HostSpeech::voice() const {
    const std::lock_guard guard(shared_->lock);
    const bool hangs = shared_->callSince && Moments::now() - *shared_->callSince > kPatience;
    return hangs ? Voice::Missing : shared_->voice;
}

std::string HostSpeech::complaint() const {
    const std::lock_guard guard(shared_->lock);
    return shared_->complaint.empty() ? "Speech Dispatcher does not answer" : shared_->complaint;
}

} // namespace platform
