#include "rkbdinp.h"

#include "omsclass.h"
#include "omtrinketwindow.h"

#include <array>
#include <utility>

namespace {

constexpr OMSEntry kRKbdInpVocabulary[] = {
    oms::readOnly<&RKbdInp::key>("key", "name of the last key"),
    oms::event("keyPressed", "a key was pressed"),
};

/// In the order of the codes, from platform::Key::Backspace on.
constexpr std::array<std::string_view, 27> kNames{
    "Backspace", "Tab", "Enter", "Pause", "Esc",    "PageUp", "PageDown", "End", "Home",
    "Left",      "Up",  "Right", "Down",  "Insert", "Delete", "F1",       "F2",  "F3",
    "F4",        "F5",  "F6",    "F7",    "F8",     "F9",     "F10",      "F11", "F12"};
constexpr int kFirstName = static_cast<int>(platform::Key::Backspace);
constexpr std::string_view kControl = "Ctrl-";
constexpr int kToLetter = 0x40; ///< from a control character

} // namespace

const OMSClass RKbdInp::kClass{"RKbdInp", &OMScriptableObject::kClass, kRKbdInpVocabulary,
                               &oms::create<RKbdInp>, "[0]"};

RKbdInp::RKbdInp() {
    all_.append(this);
    if (OMTrinketWindow* window = OMTrinketWindow::mainWindow())
        window->input().defaults().key = &hear;
}

void RKbdInp::onRetire() {
    all_.remove(this);
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (window && all_.empty()) window->input().defaults().key = nullptr;
}

std::string RKbdInp::nameOf(const platform::KeyPress& press) {
    std::string name(press.control ? kControl : std::string_view());
    const int special = press.code - kFirstName;
    if (special >= 0 && special < std::ssize(kNames))
        return name.append(kNames[static_cast<std::size_t>(special)]);
    // A character that the Control key has not changed names itself.
    const bool changed = press.control && press.code < ' ';
    return name += static_cast<char>(press.code + (changed ? kToLetter : 0));
}

void RKbdInp::hear(const platform::KeyPress& press) {
    RKbdInp* last = all_.last();
    if (!last) return;
    last->key_ = nameOf(press);
    last->fireEvent("keyPressed");
}
