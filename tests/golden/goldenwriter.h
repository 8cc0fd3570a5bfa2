// Bytes one after the other.
#pragma once

#include "goldenresources.h"

#include <initializer_list>

namespace golden {

class Writer {
  public:
    explicit Writer(bool bigEndian) : bigEndian_(bigEndian) {}

    void byte(int value) { bytes.push_back(static_cast<std::byte>(value)); }
    void word(int value) { number(value, 2); }
    void words(std::initializer_list<int> values) {
        for (const int value : values) word(value);
    }
    void longs(std::initializer_list<int> values) {
        for (const int value : values) number(value, 4);
    }
    void number(int value, int count) {
        for (int i = 0; i < count; ++i) byte(value >> 8 * (bigEndian_ ? count - 1 - i : i));
    }
    void add(const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

    Bytes bytes;

  private:
    bool bigEndian_;
};

} // namespace golden
