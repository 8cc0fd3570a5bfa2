#include "platform/host/screen/inputline.h"

#include "platform/events.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

bool isLetter(std::uint16_t code) {
    return (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code <= 0xFF);
}

} // namespace

void InputLine::key(std::uint16_t code) {
    switch (static_cast<Key>(code)) {
    case Key::Backspace:
        if (caret_ > 0) remove(caret_ - 1);
        break;
    case Key::Delete:
        if (caret_ < text_.size()) remove(caret_);
        break;
    case Key::Left: caret_ -= caret_ > 0 ? 1 : 0; break;
    case Key::Right: caret_ = std::min(caret_ + 1, text_.size()); break;
    case Key::Home: caret_ = 0; break;
    case Key::End: caret_ = text_.size(); break;
    case Key::Up:
        if (shown_ > 0) fetch(shown_ - 1);
        break;
    case Key::Down:
        if (shown_ < earlier_.size()) fetch(shown_ + 1);
        break;
    default:
        if (isLetter(code)) insert(static_cast<char>(code));
    }
}

void InputLine::insert(char letter) {
    if (text_.size() >= kLongest) return;
    text_.insert(text_.begin() + static_cast<std::ptrdiff_t>(caret_), letter);
    ++caret_;
}

void InputLine::remove(std::size_t at) {
    text_.erase(at, 1);
    caret_ = at;
}

void InputLine::fetch(std::size_t which) {
    if (shown_ == earlier_.size()) typed_ = text_;
    shown_ = which;
    text_ = which == earlier_.size() ? typed_ : earlier_[which];
    caret_ = text_.size();
}

std::string InputLine::take() {
    std::string line = std::exchange(text_, {});
    caret_ = 0;
    if (!line.empty() && (earlier_.empty() || earlier_.back() != line)) earlier_.push_back(line);
    if (earlier_.size() > kMostEarlier) earlier_.erase(earlier_.begin());
    shown_ = earlier_.size();
    return line;
}

} // namespace platform
