#include "platform/host/speech/synthesizer.h"

#include <cstdlib>
#include <dlfcn.h>
#include <libspeechd.h>
#include <string_view>
#include <type_traits>

namespace platform {

const bool Synthesizer::kAvailable = true;

namespace {

constexpr const char* kLibrary = "libspeechd.so.2";
constexpr std::string_view kSilentModule = "dummy"; ///< speaks of nothing but its lack of a voice
constexpr const char* kAdvice = "; install the packages speech-dispatcher and espeak-ng, and try "
                                "\"spd-say hello\"";

/// What is used of the library, and how it is opened.
struct Library {
    decltype(&spd_open2) open = nullptr;
    decltype(&spd_close) close = nullptr;
    decltype(&spd_say) say = nullptr;
    decltype(&spd_cancel) cancel = nullptr;
    decltype(&spd_set_language) setLanguage = nullptr;
    decltype(&spd_get_output_module) outputModule = nullptr;

    /// False without the library. It stays open: a call may still be under way when all ends.
    bool load() {
        void* const library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        if (!library) return false;
        const auto find = [library](auto& function, const char* name) {
            function = reinterpret_cast<std::decay_t<decltype(function)>>(::dlsym(library, name));
            return function != nullptr;
        };
        return find(open, "spd_open2") && find(close, "spd_close") && find(say, "spd_say") &&
               find(cancel, "spd_cancel") && find(setLanguage, "spd_set_language") &&
               find(outputModule, "spd_get_output_module");
    }
};

struct Freed {
    void operator()(char* text) const { std::free(text); }
};

class DispatcherSynthesizer final : public Synthesizer {
  public:
    DispatcherSynthesizer() = default;
    ~DispatcherSynthesizer() override { disconnect(); }
    DispatcherSynthesizer& operator=(DispatcherSynthesizer&&) = delete;

    std::string connect() override {
        disconnect();
        if (!library_.say && !library_.load())
            return std::string(kLibrary) + " is missing" + kAdvice;
        char* why = nullptr;
        connection_ =
            library_.open("zorbet", "texts", nullptr, SPD_MODE_SINGLE, nullptr, kAutospawn, &why);
        const std::unique_ptr<char, Freed> reason(why);
        if (!connection_)
            return "Speech Dispatcher does not answer" + (reason ? ": " + trimmed(why) : "") +
                   kAdvice;
        const std::unique_ptr<char, Freed> module(library_.outputModule(connection_));
        if (module && module.get() == kSilentModule)
            return std::string("Speech Dispatcher has no voice") + kAdvice;
        return {};
    }

    bool say(const std::string& text, const std::string& language) override {
        if (!connection_) return false;
        if (!language.empty() && language != language_) {
            if (library_.setLanguage(connection_, language.c_str()) != 0) return false;
            language_ = language;
        }
        return library_.say(connection_, SPD_MESSAGE, text.c_str()) >= 0;
    }

    bool stop() override { return connection_ && library_.cancel(connection_) == 0; }

  private:
    static constexpr int kAutospawn = 1;

    static std::string trimmed(std::string_view text) {
        return std::string(text.substr(0, text.find_last_not_of("\r\n ") + 1));
    }

    void disconnect() {
        if (connection_) library_.close(connection_);
        connection_ = nullptr;
        language_.clear();
    }

    Library library_;
    SPDConnection* connection_ = nullptr;
    std::string language_; ///< that was set
};

} // namespace

std::unique_ptr<Synthesizer> makeSynthesizer() { return std::make_unique<DispatcherSynthesizer>(); }

} // namespace platform
