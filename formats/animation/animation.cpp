#include "formats/animation/animation.h"

#include "formats/animation/row.h"

#include <limits>
#include <map>
#include <utility>

namespace formats::animation {

namespace {

constexpr std::size_t kSwapFlagAt = 5;
constexpr std::size_t kReservedSize = 4;
constexpr std::size_t kEntrySize = 8;
constexpr std::size_t kFrameHeaderSize = 6;

constexpr int kLargestByte = std::numeric_limits<std::uint8_t>::max();
constexpr int kLargestInt16 = std::numeric_limits<std::int16_t>::max();
constexpr std::size_t kLargestOffset = std::numeric_limits<std::int32_t>::max();

int placeBits(int place) { return place < 0 ? kLargestPlace - place : place; }
int placeValue(int bits) { return bits > kLargestPlace ? kLargestPlace - bits : bits; }

enum class Fault {
    None,
    HeaderCut,
    NoSequence,
    NegativeFrames,
    TableCut,
    NegativeSequence, ///< the first that was not read
    SequencesCut
};

/// Reads the parts in the order in which they stand.
class Parser {
  public:
    Parser(ByteSpan bytes, StoredAnimation& out)
        : bytes_(bytes),
          in_(bytes, bytes.size() > kSwapFlagAt && bytes[kSwapFlagAt] != 0 ? std::endian::big
                                                                           : std::endian::little),
          out_(out) {}

    Fault parse() {
        const int sequences = in_.i16();
        const int frames = in_.i16();
        out_.framesPerSecond = in_.u8();
        in_.skip(1 + kReservedSize);
        if (!in_.ok()) return Fault::HeaderCut;
        if (sequences < 1) return Fault::NoSequence;
        if (frames < 0) return Fault::NegativeFrames;
        out_.frames.resize(static_cast<std::size_t>(frames));
        std::vector<std::int32_t> offsets;
        for (int i = 0; i < frames && in_.ok(); ++i) offsets.push_back(in_.i32());
        readPlace();
        if (!in_.ok()) return Fault::TableCut;
        for (int i = 0; i < sequences; ++i)
            if (const Fault fault = readSequence(); fault != Fault::None) return fault;
        out_.frameData = bytes_.subspan(in_.position());
        for (std::size_t i = 0; i < offsets.size(); ++i) readFrame(out_.frames[i], offsets[i]);
        return Fault::None;
    }

  private:
    void readPlace() {
        const int x = in_.u8();
        const int y = in_.u8();
        const int high = in_.u8();
        out_.x = placeValue(x | (high & 0x0F) << 8);
        out_.y = placeValue(y | high >> 4 << 8);
        out_.depth = in_.u8();
    }

    Fault readSequence() {
        const int count = in_.i16();
        if (in_.ok() && count < 0) return Fault::NegativeSequence;
        if (!in_.ok() || static_cast<std::size_t>(count) > in_.remaining() / kEntrySize)
            return Fault::SequencesCut;
        Sequence& sequence = out_.sequences.emplace_back();
        sequence.reserve(static_cast<std::size_t>(count) + 1); // whoever adds an end has room
        for (int i = 0; i < count; ++i) {
            Entry& entry = sequence.emplace_back();
            for (std::int16_t* field : {&entry.dx, &entry.dy, &entry.code, &entry.argument})
                *field = in_.i16();
        }
        return Fault::None;
    }

    void readFrame(Frame& frame, std::int32_t offset) {
        const std::size_t size = out_.frameData.size();
        if (offset < 0 || size < kFrameHeaderSize ||
            static_cast<std::size_t>(offset) > size - kFrameHeaderSize)
            return;
        in_.seek(bytes_.size() - size + static_cast<std::size_t>(offset));
        in_.skip(sizeof(std::int16_t));
        frame.width = in_.i16();
        frame.height = in_.i16();
        frame.rows = bytes_.subspan(in_.position());
    }

    ByteSpan bytes_;
    ByteReader in_;
    StoredAnimation& out_;
};

/// What is not whole; empty when all is. Cuts the rows of each frame to what they take.
class WholeCheck {
  public:
    WholeCheck(StoredAnimation& animation, std::size_t size) : animation_(animation), size_(size) {}

    std::string run(Fault fault) {
        if (fault == Fault::HeaderCut) return kCutOff;
        if (fault == Fault::NoSequence) return "the animation has no sequences";
        if (animation_.frames.empty()) return "the animation has no frames"; // negative, too
        if (fault == Fault::TableCut) return kCutOff;
        for (std::size_t i = 0; i < animation_.sequences.size() && text_.empty(); ++i)
            check(animation_.sequences[i], "sequence " + std::to_string(i + 1));
        if (!text_.empty()) return text_;
        if (fault == Fault::NegativeSequence)
            return "sequence " + std::to_string(animation_.sequences.size() + 1) + kNoEntries;
        if (fault == Fault::SequencesCut) return kCutOff;
        for (std::size_t i = 0; i < animation_.frames.size() && text_.empty(); ++i)
            check(animation_.frames[i], "frame " + std::to_string(i + 1));
        return text_;
    }

  private:
    static constexpr const char* kCutOff = "the animation is cut off";
    static constexpr const char* kNoEntries = " has no entries";

    void check(const Sequence& sequence, const std::string& name) {
        if (sequence.empty()) return tell(name + kNoEntries);
        for (const Entry& entry : sequence)
            if (entry.code >= std::ssize(animation_.frames))
                return tell(name + " shows frame " + std::to_string(entry.code + 1) + " of " +
                            std::to_string(animation_.frames.size()));
        if (sequence.back().code != Entry::kEnd) tell(name + " has no end");
    }

    void check(Frame& frame, const std::string& name) {
        if (!frame.rows.data()) return tell(name + " lies past the end");
        const auto [known, isNew] = known_.try_emplace(frame.rows.data(), &frame);
        if (!isNew) {
            frame = *known->second;
            return;
        }
        if (frame.width < 1 || frame.height < 1) return tell(name + " is empty");
        std::size_t used = 0;
        for (int y = 0; y < frame.height; ++y) {
            const RowEnd end = skipRow(frame.rows.subspan(used), frame.width);
            if (!end.whole) return tell(name + " is damaged in row " + std::to_string(y + 1));
            used += end.bytes;
        }
        frame.rows = frame.rows.first(used);
        frameBytes_ += kFrameHeaderSize + used;
        if (frameBytes_ > size_) tell(name + " overlaps other frames");
    }

    void tell(std::string text) { text_ = std::move(text); }

    StoredAnimation& animation_;
    std::size_t size_;                                  ///< of the resource
    std::map<const std::uint8_t*, const Frame*> known_; ///< the frame whose rows lie there
    std::size_t frameBytes_ = 0; ///< of the frames checked so far, each counted once
    std::string text_;
};

std::string textOf(Fault fault) {
    switch (fault) {
    case Fault::None: break;
    case Fault::HeaderCut: return "its header is cut short";
    case Fault::NoSequence: return "it has no sequence";
    case Fault::NegativeFrames: return "its number of frames is negative";
    case Fault::TableCut: return "its frame table is cut short";
    case Fault::NegativeSequence:
    case Fault::SequencesCut: return "its sequences are cut short";
    }
    return {};
}

/// Keeps the first of its findings.
class LimitCheck {
  public:
    void check(const char* what, std::ptrdiff_t value, int smallest, int largest) {
        if (!text_.empty() || (value >= smallest && value <= largest)) return;
        text_ = std::string(what) + " is " + std::to_string(value) + ", allowed is " +
                std::to_string(smallest) + " to " + std::to_string(largest);
    }
    void checkSize(const std::vector<Frame>& frames) {
        std::size_t offset = 0; // of the last frame
        for (std::size_t i = 0; i + 1 < frames.size(); ++i)
            offset += kFrameHeaderSize + frames[i].rows.size();
        if (text_.empty() && offset > kLargestOffset)
            text_ = "the frames are too large for one animation";
    }
    [[nodiscard]] std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

void writeFrameOffsets(ByteWriter& out, const std::vector<Frame>& frames) {
    std::size_t offset = 0;
    for (const Frame& frame : frames) {
        out.u32(static_cast<std::int64_t>(offset));
        offset += kFrameHeaderSize + frame.rows.size();
    }
}

void writePlace(ByteWriter& out, const Animation& animation) {
    const int x = placeBits(animation.x);
    const int y = placeBits(animation.y);
    out.u8(x).u8(y).u8((x >> 8 & 0x0F) | y >> 8 << 4).u8(animation.depth);
}

} // namespace

Result<StoredAnimation> read(ByteSpan bytes) {
    StoredAnimation animation;
    std::string refusal = textOf(Parser(bytes, animation).parse());
    return {std::move(animation), std::move(refusal)};
}

Result<Animation> readWhole(ByteSpan bytes) {
    StoredAnimation animation;
    const Fault fault = Parser(bytes, animation).parse();
    std::string refusal = WholeCheck(animation, bytes.size()).run(fault);
    return {std::move(animation), std::move(refusal)};
}

std::string whyNotStored(const Animation& animation) {
    LimitCheck limits;
    limits.check("the number of sequences", std::ssize(animation.sequences), 1, kLargestInt16);
    limits.check("the number of frames", std::ssize(animation.frames), 1, kLargestInt16);
    limits.check("the rate", animation.framesPerSecond, 0, kLargestByte);
    limits.check("the embedded x", animation.x, kSmallestPlace, kLargestPlace);
    limits.check("the embedded y", animation.y, kSmallestPlace, kLargestPlace);
    limits.check("the embedded depth", animation.depth, 0, kLargestByte);
    for (const Frame& frame : animation.frames) {
        limits.check("a frame's width", frame.width, 1, kLargestInt16);
        limits.check("a frame's height", frame.height, 1, kLargestInt16);
    }
    const int lastFrame = static_cast<int>(animation.frames.size()) - 1;
    for (const Sequence& sequence : animation.sequences) {
        limits.check("the number of entries of a sequence", std::ssize(sequence), 1, kLargestInt16);
        for (const Entry& entry : sequence)
            limits.check("a step's code", entry.code, std::numeric_limits<std::int16_t>::min(),
                         lastFrame);
    }
    limits.checkSize(animation.frames);
    return limits.take();
}

Bytes write(const Animation& animation, std::endian order) {
    ByteWriter out(order);
    out.u16(std::ssize(animation.sequences)).u16(std::ssize(animation.frames));
    out.u8(animation.framesPerSecond).u8(order == std::endian::big ? 1 : 0).zeros(kReservedSize);
    writeFrameOffsets(out, animation.frames);
    writePlace(out, animation);
    for (const Sequence& sequence : animation.sequences) {
        out.u16(std::ssize(sequence));
        for (const Entry& entry : sequence)
            out.u16(entry.dx).u16(entry.dy).u16(entry.code).u16(entry.argument);
    }
    for (const Frame& frame : animation.frames)
        out.u16(0).u16(frame.width).u16(frame.height).block(frame.rows);
    return out.take();
}

Sequence stillSequence() {
    return {{0, 0, Entry::kHold, 0}, {0, 0, 0, 0}, {0, 0, Entry::kLoop, 0}, {0, 0, Entry::kEnd, 0}};
}

} // namespace formats::animation
