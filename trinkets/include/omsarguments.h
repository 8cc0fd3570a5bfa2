// The one list of argument texts that the engine fills before a constructor, a property access, a
// method or a command, and that the callee reads in order; and how a member function gets its
// arguments from it: texts become numbers, and numbers texts.
//
// Methods and commands take int, bool, double, std::string, or std::optional of these for
// arguments that may be missing or empty; without the optional, a missing number is 0.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

class OMSArguments {
  public:
    [[nodiscard]] static OMSArguments& global();

    void clear();
    void push(std::string_view text) { texts_.emplace_back(text); }
    void rewind() { next_ = 0; }

    [[nodiscard]] std::size_t count() const { return texts_.size(); }
    [[nodiscard]] bool hasNext() const { return next_ < texts_.size(); }
    [[nodiscard]] std::size_t remaining() const { return texts_.size() - next_; }
    /// The next text, or an empty one when none is left.
    std::string next();
    /// The next text's leading digits as a number, 0 without any.
    int nextInteger();

  private:
    std::vector<std::string> texts_;
    std::size_t next_ = 0;
};

/// Optional sign and leading decimal digits after blanks; 0 without digits. Numbers that do not fit
/// stop at the ends of the range.
[[nodiscard]] int OMSToInteger(std::string_view text);

namespace oms {

[[nodiscard]] std::string toText(int value);                   // "%d"
[[nodiscard]] std::string toText(double value);                // "%.15g"
[[nodiscard]] std::string toText(const platform::Rect& value); // "%d %d %d %d"
[[nodiscard]] inline std::string toText(bool value) { return value ? "1" : "0"; }
[[nodiscard]] inline std::string toText(std::string value) { return value; }

[[nodiscard]] double realFromText(std::string_view text);

template <class T>
[[nodiscard]] T fromText(std::string_view text) {
    if constexpr (std::is_same_v<T, bool>)
        return OMSToInteger(text) != 0;
    else if constexpr (std::is_integral_v<T>)
        return static_cast<T>(OMSToInteger(text));
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(realFromText(text));
    else
        return T(text);
}

namespace detail {

template <class T>
struct OptionalValue;
template <class T>
struct OptionalValue<std::optional<T>> {
    using type = T;
};

} // namespace detail

template <class T>
std::decay_t<T> nextArgument() {
    using Value = std::decay_t<T>;
    std::string text = OMSArguments::global().next();
    if constexpr (requires { typename detail::OptionalValue<Value>::type; }) {
        if (text.empty()) return std::nullopt;
        return fromText<typename detail::OptionalValue<Value>::type>(text);
    } else {
        return fromText<Value>(text);
    }
}

template <class Object, class... Arguments>
void callWithArguments(Object& object, void (Object::*member)(Arguments...)) {
    // Braces fix the order in which the arguments are read.
    std::tuple<std::decay_t<Arguments>...> arguments{nextArgument<Arguments>()...};
    std::apply([&](auto&... values) { (object.*member)(values...); }, arguments);
}

} // namespace oms
