// The headers of sounds out of streams, and what is told of them.
#include "formats/soundbuilder.h"
#include "frameworkfixture.h"

#include "omistreamfile.h"
#include "omwavesamples.h"

using formats::Bytes;
using testing_support::MacSound;
using testing_support::RiffSound;

namespace {

const Bytes kData(10, 200);

class OMWaveHeaderTest : public testing_support::OMAppTest {
  protected:
    formats::sound::Header read(const Bytes& bytes, int mode = kOMIStreamCache) {
        files.put("s.bin", bytes);
        OMIStreamFile stream("s.bin", mode);
        stream.seek(3); // wherever it stands
        return OMReadWaveHeader(stream);
    }
};

TEST_F(OMWaveHeaderTest, TellsWhatIsUnusualInEveryBufferMode) {
    const RiffSound riff{.rate = 7, .channels = 2, .bits = 16, .between = 20000, .data = kData};
    const MacSound mac{.synthesizers = 2,
                       .synthesizer = 1,
                       .options = 0xC0,
                       .commands = 2,
                       .command = 0x51,
                       .param1 = 1,
                       .param2 = 9,
                       .rate = 0xAC440000,
                       .encoding = 0xFE,
                       .data = kData};
    struct Row {
        Bytes bytes;
        std::size_t offset;
        Strings complaints; ///< after "invalid"
    };
    const Row rows[] = {
        {riff.build(),
         44 + 20008,
         {"sample rate", "number of channels", "number of bits per sample"}},
        {mac.build(),
         84,
         {"number of synthesizers", "synthesizer", "synthesizer option", "number of commands",
          "command", "command parameter 1", "command parameter 2", "sample rate", "encoding"}},
    };
    for (const Row& row : rows)
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, 7}) {
            const auto header = read(row.bytes, mode);
            EXPECT_EQ(header.dataOffset, row.offset) << mode;
            EXPECT_EQ(header.dataLength, kData.size()) << mode;
            Strings expected;
            for (const std::string& what : row.complaints)
                expected.push_back("OMWaveSound::OMWaveSound - invalid " + what + "!");
            EXPECT_EQ(takeFailures(), expected) << mode;
        }
}

TEST_F(OMWaveHeaderTest, AWaveFileWithoutFormatStopsTheProgram) {
    const Bytes whole = RiffSound{.data = kData}.build();
    Bytes hidden = RiffSound{.before = 6, .data = kData}.build(); // by a chunk of 4 GB before it
    std::fill_n(hidden.begin() + 16, 4, std::uint8_t{0xFF});
    for (const Bytes& bytes :
         {RiffSound{.before = 998, .data = kData}.build(), hidden,
          Bytes(whole.begin(), whole.begin() + 12), Bytes(whole.begin(), whole.begin() + 19)})
        EXPECT_EXIT(read(bytes), testing::ExitedWithCode(255),
                    "!found(.|\n)*OMWaveSound::OMWaveSound - invalid WAVE format!");
}

} // namespace
