// A descriptor of the host's kernel: an open file, folder or end of a pipe.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

/// Closed by destruction.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, kNone)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    [[nodiscard]] bool isOpen() const { return number_ != kNone; }
    [[nodiscard]] int number() const { return number_; }
    void close() {
        if (isOpen()) ::close(std::exchange(number_, kNone));
    }

  private:
    static constexpr int kNone = -1;
    int number_ = kNone;
};

} // namespace platform
