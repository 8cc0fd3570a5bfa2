// The speech server of the desktop, Speech Dispatcher: its library is opened when somebody wants to
// hear something, so that the program starts without it. Every call may take as long as the server
// likes.
#pragma once

#include <memory>
#include <string>

namespace platform {

class Synthesizer {
  public:
    /// Whether the program was built to use the library.
    static const bool kAvailable;

    virtual ~Synthesizer() = default;

    /// "", or why there is no voice. A connection that is open already is closed before.
    [[nodiscard]] virtual std::string connect() = 0;
    // False when the server has gone; `connect` comes next then.
    /// UTF-8; waits behind what is spoken. The tag of the language, or empty.
    [[nodiscard]] virtual bool say(const std::string& text, const std::string& language) = 0;
    /// Ends what is being spoken and what waits.
    [[nodiscard]] virtual bool stop() = 0;
};

[[nodiscard]] std::unique_ptr<Synthesizer> makeSynthesizer();

} // namespace platform
