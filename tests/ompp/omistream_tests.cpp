// Streams over files, libraries, modules and copies, against a model; what happens without bytes.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamdll16.h"
#include "omistreamfile.h"
#include "omistreamres.h"

#include <random>

using namespace testing_support;

namespace {

Bytes copyOf(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

/// What a stream of some bytes does.
struct Model {
    std::size_t length;
    int mode;
    std::size_t given;     ///< bytes of a buffer that was given; 0: none
    bool inMemory = false; ///< all of it lies there for ever
    bool committed = inMemory;
    std::size_t position = 0, start = 0, count = 0; ///< the last two: of the current bytes

    [[nodiscard]] bool isWhole() const { return mode == kOMIStreamCache; }
    std::size_t fill() {
        committed = true;
        std::size_t end = given > 0 ? given : length;
        if (!isWhole()) end = position + std::min<std::size_t>(end, mode == 0 ? 4096 : mode);
        end = std::min(end, length);
        if (position >= end) return 0;
        start = position, count = end - position, position = isWhole() ? length : end;
        return count;
    }
    void seek(int to) {
        position = static_cast<std::size_t>(std::clamp(to, 0, static_cast<int>(length)));
        count = 0;
    }
    void close() { position = start = count = 0, committed = inMemory; }
    void setBuffer(int newMode, std::size_t newGiven) {
        mode = newMode, given = newGiven, count = 0;
        if (isWhole()) committed = false;
    }
    void becomeCopy(bool isOfFile) {
        const bool fills = inMemory ? count > 0 || isOfFile : isOfFile && committed;
        if (count > 0) position = start;
        given = count = 0, committed = inMemory;
        if (fills) fill();
    }
};

class OMIStreamTest : public OMAppTest {
  protected:
    OMIStreamTest() {
        for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<std::byte>(i + i / 256);
        files.put("big.rsc", NEBuilder().add("WAVE", 1, "first").add("WAVE", 9, data).build());
        files.put("big.bin", data);
        files.put("small.rsc", NEBuilder().add("WAVE", 2, "another file").build());
        machine.modules().resources = {{{"WAVE", 9}, data}};
    }
    /// `noun`: how checks name what the stream is over.
    template <class Stream, class... Place>
    void useAtRandom(bool inMemory, const std::string& noun, Place... place);

    Bytes data = Bytes(10000);
    Bytes buffer = Bytes(300);
    std::mt19937 random{20261126};
};

template <class Stream, class... Place>
void OMIStreamTest::useAtRandom(bool inMemory, const std::string& noun, Place... place) {
    int mode = 0;
    std::span<std::byte> given;
    std::unique_ptr<Stream> stream;
    Model model{};
    Strings expected;
    for (int step = 0; step < 2000; ++step) {
        mode = std::array{-1, 0, 300, 6000, 2'000'000'000}.at(random() % 5);
        given = std::span(buffer).first(std::array{0U, 0U, 100U, 300U}.at(random() % 4));
        if (step % 40 == 0) {
            stream = std::make_unique<Stream>(place..., mode, given);
            model = {data.size(), inMemory ? -1 : mode, inMemory ? 0 : given.size(), inMemory};
            if (inMemory) model.fill();
            if (inMemory && mode != kOMIStreamCache)
                expected.push_back("memory cached " + noun + " must use kOMIStreamCache!");
            if (inMemory && !given.empty())
                expected.push_back("cached " + noun + " cannot use a user defined buffer!");
            const std::string name(stream->className());
            for (std::string& text : expected)
                text.insert(0, name + "::" + name + " - instances of ");
        }
        const int to = static_cast<int>(random() % 12'000) - 1000;
        switch (random() % 9) {
        case 0: stream->seek(to), model.seek(to); break;
        case 1: stream->close(), model.close(); break;
        case 2:
            if (random() % 9 == 0) mode = -2;
            stream->setDstBuffer(mode, given);
            if (model.committed && model.isWhole())
                expected.push_back("OMIStream::setDstBuffer - cannot setDstBuffer on committed, "
                                   "cached OMIStream");
            else if (mode < kOMIStreamCache)
                expected.push_back("OMIStream::setDstBuffer - invalid parameter!");
            else
                model.setBuffer(mode, given.size());
            break;
        case 3:
            stream = std::make_unique<Stream>(*stream);
            model.becomeCopy(noun == "files");
            break;
        case 4:
            if (model.isWhole()) model.seek(0), model.fill();
            EXPECT_EQ(stream->readAll().size(), model.isWhole() ? model.count : 0U);
            break;
        default: EXPECT_EQ(stream->fill(), model.fill());
        }
        EXPECT_EQ(takeFailures(), std::exchange(expected, {}));
        EXPECT_EQ(stream->position(), model.position);
        EXPECT_EQ(stream->chunkStart(), model.start);
        EXPECT_EQ(stream->isCommitted(), model.committed);
        const auto current = stream->current();
        EXPECT_EQ(copyOf(current), copyOf(std::span(data).subspan(model.start, model.count)));
        const bool intoGiven = model.given > 0 && model.count > 0;
        EXPECT_EQ(intoGiven, current.data() >= buffer.data() && current.data() < &buffer.back());
        ASSERT_FALSE(HasFailure()) << noun << " step " << step;
    }
}

TEST_F(OMIStreamTest, EveryKindDeliversWhatTheModelDoes) {
    auto module = std::make_unique<OMResFile>("big.rsc");
    for (const std::string copies : {"none", "memory", "disk"}) {
        for (const std::string name : {"big.rsc", "big.bin"}) {
            if (copies == "memory") OMCachedFile::cache(name);
            if (copies == "disk") OMCachedFile::cache(name, "C:\\HOME\\" + name);
        }
        useAtRandom<OMIStreamDLL16>(copies == "memory", "DLL's", 9, "WAVE", "big.rsc");
        useAtRandom<OMIStreamFile>(copies == "memory", "files", "big.bin");
        useAtRandom<OMIStreamRes>(false, "modules", 9, "WAVE", module.get());
        useAtRandom<OMIStreamRes>(false, "programs", 9, "WAVE", nullptr);
        for (const char* name : {"big.rsc", "big.bin"})
            if (copies != "none") OMCachedFile::uncache(name);
    }
    OMIStreamRes orphan(1, "WAVE", module.get(), kOMIStreamCache);
    module.reset();
    EXPECT_EQ(toText(orphan.readAll()).substr(0, 5), "first");
    EXPECT_EQ(takeFailures(), Strings{"OMResFile::~OMResFile - cannot delete an OMResFile with "
                                      "OMRes instances still attached to it!"});
}

TEST_F(OMIStreamTest, IsEmptyWhenItCannotBeMade) {
    files.put("text.rsc", "no library");
    OMResFile module("small.rsc");
    const auto expect = [&](OMIStream&& stream, const std::string& text = "invalid parameter!") {
        const std::string name(stream.className());
        EXPECT_EQ(takeFailures().back(), name + "::" + name + " - " + text);
        EXPECT_EQ(stream.length() + stream.fill() + stream.readAll().size(), 0U);
    };
    const std::string missing = "resource (id 3 type WAVE) not found in ";
    expect(OMIStreamDLL16(1, "", "big.rsc", -1));
    for (const std::string name : {"big.rsc", "none.rsc", "text.rsc"})
        expect(OMIStreamDLL16(3, "WAVE", name, 0), missing + name + "!");
    expect(OMIStreamFile("big.bin", -2));
    expect(OMIStreamFile("none.bin", 0), "opening none.bin failed!");
    expect(OMIStreamRes(3, "WAVE", &module, 0), missing + "small.rsc!");
    expect(OMIStreamRes(0, "WAVE", &module, 0));
}

TEST_F(OMIStreamTest, DeliversWhatIsThereWhenTheFileShrinksOrGoes) {
    for (const int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
        OMIStreamFile shrunk("big.bin", mode);
        OMIStreamFile gone("big.bin", mode);
        files.put("big.bin", "0123456789");
        EXPECT_EQ(shrunk.fill(), 10U);
        EXPECT_EQ(toText(shrunk.current()), "0123456789");
        EXPECT_EQ(shrunk.fill(), 0U);
        files.erase("big.bin");
        EXPECT_EQ(gone.fill(), 0U);
        files.put("big.bin", data);
    }
}

TEST_F(OMIStreamTest, KeepsTheLastLibraryOpenWhenToldTo) {
    const auto expect = [&](int id, const char* name, const Strings& opened) {
        files.opened.clear();
        OMIStreamDLL16 stream(id, "WAVE", name, kOMIStreamCache);
        EXPECT_EQ(toText(stream.readAll()).substr(0, 5), id == 1 ? "first" : "anoth");
        EXPECT_EQ(files.opened, opened);
    };
    expect(1, "big.rsc", {"big.rsc", "big.rsc"}); // for the look-up and for the bytes
    OMOpenLibrary::setKeepOpen(true);
    expect(1, "big.rsc", {"big.rsc"});
    expect(1, "BIG.rsc", {});
    // Another library takes the place; what was not read yet is read all the same.
    OMIStreamDLL16 chunked(9, "WAVE", "big.rsc", kOMIStreamBuffered);
    EXPECT_EQ(chunked.fill(), 4096U);
    expect(1, "big.rsc", {"big.rsc"}); // that one took over the file
    expect(2, "small.rsc", {"small.rsc"});
    EXPECT_EQ(chunked.fill(), 4096U);
    EXPECT_EQ(copyOf(chunked.current()), copyOf(std::span(data).subspan(4096, 4096)));
}

TEST_F(OMIStreamTest, ListsTheContentsOfALibraryAndLogsDamage) {
    EXPECT_EQ(OMIStreamDLL16::getResTypes("big.rsc"), Strings{"WAVE"});
    EXPECT_EQ(OMIStreamDLL16::getResIDs("big.rsc", "WAVE"), (std::vector<int>{1, 9}));
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(OMIStreamDLL16::getResTypes("nowhere.rsc").empty());
    Bytes bytes = NEBuilder().add("WAVE", 1, "x").build();
    bytes.at(formats::library::kWrittenTable + 4) = std::byte{200}; // count of the first type
    files.put("bad.rsc", bytes);
    EXPECT_EQ(OMIStreamDLL16::getResTypes("bad.rsc"), Strings{"WAVE"});
    EXPECT_EQ(takeLog(),
              "ERROR: Resource library nowhere.rsc cannot be opened: No such file or directory\n"
              "ERROR: Resource library bad.rsc is damaged, part of it is left out: pack it anew\n");
}

} // namespace
