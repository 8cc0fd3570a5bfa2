#include "pictures/aseq.h"

#include "aorow.h"

#include <limits>
#include <map>

namespace rsc {

namespace {

constexpr std::size_t kAseqHeaderSize = 10;
constexpr std::size_t kSwapFlagAt = 5;
constexpr std::size_t kReservedSize = 4;
constexpr std::size_t kOffsetSize = 4;
constexpr std::size_t kPlaceSize = 4;
constexpr std::size_t kStepSize = 8;
constexpr std::size_t kFrameHeaderSize = 6;
constexpr std::size_t kLargestOffset = std::numeric_limits<std::int32_t>::max();

/// Embedded coordinates have 12 bits; above this value they mean kPlaceSign - value.
constexpr int kPlaceSign = 2048;

void checkRange(const char* what, long value, long smallest, long largest) {
    if (value >= smallest && value <= largest) return;
    throw Refusal(std::string(what) + " is " + std::to_string(value) + ", allowed is " +
                  std::to_string(smallest) + " to " + std::to_string(largest));
}

void checkLimits(const Aseq& aseq) {
    checkRange("the number of sequences", std::ssize(aseq.sequences), 1, kLargestInt16);
    checkRange("the number of frames", std::ssize(aseq.frames), 1, kLargestInt16);
    checkRange("the rate", aseq.framesPerSecond, 0, kLargestByte);
    checkRange("the embedded x", aseq.x, kSmallestPlace, kLargestPlace);
    checkRange("the embedded y", aseq.y, kSmallestPlace, kLargestPlace);
    checkRange("the embedded depth", aseq.depth, 0, kLargestByte);
    for (const AseqFrame& frame : aseq.frames) {
        checkRange("a frame's width", frame.width, 1, kLargestInt16);
        checkRange("a frame's height", frame.height, 1, kLargestInt16);
    }
    for (const AseqSequence& sequence : aseq.sequences) {
        checkRange("the number of entries of a sequence", std::ssize(sequence), 1, kLargestInt16);
        for (const AseqEntry& entry : sequence) {
            checkRange("a step's dx", entry.dx, kSmallestInt16, kLargestInt16);
            checkRange("a step's dy", entry.dy, kSmallestInt16, kLargestInt16);
            checkRange("a step's code", entry.code, kSmallestInt16, std::ssize(aseq.frames) - 1);
            checkRange("a step's argument", entry.argument, kSmallestInt16, kLargestInt16);
        }
    }
}

unsigned placeBits(int place) {
    return static_cast<unsigned>(place < 0 ? kPlaceSign - place : place);
}

int placeValue(int bits) { return bits > kPlaceSign ? kPlaceSign - bits : bits; }

void putPlace(Bytes& out, const Aseq& aseq) {
    const unsigned x = placeBits(aseq.x);
    const unsigned y = placeBits(aseq.y);
    put8(out, x);
    put8(out, y);
    put8(out, x >> 8 | y >> 8 << 4);
    put8(out, static_cast<unsigned>(aseq.depth));
}

void putFrameOffsets(Bytes& out, const std::vector<AseqFrame>& frames) {
    std::size_t offset = 0;
    for (const AseqFrame& frame : frames) {
        if (offset > kLargestOffset) throw Refusal("the frames are too large for one animation");
        put32(out, offset);
        offset += kFrameHeaderSize + frame.rows.size();
    }
}

void putSequence(Bytes& out, const AseqSequence& sequence) {
    put16(out, sequence.size());
    for (const AseqEntry& entry : sequence) {
        putSigned16(out, entry.dx);
        putSigned16(out, entry.dy);
        putSigned16(out, entry.code);
        putSigned16(out, entry.argument);
    }
}

void putFrame(Bytes& out, const AseqFrame& frame) {
    put16(out, 0);
    putSigned16(out, frame.width);
    putSigned16(out, frame.height);
    out.insert(out.end(), frame.rows.begin(), frame.rows.end());
}

/// Reads the parts in the order in which they stand.
class AseqParser {
  public:
    explicit AseqParser(ByteSpan bytes)
        : in_(bytes, "the animation is cut off", bytes.size() > kSwapFlagAt && bytes[kSwapFlagAt]) {
    }

    Aseq parse() {
        const int sequences = count(0, "sequences");
        const int frames = count(2, "frames");
        aseq_.framesPerSecond = in_.u8(4);
        at_ = kAseqHeaderSize + static_cast<std::size_t>(frames) * kOffsetSize;
        readPlace();
        for (int i = 1; i <= sequences; ++i) readSequence(i, frames);
        for (int i = 1; i <= frames; ++i) readFrame(i);
        return std::move(aseq_);
    }

  private:
    [[nodiscard]] int count(std::size_t at, const char* what) const {
        const int value = in_.s16(at);
        if (value < 1) throw Refusal("the animation has no " + std::string(what));
        return value;
    }

    void readPlace() {
        const ByteSpan place = in_.slice(at_, kPlaceSize);
        aseq_.x = placeValue(place[0] | (place[2] & 0x0F) << 8);
        aseq_.y = placeValue(place[1] | place[2] >> 4 << 8);
        aseq_.depth = place[3];
        at_ += kPlaceSize;
    }

    void readSequence(int number, int frames) {
        const std::string name = "sequence " + std::to_string(number);
        const int entries = in_.s16(at_);
        if (entries < 1) throw Refusal(name + " has no entries");
        at_ += 2;
        AseqSequence& sequence = aseq_.sequences.emplace_back();
        for (int i = 0; i < entries; ++i, at_ += kStepSize) {
            const AseqEntry entry{in_.s16(at_), in_.s16(at_ + 2), in_.s16(at_ + 4),
                                  in_.s16(at_ + 6)};
            if (entry.code >= frames)
                throw Refusal(name + " shows frame " + std::to_string(entry.code + 1) + " of " +
                              std::to_string(frames));
            sequence.push_back(entry);
        }
        if (sequence.back().code != entrycode::kEnd) throw Refusal(name + " has no end");
    }

    void readFrame(int number) {
        const std::string name = "frame " + std::to_string(number);
        const auto tableAt = kAseqHeaderSize + static_cast<std::size_t>(number - 1) * kOffsetSize;
        const std::size_t offset = in_.u32(tableAt);
        if (const auto same = frameAt_.find(offset); same != frameAt_.end()) {
            aseq_.frames.push_back(aseq_.frames[same->second]);
            return;
        }
        frameAt_[offset] = aseq_.frames.size();
        const std::size_t start = at_ + offset;
        if (start > in_.size() || in_.size() - start < kFrameHeaderSize)
            throw Refusal(name + " lies past the end");
        AseqFrame& frame = aseq_.frames.emplace_back();
        frame.width = in_.s16(start + 2);
        frame.height = in_.s16(start + 4);
        if (frame.width < 1 || frame.height < 1) throw Refusal(name + " is empty");
        const std::size_t rowsAt = start + kFrameHeaderSize;
        frame.rows = wholeRows(in_.slice(rowsAt, in_.size() - rowsAt), frame, name);
        frameBytes_ += kFrameHeaderSize + frame.rows.size();
        if (frameBytes_ > in_.size()) throw Refusal(name + " overlaps other frames");
    }

    static ByteSpan wholeRows(ByteSpan data, const AseqFrame& frame, const std::string& name) {
        std::size_t used = 0;
        for (int y = 0; y < frame.height; ++y) {
            const aorow::RowEnd end = aorow::skipRow(data.subspan(used), frame.width);
            if (!end.whole) throw Refusal(name + " is damaged in row " + std::to_string(y + 1));
            used += end.bytes;
        }
        return data.first(used);
    }

    ByteReader in_;
    std::size_t at_ = 0;
    std::map<std::size_t, std::size_t> frameAt_; ///< number of the frame at each offset
    std::size_t frameBytes_ = 0;                 ///< of the frames read so far, each counted once
    Aseq aseq_;
};

} // namespace

Bytes writeAseq(const Aseq& aseq) {
    checkLimits(aseq);
    Bytes out;
    put16(out, aseq.sequences.size());
    put16(out, aseq.frames.size());
    put8(out, static_cast<unsigned>(aseq.framesPerSecond));
    put8(out, 0); // swap flag
    out.resize(out.size() + kReservedSize, 0);
    putFrameOffsets(out, aseq.frames);
    putPlace(out, aseq);
    for (const AseqSequence& sequence : aseq.sequences) putSequence(out, sequence);
    for (const AseqFrame& frame : aseq.frames) putFrame(out, frame);
    return out;
}

Aseq readAseq(ByteSpan bytes) { return AseqParser(bytes).parse(); }

} // namespace rsc
