// Callback links: how a lower floor of the program calls one above it, and how objects tell others
// that something happened. A link is a value that is copied when it is stored; a default-made link
// calls nobody.
#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

template <class Signature>
class OMLinkTo;

template <class Result, class... Arguments>
class OMLinkTo<Result(Arguments...)> {
  public:
    OMLinkTo() = default;
    OMLinkTo(std::nullptr_t) {}
    /// Any function or function object of the signature; see OMLinkToObj for member functions.
    template <class Function>
    requires(!std::is_same_v<std::decay_t<Function>, OMLinkTo>) OMLinkTo(Function function)
        : function_(std::move(function)) {}

    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(function_); }

    /// Calls the link; a link to nobody gives a default-made result.
    Result operator()(Arguments... arguments) const {
        if (!function_) return Result();
        return function_(std::forward<Arguments>(arguments)...);
    }

  private:
    std::function<Result(Arguments...)> function_;
};

/// The link of events, tasks and completion notices.
using OMLink = OMLinkTo<void()>;

/// A link that calls one, then the other.
inline OMLink OMBothLinks(OMLink first, OMLink second) {
    if (!first) return second;
    return [first = std::move(first), second = std::move(second)] {
        first();
        second();
    };
}

/// A link that calls a member function of `object`, which must outlive the link.
template <class Object, class Result, class... Arguments>
OMLinkTo<Result(Arguments...)> OMLinkToObj(Object* object, Result (Object::*member)(Arguments...)) {
    return [object, member](Arguments... arguments) {
        return (object->*member)(std::forward<Arguments>(arguments)...);
    };
}

/// A link that calls a plain function.
template <class Result, class... Arguments>
OMLinkTo<Result(Arguments...)> OMLinkToFct(Result (*function)(Arguments...)) {
    return function;
}
