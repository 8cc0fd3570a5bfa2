// What the headers of sounds say, and which of it is believed.
#include "frameworkfixture.h"
#include "soundbuilder.h"

#include "omistreamfile.h"
#include "omwaveheader.h"

#include <algorithm>
#include <random>

using testing_support::Bytes;
using testing_support::MacSound;
using testing_support::RiffSound;

namespace {

using Samples = std::vector<std::uint8_t>;
using Complaints = std::vector<std::string>; ///< after "invalid"

const Samples kData(10, 200);

class OMWaveHeaderTest : public testing_support::OMAppTest {
  protected:
    struct Row {
        const char* name;
        Bytes bytes;
        std::size_t offset;
        int rate = 22050;
        Complaints complaints = {};
        std::size_t length = kData.size();
    };

    OMWaveHeader read(const Bytes& bytes, int mode = kOMIStreamCache) {
        files.put("s.bin", bytes);
        OMIStreamFile stream("s.bin", mode);
        stream.seek(3); // wherever it stands
        return OMReadWaveHeader(stream);
    }
    /// In every buffer mode the same.
    void expect(const std::vector<Row>& rows) {
        for (const Row& row : rows)
            for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, 7}) {
                SCOPED_TRACE(row.name);
                const OMWaveHeader header = read(row.bytes, mode);
                EXPECT_EQ(header.dataOffset, row.offset) << mode;
                EXPECT_EQ(header.dataLength, row.length) << mode;
                EXPECT_EQ(header.sampleRate, row.rate) << mode;
                Strings expected;
                for (const std::string& what : row.complaints)
                    expected.push_back("OMWaveSound::OMWaveSound - invalid " + what + "!");
                EXPECT_EQ(takeFailures(), expected) << mode;
            }
    }
    /// Whatever the bytes say: what is read lies within the stream.
    void expectWithinStream(const Bytes& bytes) {
        const OMWaveHeader header = read(bytes);
        EXPECT_LE(header.dataOffset, bytes.size());
        EXPECT_LE(header.dataLength, bytes.size() - header.dataOffset);
        takeFailures();
    }
};

TEST_F(OMWaveHeaderTest, ReadsWaveFiles) {
    const auto riff = [](RiffSound sound) {
        sound.data = kData;
        return sound.build();
    };
    const Complaints rate{"sample rate"};
    expect({
        {"22,050", riff({}), 44},
        {"22,000", riff({.rate = 22000}), 44, 22000},
        {"22,255", riff({.rate = 22255}), 44, 22255},
        {"11,025", riff({.rate = 11025}), 44, 11025},
        {"11,127", riff({.rate = 11127}), 44, 11127},
        {"22,254", riff({.rate = 22254}), 44, 22254, rate},
        {"no rate", riff({.rate = 0}), 44, 0, rate},
        {"absurd rate", riff({.rate = 0xFFFFFFFF}), 44, 0x7FFFFFFF, rate},
        {"stereo", riff({.channels = 2}), 44, 22050, {"number of channels"}},
        {"16 bits", riff({.bits = 16}), 44, 22050, {"number of bits per sample"}},
        {"longer format", riff({.extraFormat = 3}), 48},
        {"chunks of odd size", riff({.before = 5, .between = 7}), 44 + 14 + 16},
        {"format at the end of the first bytes", riff({.before = 996}), 44 + 1004},
        {"data far behind", riff({.between = 20000}), 44 + 20008},
        {"data of 4 GB", riff({.claimed = 0xFFFFFFFF}), 44},
        {"data of 2 GB", riff({.claimed = 0x7FFFFFFF}), 44},
        {"a byte too many", riff({.claimed = 11}), 44},
        {"a byte less", riff({.claimed = 9}), 44, 22050, {}, 9},
        {"no data", riff({.claimed = 0}), 44, 22050, {}, 0},
    });
}

TEST_F(OMWaveHeaderTest, FindsItsChunksAmongAnyOthers) {
    using Writer = testing_support::ByteWriter;
    const auto file = [](auto... parts) {
        Writer out;
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        (parts(out), ...);
        return out.bytes();
    };
    const auto chunk = [](std::string_view tag, std::uint32_t size, std::size_t bytes) {
        return [=](Writer& out) { out.text(tag).u32(size).all(Samples(bytes, 200)); };
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
    const auto four = chunk("data", 4, 4);
    const Complaints all{"sample rate", "number of channels", "number of bits per sample"};
    expect({
        {"data before the format", file(data, plain), 0, 22050, {}, 0},
        {"data on both sides", file(data, plain, four), 62, 22050, {}, 4},
        {"two data", file(plain, four, data), 44, 22050, {}, 4},
        {"two formats", file(plain, format(11025), data), 68},
        {"a thousand empty chunks", file(plain, empty(1000), data), 8044},
        {"as many as fit before the format", file(empty(125), plain, data), 1044},
        {"a chunk of 2 GB", file(plain, chunk("LIST", 0x7FFFFFFF, 4), data), 0, 22050, {}, 0},
        {"a chunk of 4 GB", file(plain, chunk("LIST", 0xFFFFFFFF, 4), data), 0, 22050, {}, 0},
        {"odd without its pad byte", file(plain, chunk("LIST", 3, 3), data), 0, 22050, {}, 0},
        {"format without its last byte", file(chunk("fmt ", 16, 15)), 0, 0x7FFFFFFF, all, 0},
        {"format of no size", file(chunk("fmt ", 0, 0), data), 28, 10, all},
        {"no sound", testing_support::toBytes("just some text"), 0, 0, {}, 0},
        {"another order of bytes", testing_support::toBytes("RIFXxxxxWAVE"), 0, 0, {}, 0},
    });
}

TEST_F(OMWaveHeaderTest, ReadsMacintoshSounds) {
    const auto mac = [](MacSound sound) {
        sound.data = kData;
        return sound.build();
    };
    const Complaints parameter2{"command parameter 2"};
    expect({
        {"format 1", mac({}), 42},
        {"format 1, options A0", mac({.options = 0xA0}), 42},
        {"format 1, extended", mac({.encoding = 0xFF}), 84},
        {"format 2", mac({.format = 2}), 36},
        {"format 2, extended", mac({.format = 2, .encoding = 0xFF}), 78},
        {"format 3", mac({.format = 3}), 0, 0, {}, 0},
        {"22,254.5", mac({.rate = 0x56EE8BA3}), 42, 22254},
        {"11,127.3", mac({.rate = 0x2B7745D1}), 42, 11127},
        {"44,100", mac({.rate = 0xAC440000}), 42, 44100, {"sample rate"}},
        {"synthesizers", mac({.synthesizers = 2}), 42, 22050, {"number of synthesizers"}},
        {"synthesizer", mac({.synthesizer = 1}), 42, 22050, {"synthesizer"}},
        {"options", mac({.options = 0xC0}), 42, 22050, {"synthesizer option"}},
        {"commands", mac({.commands = 2}), 42, 22050, {"number of commands"}},
        {"command", mac({.command = 0x0051}), 42, 22050, {"command"}},
        {"parameter", mac({.param1 = 1}), 42, 22050, {"command parameter 1"}},
        {"parameter of format 2", mac({.param2 = 0x0E}), 42, 22050, parameter2},
        {"parameter of format 1", mac({.format = 2, .param2 = 0x14}), 36, 22050, parameter2},
        {"encoding", mac({.encoding = 0xFE}), 84, 22050, {"encoding"}},
        {"2 GB", mac({.length = 0x80000000}), 42},
        {"three bytes", mac({.length = 3}), 42, 22050, {}, 3},
    });
}

TEST_F(OMWaveHeaderTest, AWaveFileWithoutFormatStopsTheProgram) {
    const Bytes whole = RiffSound{.data = kData}.build();
    Bytes hidden = RiffSound{.before = 6, .data = kData}.build(); // by a chunk of 4 GB before it
    std::fill_n(hidden.begin() + 16, 4, std::byte{0xFF});
    for (const Bytes& bytes :
         {RiffSound{.before = 998, .data = kData}.build(), hidden,
          Bytes(whole.begin(), whole.begin() + 12), Bytes(whole.begin(), whole.begin() + 19)})
        EXPECT_EXIT(read(bytes), testing::ExitedWithCode(255),
                    "!found(.|\n)*OMWaveSound::OMWaveSound - invalid WAVE format!");
}

TEST_F(OMWaveHeaderTest, SurvivesTruncationAndDamageAtEveryByte) {
    const Bytes all[] = {RiffSound{.between = 6, .data = kData}.build(),
                         MacSound{.data = kData}.build(),
                         MacSound{.format = 2, .encoding = 0xFF, .data = kData}.build()};
    std::mt19937 random(7);
    for (const Bytes& whole : all)
        for (std::size_t at = 0; at < whole.size(); ++at) {
            const bool isRiff = &whole == &all[0]; // which is nothing without its "fmt "
            if (!isRiff || at < 12 || at >= 20)
                expectWithinStream({whole.begin(), whole.begin() + static_cast<long>(at)});
            if (isRiff && at >= 12 && at < 16) continue;
            for (const unsigned value : {0u, 0x7Fu, 0xFFu, static_cast<unsigned>(random() % 256)}) {
                Bytes damaged = whole;
                damaged[at] = static_cast<std::byte>(value);
                expectWithinStream(damaged);
            }
        }
}

} // namespace
