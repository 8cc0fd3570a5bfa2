// The keyboard of scripts: every key becomes a name and an event. Of several objects the one that
// was made last hears the keys; a trinket that has the focus hears them before it.
//
//     k=RKbdInp 0         (the language wants a word; any will do)
#pragma once

#include "omscrptb.h"

#include "platform/events.h"

#include <string>

class RKbdInp final : public OMSCopied<RKbdInp, OMScriptableObject> {
  public:
    static const OMSClass kClass;

    RKbdInp();
    /// A new one, which has heard no key.
    RKbdInp(const RKbdInp&) : RKbdInp() {}
    ~RKbdInp() override { retire(); }

    /// The name of the last key: a character, or "Enter", "F1" and the like; with the Control key
    /// held "Ctrl-" and the letter or name. Empty before the first.
    [[nodiscard]] std::string key() const { return key_; }

    [[nodiscard]] static std::string nameOf(const platform::KeyPress& press);

  private:
    void onRetire() override;
    static void hear(const platform::KeyPress& press);

    static inline OMList<RKbdInp> all_; ///< in the order of their making

    std::string key_;
};
