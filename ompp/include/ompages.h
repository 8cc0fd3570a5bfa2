// Memory in whole pages, aligned to a page: what unbuffered reading wants to read into.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>

class OMPages {
  public:
    /// No memory yet.
    OMPages() = default;
    /// At least `size` bytes, of undefined content; none when the machine has not that much left.
    /// The program's handler for that case has no part in it: who asks goes on without.
    explicit OMPages(std::size_t size) : OMPages(size, platform::kPageSize) {}
    /// A multiple of `unit` besides, which is a power of two.
    OMPages(std::size_t size, std::size_t unit) {
        const std::size_t granule = unit > platform::kPageSize ? unit : platform::kPageSize;
        size = (size + granule - 1) / granule * granule;
        bytes_.reset(static_cast<std::byte*>(std::aligned_alloc(platform::kPageSize, size)));
        if (bytes_) size_ = size;
    }

    [[nodiscard]] bool isThere() const { return bytes_ != nullptr; }
    [[nodiscard]] std::span<std::byte> bytes() const { return {bytes_.get(), size_}; }

  private:
    struct Free {
        void operator()(std::byte* bytes) const { std::free(bytes); }
    };

    std::unique_ptr<std::byte, Free> bytes_;
    std::size_t size_ = 0;
};
