// A voice that speaks texts to who cannot read them. What is heard of it never comes back to the
// program: a machine without a voice is silent, and all else is the same.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

class Speech {
  public:
    enum class Turn : std::uint8_t {
        AtOnce, ///< in place of what is being spoken and of all that waits
        Next,   ///< behind that
    };
    enum class Voice : std::uint8_t {
        Unknown, ///< nothing was spoken yet, or the host has not answered
        Ready,
        Missing, ///< see `complaint`
    };

    virtual ~Speech() = default;

    /// Whether the person wants to hear texts; not at first, unless told so at the start. While it
    /// is off nothing is spoken.
    [[nodiscard]] bool isOn() const { return on_; }
    /// What is being spoken is finished.
    void setOn(bool on) { on_ = on; }

    /// Never waits. The text is Latin-1, `language` a tag such as "pt" or "en-GB", or empty: that
    /// of the host.
    void speak(std::string_view text, std::string_view language, Turn turn) {
        if (on_ && !text.empty()) say(text, language, turn);
    }
    /// Ends what is being spoken, and nothing waits any more.
    virtual void hush() = 0;

    [[nodiscard]] virtual Voice voice() const = 0;
    /// Why nothing is heard, for who cares for the machine; in English.
    [[nodiscard]] virtual std::string complaint() const { return {}; }

  protected:
    virtual void say(std::string_view text, std::string_view language, Turn turn) = 0;

  private:
    bool on_ = false;
};

/// That of a machine which has none.
class MuteSpeech final : public Speech {
  public:
    void hush() override {}
    [[nodiscard]] Voice voice() const override { return Voice::Missing; }

  protected:
    void say(std::string_view, std::string_view, Turn) override {}
};

} // namespace platform
