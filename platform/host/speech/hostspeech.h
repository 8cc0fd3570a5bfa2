// Texts spoken by the host's synthesizer, on a thread of their own: the server may be slow, hang or
// go away, and the program goes on. What cannot be spoken soon is not spoken at all.
#pragma once

#include "platform/host/speech/synthesizer.h"
#include "platform/speech.h"

#include <functional>
#include <memory>

namespace platform {

class HostSpeech final : public Speech {
  public:
    using Maker = std::function<std::unique_ptr<Synthesizer>()>;

    /// The thread begins with the first text.
    explicit HostSpeech(Maker maker = makeSynthesizer);
    /// A call to the server that does not come back soon is left alone, to end with the process.
    ~HostSpeech() override;
    HostSpeech& operator=(HostSpeech&&) = delete;

    void hush() override;
    [[nodiscard]] Voice voice() const override;
    [[nodiscard]] std::string complaint() const override;

  protected:
    void say(std::string_view text, std::string_view language, Turn turn) override;

  private:
    struct Shared;

    Maker maker_;
    std::shared_ptr<Shared> shared_; ///< with the thread
};

} // namespace platform
