// Copies of files: which bytes they hold, how a background copy is stepped, and that every failure
// leaves the source in its place. The whole file is worth running under the thread sanitizer.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamdll16.h"
#include "omistreamfile.h"
#include "ompages.h"

#include <chrono>
#include <new>
#include <thread>

using testing_support::Bytes;
using testing_support::MemoryFiles;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Sizes = std::vector<std::size_t>;

constexpr const char* kName = "a.bin";
constexpr const char* kSource = "D:\\RSC\\a.bin";
constexpr const char* kCopy = "C:\\HOME\\a.bin";

std::string textPattern(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(i * 31 + i / 256 * 7);
    return text;
}

enum class Kind { Memory, Disk };
constexpr Kind kKinds[] = {Kind::Memory, Kind::Disk};

class OMCachedFileTest : public testing_support::OMAppTest {
  protected:
    OMCachedFileTest() {
        OMPathAddDirectory("D:\\RSC", false);
        OMPathSetStrict(true);
        files.put(kSource, data);
    }

    static OMCachedFile* cacheNow(Kind kind) {
        return kind == Kind::Memory ? OMCachedFile::cache(kName)
                                    : OMCachedFile::cache(kName, kCopy);
    }
    void cacheLater(Kind kind, std::string_view name = kName, bool startNow = false,
                    int priority = 0) {
        const OMLink link = [this, text = std::string(name)] { completed.push_back(text); };
        if (kind == Kind::Memory)
            OMCachedFile::cacheInBkgd(name, link, priority, startNow);
        else
            OMCachedFile::cacheInBkgd(name, "C:\\HOME\\" + std::string(name), link, priority,
                                      startNow);
    }
    /// Passes of the main loop until the file is complete or forgotten; false when it takes ages.
    bool runTasks(std::string_view name = kName) {
        for (int pass = 0; pass < 20000; ++pass) {
            const OMCachedFile* file = OMCachedFile::find(name);
            if (!file || file->isComplete()) return true;
            app->tasks().runAll();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
        return false;
    }
    static void letWorkerFinish() { (void)OMCachedFile::getBufferSize(kName); }
    /// Steps of which the worker has time to finish each.
    void step(int count) {
        for (int i = 0; i < count; ++i) {
            letWorkerFinish();
            app->tasks().runAll();
        }
        letWorkerFinish();
    }
    std::string streamed(std::string_view name = kName) {
        return toText(OMIStreamFile(name, kOMIStreamCache).readAll());
    }

    const std::string data = textPattern(100'000);
    Strings completed;
};

TEST_F(OMCachedFileTest, TheCopyIsReadUntilItsLastUserIsGone) {
    for (const std::size_t size : {0, 1, 2047, 2048, 8192, 8193, 65536, 131'073})
        for (const Kind kind : kKinds)
            for (const bool atOnce : {true, false}) {
                SCOPED_TRACE(std::to_string(size) + (kind == Kind::Disk ? " disk" : " memory") +
                             (atOnce ? " at once" : " later"));
                files.put(kSource, textPattern(size));
                if (atOnce)
                    ASSERT_TRUE(cacheNow(kind));
                else
                    cacheLater(kind, kName, size % 2 == 0);
                ASSERT_TRUE(runTasks());
                EXPECT_EQ(files.exists(kCopy), kind == Kind::Disk);
                files.put(kSource, "changed on the drive");
                EXPECT_EQ(streamed(), textPattern(size));
                EXPECT_EQ(cacheNow(kind), OMCachedFile::find("A.BIN"));
                OMCachedFile::uncache(kName);
                EXPECT_EQ(streamed(), textPattern(size));
                OMCachedFile::uncache(kName);
                EXPECT_FALSE(OMCachedFile::isCached(kName));
                EXPECT_FALSE(files.exists(kCopy));
                EXPECT_EQ(streamed(), "changed on the drive");
            }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, StepsABackgroundCopyByOneChunkAtATime) {
    cacheLater(Kind::Memory);
    EXPECT_TRUE(files.readSizes.empty()) << "nothing happens before the task runs";
    step(1); // opens
    EXPECT_EQ(files.readSizes, Sizes{2048}) << "one sector to start the drive";
    step(2);
    EXPECT_EQ(files.readSizes, (Sizes{2048, 8192, 8192}));
    ASSERT_TRUE(runTasks());

    // 12 chunks, then the last 1,696 bytes by the sector.
    Sizes expected(14, 8192);
    expected.front() = expected.back() = 2048;
    EXPECT_EQ(files.readSizes, expected);
    EXPECT_EQ(OMCachedFile::find(kName)->instanceCount(), 0);
    cacheLater(Kind::Disk);
    EXPECT_EQ(app->tasks().count(), 0U) << "no task: it is cached already";
    EXPECT_EQ(completed, Strings{kName});
    OMCachedFile::uncache(kName);
    cacheLater(Kind::Disk, kName, true);
    letWorkerFinish();
    EXPECT_EQ(files.readSizes.size(), 15U) << "the first step is made at once when told to";
}

TEST_F(OMCachedFileTest, CopiesInTheOrderOfPriorities) {
    for (const char* name : {"b", "c", "d", "e"}) files.put("D:\\RSC\\" + std::string(name), "x");
    cacheLater(Kind::Memory, "b", false, 5);
    cacheLater(Kind::Memory, "c", false, -1);
    cacheLater(Kind::Disk, "d", false, 5);
    EXPECT_TRUE(runTasks("d"));
    EXPECT_EQ(completed, (Strings{"c", "b", "d"}));
    cacheLater(Kind::Memory, "e", false, -7);
    OMCachedFile::suspendBkgd();
    OMCachedFile::suspendBkgd();
    OMCachedFile::resumeBkgd();
    for (int pass = 0; pass < 20; ++pass) {
        (void)OMCachedFile::getBufferSize("e"); // waits for the worker
        app->tasks().runAll();
    }
    EXPECT_FALSE(OMCachedFile::find("e")->isComplete());
    OMCachedFile::resumeBkgd();
    EXPECT_TRUE(runTasks("e"));
    EXPECT_EQ(completed.back(), "e");
}

TEST_F(OMCachedFileTest, AStreamCompletesTheCopyThatIsUnderWay) {
    for (const Kind kind : kKinds)
        for (const int steps : {0, 1, 2, 3, 4, 20}) {
            SCOPED_TRACE(steps);
            cacheLater(kind);
            step(steps);
            const std::size_t before = OMCachedFile::getBufferSize(kName);
            files.readSizes.clear();
            EXPECT_EQ(streamed(), data);
            EXPECT_EQ(OMCachedFile::find(kName)->instanceCount(), 1);
            EXPECT_EQ(OMCachedFile::getBufferSize(kName), before);
            EXPECT_TRUE(steps == 20 || std::ranges::count(files.readSizes, 65536U) > 0);
            EXPECT_EQ(std::exchange(completed, {}), Strings{kName});
            OMCachedFile::uncache(kName);
        }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, StaysWhileStreamsReadIt) {
    for (const Kind kind : kKinds) {
        cacheNow(kind);
        auto first = std::make_unique<OMIStreamFile>(kName, kOMIStreamCache);
        OMIStreamFile second(*first);
        first.reset();
        OMCachedFile::uncache(kName);
        EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::uncache - a.bin is still being used!"});
        ASSERT_TRUE(OMCachedFile::find(kName));
        EXPECT_EQ(OMCachedFile::find(kName)->usageCount(), 1);
        OMCachedFile::clear();
        EXPECT_EQ(takeFailures(),
                  Strings{"OMCachedFile::~OMCachedFile - a.bin is still being used!"});
        EXPECT_FALSE(files.exists(kCopy));
        EXPECT_EQ(toText(second.readAll()), data) << "outlives the record";
    }
}

TEST_F(OMCachedFileTest, RoundsTheChunkSizeToSectors) {
    struct Row {
        std::size_t sector, wanted, rounded;
    };
    for (const Kind kind : kKinds)
        for (const Row& row : {Row{512, 10'000, 16'384}, Row{512, 1, 512}, Row{2048, 0, 2048},
                               Row{4096, 65'537, 131'072}, Row{16'384, 8192, 16'384}})
            for (const int steps : {0, 2, 3}) {
                SCOPED_TRACE(std::to_string(row.wanted) + " after " + std::to_string(steps));
                files.sector = row.sector;
                cacheLater(kind);
                step(steps);
                OMCachedFile::setBufferSize(kName, row.wanted);
                EXPECT_TRUE(steps == 0 || OMCachedFile::getBufferSize(kName) == row.rounded);
                EXPECT_TRUE(runTasks());
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), row.rounded);
                OMCachedFile::setBufferSize(kName, 12'345);
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), 12'345U) << "complete: only stored";
                EXPECT_EQ(streamed(), data);
                OMCachedFile::uncache(kName);
            }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, StopsTheWorkerWhenUncachedAtAnyMoment) {
    for (const Kind kind : kKinds)
        for (int steps = 0; steps < 40; ++steps) {
            cacheLater(kind);
            for (int i = 0; i < steps; ++i) app->tasks().runAll(); // wherever the worker is then
            OMCachedFile::uncache(kName);
            EXPECT_FALSE(OMCachedFile::isCached(kName));
            EXPECT_FALSE(files.exists(kCopy));
            EXPECT_EQ(app->tasks().count(), 0U);
        }
    EXPECT_EQ(streamed(), data);
    const auto uncache = [] { OMCachedFile::uncache(kName); };
    OMCachedFile::cacheInBkgd(kName, uncache, 0, false);
    EXPECT_TRUE(runTasks());
    EXPECT_FALSE(OMCachedFile::isCached(kName)) << "by the link that tells of its completion";
    OMCachedFile::cacheInBkgd(kName, uncache, 0, false);
    EXPECT_EQ(OMCachedFile::cache(kName), nullptr);
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, ReadsTheSourceAfterAnyFailure) {
    constexpr std::size_t kNever = MemoryFiles::kNever;
    struct Row {
        const char* name;
        Kind kind;
        std::size_t readsUntilError;
        std::size_t bytesUntilFull = kNever;
    };
    const Row rows[] = {
        {"memory, first read", Kind::Memory, 1},
        {"disk, first read", Kind::Disk, 1},
        {"disk, second read", Kind::Disk, 2},
        {"disk full at once", Kind::Disk, kNever, 0},
        {"disk full later", Kind::Disk, kNever, 70'000},
    };
    for (const Row& row : rows)
        for (const bool atOnce : {true, false}) {
            SCOPED_TRACE(std::string(row.name) + (atOnce ? " at once" : " later"));
            files.readsUntilError = row.readsUntilError;
            files.bytesUntilFull = row.bytesUntilFull;
            if (atOnce)
                EXPECT_EQ(cacheNow(row.kind), nullptr);
            else
                cacheLater(row.kind);
            EXPECT_TRUE(runTasks());
            EXPECT_FALSE(OMCachedFile::isCached(kName));
            EXPECT_FALSE(files.exists(kCopy)) << "no part of a copy stays";
            const std::string place = atOnce                     ? "OMCachedFile"
                                      : row.kind == Kind::Memory ? "IOThreadMemCache"
                                                                 : "IOThreadDiskCache";
            EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::" + place + " - I/O error!"});
            EXPECT_EQ(streamed(), data);
        }
    files.bytesUntilFull = kNever;
    for (const Kind kind : kKinds) { // a stream needs the copy that is under way
        files.readsUntilError = 3;
        cacheLater(kind);
        step(2);
        EXPECT_EQ(streamed(), data);
        EXPECT_FALSE(OMCachedFile::isCached(kName));
        EXPECT_EQ(takeFailures().size(), 1U);
        EXPECT_EQ(app->tasks().count(), 0U);
    }
    EXPECT_TRUE(completed.empty());
}

TEST_F(OMCachedFileTest, MemoryThatIsNotThereIsNobodyElsesConcern) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends the program itself";
#endif
    static int asked = 0;
    const auto before = std::set_new_handler([] {
        ++asked;
        throw std::bad_alloc();
    });
    EXPECT_FALSE(OMPages(std::size_t{1} << 46).isThere());
    std::set_new_handler(before);
    EXPECT_EQ(asked, 0) << "the program's own handler would end the game";
}

TEST_F(OMCachedFileTest, RefusesWhatCannotBeOpened) {
    struct Row {
        std::string name;
        std::optional<std::string> destination = {};
    };
    const std::string network = "\\\\server\\share\\a.bin";
    files.put(network, data);
    files.writeProtected = "C:\\LOCKED";
    const Row rows[] = {
        {"none.bin"},
        {"none.bin", kCopy},
        {network}, // no drive
        {kName, "C:\\LOCKED\\a.bin"},
        {kName, "d:\\rsc\\A.BIN"}, // onto itself
    };
    for (const auto& [name, destination] : rows) {
        const std::string what =
            " - opening " + name + (destination ? " or " + *destination : "") + " failed!";
        if (destination) {
            EXPECT_EQ(OMCachedFile::cache(name, *destination), nullptr);
            OMCachedFile::cacheInBkgd(name, *destination, nullptr, 0, false);
        } else {
            EXPECT_EQ(OMCachedFile::cache(name), nullptr);
            OMCachedFile::cacheInBkgd(name, nullptr, 0, true);
        }
        EXPECT_TRUE(runTasks(name));
        EXPECT_FALSE(OMCachedFile::isCached(name));
        const std::string thread = destination ? "IOThreadDiskCache" : "IOThreadMemCache";
        EXPECT_EQ(takeFailures(),
                  (Strings{"OMCachedFile::OMCachedFile" + what, "OMCachedFile::" + thread + what}));
    }
    EXPECT_EQ(files.text(kSource), data) << "the source is never replaced or deleted";
}

TEST_F(OMCachedFileTest, ACopyThatSomebodyReplacedOrDeletedIsNotRead) {
    cacheLater(Kind::Disk);
    step(4);
    files.put(kCopy, "replaced by somebody");
    EXPECT_TRUE(runTasks());
    EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::IOThreadDiskCache - source and destination "
                                      "file sizes don't match!"});
    EXPECT_EQ(streamed(), data);
    cacheNow(Kind::Disk);
    files.erase(kCopy);
    EXPECT_EQ(streamed(), data);
}

TEST_F(OMCachedFileTest, NamesThatAreWrongAreChecked) {
    EXPECT_EQ(OMCachedFile::cache(""), nullptr);
    OMCachedFile::cacheInBkgd("", nullptr, 0, true);
    for (const char* name : {"", "x"}) {
        OMCachedFile::uncache(name);
        OMCachedFile::setBufferSize(name, 1);
        EXPECT_EQ(OMCachedFile::getBufferSize(name), 0U);
    }
    EXPECT_EQ(takeFailures(), (Strings{"OMCachedFile::cache - illegal filename!",
                                       "OMCachedFile::cacheInBkgd - illegal filename!",
                                       "OMCachedFile::uncache - illegal filename!",
                                       "OMCachedFile::setBufferSize - illegal filename!",
                                       "OMCachedFile::getBufferSize - illegal filename!",
                                       "OMCachedFile::uncache - x has not been cached!",
                                       "OMCachedFile::setBufferSize - x is not a cached file!",
                                       "OMCachedFile::getBufferSize - x is not a cached file!"}));
}

TEST_F(OMCachedFileTest, ManyWorkersOpenTheirFilesWhileThePathChanges) {
    const auto nameOf = [](int i) { return "file" + std::to_string(i); };
    for (int i = 0; i < 12; ++i) {
        files.put("D:\\RSC\\" + nameOf(i), data.substr(static_cast<std::size_t>(i)));
        cacheLater(i % 2 == 0 ? Kind::Memory : Kind::Disk, nameOf(i), true);
        OMPathAddDirectory("D:\\MORE" + std::to_string(i), i % 3 == 0);
        EXPECT_TRUE(OMPathResolveFilename(nameOf(i)));
    }
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(i % 4 != 0 || runTasks(nameOf(i)));
        EXPECT_EQ(streamed(nameOf(i)), data.substr(static_cast<std::size_t>(i)));
    }
    EXPECT_EQ(takeFailures(), Strings{});
}

// Streams and libraries over copies

class OMCachedLibraryTest : public OMCachedFileTest {
  protected:
    OMCachedLibraryTest() {
        files.put("D:\\RSC\\a.rsc",
                  NEBuilder().add("WAVE", 1, "first").add("WAVE", 2, data).build());
    }
    static OMIStreamDLL16 wave(int id, int mode = kOMIStreamCache,
                               std::span<std::byte> buffer = {}) {
        return OMIStreamDLL16(id, "WAVE", "a.rsc", mode, buffer);
    }
    static std::string first() { return toText(wave(1).readAll()).substr(0, 5); }
};

TEST_F(OMCachedLibraryTest, StreamsPointIntoTheMemoryCopy) {
    OMCachedFile::cache("a.rsc");
    OMCachedFile::cache(kName);
    Bytes buffer(16);
    OMIStreamDLL16 one = wave(2, kOMIStreamBuffered, buffer);
    EXPECT_EQ(toText(OMIStreamFile(kName, 100, buffer).current()), data)
        << "filled when it is made";
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::OMIStreamDLL16 - instances of memory cached DLL's must use "
                       "kOMIStreamCache!",
                       "OMIStreamDLL16::OMIStreamDLL16 - instances of cached DLL's cannot use a "
                       "user defined buffer!",
                       "OMIStreamFile::OMIStreamFile - instances of memory cached files must use "
                       "kOMIStreamCache!",
                       "OMIStreamFile::OMIStreamFile - instances of cached files cannot use a user "
                       "defined buffer!"}));
    EXPECT_EQ(buffer, Bytes(16));
    EXPECT_TRUE(one.isMemoryCached() && one.isCommitted());
    EXPECT_EQ(toText(one.current()).substr(0, data.size()), data);
    EXPECT_EQ(one.position(), one.length());
    {
        OMIStreamDLL16 copy(one);
        EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 2);
        copy.close();
        EXPECT_EQ(copy.position(), 0U);
        copy.seek(10);
        EXPECT_EQ(copy.fill(), copy.length() - 10);
        EXPECT_EQ(copy.current().data(), one.current().data() + 10) << "one memory for all";
        copy.setDstBuffer(100);
        EXPECT_EQ(takeFailures().size(), 1U) << "committed for ever";
    }
    EXPECT_EQ(wave(7).length(), 0U);
    EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 1) << "an empty stream reads nothing";

    OMCachedFile::clear();
    takeFailures();
    OMCachedFile::cache("a.rsc", "C:\\HOME\\a.rsc");
    EXPECT_EQ(wave(2, 10, buffer).fill(), 10U);
    EXPECT_EQ(takeFailures(), Strings{}) << "a copy on the disk knows no such limits";
}

TEST_F(OMCachedLibraryTest, TheOpenLibraryAndTheInformationFollowTheCopy) {
    for (const bool information : {false, true}) {
        if (information)
            OMIStreamDLL16::cacheInfo("a.rsc");
        else
            OMOpenLibrary::setKeepOpen(true);
        EXPECT_EQ(first(), "first"); // the source is open now
        OMCachedFile::cache("a.rsc", "C:\\HOME\\a.rsc");
        files.opened.clear();
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(files.opened, Strings{"C:\\HOME\\a.rsc"});
        OMCachedFile::uncache("a.rsc");
        EXPECT_FALSE(OMCachedFile::isCached("a.rsc")) << "an open library is no use of the copy";
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(files.opened.back(), "D:\\RSC\\a.rsc");
    }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedLibraryTest, ListingAFileThatNobodyAskedForIsChecked) {
    cacheLater(Kind::Memory, "a.rsc");
    EXPECT_EQ(OMIStreamDLL16::getResIDs("a.rsc", "WAVE"), (std::vector<int>{1, 2}));
    cacheLater(Kind::Memory);
    EXPECT_EQ(OMIStreamFile::getInfo(kName), data.size());
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::openDLL - instance count for cached file a.rsc is zero!",
                       "OMIStreamFile::getInfo - instance count for cached file a.bin is zero!"}));
    EXPECT_EQ(OMIStreamFile::getInfo("none"), std::nullopt);
}

TEST_F(OMCachedLibraryTest, KeepsTheInformationOfALibrary) {
    files.put("D:\\RSC\\b.rsc", NEBuilder().add("WAVE", 1, "other").build());
    OMIStreamDLL16::cacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("A.RSC");
    files.opened.clear();
    Bytes buffer(5);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(OMIStreamDLL16(1, "WAVE", "b.rsc", kOMIStreamCache).fill(), 16U);
        EXPECT_EQ(wave(2, 5, buffer).fill(), 5U);
    }
    EXPECT_EQ(std::ranges::count(files.opened, "D:\\RSC\\a.rsc"), 3)
        << "by the chunked streams: the open file belongs to the information";
    for (const bool kept : {true, false}) {
        OMIStreamDLL16::uncacheInfo("a.rsc");
        files.opened.clear();
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(files.opened.empty(), kept);
    }
    EXPECT_EQ(takeFailures(), Strings{});
    OMIStreamDLL16::uncacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("none.rsc");
    OMCachedFile::cache("a.rsc");
    OMIStreamDLL16::cacheInfo("a.rsc");
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::uncacheInfo - info is not being cached for file a.rsc!",
                       "OMIStreamDLL16::cacheInfo - error opening none.rsc!",
                       "OMIStreamDLL16::cacheInfo - memory cached file a.rsc is not allowed!"}));
}

} // namespace
