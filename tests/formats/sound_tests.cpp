// What the heads of sounds say, and which of it is believed.
#include "formats/sound/wave.h"
#include "soundbuilder.h"

#include <gtest/gtest.h>

using formats::Bytes;
using formats::sound::Fault;
using testing_support::MacSound;
using testing_support::RiffSound;

namespace {

using Faults = std::vector<Fault>;

const Bytes kData(10, 200);

struct Row {
    const char* name;
    Bytes bytes;
    std::size_t offset;
    int rate = 22050;
    Faults faults = {};
    std::size_t length = kData.size();
};

void expect(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto facts = formats::sound::examine(row.bytes);
        EXPECT_EQ(facts.header.dataOffset, row.offset);
        EXPECT_EQ(facts.header.dataLength, row.length);
        EXPECT_EQ(facts.header.sampleRate, row.rate);
        EXPECT_EQ(facts.faults, row.faults);
    }
}

TEST(Wave, ReadsWaveFiles) {
    const auto riff = [](RiffSound sound) {
        sound.data = kData;
        return sound.build();
    };
    const Faults rate{Fault::SampleRate};
    expect({
        {"22,050", riff({}), 44},
        {"22,000", riff({.rate = 22000}), 44, 22000},
        {"22,255", riff({.rate = 22255}), 44, 22255},
        {"11,025", riff({.rate = 11025}), 44, 11025},
        {"11,127", riff({.rate = 11127}), 44, 11127},
        {"22,254", riff({.rate = 22254}), 44, 22254, rate},
        {"no rate", riff({.rate = 0}), 44, 0, rate},
        {"absurd rate", riff({.rate = 0xFFFFFFFF}), 44, 0x7FFFFFFF, rate},
        {"stereo", riff({.channels = 2}), 44, 22050, {Fault::Channels}},
        {"16 bits", riff({.bits = 16}), 44, 22050, {Fault::Bits}},
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

TEST(Wave, FindsItsChunksAmongAnyOthers) {
    using Writer = formats::ByteWriter;
    const auto file = [](auto... parts) {
        Writer out;
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        (parts(out), ...);
        return out.take();
    };
    const auto chunk = [](std::string_view tag, std::uint32_t size, std::size_t bytes) {
        return [=](Writer& out) { out.text(tag).u32(size).block(Bytes(bytes, 200)); };
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
    const Faults all{Fault::SampleRate, Fault::Channels, Fault::Bits};
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
        {"no sound", formats::ByteWriter().text("just some text").take(), 0, 0, {}, 0},
        {"another order of bytes", formats::ByteWriter().text("RIFXxxxxWAVE").take(), 0, 0, {}, 0},
    });
}

TEST(Wave, ReadsMacintoshSounds) {
    const auto mac = [](MacSound sound) {
        sound.data = kData;
        return sound.build();
    };
    const Faults parameter2{Fault::Parameter2};
    expect({
        {"format 1", mac({}), 42},
        {"format 1, options A0", mac({.options = 0xA0}), 42},
        {"format 1, extended", mac({.encoding = 0xFF}), 84},
        {"format 2", mac({.format = 2}), 36},
        {"format 2, extended", mac({.format = 2, .encoding = 0xFF}), 78},
        {"format 3", mac({.format = 3}), 0, 0, {}, 0},
        {"22,254.5", mac({.rate = 0x56EE8BA3}), 42, 22254},
        {"11,127.3", mac({.rate = 0x2B7745D1}), 42, 11127},
        {"44,100", mac({.rate = 0xAC440000}), 42, 44100, {Fault::SampleRate}},
        {"synthesizers", mac({.synthesizers = 2}), 42, 22050, {Fault::Synthesizers}},
        {"synthesizer", mac({.synthesizer = 1}), 42, 22050, {Fault::Synthesizer}},
        {"options", mac({.options = 0xC0}), 42, 22050, {Fault::Options}},
        {"commands", mac({.commands = 2}), 42, 22050, {Fault::Commands}},
        {"command", mac({.command = 0x0051}), 42, 22050, {Fault::Command}},
        {"parameter", mac({.param1 = 1}), 42, 22050, {Fault::Parameter1}},
        {"parameter of format 2", mac({.param2 = 0x0E}), 42, 22050, parameter2},
        {"parameter of format 1", mac({.format = 2, .param2 = 0x14}), 36, 22050, parameter2},
        {"encoding", mac({.encoding = 0xFE}), 84, 22050, {Fault::Encoding}},
        {"2 GB", mac({.length = 0x80000000}), 42},
        {"three bytes", mac({.length = 3}), 42, 22050, {}, 3},
    });
}

TEST(Wave, StaysWithinTheResourceHoweverItIsCutOrDamaged) {
    const Bytes all[] = {RiffSound{.between = 6, .data = kData}.build(),
                         MacSound{.data = kData}.build(),
                         MacSound{.format = 2, .encoding = 0xFF, .data = kData}.build()};
    const auto expectWithin = [](const Bytes& bytes) {
        const auto header = formats::sound::examine(bytes).header;
        EXPECT_LE(header.dataOffset, bytes.size());
        EXPECT_LE(header.dataLength, bytes.size() - header.dataOffset);
    };
    for (const Bytes& whole : all)
        for (std::size_t at = 0; at < whole.size(); ++at) {
            expectWithin({whole.begin(), whole.begin() + static_cast<long>(at)});
            for (const int value : {0, 0x7F, 0x80, 0xFF}) {
                Bytes damaged = whole;
                damaged[at] = static_cast<std::uint8_t>(value);
                expectWithin(damaged);
            }
        }
}

TEST(Wave, AWrittenFileIsReadAgain) {
    for (const Bytes& samples : {kData, Bytes{1, 2, 3}}) {
        const Bytes file = formats::sound::writeRiff(samples, 11025);
        const auto facts = formats::sound::examine(file);
        EXPECT_EQ(facts.header.sampleRate, 11025);
        EXPECT_EQ(facts.header.dataLength, samples.size());
        EXPECT_TRUE(facts.faults.empty());
        EXPECT_EQ(formats::sound::riffLength(file), file.size()) << "padded";
    }
}

} // namespace
