// One pixel row of an animation frame: colour indices packed into runs.
//
//     0  n            n transparent pixels
//     255  c  n       n pixels of colour index c
//     n  c1 ... cn    n single pixels, n = 1 to 250
//
// The runs of a whole row add up to the frame's width and hold at most 250 pixels each. Frames come
// from files, so a row may be damaged: it ends at the first token that is none of these (251 to
// 254, or a run of length 0), at a run that passes the width, or at the end of the data. What is
// missing then is transparent, and the next row starts behind the token that ended this one.
// Nothing here reads past the data or writes past the row.
#pragma once

#include "formats/base/bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace formats::animation {

inline constexpr int kLongestRun = 250;
inline constexpr std::uint8_t kClearToken = 0;
inline constexpr std::uint8_t kFillToken = 255;

/// Where a row ended.
struct RowEnd {
    std::size_t bytes = 0; ///< taken from the data; the next row starts there
    bool whole = false;    ///< false when the row was damaged or cut short
    friend bool operator==(const RowEnd&, const RowEnd&) = default;
};

/// A piece of a row. Its colours lie in the row's data: none for clear pixels, one for a fill,
/// `length` for literals.
struct RowRun {
    enum class Kind : std::uint8_t { Clear, Fill, Literal };
    Kind kind = Kind::Clear;
    int length = 0; ///< pixels; never leads past the width
    ByteSpan colours;
};

/// Walks through the runs of one row; all functions below are made of it.
class RowReader {
  public:
    /// The data must outlive the reader. A width below 1 is a row without runs.
    RowReader(ByteSpan data, int width) : data_(data), left_(std::max(width, 0)) {}

    /// The next run; false at the end of the row.
    bool next(RowRun& run) {
        if (left_ == 0 || at_ >= data_.size()) return false;
        const std::uint8_t token = data_[at_++];
        if (token == kClearToken) return nextClear(run);
        if (token == kFillToken) return nextFill(run);
        return token <= kLongestRun ? nextLiteral(run, token) : damaged();
    }

    /// Meaningful once `next` has returned false.
    [[nodiscard]] RowEnd end() const { return {at_, left_ == 0 && !damaged_}; }

  private:
    bool nextClear(RowRun& run) {
        if (at_ >= data_.size()) return damaged();
        run = {RowRun::Kind::Clear, 0, {}};
        return take(run, data_[at_++]);
    }

    bool nextFill(RowRun& run) {
        if (data_.size() - at_ < 2) {
            at_ = data_.size();
            return damaged();
        }
        run = {RowRun::Kind::Fill, 0, data_.subspan(at_, 1)};
        at_ += 2;
        return take(run, data_[at_ - 1]);
    }

    bool nextLiteral(RowRun& run, int count) {
        const auto here = std::min(static_cast<std::size_t>(count), data_.size() - at_);
        damaged_ = here < static_cast<std::size_t>(count);
        run = {RowRun::Kind::Literal, 0, data_.subspan(at_, here)};
        at_ += here;
        return take(run, static_cast<int>(here));
    }

    bool take(RowRun& run, int count) {
        if (count == 0) return damaged();
        damaged_ |= count > left_;
        run.length = std::min(count, left_);
        left_ -= run.length;
        return true;
    }

    bool damaged() {
        damaged_ = true;
        left_ = 0;
        return false;
    }

    ByteSpan data_;
    std::size_t at_ = 0;
    int left_; ///< pixels up to the width
    bool damaged_ = false;
};

/// Appends the packed form of a row to `out`, at most twice as many bytes as pixels. Pixels of
/// colour `transparent` become clear runs; without it every pixel is opaque.
void encodeRow(ByteSpan pixels, std::optional<std::uint8_t> transparent, Bytes& out);

/// Unpacks a row of width pixels.size(); clear and missing pixels become `transparent`.
RowEnd decodeRow(ByteSpan data, std::span<std::uint8_t> pixels, std::uint8_t transparent);

/// Walks over a row without drawing it.
RowEnd skipRow(ByteSpan data, int width);

} // namespace formats::animation
