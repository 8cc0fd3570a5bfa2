// How a frame is made of its packed rows.

#include "aoframe.h"
#include "formats/animation/row.h"

#include <algorithm>
#include <climits>

namespace {

constexpr int kLongestGap = 64;      ///< bytes of transparent pixels inside of a segment
constexpr int kLongFill = 256;       ///< bytes from which on a fill stays one
constexpr std::uint8_t kKept = 0xFF; ///< in a mask: what is below stays

} // namespace

class AOFrame::Unpacker {
  public:
    Unpacker(AOFrame& frame, const AOPixelTable& pixels) : frame_(frame), pixels_(pixels) {}

    void unpack(std::span<const std::uint8_t> rows) {
        frame_.rowStarts_.push_back(0);
        for (row_ = 0; row_ < frame_.size_.height && !rows.empty(); ++row_)
            rows = rows.subspan(addRow(rows));
    }

  private:
    using RowRun = formats::animation::RowRun;

    /// Returns the bytes that the row takes.
    std::size_t addRow(std::span<const std::uint8_t> row) {
        formats::animation::RowReader reader(row, frame_.size_.width);
        RowRun run;
        int column = 0;
        while (reader.next(run)) {
            if (run.kind == RowRun::Kind::Fill && run.length * frame_.bytesPerPixel_ >= kLongFill)
                addLongFill(column, run);
            else if (run.kind != RowRun::Kind::Clear)
                addOpaque(column, run);
            column += run.length;
        }
        close();
        frame_.rowStarts_.push_back(static_cast<std::uint32_t>(frame_.segments_.size()));
        return reader.end().bytes;
    }

    void addLongFill(int column, const RowRun& run) {
        close();
        open(column, Kind::Fill);
        addPixel(run.colours[0]);
        segment_.length = static_cast<std::uint16_t>(run.length);
        close();
    }

    void addOpaque(int column, const RowRun& run) {
        const int gap = column - segment_.column - segment_.length;
        if (isOpen_ && gap * frame_.bytesPerPixel_ > kLongestGap) close();
        if (!isOpen_)
            open(column, Kind::Copy);
        else if (gap > 0)
            addGap(gap);
        const bool fill = run.kind == RowRun::Kind::Fill;
        for (int i = 0; i < run.length; ++i)
            addPixel(run.colours[fill ? 0 : static_cast<std::size_t>(i)]);
        segment_.length = static_cast<std::uint16_t>(column + run.length - segment_.column);
    }

    void addGap(int pixels) {
        segment_.kind = Kind::Masked;
        mask_.resize(frame_.bytes_.size() -
                     segment_.pixels); // all before the gap is opaque or there
        const auto bytes = static_cast<std::size_t>(pixels * frame_.bytesPerPixel_);
        mask_.insert(mask_.end(), bytes, kKept);
        frame_.bytes_.insert(frame_.bytes_.end(), bytes, 0);
    }

    void addPixel(std::uint8_t colour) {
        const std::uint32_t pixel = pixels_[colour];
        for (int byte = 0; byte < frame_.bytesPerPixel_; ++byte)
            frame_.bytes_.push_back(static_cast<std::uint8_t>(pixel >> CHAR_BIT * byte));
    }

    void open(int column, Kind kind) {
        segment_ = {static_cast<std::uint16_t>(row_), static_cast<std::uint16_t>(column), 0, kind,
                    frame_.bytes_.size()};
        mask_.clear();
        isOpen_ = true;
    }

    void close() {
        if (!isOpen_) return;
        isOpen_ = false;
        if (segment_.kind == Kind::Masked) {
            mask_.resize(frame_.bytes_.size() - segment_.pixels);
            frame_.bytes_.insert(frame_.bytes_.end(), mask_.begin(), mask_.end());
        }
        frame_.segments_.push_back(segment_);
    }

    AOFrame& frame_;
    const AOPixelTable& pixels_;
    int row_ = 0;
    bool isOpen_ = false;
    Segment segment_{};
    std::vector<std::uint8_t> mask_; ///< of the open segment, up to its last gap
};

AOFrame::AOFrame(AOSize size, std::span<const std::uint8_t> rows, const AOPixelTable& pixels,
                 int bytesPerPixel)
    : size_(size), bytesPerPixel_(bytesPerPixel) {
    if (size.width > 0) Unpacker(*this, pixels).unpack(rows);
    rowStarts_.shrink_to_fit();
    segments_.shrink_to_fit();
    bytes_.shrink_to_fit();
    isWhole_ = hasWholeRows();
}

bool AOFrame::hasWholeRows() const {
    return std::ssize(segments_) == size_.height &&
           std::ranges::all_of(segments_, [this](const Segment& segment) {
               return segment.kind == Kind::Copy && segment.length == size_.width;
           });
}

std::size_t AOFrame::memory() const {
    return rowStarts_.capacity() * sizeof(std::uint32_t) + segments_.capacity() * sizeof(Segment) +
           bytes_.capacity();
}
