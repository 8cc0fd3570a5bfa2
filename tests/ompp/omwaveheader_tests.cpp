#include "frameworkfixture.h"
#include "soundbuilder.h"

#include "omapp.h"
#include "omistreamfile.h"
#include "omwaveheader.h"

#include <algorithm>
#include <random>

using testing_support::Bytes;
using testing_support::FrameworkTest;
using testing_support::MacSound;
using testing_support::RiffSound;

namespace {

using Strings = std::vector<std::string>;
using Samples = std::vector<std::uint8_t>;

constexpr int kModes[] = {kOMIStreamCache, kOMIStreamBuffered, 7};

std::string invalid(const std::string& what) {
    return "OMWaveSound::OMWaveSound - invalid " + what + "!";
}

class OMWaveHeaderTest : public FrameworkTest {
  protected:
    OMWaveHeader read(const Bytes& bytes, int mode = kOMIStreamCache) {
        files.put("s.bin", bytes);
        OMIStreamFile stream("s.bin", mode);
        stream.seek(3); // wherever it stands
        return OMReadWaveHeader(stream);
    }
    /// In every buffer mode the same.
    void expect(const Bytes& bytes, std::size_t offset, std::size_t length, int rate,
                const Strings& complaints) {
        for (const int mode : kModes) {
            const OMWaveHeader header = read(bytes, mode);
            EXPECT_EQ(header.dataOffset, offset) << mode;
            EXPECT_EQ(header.dataLength, length) << mode;
            EXPECT_EQ(header.sampleRate, rate) << mode;
            EXPECT_EQ(takeFailures(), complaints) << mode;
        }
    }
    /// Whatever the bytes say: what is read lies within the stream.
    void expectWithinStream(const Bytes& bytes) {
        const OMWaveHeader header = read(bytes);
        EXPECT_LE(header.dataOffset, bytes.size());
        EXPECT_LE(header.dataLength, bytes.size() - header.dataOffset);
        takeFailures();
    }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(OMWaveHeaderTest, ReadsWaveFiles) {
    struct Row {
        const char* name;
        RiffSound sound;
        std::size_t offset;
        int rate;
        Strings complaints;
    };
    const Samples data(10, 200);
    const Row rows[] = {
        {"22 kHz", {.data = data}, 44, 22050, {}},
        {"22,000", {.rate = 22000, .data = data}, 44, 22000, {}},
        {"22,255", {.rate = 22255, .data = data}, 44, 22255, {}},
        {"11 kHz", {.rate = 11025, .data = data}, 44, 11025, {}},
        {"11,127", {.rate = 11127, .data = data}, 44, 11127, {}},
        {"22,254", {.rate = 22254, .data = data}, 44, 22254, {invalid("sample rate")}},
        {"44 kHz", {.rate = 44100, .data = data}, 44, 44100, {invalid("sample rate")}},
        {"no rate", {.rate = 0, .data = data}, 44, 0, {invalid("sample rate")}},
        {"absurd rate",
         {.rate = 0xFFFFFFFF, .data = data},
         44,
         0x7FFFFFFF,
         {invalid("sample rate")}},
        {"stereo", {.channels = 2, .data = data}, 44, 22050, {invalid("number of channels")}},
        {"16 bits", {.bits = 16, .data = data}, 44, 22050, {invalid("number of bits per sample")}},
        {"longer format", {.extraFormat = 3, .data = data}, 48, 22050, {}},
        {"chunks of odd size", {.before = 5, .between = 7, .data = data}, 44 + 14 + 16, 22050, {}},
        {"format at the end of the first bytes",
         {.before = 996, .data = data},
         44 + 1004,
         22050,
         {}},
        {"data far behind", {.between = 20000, .data = data}, 44 + 20008, 22050, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expect(row.sound.build(), row.offset, data.size(), row.rate, row.complaints);
    }
}

TEST_F(OMWaveHeaderTest, TrustsNoSizeOfAWaveFile) {
    const Samples data(10, 200);
    expect(RiffSound{.claimed = 0xFFFFFFFF, .data = data}.build(), 44, 10, 22050, {});
    expect(RiffSound{.claimed = 11, .data = data}.build(), 44, 10, 22050, {});
    expect(RiffSound{.claimed = 9, .data = data}.build(), 44, 9, 22050, {});
    expect(RiffSound{.claimed = 0, .data = data}.build(), 44, 0, 22050, {});

    Bytes noData = RiffSound{.data = data}.build();
    noData[36] = std::byte{'D'};
    expect(noData, 0, 0, 22050, {});
    Bytes endless = RiffSound{.between = 6, .data = data}.build();
    for (std::size_t i = 40; i < 44; ++i) endless[i] = std::byte{0xFF};
    expect(endless, 0, 0, 22050, {});
}

TEST_F(OMWaveHeaderTest, FindsItsChunksAmongAnyOthers) {
    using Writer = testing_support::ByteWriter;
    const auto file = [](auto... parts) {
        Writer out(false);
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        (parts(out), ...);
        return out.bytes();
    };
    const auto chunk = [](std::string_view tag, std::uint32_t size, std::size_t bytes) {
        return [=](Writer& out) { out.text(tag).u32(size).samples(Samples(bytes, 200)); };
    };
    const auto format = [](std::uint32_t rate) {
        return [=](Writer& out) {
            out.text("fmt ").u32(16).u16(1).u16(1).u32(rate).u32(rate).u16(1).u16(8);
        };
    };
    const auto empty = [](int count) {
        return [=](Writer& out) {
            for (int i = 0; i < count; ++i) out.text("JUNK").u32(0);
        };
    };
    const auto plain = format(22050);
    const auto data = chunk("data", 10, 10);
    struct Row {
        const char* name;
        Bytes bytes;
        std::size_t offset;
        std::size_t length;
        int rate = 22050;
        Strings complaints = {};
    };
    const Row rows[] = {
        {"data before the format", file(data, plain), 0, 0},
        {"data on both sides", file(data, plain, chunk("data", 4, 4)), 62, 4},
        {"two data", file(plain, chunk("data", 4, 4), data), 44, 4},
        {"two formats", file(plain, format(11025), data), 68, 10},
        {"a thousand empty chunks", file(plain, empty(1000), data), 8044, 10},
        {"as many as fit before the format", file(empty(125), plain, data), 1044, 10},
        {"empty data", file(plain, chunk("data", 0, 0)), 44, 0},
        {"empty data before bytes", file(plain, chunk("data", 0, 9)), 44, 0},
        {"data of 2 GB", file(plain, chunk("data", 0x7FFFFFFF, 10)), 44, 10},
        {"a chunk of 2 GB", file(plain, chunk("LIST", 0x7FFFFFFF, 4), data), 0, 0},
        {"a chunk of 4 GB", file(plain, chunk("LIST", 0xFFFFFFFF, 4), data), 0, 0},
        {"odd without its pad byte", file(plain, chunk("LIST", 3, 3), data), 0, 0},
        {"data without its size", file(plain, [](Writer& out) { out.text("data").u16(0); }), 0, 0},
        {"format without its last byte",
         file(chunk("fmt ", 16, 15)),
         0,
         0,
         static_cast<int>(0x7FFFFFFF),
         {invalid("sample rate"), invalid("number of channels"),
          invalid("number of bits per sample")}},
        {"format of no size",
         file(chunk("fmt ", 0, 0), data),
         28,
         10,
         10,
         {invalid("sample rate"), invalid("number of channels"),
          invalid("number of bits per sample")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expect(row.bytes, row.offset, row.length, row.rate, row.complaints);
    }
}

TEST_F(OMWaveHeaderTest, ReadsMacintoshSounds) {
    struct Row {
        const char* name;
        MacSound sound;
        std::size_t offset;
        int rate;
        Strings complaints;
    };
    const Samples data(10, 200);
    const std::vector<Row> rows = {
        {"format 1", {.data = data}, 42, 22050, {}},
        {"format 1, options A0", {.options = 0xA0, .data = data}, 42, 22050, {}},
        {"format 1, extended", {.encoding = 0xFF, .data = data}, 84, 22050, {}},
        {"format 2", {.format = 2, .data = data}, 36, 22050, {}},
        {"format 2, extended", {.format = 2, .encoding = 0xFF, .data = data}, 78, 22050, {}},
        {"22,000", {.rate = 0x55F00000, .data = data}, 42, 22000, {}},
        {"22,254.5", {.rate = 0x56EE8BA3, .data = data}, 42, 22254, {}},
        {"11,025", {.rate = 0x2B110000, .data = data}, 42, 11025, {}},
        {"11,127.3", {.rate = 0x2B7745D1, .data = data}, 42, 11127, {}},
        {"44,100", {.rate = 0xAC440000, .data = data}, 42, 44100, {invalid("sample rate")}},
        {"synthesizers",
         {.synthesizers = 2, .data = data},
         42,
         22050,
         {invalid("number of synthesizers")}},
        {"synthesizer", {.synthesizer = 1, .data = data}, 42, 22050, {invalid("synthesizer")}},
        {"options", {.options = 0xC0, .data = data}, 42, 22050, {invalid("synthesizer option")}},
        {"commands", {.commands = 2, .data = data}, 42, 22050, {invalid("number of commands")}},
        {"command", {.command = 0x0051, .data = data}, 42, 22050, {invalid("command")}},
        {"parameters",
         {.param1 = 1, .param2 = 0x0E, .data = data},
         42,
         22050,
         {invalid("command parameter 1"), invalid("command parameter 2")}},
        {"format 2, parameter",
         {.format = 2, .param2 = 0x14, .data = data},
         36,
         22050,
         {invalid("command parameter 2")}},
        {"encoding", {.encoding = 0xFE, .data = data}, 84, 22050, {invalid("encoding")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expect(row.sound.build(), row.offset, data.size(), row.rate, row.complaints);
    }
    expect(MacSound{.length = 0x80000000, .data = data}.build(), 42, 10, 22050, {});
    expect(MacSound{.length = 3, .data = data}.build(), 42, 3, 22050, {});
}

TEST_F(OMWaveHeaderTest, UnknownHeadersHaveNoSamples) {
    for (const char* text : {"", "R", "RIFF", "RIFFxxxxWAVF", "RIFXxxxxWAVE", "just some text"})
        expect(testing_support::toBytes(text), 0, 0, 0, {});
    for (const std::uint32_t format : {0u, 3u, 0x100u})
        expect(MacSound{.format = format, .data = Samples(50)}.build(), 0, 0, 0, {});
}

using OMWaveHeaderDeathTest = OMWaveHeaderTest;

TEST_F(OMWaveHeaderDeathTest, AWaveFileWithoutFormatStopsTheProgram) {
    const std::string text = "!found(.|\n)*OMWaveSound::OMWaveSound - invalid WAVE format!";
    const Bytes whole = RiffSound{.data = Samples(10)}.build();
    const Bytes late = RiffSound{.before = 998, .data = Samples(10)}.build();
    EXPECT_EXIT(read(late), testing::ExitedWithCode(255), text);
    // Neither is one of 4 GB before it passed over.
    Bytes hidden = RiffSound{.before = 6, .data = Samples(10)}.build();
    std::fill_n(hidden.begin() + 16, 4, std::byte{0xFF});
    EXPECT_EXIT(read(hidden), testing::ExitedWithCode(255), text);
    for (const std::ptrdiff_t length : {12, 19})
        EXPECT_EXIT(read(Bytes(whole.begin(), whole.begin() + length)),
                    testing::ExitedWithCode(255), text);
}

TEST_F(OMWaveHeaderTest, SurvivesTruncationAtEveryByte) {
    const Samples data(20, 1);
    const Bytes all[] = {RiffSound{.before = 5, .between = 7, .data = data}.build(),
                         MacSound{.data = data}.build(),
                         MacSound{.format = 2, .encoding = 0xFF, .data = data}.build()};
    for (const Bytes& whole : all)
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const bool fatal = &whole == &all[0] && length >= 12 && length < 34; // no "fmt " yet
            if (fatal) continue;
            expectWithinStream(
                {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        }
}

TEST_F(OMWaveHeaderTest, SurvivesDamageAtEveryByte) {
    const Samples data(20, 1);
    const Bytes riff = RiffSound{.between = 6, .data = data}.build();
    const Bytes mac = MacSound{.data = data}.build();
    std::mt19937 random(7);
    for (const Bytes* whole : {&riff, &mac})
        for (std::size_t i = 0; i < whole->size(); ++i)
            for (const unsigned value : {0u, 0x7Fu, 0xFFu, static_cast<unsigned>(random() % 256)}) {
                if (whole == &riff && i >= 12 && i < 16) continue; // "fmt " itself: fatal
                Bytes damaged = *whole;
                damaged[i] = static_cast<std::byte>(value);
                expectWithinStream(damaged);
            }
}

} // namespace
