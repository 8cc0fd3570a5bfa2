// Streams over files and libraries: what a fill delivers, and what happens when bytes are missing.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamdll16.h"
#include "omistreamfile.h"

using testing_support::Bytes;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

/// `count` bytes of which no two places 256 apart look the same.
Bytes pattern(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::byte>(i * 7 + i / 256);
    return bytes;
}

Bytes copyOf(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

class OMIStreamTest : public testing_support::OMAppTest {
  protected:
    OMIStreamTest() {
        files.put("big.rsc", NEBuilder().add("WAVE", 1, "first").add("WAVE", 9, data).build());
        files.put("big.bin", data);
        files.put("small.rsc", NEBuilder().add("WAVE", 2, "another file").build());
    }

    /// The same bytes out of a library and out of a plain file.
    static std::vector<std::unique_ptr<OMIStream>> bothKinds(int mode,
                                                             std::span<std::byte> buffer = {}) {
        std::vector<std::unique_ptr<OMIStream>> streams;
        streams.push_back(std::make_unique<OMIStreamDLL16>(9, "WAVE", "big.rsc", mode, buffer));
        streams.push_back(std::make_unique<OMIStreamFile>("big.bin", mode, buffer));
        return streams;
    }
    /// The next fill delivers `count` bytes from `from` on.
    void expectFill(OMIStream& stream, std::size_t from, std::size_t count) {
        EXPECT_EQ(stream.fill(), count);
        EXPECT_EQ(stream.chunkStart(), from);
        EXPECT_EQ(stream.position(), from + count);
        EXPECT_EQ(copyOf(stream.current()), copyOf(std::span(data).subspan(from, count)));
    }

    const Bytes data = pattern(10000);
};

TEST_F(OMIStreamTest, DeliversChunksFromWhereItStands) {
    struct Row {
        int mode;
        std::vector<std::size_t> fills;
    };
    const Row rows[] = {
        {kOMIStreamBuffered, {4096, 4096, 1808}},
        {6000, {6000, 4000}},
        {2000000000, {10000}},
        {kOMIStreamCache, {10000}},
    };
    for (const Row& row : rows)
        for (const auto& stream : bothKinds(row.mode)) {
            SCOPED_TRACE(std::string(stream->className()) + " " + std::to_string(row.mode));
            ASSERT_EQ(stream->length(), data.size());
            EXPECT_FALSE(stream->isCommitted());
            std::size_t at = 0;
            for (const std::size_t count : row.fills) {
                expectFill(*stream, at, count);
                at += count;
            }
            EXPECT_TRUE(stream->isCommitted());
            EXPECT_EQ(stream->fill(), 0U);
            stream->seek(9000);
            expectFill(*stream, 9000, 1000);
            stream->seek(-5);
            EXPECT_TRUE(stream->current().empty());
            expectFill(*stream, 0, row.fills[0]);
            stream->seek(1000000);
            EXPECT_EQ(stream->position(), data.size());
            EXPECT_EQ(stream->fill(), 0U);
            EXPECT_EQ(stream->readAll().size(), stream->isWhole() ? data.size() : 0)
                << "wherever it stands";
            stream->seek(500);
            stream->close();
            EXPECT_FALSE(stream->isCommitted());
            EXPECT_TRUE(stream->current().empty());
            expectFill(*stream, 0, row.fills[0]);
        }
}

TEST_F(OMIStreamTest, ChangesItsBufferBetweenFills) {
    Bytes buffer(300);
    for (const int mode : {kOMIStreamBuffered, kOMIStreamCache, 300})
        for (const auto& stream : bothKinds(mode, buffer)) {
            EXPECT_EQ(stream->fill(), 300U) << "never past the buffer";
            EXPECT_EQ(stream->current().data(), buffer.data());
        }
    for (const auto& stream : bothKinds(kOMIStreamBuffered)) {
        SCOPED_TRACE(stream->className());
        stream->setDstBuffer(100);
        expectFill(*stream, 0, 100);
        stream->setDstBuffer(50, buffer);
        EXPECT_TRUE(stream->current().empty());
        expectFill(*stream, 100, 50);
        EXPECT_EQ(stream->current().data(), buffer.data());
        stream->setDstBuffer(kOMIStreamBuffered);
        expectFill(*stream, 150, 4096);
        stream->setDstBuffer(kOMIStreamCache);
        expectFill(*stream, 4246, data.size() - 4246);
        EXPECT_EQ(takeFailures(), Strings{});

        stream->setDstBuffer(kOMIStreamBuffered);
        stream->close();
        stream->setDstBuffer(-2);
        EXPECT_TRUE(stream->isWhole());
        EXPECT_EQ(takeFailures(), (Strings{"OMIStream::setDstBuffer - cannot setDstBuffer on "
                                           "committed, cached OMIStream",
                                           "OMIStream::setDstBuffer - invalid parameter!"}));
    }
}

TEST_F(OMIStreamTest, CopiesDeliverTheLastChunkAgain) {
    OMIStreamDLL16 library(9, "WAVE", "big.rsc", kOMIStreamBuffered);
    library.fill();
    library.fill();
    OMIStreamDLL16 libraryCopy(library);
    EXPECT_FALSE(libraryCopy.isCommitted());
    expectFill(libraryCopy, 4096, 4096);
    EXPECT_NE(libraryCopy.current().data(), library.current().data());

    Bytes buffer(100);
    OMIStreamFile file("big.bin", 100, buffer);
    file.seek(40);
    EXPECT_EQ(OMIStreamFile(file).position(), 40U) << "not filled yet: only the position";
    file.fill();
    const OMIStreamFile fileCopy(file);
    EXPECT_TRUE(fileCopy.isCommitted()) << "the copy of a filled file stream is filled";
    EXPECT_EQ(copyOf(fileCopy.current()), copyOf(file.current()));
    EXPECT_NE(fileCopy.current().data(), buffer.data()) << "a buffer belongs to one stream";
    expectFill(file, 140, 100);
}

TEST_F(OMIStreamTest, IsEmptyWhenItCannotBeMade) {
    files.put("text.rsc", "no library");
    struct Row {
        int id;
        const char* type;
        const char* file;
        int mode;
        Strings failures;
    };
    const std::string place = "OMIStreamDLL16::OMIStreamDLL16 - ";
    const std::string missing = place + "resource (id 3 type WAVE) not found in ";
    const Strings invalid = {place + "invalid parameter!"};
    const Row rows[] = {
        {0, "WAVE", "big.rsc", -1, invalid},
        {1, "", "big.rsc", -1, invalid},
        {1, "WAVE", "", -1, invalid},
        {1, "WAVE", "big.rsc", -2, invalid},
        {3, "WAVE", "big.rsc", -1, {missing + "big.rsc!"}},
        {3, "WAVE", "none.rsc", 0, {missing + "none.rsc!"}},
        {3,
         "WAVE",
         "text.rsc",
         0,
         {"OMIStreamDLL16IsValidDLL - invalid file!", missing + "text.rsc!"}},
    };
    for (const Row& row : rows) {
        OMIStreamDLL16 stream(row.id, row.type, row.file, row.mode);
        EXPECT_EQ(takeFailures(), row.failures);
        EXPECT_EQ(stream.length() + stream.fill() + stream.readAll().size(), 0U);
    }
    EXPECT_EQ(OMIStreamFile("", -1).length(), 0U);
    EXPECT_EQ(OMIStreamFile("big.bin", -2).fill(), 0U);
    EXPECT_EQ(OMIStreamFile("none.bin", 0).fill(), 0U);
    EXPECT_EQ(takeFailures(), (Strings{"OMIStreamFile::OMIStreamFile - invalid parameter!",
                                       "OMIStreamFile::OMIStreamFile - invalid parameter!",
                                       "OMIStreamFile::OMIStreamFile - opening none.bin failed!"}));
}

TEST_F(OMIStreamTest, DeliversWhatIsThereWhenTheFileShrinksOrGoes) {
    for (const int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
        OMIStreamFile shrunk("big.bin", mode);
        OMIStreamFile gone("big.bin", mode);
        files.put("big.bin", copyOf(std::span(data).first(10)));
        EXPECT_EQ(shrunk.fill(), 10U);
        EXPECT_EQ(copyOf(shrunk.current()), copyOf(std::span(data).first(10)));
        EXPECT_EQ(shrunk.fill(), 0U);
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

TEST_F(OMIStreamTest, KeepsTheLastLibraryOpenWhenToldTo) {
    const auto read = [](int id, const char* name) {
        return toText(OMIStreamDLL16(id, "WAVE", name, kOMIStreamCache).readAll()).substr(0, 5);
    };
    files.opened.clear();
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(files.opened.size(), 2U) << "once for the look-up, once for the bytes";

    OMOpenLibrary::setKeepOpen(true);
    files.opened.clear();
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(read(1, "BIG.rsc"), "first");
    EXPECT_EQ(files.opened, Strings{"big.rsc"});

    // Another library takes the place; what was not read yet is read all the same.
    OMIStreamDLL16 waiting(1, "WAVE", "big.rsc", kOMIStreamCache);
    OMIStreamDLL16 chunked(9, "WAVE", "big.rsc", kOMIStreamBuffered);
    files.opened.clear();
    EXPECT_EQ(chunked.fill(), 4096U);
    EXPECT_TRUE(files.opened.empty()) << "it took over the file that is open";
    EXPECT_EQ(read(1, "big.rsc"), "first");
    EXPECT_EQ(read(2, "small.rsc"), "anoth");
    EXPECT_EQ(toText(waiting.readAll()).substr(0, 5), "first");
    expectFill(chunked, 4096, 4096);

    OMOpenLibrary::setKeepOpen(false);
    EXPECT_EQ(OMOpenLibrary::handle("small.rsc"), nullptr);
}

TEST_F(OMIStreamTest, ListsTheContentsOfALibraryAndLogsDamage) {
    EXPECT_EQ(OMIStreamDLL16::getResTypes("big.rsc"), Strings{"WAVE"});
    EXPECT_EQ(OMIStreamDLL16::getResIDs("big.rsc", "WAVE"), (std::vector<int>{1, 9}));
    EXPECT_TRUE(OMIStreamDLL16::getResTypes("nowhere.rsc").empty());
    Bytes bytes = NEBuilder().add("WAVE", 1, "x").build();
    bytes.at(formats::library::kWrittenTable + 4) = std::byte{200}; // count of the first type
    files.put("bad.rsc", bytes);
    EXPECT_EQ(OMIStreamDLL16::getResTypes("bad.rsc"), Strings{"WAVE"});
    bytes.at(formats::library::kWrittenTable + 2) = std::byte{0x0F};
    bytes.at(formats::library::kWrittenTable + 3) = std::byte{0x80};
    files.put("names.rsc", bytes);
    EXPECT_TRUE(OMIStreamDLL16::getResTypes("names.rsc").empty());
    EXPECT_EQ(
        files.text("zorbelog.txt"),
        "ERROR: Resource library nowhere.rsc cannot be opened: No such file or directory\n"
        "ERROR: Resource library bad.rsc is damaged, part of it is left out: pack it anew\n"
        "ERROR: Resource library names.rsc has a name table and cannot be read: pack it anew\n");
    EXPECT_EQ(takeFailures(), Strings{});
}

} // namespace
