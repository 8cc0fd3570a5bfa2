#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omistreamdll16.h"
#include "omistreamfile.h"

using testing_support::Bytes;
using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

/// `count` bytes of which no two places 256 apart look the same.
Bytes pattern(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::byte>(i * 7 + i / 256);
    return bytes;
}

Bytes copyOf(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

class OMIStreamTest : public FrameworkTest {
  protected:
    OMIStreamTest() {
        files.put("big.rsc", NEBuilder().add("WAVE", 1, "first").add("WAVE", 9, data).build());
        files.put("big.bin", data);
        files.put("small.rsc", NEBuilder().add("WAVE", 2, "another file").build());
    }

    /// The same bytes out of a library and out of a plain file.
    std::vector<std::unique_ptr<OMIStream>> bothKinds(int mode, std::span<std::byte> buffer = {}) {
        std::vector<std::unique_ptr<OMIStream>> streams;
        streams.push_back(std::make_unique<OMIStreamDLL16>(9, "WAVE", "big.rsc", mode, buffer));
        streams.push_back(std::make_unique<OMIStreamFile>("big.bin", mode, buffer));
        return streams;
    }
    [[nodiscard]] std::span<const std::byte> part(std::size_t from, std::size_t count) const {
        return std::span(data).subspan(from, count);
    }

    const Bytes data = pattern(10000);
    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(OMIStreamTest, DeliversChunks) {
    struct Row {
        int mode;
        std::vector<std::size_t> fills;
    };
    const Row rows[] = {
        {kOMIStreamBuffered, {4096, 4096, 1808, 0, 0}},
        {4096, {4096, 4096, 1808, 0}},
        {6000, {6000, 4000, 0}},
        {2000000000, {10000, 0}},
        {kOMIStreamCache, {10000, 0, 0}},
    };
    for (const Row& row : rows)
        for (const auto& stream : bothKinds(row.mode)) {
            SCOPED_TRACE(std::string(stream->className()) + " " + std::to_string(row.mode));
            ASSERT_EQ(stream->length(), data.size());
            EXPECT_FALSE(stream->isCommitted());
            std::size_t at = 0;
            for (std::size_t expected : row.fills) {
                ASSERT_EQ(stream->fill(), expected);
                if (expected == 0) continue;
                EXPECT_EQ(stream->chunkStart(), at);
                EXPECT_EQ(copyOf(stream->current()), copyOf(part(at, expected)));
                at += expected;
                EXPECT_EQ(stream->position(), at);
            }
            EXPECT_TRUE(stream->isCommitted());
        }
}

TEST_F(OMIStreamTest, SeeksWithinTheStream) {
    for (int mode : {kOMIStreamCache, kOMIStreamBuffered})
        for (const auto& stream : bothKinds(mode)) {
            SCOPED_TRACE(std::string(stream->className()) + " " + std::to_string(mode));
            const std::size_t most = mode == kOMIStreamCache ? data.size() : 4096;
            stream->seek(100);
            EXPECT_EQ(stream->fill(), std::min(most, data.size() - 100));
            EXPECT_EQ(copyOf(stream->current()), copyOf(part(100, stream->current().size())));
            stream->seek(-5);
            EXPECT_TRUE(stream->current().empty());
            EXPECT_EQ(stream->fill(), most);
            EXPECT_EQ(stream->chunkStart(), 0U);
            stream->seek(1000000);
            EXPECT_EQ(stream->position(), data.size());
            EXPECT_EQ(stream->fill(), 0U);
        }
}

TEST_F(OMIStreamTest, ReadsAllOfAWholeStreamWhereverItStands) {
    for (const auto& stream : bothKinds(kOMIStreamCache)) {
        stream->seek(5000);
        stream->fill();
        EXPECT_EQ(copyOf(stream->readAll()), data);
        EXPECT_EQ(stream->position(), data.size());
    }
    EXPECT_TRUE(bothKinds(kOMIStreamBuffered)[0]->readAll().empty());
}

TEST_F(OMIStreamTest, FillsTheCallersBuffer) {
    Bytes buffer(300);
    for (const auto& stream : bothKinds(300, buffer)) {
        EXPECT_EQ(stream->fill(), 300U);
        EXPECT_EQ(stream->current().data(), buffer.data());
    }
    for (int mode : {kOMIStreamBuffered, kOMIStreamCache})
        for (const auto& stream : bothKinds(mode, buffer)) {
            EXPECT_EQ(stream->fill(), 300U) << "never past the buffer";
            EXPECT_EQ(buffer, copyOf(part(0, 300)));
        }
}

TEST_F(OMIStreamTest, ChangesItsBufferBetweenFills) {
    for (const auto& stream : bothKinds(kOMIStreamBuffered)) {
        SCOPED_TRACE(stream->className());
        stream->setDstBuffer(100);
        EXPECT_EQ(stream->fill(), 100U);
        Bytes first(50);
        Bytes second(70);
        stream->setDstBuffer(50, first);
        EXPECT_TRUE(stream->current().empty());
        EXPECT_EQ(stream->fill(), 50U);
        stream->setDstBuffer(70, second);
        EXPECT_EQ(stream->fill(), 70U);
        EXPECT_EQ(first, copyOf(part(100, 50)));
        EXPECT_EQ(second, copyOf(part(150, 70)));
        stream->setDstBuffer(kOMIStreamBuffered);
        EXPECT_EQ(stream->fill(), 4096U);
        EXPECT_EQ(stream->chunkStart(), 220U);
        stream->setDstBuffer(kOMIStreamCache);
        EXPECT_EQ(stream->fill(), data.size() - 4316);
        EXPECT_EQ(copyOf(stream->current()), copyOf(part(4316, data.size() - 4316)));
        EXPECT_TRUE(takeFailures().empty());

        stream->setDstBuffer(kOMIStreamBuffered);
        EXPECT_EQ(takeFailures(), Strings{"OMIStream::setDstBuffer - cannot setDstBuffer on "
                                          "committed, cached OMIStream"});
        EXPECT_TRUE(stream->isWhole());
        stream->close();
        stream->setDstBuffer(-2);
        EXPECT_EQ(takeFailures(), Strings{"OMIStream::setDstBuffer - invalid parameter!"});
    }
}

TEST_F(OMIStreamTest, StartsAnewAfterClose) {
    for (int mode : {kOMIStreamCache, 4096})
        for (const auto& stream : bothKinds(mode)) {
            stream->seek(500);
            const std::size_t got = stream->fill();
            stream->close();
            EXPECT_FALSE(stream->isCommitted());
            EXPECT_TRUE(stream->current().empty());
            EXPECT_EQ(stream->position(), 0U);
            EXPECT_GE(stream->fill(), got);
            EXPECT_EQ(copyOf(stream->current()), copyOf(part(0, stream->current().size())));
        }
}

TEST_F(OMIStreamTest, CopiesDeliverTheLastChunkAgain) {
    OMIStreamDLL16 library(9, "WAVE", "big.rsc", kOMIStreamBuffered);
    library.fill();
    library.fill();
    OMIStreamDLL16 libraryCopy(library);
    EXPECT_FALSE(libraryCopy.isCommitted());
    EXPECT_EQ(libraryCopy.fill(), 4096U);
    EXPECT_EQ(copyOf(libraryCopy.current()), copyOf(part(4096, 4096)));
    EXPECT_NE(libraryCopy.current().data(), library.current().data());

    Bytes buffer(100);
    OMIStreamFile file("big.bin", 100, buffer);
    file.seek(40);
    EXPECT_EQ(OMIStreamFile(file).position(), 40U) << "not filled yet: only the position";
    file.fill();
    const OMIStreamFile fileCopy(file);
    EXPECT_TRUE(fileCopy.isCommitted()) << "the copy of a filled file stream is filled";
    EXPECT_EQ(copyOf(fileCopy.current()), copyOf(part(40, 100)));
    EXPECT_NE(fileCopy.current().data(), buffer.data()) << "a buffer belongs to one stream";
    EXPECT_EQ(file.fill(), 100U) << "each has its own place in the file";
    EXPECT_EQ(file.chunkStart(), 140U);
}

TEST_F(OMIStreamTest, IsEmptyWhenItCannotBeMade) {
    const auto expectEmpty = [this](OMIStream&& stream, const Strings& expected) {
        EXPECT_EQ(takeFailures(), expected);
        EXPECT_EQ(stream.length(), 0U);
        EXPECT_EQ(stream.fill(), 0U);
        EXPECT_TRUE(stream.readAll().empty());
    };
    const auto notFound = [](std::string_view rest) {
        return "OMIStreamDLL16::OMIStreamDLL16 - resource " + std::string(rest);
    };
    const Strings invalid = {"OMIStreamDLL16::OMIStreamDLL16 - invalid parameter!"};
    expectEmpty(OMIStreamDLL16(0, "WAVE", "big.rsc", -1), invalid);
    expectEmpty(OMIStreamDLL16(1, "", "big.rsc", -1), invalid);
    expectEmpty(OMIStreamDLL16(1, "WAVE", "", -1), invalid);
    expectEmpty(OMIStreamDLL16(1, "WAVE", "big.rsc", -2), invalid);
    expectEmpty(OMIStreamDLL16(3, "WAVE", "big.rsc", -1),
                {notFound("(id 3 type WAVE) not found in big.rsc!")});
    expectEmpty(OMIStreamDLL16(3, "WAVE", "none.rsc", 0),
                {notFound("(id 3 type WAVE) not found in none.rsc!")});
    files.put("text.rsc", "no library");
    expectEmpty(OMIStreamDLL16(3, "WAVE", "text.rsc", 0),
                {"OMIStreamDLL16IsValidDLL - invalid file!",
                 notFound("(id 3 type WAVE) not found in text.rsc!")});

    const Strings invalidFile = {"OMIStreamFile::OMIStreamFile - invalid parameter!"};
    expectEmpty(OMIStreamFile("", -1), invalidFile);
    expectEmpty(OMIStreamFile("big.bin", -2), invalidFile);
    expectEmpty(OMIStreamFile("none.bin", 0),
                {"OMIStreamFile::OMIStreamFile - opening none.bin failed!"});
}

TEST_F(OMIStreamTest, DeliversWhatIsThereWhenTheFileShrinksOrGoes) {
    for (int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
        const OMIStreamFile shrunk("big.bin", mode);
        OMIStreamFile gone("big.bin", mode);
        files.put("big.bin", copyOf(part(0, 10)));
        OMIStreamFile copy(shrunk);
        EXPECT_EQ(copy.fill(), 10U);
        EXPECT_EQ(copyOf(copy.current()), copyOf(part(0, 10)));
        EXPECT_EQ(copy.fill(), 0U);
        files.erase("big.bin");
        EXPECT_EQ(gone.fill(), 0U);
        files.put("big.bin", data);
    }
    // The library ends in the middle of the padding of its last resource.
    Bytes cut = NEBuilder().add("WAVE", 9, std::string(33, 'x')).build();
    cut.resize(cut.size() - 10);
    files.put("cut.rsc", cut);
    EXPECT_EQ(OMIStreamDLL16(9, "WAVE", "cut.rsc", kOMIStreamCache).readAll().size(), 38U);
}

TEST_F(OMIStreamTest, SurvivesLibrariesCutAtEveryByte) {
    const Bytes good = NEBuilder().add("WAVE", 1, "0123456789abcdef+").build();
    for (std::size_t size = 0; size <= good.size(); ++size) {
        files.put("cut.rsc", copyOf(std::span(good).first(size)));
        for (int mode : {kOMIStreamCache, 5}) {
            OMIStreamDLL16 stream(1, "WAVE", "cut.rsc", mode);
            std::string text;
            while (stream.fill() > 0) text += toText(stream.current());
            EXPECT_LE(text.size(), 32U);
            EXPECT_TRUE(std::string("0123456789abcdef+").starts_with(text.substr(0, 17)));
            EXPECT_EQ(text.size() == 32, size == good.size()) << size;
        }
    }
}

TEST_F(OMIStreamTest, KeepsTheLastLibraryOpenWhenToldTo) {
    const auto read = [&](int id, const char* name) {
        return toText(OMIStreamDLL16(id, "WAVE", name, kOMIStreamCache).readAll()).substr(0, 5);
    };
    files.opened.clear();
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(files.opened.size(), 2U) << "once for the look-up, once for the bytes";

    OMOpenLibrary::setKeepOpen(true);
    files.opened.clear();
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(read(9, "BIG.rsc").size(), 5U);
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(files.opened, Strings{"big.rsc"});

    // Another library takes the place; what was not read yet is read all the same.
    OMIStreamDLL16 waiting(1, "WAVE", "big.rsc", kOMIStreamCache);
    EXPECT_EQ(read(2, "small.rsc"), "anoth");
    EXPECT_EQ(toText(waiting.readAll()).substr(0, 5), "first");

    OMOpenLibrary::setKeepOpen(false);
    EXPECT_EQ(OMOpenLibrary::handle("small.rsc"), nullptr);
}

TEST_F(OMIStreamTest, ChunkedStreamsKeepTheirFileToThemselves) {
    OMOpenLibrary::setKeepOpen(true);
    OMIStreamDLL16 chunked(9, "WAVE", "big.rsc", kOMIStreamBuffered);
    files.opened.clear();
    EXPECT_EQ(chunked.fill(), 4096U);
    EXPECT_TRUE(files.opened.empty()) << "it took over the file that is open";
    EXPECT_EQ(OMOpenLibrary::handle("big.rsc"), nullptr);

    // Others use the same library and another one meanwhile.
    EXPECT_EQ(OMIStreamDLL16(1, "WAVE", "big.rsc", kOMIStreamCache).fill(), 16U);
    EXPECT_EQ(OMIStreamDLL16(2, "WAVE", "small.rsc", kOMIStreamCache).fill(), 16U);
    EXPECT_EQ(chunked.fill(), 4096U);
    EXPECT_EQ(copyOf(chunked.current()), copyOf(part(4096, 4096)));
}

TEST_F(OMIStreamTest, ListsTheContentsOfALibrary) {
    EXPECT_EQ(OMIStreamDLL16::getResTypes("big.rsc"), Strings{"WAVE"});
    EXPECT_EQ(OMIStreamDLL16::getResIDs("big.rsc", "WAVE"), (std::vector<int>{1, 9}));
    EXPECT_TRUE(OMIStreamDLL16::getResIDs("big.rsc", "ASEQ").empty());
    EXPECT_TRUE(OMIStreamDLL16::getResTypes("none.rsc").empty());
    EXPECT_TRUE(failures.empty());
    files.put("text.rsc", "no library");
    EXPECT_TRUE(OMIStreamDLL16::getResTypes("text.rsc").empty());
    EXPECT_EQ(takeFailures(), Strings{"OMIStreamDLL16IsValidDLL - invalid file!"});
}

TEST_F(OMIStreamTest, LogsLibrariesThatCannotBeReadInFull) {
    Bytes bytes = NEBuilder().add("WAVE", 1, "x").build();
    bytes.at(NEBuilder::kTable + 4) = std::byte{200}; // count of the first type
    files.put("bad.rsc", bytes);
    EXPECT_EQ(OMIStreamDLL16::getResTypes("bad.rsc"), Strings{"WAVE"});
    bytes.at(NEBuilder::kTable + 2) = std::byte{0x0F};
    bytes.at(NEBuilder::kTable + 3) = std::byte{0x80};
    files.put("names.rsc", bytes);
    EXPECT_TRUE(OMIStreamDLL16::getResTypes("names.rsc").empty());
    EXPECT_EQ(files.text("zorbelog.txt"),
              "ERROR: Resource library bad.rsc is damaged, part of it is left out\n"
              "ERROR: Resource library names.rsc has a name table and cannot be read\n");
}

using OMIStreamDeathTest = FrameworkTest;

TEST_F(OMIStreamDeathTest, NeedsTheApplication) {
    files.put("a.bin", "x");
    EXPECT_EXIT(OMIStreamFile("a.bin", kOMIStreamCache), testing::ExitedWithCode(255),
                "must have an OMApp instance before creating an OMIStream!");
}

} // namespace
