// Objects of libraries that are written in C, owned as others are.
#pragma once

#include <memory>

namespace platform {

template <auto Free>
struct HandleDeleter {
    template <class Object>
    void operator()(Object* object) const {
        Free(object);
    }
};

/// Owns an object; `Free` is the library's function that destroys it.
template <class Object, auto Free>
using Handle = std::unique_ptr<Object, HandleDeleter<Free>>;

} // namespace platform
