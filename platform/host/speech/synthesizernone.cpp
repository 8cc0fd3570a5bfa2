// Built where the header of the speech library is missing.
#include "platform/host/speech/synthesizer.h"

namespace platform {

const bool Synthesizer::kAvailable = false;

namespace {

class NoSynthesizer final : public Synthesizer {
  public:
    std::string connect() override { return "the program was built without libspeechd"; }
    bool say(const std::string&, const std::string&) override { return false; }
    bool stop() override { return false; }
};

} // namespace

std::unique_ptr<Synthesizer> makeSynthesizer() { return std::make_unique<NoSynthesizer>(); }

} // namespace platform
