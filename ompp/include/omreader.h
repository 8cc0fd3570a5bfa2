// Reading of data that comes from outside: OMReader for bytes, OMScanner for text. Both know where
// their data ends, so that no parser built on them can run past it, and both always move forward,
// so that broken data cannot stall a parser.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// Numbers out of a block of bytes, little-endian unless told otherwise. A read that goes past the
/// end gives 0 (or nothing), and from then on `ok` is false and every further read fails too: a
/// parser may read a whole record and ask once.
class OMReader {
  public:
    /// The bytes must outlive the reader.
    explicit OMReader(std::span<const std::byte> bytes, std::endian order = std::endian::little)
        : bytes_(bytes), order_(order) {}

    [[nodiscard]] bool ok() const { return ok_; }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] std::size_t remaining() const { return bytes_.size() - position_; }

    /// Sets the place of the next read, counted from the start; a place past the end is a failure.
    void seek(std::size_t position);
    void skip(std::size_t count) { (void)bytes(count); }

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }
    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

    /// The next `count` bytes; none of them when not all are there.
    std::span<const std::byte> bytes(std::size_t count);
    /// The same as Latin-1 characters.
    std::string_view text(std::size_t count);

  private:
    std::uint32_t number(std::size_t count);

    std::span<const std::byte> bytes_;
    std::endian order_;
    std::size_t position_ = 0;
    bool ok_ = true;
};

/// Words and numbers out of a text. Blanks are spaces and tabs; lines end with LF, CR or CR LF.
class OMScanner {
  public:
    /// The text must outlive the scanner.
    explicit OMScanner(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

    /// The first `limit` characters of the next line that holds more than blanks; the rest of that
    /// line is passed over. Empty only at the end of the text.
    std::string_view line(std::size_t limit);
    /// Number of the line that `line` gave last; the first is 1.
    [[nodiscard]] int lineNumber() const { return lineNumber_; }

    void skipBlanks();
    /// Skips characters below the blank, line ends among them.
    void skipControls();

    /// Passes over leading blanks and `text`; false, and nothing else passed over, when the text
    /// that follows is another.
    bool literal(std::string_view text);
    /// A decimal number with an optional sign after leading blanks; none when there is no digit or
    /// the number does not fit.
    std::optional<int> number();
    /// The characters up to the next blank or control character after leading blanks; empty at the
    /// end.
    std::string_view word();
    /// The next `count` characters, whatever they are; fewer at the end.
    std::string_view take(std::size_t count);

  private:
    /// Everything up to the line end, which is passed over as well.
    std::string_view takeLine();

    std::string_view rest_;
    int lineNumber_ = 0;
};
