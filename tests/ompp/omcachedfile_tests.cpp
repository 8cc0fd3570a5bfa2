// Copies of files: which bytes they hold, how a background copy is stepped, and that every failure
// leaves the source in its place. The whole file is worth running under the thread sanitizer.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omistreamdll16.h"
#include "omistreamfile.h"

#include <chrono>
#include <thread>

using testing_support::Bytes;
using testing_support::FrameworkTest;
using testing_support::MemoryFiles;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kName = "a.bin";
constexpr const char* kSource = "D:\\RSC\\a.bin";
constexpr const char* kCopy = "C:\\HOME\\a.bin";

std::string pattern(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(i * 31 + i / 256 * 7);
    return text;
}

enum class Kind { Memory, Disk };

class OMCachedFileTest : public FrameworkTest {
  protected:
    OMCachedFileTest() {
        OMPathAddDirectory("D:\\RSC", false);
        OMPathSetStrict(true);
        files.put(kSource, data);
    }

    OMCachedFile* cacheNow(Kind kind, std::string_view name = kName) {
        return kind == Kind::Memory ? OMCachedFile::cache(name) : OMCachedFile::cache(name, kCopy);
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
            app.tasks().runAll();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
        return false;
    }
    static void letWorkerFinish() { (void)OMCachedFile::getBufferSize(kName); }
    /// Steps of which the worker has time to finish each.
    void step(int count) {
        for (int i = 0; i < count; ++i) {
            letWorkerFinish();
            app.tasks().runAll();
        }
    }
    std::string streamed(std::string_view name = kName) {
        return toText(OMIStreamFile(name, kOMIStreamCache).readAll());
    }
    [[nodiscard]] bool wasOpened(std::string_view path) const {
        return std::ranges::find(files.opened, path) != files.opened.end();
    }

    const std::string data = pattern(100'000);
    Strings completed;
    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(OMCachedFileTest, CopiesAtOnceAndReadsTheCopy) {
    for (Kind kind : {Kind::Memory, Kind::Disk}) {
        OMCachedFile* file = cacheNow(kind);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->isComplete());
        EXPECT_EQ(file->instanceCount(), 1);
        EXPECT_EQ(OMCachedFile::find("A.BIN"), file);
        EXPECT_EQ(files.exists(kCopy), kind == Kind::Disk);

        files.put(kSource, "changed on the drive");
        files.opened.clear();
        EXPECT_EQ(streamed(), data);
        EXPECT_FALSE(wasOpened(kSource));
        files.put(kSource, data);

        EXPECT_EQ(cacheNow(kind), file);
        EXPECT_EQ(file->instanceCount(), 2);
        OMCachedFile::uncache(kName);
        EXPECT_TRUE(OMCachedFile::isCached(kName));
        OMCachedFile::uncache(kName);
        EXPECT_FALSE(OMCachedFile::isCached(kName));
        EXPECT_FALSE(files.exists(kCopy));
        files.put(kSource, "changed on the drive");
        EXPECT_EQ(streamed(), "changed on the drive");
        files.put(kSource, data);
    }
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, CopiesFilesOfEverySize) {
    for (std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{2047}, std::size_t{2048}, std::size_t{8192},
          std::size_t{8193}, std::size_t{65536}, std::size_t{131'073}})
        for (Kind kind : {Kind::Memory, Kind::Disk})
            for (bool atOnce : {true, false}) {
                SCOPED_TRACE(std::to_string(size) + (kind == Kind::Disk ? " disk" : " memory") +
                             (atOnce ? " at once" : " later"));
                const std::string bytes = pattern(size);
                files.put(kSource, bytes);
                if (atOnce)
                    ASSERT_TRUE(cacheNow(kind));
                else
                    cacheLater(kind);
                ASSERT_TRUE(runTasks());
                files.put(kSource, "!");
                EXPECT_EQ(streamed(), bytes);
                EXPECT_EQ(OMCachedFile::find(kName)->instanceCount(), 1);
                OMCachedFile::uncache(kName);
                EXPECT_FALSE(OMCachedFile::isCached(kName));
            }
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, StepsABackgroundCopyByOneChunkAtATime) {
    cacheLater(Kind::Memory);
    EXPECT_TRUE(OMCachedFile::isCached(kName));
    EXPECT_EQ(app.tasks().count(), 1U);
    EXPECT_TRUE(files.readSizes.empty()) << "nothing happens before the task runs";
    step(1); // opens
    letWorkerFinish();
    EXPECT_EQ(files.readSizes, (std::vector<std::size_t>{2048})) << "one sector to start the drive";
    step(2);
    letWorkerFinish();
    EXPECT_EQ(files.readSizes, (std::vector<std::size_t>{2048, 8192, 8192}));
    EXPECT_TRUE(completed.empty());
    ASSERT_TRUE(runTasks());

    // 12 chunks, then the last 1,696 bytes by the sector.
    std::vector<std::size_t> expected(14, 8192);
    expected.front() = expected.back() = 2048;
    EXPECT_EQ(files.readSizes, expected);
    EXPECT_EQ(completed, Strings{kName});
    EXPECT_EQ(OMCachedFile::find(kName)->instanceCount(), 0);
    EXPECT_EQ(app.tasks().count(), 0U) << "no task without a background copy";
    cacheLater(Kind::Disk);
    EXPECT_EQ(app.tasks().count(), 0U) << "cached already";
    EXPECT_EQ(completed, Strings{kName});
}

TEST_F(OMCachedFileTest, CopiesInTheOrderOfPriorities) {
    for (const char* name : {"b", "c", "d", "e"}) files.put("D:\\RSC\\" + std::string(name), "x");
    cacheLater(Kind::Memory, "b", false, 5);
    cacheLater(Kind::Memory, "c", false, -1);
    cacheLater(Kind::Disk, "d", false, 5);
    cacheLater(Kind::Memory, "e", false, -7);
    OMCachedFile::find("e")->hold();
    EXPECT_TRUE(runTasks("d"));
    EXPECT_EQ(completed, (Strings{"c", "b", "d"}));
    app.tasks().runAll();
    EXPECT_FALSE(OMCachedFile::find("e")->isComplete());
    OMCachedFile::find("e")->release();
    EXPECT_TRUE(runTasks("e"));
    EXPECT_EQ(completed.back(), "e");
}

TEST_F(OMCachedFileTest, StartsAtOnceWhenToldTo) {
    cacheLater(Kind::Disk, kName, true);
    letWorkerFinish();
    EXPECT_EQ(files.readSizes.size(), 1U);
    EXPECT_TRUE(runTasks());
    EXPECT_EQ(files.text(kCopy), data);
}

TEST_F(OMCachedFileTest, AStreamCompletesTheCopyThatIsUnderWay) {
    for (Kind kind : {Kind::Memory, Kind::Disk})
        for (int steps : {0, 1, 2, 3, 4, 5, 20}) {
            SCOPED_TRACE(steps);
            cacheLater(kind);
            step(steps);
            const std::size_t before = OMCachedFile::getBufferSize(kName);
            files.readSizes.clear();
            {
                const OMIStreamFile stream(kName, kOMIStreamCache);
                const OMCachedFile* file = OMCachedFile::find(kName);
                ASSERT_TRUE(file);
                EXPECT_TRUE(file->isComplete());
                EXPECT_EQ(file->instanceCount(), 1);
                EXPECT_EQ(file->usageCount(), 1);
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), before);
            }
            if (steps < 5) {
                EXPECT_EQ(std::ranges::max(files.readSizes), 65536U);
            }
            EXPECT_EQ(streamed(), data);
            EXPECT_EQ(completed, Strings{kName});
            completed.clear();
            OMCachedFile::uncache(kName);
        }
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, StaysWhileStreamsReadIt) {
    for (Kind kind : {Kind::Memory, Kind::Disk}) {
        cacheNow(kind);
        auto first = std::make_unique<OMIStreamFile>(kName, kOMIStreamCache);
        auto second = std::make_unique<OMIStreamFile>(*first);
        EXPECT_EQ(OMCachedFile::find(kName)->usageCount(), 2);
        OMCachedFile::uncache(kName);
        EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::uncache - a.bin is still being used!"});
        ASSERT_TRUE(OMCachedFile::find(kName));
        EXPECT_EQ(OMCachedFile::find(kName)->instanceCount(), 0);
        first.reset();
        EXPECT_EQ(toText(second->readAll()), data);
        second.reset();
        OMCachedFile::uncache(kName);
        EXPECT_FALSE(OMCachedFile::isCached(kName));
        EXPECT_TRUE(takeFailures().empty());
    }
}

TEST_F(OMCachedFileTest, StreamsOutliveARecordThatIsDestroyedAllTheSame) {
    for (Kind kind : {Kind::Memory, Kind::Disk}) {
        cacheNow(kind);
        OMIStreamFile stream(kName, kOMIStreamCache);
        OMCachedFile::clear();
        EXPECT_EQ(takeFailures(),
                  Strings{"OMCachedFile::~OMCachedFile - a.bin is still being used!"});
        EXPECT_FALSE(files.exists(kCopy));
        EXPECT_EQ(toText(stream.readAll()), data);
    }
}

TEST_F(OMCachedFileTest, RoundsTheChunkSizeToSectors) {
    struct Row {
        std::size_t sector;
        std::size_t wanted;
        std::size_t rounded;
    };
    const Row rows[] = {{512, 10'000, 16'384},
                        {512, 512, 512},
                        {512, 1, 512},
                        {2048, 0, 2048},
                        {4096, 65'537, 131'072}};
    for (Kind kind : {Kind::Memory, Kind::Disk})
        for (const Row& row : rows)
            for (int steps : {0, 2, 3}) {
                SCOPED_TRACE(std::to_string(row.wanted) + " after " + std::to_string(steps));
                files.sector = row.sector;
                cacheLater(kind);
                step(steps);
                OMCachedFile::setBufferSize(kName, row.wanted);
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), row.rounded);
                EXPECT_TRUE(runTasks());
                OMCachedFile::setBufferSize(kName, 12'345);
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), 12'345U) << "complete: only stored";
                EXPECT_EQ(streamed(), data);
                OMCachedFile::uncache(kName);
            }
    // A first chunk size below one sector is rounded as well.
    files.sector = 16'384;
    for (Kind kind : {Kind::Memory, Kind::Disk}) {
        cacheLater(kind);
        step(1);
        EXPECT_EQ(OMCachedFile::getBufferSize(kName), 16'384U);
        EXPECT_TRUE(runTasks());
        EXPECT_EQ(streamed(), data);
        OMCachedFile::uncache(kName);
    }
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, StopsTheWorkerWhenUncachedAtAnyMoment) {
    for (Kind kind : {Kind::Memory, Kind::Disk})
        for (int steps = 0; steps < 40; ++steps) {
            cacheLater(kind);
            for (int i = 0; i < steps; ++i) app.tasks().runAll(); // wherever the worker is then
            OMCachedFile::uncache(kName);
            EXPECT_FALSE(OMCachedFile::isCached(kName));
            EXPECT_FALSE(files.exists(kCopy));
            EXPECT_EQ(app.tasks().count(), 0U);
        }
    EXPECT_EQ(streamed(), data);
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, TheCompletionLinkMayUncache) {
    OMCachedFile::cacheInBkgd(
        kName, [] { OMCachedFile::uncache(kName); }, 0, false);
    EXPECT_TRUE(runTasks());
    EXPECT_FALSE(OMCachedFile::isCached(kName));
    OMCachedFile::cacheInBkgd(
        kName, [] { OMCachedFile::uncache(kName); }, 0, false);
    EXPECT_EQ(OMCachedFile::cache(kName), nullptr);
    EXPECT_TRUE(failures.empty());
}

struct FailureRow {
    const char* name;
    Kind kind;
    std::size_t readsUntilError;
    std::size_t bytesUntilFull;
    const char* now;   ///< the message of a copy made at once
    const char* later; ///< the message of the worker
};

TEST_F(OMCachedFileTest, ReadsTheSourceAfterAnyFailure) {
    constexpr std::size_t kNever = MemoryFiles::kNever;
    const FailureRow rows[] = {
        {"memory, first read", Kind::Memory, 1, kNever, "OMCachedFile - I/O error!",
         "IOThreadMemCache - I/O error!"},
        {"disk, first read", Kind::Disk, 1, kNever, "OMCachedFile - I/O error!",
         "IOThreadDiskCache - I/O error!"},
        {"disk, second read", Kind::Disk, 2, kNever, "OMCachedFile - I/O error!",
         "IOThreadDiskCache - I/O error!"},
        {"disk full at once", Kind::Disk, kNever, 0, "OMCachedFile - I/O error!",
         "IOThreadDiskCache - I/O error!"},
        {"disk full later", Kind::Disk, kNever, 70'000, "OMCachedFile - I/O error!",
         "IOThreadDiskCache - I/O error!"},
    };
    for (const FailureRow& row : rows)
        for (bool atOnce : {true, false}) {
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
            EXPECT_EQ(takeFailures(),
                      Strings{std::string("OMCachedFile::") + (atOnce ? row.now : row.later)});
            EXPECT_EQ(streamed(), data);
        }
    // In the middle of a copy, which nobody waits for or which a stream needs now.
    for (Kind kind : {Kind::Memory, Kind::Disk})
        for (bool needed : {false, true}) {
            files.readsUntilError = 4;
            cacheLater(kind);
            if (needed) {
                step(3);
                EXPECT_EQ(streamed(), data);
            }
            EXPECT_TRUE(runTasks());
            EXPECT_FALSE(OMCachedFile::isCached(kName));
            EXPECT_EQ(takeFailures().size(), 1U);
            EXPECT_EQ(app.tasks().count(), 0U);
        }
    EXPECT_TRUE(completed.empty());
}

TEST_F(OMCachedFileTest, RefusesWhatCannotBeOpened) {
    struct Row {
        std::string name;
        std::string destination;
    };
    files.writeProtected = "C:\\LOCKED";
    const Row rows[] = {
        {"none.bin", ""},
        {"none.bin", kCopy},
        {"\\\\server\\share\\a.bin", ""}, // no drive
        {kName, "C:\\LOCKED\\a.bin"},
        {kName, "d:\\rsc\\A.BIN"}, // onto itself
    };
    files.put("\\\\server\\share\\a.bin", data);
    for (const Row& row : rows)
        for (bool atOnce : {true, false}) {
            const bool disk = !row.destination.empty();
            if (atOnce && disk)
                EXPECT_EQ(OMCachedFile::cache(row.name, row.destination), nullptr);
            else if (atOnce)
                EXPECT_EQ(OMCachedFile::cache(row.name), nullptr);
            else if (disk)
                OMCachedFile::cacheInBkgd(row.name, row.destination, nullptr, 0, false);
            else
                OMCachedFile::cacheInBkgd(row.name, nullptr, 0, true);
            EXPECT_TRUE(runTasks(row.name));
            EXPECT_FALSE(OMCachedFile::isCached(row.name));
            const std::string place = atOnce ? "OMCachedFile"
                                      : disk ? "IOThreadDiskCache"
                                             : "IOThreadMemCache";
            EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::" + place + " - opening " + row.name +
                                              (disk ? " or " + row.destination : "") + " failed!"});
        }
    EXPECT_EQ(files.text(kSource), data) << "the source is never replaced or deleted";
}

TEST_F(OMCachedFileTest, RefusesACopyOfAnotherSize) {
    cacheLater(Kind::Disk);
    step(4);
    letWorkerFinish();
    files.put(kCopy, "replaced by somebody");
    EXPECT_TRUE(runTasks());
    EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::IOThreadDiskCache - source and destination "
                                      "file sizes don't match!"});
    EXPECT_EQ(streamed(), data);
}

TEST_F(OMCachedFileTest, NamesThatAreWrongAreChecked) {
    EXPECT_EQ(OMCachedFile::cache(""), nullptr);
    OMCachedFile::cacheInBkgd("", nullptr, 0, true);
    OMCachedFile::uncache("");
    OMCachedFile::setBufferSize("", 1);
    EXPECT_EQ(OMCachedFile::getBufferSize(""), 0U);
    OMCachedFile::uncache("x");
    OMCachedFile::setBufferSize("x", 1);
    EXPECT_EQ(OMCachedFile::getBufferSize("x"), 0U);
    EXPECT_EQ(takeFailures(), (Strings{"OMCachedFile::cache - illegal filename!",
                                       "OMCachedFile::cacheInBkgd - illegal filename!",
                                       "OMCachedFile::uncache - illegal filename!",
                                       "OMCachedFile::setBufferSize - illegal filename!",
                                       "OMCachedFile::getBufferSize - illegal filename!",
                                       "OMCachedFile::uncache - x has not been cached!",
                                       "OMCachedFile::setBufferSize - x is not a cached file!",
                                       "OMCachedFile::getBufferSize - x is not a cached file!"}));
}

TEST_F(OMCachedFileTest, ReadsTheSourceWhenTheDiskCopyIsGone) {
    cacheNow(Kind::Disk);
    files.erase(kCopy);
    EXPECT_EQ(streamed(), data);
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedFileTest, ManyWorkersOpenTheirFilesWhileThePathChanges) {
    Strings names;
    for (int i = 0; i < 12; ++i) {
        names.push_back("file" + std::to_string(i));
        files.put("D:\\RSC\\" + names.back(), data.substr(static_cast<std::size_t>(i)));
        cacheLater(i % 2 == 0 ? Kind::Memory : Kind::Disk, names.back(), true);
        OMPathAddDirectory("D:\\MORE" + std::to_string(i), i % 3 == 0);
        EXPECT_TRUE(OMPathResolveFilename(names.back()));
    }
    for (int i = 0; i < 12; ++i) {
        const std::string& name = names[static_cast<std::size_t>(i)];
        if (i % 4 == 0) {
            EXPECT_TRUE(runTasks(name));
        }
        EXPECT_EQ(streamed(name), data.substr(static_cast<std::size_t>(i)));
    }
    EXPECT_EQ(app.tasks().count(), 0U);
    EXPECT_TRUE(failures.empty());
}

// --- streams and libraries over copies

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
};

TEST_F(OMCachedLibraryTest, StreamsPointIntoTheMemoryCopy) {
    OMCachedFile::cache("a.rsc");
    const OMIStreamDLL16 one = wave(2);
    const OMIStreamDLL16 other = wave(2);
    EXPECT_TRUE(one.isMemoryCached());
    EXPECT_TRUE(one.isCommitted());
    EXPECT_EQ(toText(one.current()).substr(0, data.size()), data) << "filled when it is made";
    EXPECT_EQ(one.position(), one.length());
    EXPECT_EQ(one.current().data(), other.current().data()) << "one memory for all";
    EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 2);
    {
        OMIStreamDLL16 copy(one);
        EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 3);
        EXPECT_EQ(copy.current().data(), one.current().data());
        copy.close();
        EXPECT_TRUE(copy.isCommitted());
        EXPECT_EQ(copy.position(), 0U);
        copy.seek(10);
        EXPECT_EQ(copy.fill(), copy.length() - 10);
        EXPECT_EQ(copy.current().data(), one.current().data() + 10);
        copy.setDstBuffer(100);
        EXPECT_EQ(takeFailures().size(), 1U) << "committed for ever";
    }
    EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 2);
    EXPECT_EQ(wave(7).length(), 0U);
    EXPECT_EQ(OMCachedFile::find("a.rsc")->usageCount(), 2) << "an empty stream reads nothing";
}

TEST_F(OMCachedLibraryTest, MemoryCopiesAreReadWholeAndWithoutABuffer) {
    OMCachedFile::cache("a.rsc");
    OMCachedFile::cache(kName);
    Bytes buffer(16);
    OMIStreamDLL16 library = wave(2, kOMIStreamBuffered, buffer);
    OMIStreamFile file(kName, 100, buffer);
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::OMIStreamDLL16 - instances of memory cached DLL's must use "
                       "kOMIStreamCache!",
                       "OMIStreamDLL16::OMIStreamDLL16 - instances of cached DLL's cannot use a "
                       "user defined buffer!",
                       "OMIStreamFile::OMIStreamFile - instances of memory cached files must use "
                       "kOMIStreamCache!",
                       "OMIStreamFile::OMIStreamFile - instances of cached files cannot use a user "
                       "defined buffer!"}));
    EXPECT_TRUE(library.isWhole() && file.isWhole());
    EXPECT_EQ(toText(file.readAll()), data);
    EXPECT_EQ(toText(library.readAll()).substr(0, data.size()), data);
    EXPECT_EQ(buffer, Bytes(16));

    // A copy on the disk knows no such limits.
    OMCachedFile::clear();
    takeFailures();
    OMCachedFile::cache("a.rsc", "C:\\HOME\\a.rsc");
    EXPECT_EQ(wave(2, 10, buffer).fill(), 10U);
    EXPECT_TRUE(takeFailures().empty());
}

TEST_F(OMCachedLibraryTest, TheOpenLibraryFollowsTheCopy) {
    OMOpenLibrary::setKeepOpen(true);
    const auto first = [] { return toText(wave(1).readAll()).substr(0, 5); };
    EXPECT_EQ(first(), "first"); // the source is open now
    for (bool onDisk : {false, true}) {
        onDisk ? OMCachedFile::cache("a.rsc", "C:\\HOME\\a.rsc") : OMCachedFile::cache("a.rsc");
        files.opened.clear();
        EXPECT_EQ(first(), "first");
        EXPECT_FALSE(wasOpened("D:\\RSC\\a.rsc"));
        EXPECT_EQ(wasOpened("C:\\HOME\\a.rsc"), onDisk);
        OMCachedFile::uncache("a.rsc");
        EXPECT_FALSE(OMCachedFile::isCached("a.rsc")) << "an open library is no use of the copy";
        EXPECT_EQ(first(), "first");
        EXPECT_TRUE(wasOpened("D:\\RSC\\a.rsc"));
    }
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedLibraryTest, ListingAFileThatNobodyAskedForIsChecked) {
    cacheLater(Kind::Memory, "a.rsc");
    EXPECT_EQ(OMIStreamDLL16::getResIDs("a.rsc", "WAVE"), (std::vector<int>{1, 2}));
    EXPECT_EQ(takeFailures(), Strings{"OMIStreamDLL16::openDLL - instance count for cached file "
                                      "a.rsc is zero!"});
    cacheLater(Kind::Memory);
    EXPECT_EQ(OMIStreamFile::getInfo(kName), data.size());
    EXPECT_EQ(takeFailures(), Strings{"OMIStreamFile::getInfo - instance count for cached file "
                                      "a.bin is zero!"});
    EXPECT_EQ(OMIStreamFile::getInfo("none"), std::nullopt);
}

TEST_F(OMCachedLibraryTest, KeepsTheInformationOfALibrary) {
    files.put("D:\\RSC\\b.rsc", NEBuilder().add("WAVE", 1, "other").build());
    OMIStreamDLL16::cacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("A.RSC");
    files.opened.clear();
    Bytes buffer(5);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(toText(wave(1).readAll()).substr(0, 5), "first");
        EXPECT_EQ(OMIStreamDLL16(1, "WAVE", "b.rsc", kOMIStreamCache).fill(), 16U);
        OMIStreamDLL16 chunked = wave(2, 5, buffer);
        EXPECT_EQ(chunked.fill(), 5U);
    }
    EXPECT_EQ(std::ranges::count(files.opened, "D:\\RSC\\a.rsc"), 3)
        << "by the chunked streams: the open file belongs to the information";

    OMIStreamDLL16::uncacheInfo("a.rsc");
    files.opened.clear();
    EXPECT_EQ(wave(1).fill(), 16U);
    EXPECT_TRUE(files.opened.empty());
    OMIStreamDLL16::uncacheInfo("a.rsc");
    EXPECT_EQ(wave(1).fill(), 16U);
    EXPECT_FALSE(files.opened.empty());
    EXPECT_TRUE(failures.empty());

    OMIStreamDLL16::uncacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("none.rsc");
    OMCachedFile::cache("a.rsc");
    OMIStreamDLL16::cacheInfo("a.rsc");
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::uncacheInfo - info is not being cached for file a.rsc!",
                       "OMIStreamDLL16::cacheInfo - error opening none.rsc!",
                       "OMIStreamDLL16::cacheInfo - memory cached file a.rsc is not allowed!"}));
}

TEST_F(OMCachedLibraryTest, InformationFollowsTheCopyToo) {
    OMIStreamDLL16::cacheInfo("a.rsc");
    OMCachedFile::cache("a.rsc", "C:\\HOME\\a.rsc");
    files.opened.clear();
    EXPECT_EQ(wave(1).fill(), 16U);
    EXPECT_EQ(files.opened, Strings{"C:\\HOME\\a.rsc"});
    OMCachedFile::uncache("a.rsc");
    EXPECT_EQ(wave(1).fill(), 16U);
    EXPECT_EQ(files.opened.back(), "D:\\RSC\\a.rsc");
    EXPECT_TRUE(failures.empty());
}

TEST_F(OMCachedLibraryTest, DamagedLibrariesAreReadFromMemoryAsFromTheDrive) {
    const Bytes good = NEBuilder().add("WAVE", 1, "0123456789abcdef+").build();
    for (std::size_t size = 0; size <= good.size(); ++size) {
        files.put("D:\\RSC\\a.rsc", Bytes(good.begin(), good.begin() + std::ptrdiff_t(size)));
        const std::string fromSource = toText(wave(1).readAll());
        OMCachedFile::cache("a.rsc");
        EXPECT_EQ(toText(wave(1).readAll()), fromSource) << size;
        OMCachedFile::uncache("a.rsc");
    }
}

} // namespace
