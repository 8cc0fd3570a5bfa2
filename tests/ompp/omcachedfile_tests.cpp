// Copies of files: random use against a model, how a background copy is stepped, and that every
// failure leaves the source in its place. The whole file is worth running under the thread
// sanitizer.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamdll16.h"
#include "omistreamfile.h"
#include "ompages.h"

#include <chrono>
#include <new>
#include <random>
#include <thread>

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

class OMCachedFileTest : public testing_support::OMAppTest {
  protected:
    OMCachedFileTest() {
        OMPathAddDirectory("D:\\RSC", false);
        OMPathSetStrict(true);
        files.put(kSource, data);
        files.put("D:\\RSC\\a.rsc",
                  NEBuilder().add("WAVE", 1, "first").add("WAVE", 2, data).build());
    }
    static OMCachedFile* cacheNow(bool onDisk, const std::string& name = kName) {
        return onDisk ? OMCachedFile::cache(name, "C:\\HOME\\" + name) : OMCachedFile::cache(name);
    }
    void cacheLater(bool onDisk, const std::string& name = kName, bool startNow = false,
                    int priority = 0) {
        const OMLink link = [this, name] { completed.push_back(name); };
        if (onDisk)
            OMCachedFile::cacheInBkgd(name, "C:\\HOME\\" + name, link, priority, startNow);
        else
            OMCachedFile::cacheInBkgd(name, link, priority, startNow);
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
    /// Steps of which the worker has time to finish each.
    void step(int count) {
        for (int i = 0; i <= count; ++i) {
            (void)OMCachedFile::getBufferSize(kName);
            if (i < count) app->tasks().runAll();
        }
    }
    static std::string streamed(std::string_view name = kName) {
        return toText(OMIStreamFile(name, kOMIStreamCache).readAll());
    }
    static std::string first() {
        return toText(OMIStreamDLL16(1, "WAVE", "a.rsc", kOMIStreamCache).readAll()).substr(0, 5);
    }

    const std::string data = textPattern(100'000);
    Strings completed;
};

TEST_F(OMCachedFileTest, AnyUseIsThatOfTheModel) {
    struct File {
        std::string name, content;
        bool cached = false, onDisk = false, later = false;
        int instances = 0;
        std::vector<std::unique_ptr<OMIStreamFile>> readers{}; ///< of the copy
    };
    std::vector<File> all;
    for (const std::size_t size : {0, 1, 2047, 2048, 8193, 65536, 131'073})
        all.push_back({std::to_string(size), textPattern(size)});
    for (const File& file : all) files.put("D:\\RSC\\" + file.name, file.content);
    std::mt19937 random(20261126);
    for (int round = 0; round < 4000; ++round) {
        File& file = all[random() % all.size()];
        const bool onDisk = random() % 2 == 0;
        Strings texts;
        switch (random() % 8) {
        case 0:
        case 1:
            if (!file.cached) file.onDisk = onDisk;
            file.cached = true, ++file.instances;
            EXPECT_TRUE(cacheNow(onDisk, file.name)->isComplete());
            break;
        case 2:
            cacheLater(onDisk, file.name, random() % 2 == 0, static_cast<int>(random() % 3));
            if (!file.cached) file.cached = file.later = true, file.onDisk = onDisk;
            break;
        case 3:
            if (!file.readers.empty()) file.readers.pop_back();
            if (random() % 16 == 0) OMPathAddDirectory("D:\\MORE", false); // under the workers
            break;
        case 4:
            OMCachedFile::setBufferSize(file.name, random() % 70'000);
            if (!file.cached) texts = {"setBufferSize - " + file.name + " is not a cached file!"};
            break;
        case 5:
            files.put("D:\\RSC\\" + file.name,
                      file.cached && !file.later ? "changed" : file.content);
            EXPECT_TRUE(streamed(file.name) == file.content) << file.name;
            files.put("D:\\RSC\\" + file.name, file.content);
            if (file.cached && file.instances == 0) ++file.instances;
            if (file.cached)
                file.readers.push_back(std::make_unique<OMIStreamFile>(file.name, kOMIStreamCache));
            break;
        default:
            OMCachedFile::uncache(file.name);
            if (!file.cached) texts = {"uncache - " + file.name + " has not been cached!"};
            if (file.instances > 0) --file.instances;
            if (file.instances > 0 || !file.cached) break;
            if (file.readers.empty())
                file.cached = file.later = false;
            else
                texts = {"uncache - " + file.name + " is still being used!"};
        }
        for (std::string& text : texts) text.insert(0, "OMCachedFile::");
        EXPECT_EQ(takeFailures(), texts);
        if (random() % 2 == 0) app->tasks().runAll();
        bool working = false;
        for (File& each : all) {
            const OMCachedFile* found = OMCachedFile::find(each.name);
            ASSERT_EQ(found != nullptr, each.cached) << each.name << " " << round;
            if (each.later && found->isComplete()) {
                each.later = false;
                ASSERT_EQ(std::erase(completed, each.name), 1) << each.name << " is told";
            }
            working = working || each.later;
            const bool exists = files.exists("C:\\HOME\\" + each.name);
            ASSERT_TRUE(each.later || exists == (each.cached && each.onDisk)) << each.name;
            if (!found) continue;
            ASSERT_EQ(found->instanceCount(), each.instances);
            ASSERT_EQ(found->usageCount(), std::ssize(each.readers));
        }
        ASSERT_EQ(completed, Strings{});
        ASSERT_EQ(app->tasks().count(), working ? 1U : 0U);
    }
    OMCachedFile::clear();
    takeFailures();
    for (const File& file : all) {
        EXPECT_FALSE(files.exists("C:\\HOME\\" + file.name));
        for (const auto& reader : file.readers)
            EXPECT_TRUE(file.onDisk || toText(reader->readAll()) == file.content) << "outlives it";
    }
}

TEST_F(OMCachedFileTest, StepsABackgroundCopyByOneChunkAtATime) {
    cacheLater(false);
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
    OMCachedFile::uncache(kName);
    cacheLater(true, kName, true);
    step(0);
    EXPECT_EQ(files.readSizes.size(), 15U) << "the first step is made at once when told to";
    files.readSizes.clear();
    EXPECT_EQ(streamed(), data);
    EXPECT_EQ(files.readSizes, (Sizes{65536, 65536})) << "larger ones when somebody waits";
    EXPECT_EQ(OMCachedFile::getBufferSize(kName), 8192U);
}

TEST_F(OMCachedFileTest, CopiesInTheOrderOfPriorities) {
    for (const char* name : {"b", "c", "d", "e"}) files.put(std::string("D:\\RSC\\") + name, "x");
    cacheLater(false, "b", false, 5);
    cacheLater(false, "c", false, -1);
    cacheLater(true, "d", false, 5);
    EXPECT_TRUE(runTasks("d"));
    EXPECT_EQ(completed, (Strings{"c", "b", "d"}));
    cacheLater(false, "e", false, -7);
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

TEST_F(OMCachedFileTest, RoundsTheChunkSizeToSectors) {
    struct Row {
        std::size_t sector, wanted, rounded;
    };
    for (const bool onDisk : {false, true})
        for (const Row& row : {Row{512, 10'000, 16'384}, Row{512, 1, 512}, Row{2048, 0, 2048},
                               Row{4096, 65'537, 131'072}, Row{16'384, 8192, 16'384}})
            for (const int steps : {0, 2, 3}) {
                SCOPED_TRACE(std::to_string(row.wanted) + " after " + std::to_string(steps));
                files.sector = row.sector;
                cacheLater(onDisk);
                step(steps);
                OMCachedFile::setBufferSize(kName, row.wanted);
                EXPECT_TRUE(runTasks());
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), row.rounded);
                OMCachedFile::setBufferSize(kName, 12'345);
                EXPECT_EQ(OMCachedFile::getBufferSize(kName), 12'345U) << "complete: only stored";
                EXPECT_EQ(streamed(), data);
                OMCachedFile::uncache(kName);
            }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, ReadsTheSourceAfterAnyFailure) {
    constexpr std::size_t kNever = MemoryFiles::kNever;
    constexpr const char* kIoError = "I/O error!";
    const struct {
        std::string name;
        std::optional<std::string> destination;
        std::string problem;
        std::size_t readsUntilError = kNever, bytesUntilFull = kNever;
    } rows[] = {
        {kName, {}, kIoError, 1},
        {kName, kCopy, kIoError, 1},
        {kName, kCopy, kIoError, 2},
        {kName, kCopy, kIoError, kNever, 0},
        {kName, kCopy, kIoError, kNever, 70'000},
        {"none.bin", {}, "opening none.bin failed!"},
        {"none.bin", kCopy, "opening none.bin or C:\\HOME\\a.bin failed!"},
        {"\\\\server\\a.bin", {}, "opening \\\\server\\a.bin failed!"}, // no drive
        {kName, "C:\\LOCKED\\a.bin", "opening a.bin or C:\\LOCKED\\a.bin failed!"},
        {kName, "d:\\rsc\\A.BIN", "opening a.bin or d:\\rsc\\A.BIN failed!"}, // onto itself
    };
    files.put("\\\\server\\a.bin", data);
    files.writeProtected = "C:\\LOCKED";
    for (const auto& [name, destination, problem, reads, bytes] : rows)
        for (const bool atOnce : {true, false}) {
            SCOPED_TRACE(problem + std::to_string(reads) + (atOnce ? " at once" : " later"));
            files.readsUntilError = reads, files.bytesUntilFull = bytes;
            if (atOnce)
                EXPECT_EQ(destination ? OMCachedFile::cache(name, *destination)
                                      : OMCachedFile::cache(name),
                          nullptr);
            else if (destination)
                OMCachedFile::cacheInBkgd(name, *destination, nullptr, 0, false);
            else
                OMCachedFile::cacheInBkgd(name, nullptr, 0, true);
            EXPECT_TRUE(runTasks(name));
            EXPECT_FALSE(OMCachedFile::isCached(name) || files.exists(kCopy));
            const std::string place = atOnce        ? "OMCachedFile"
                                      : destination ? "IOThreadDiskCache"
                                                    : "IOThreadMemCache";
            EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::" + place + " - " + problem});
            EXPECT_EQ(streamed(), data) << "and it is not replaced";
        }
    for (const bool onDisk : {false, true}) { // a stream needs the copy that is under way
        files.readsUntilError = 3;
        cacheLater(onDisk);
        step(2);
        EXPECT_EQ(streamed(), data);
        EXPECT_FALSE(OMCachedFile::isCached(kName));
        EXPECT_EQ(takeFailures().size(), 1U);
        EXPECT_EQ(app->tasks().count(), 0U);
    }
    EXPECT_TRUE(completed.empty());
    files.readsUntilError = kNever;
    cacheLater(true);
    step(4);
    files.put(kCopy, "replaced by somebody");
    EXPECT_TRUE(runTasks());
    EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::IOThreadDiskCache - source and destination "
                                      "file sizes don't match!"});
    EXPECT_EQ(streamed(), data);
    cacheNow(true);
    files.erase(kCopy);
    EXPECT_EQ(streamed(), data);
}

TEST_F(OMCachedFileTest, MemoryThatIsNotThereIsNobodyElsesConcern) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends the program itself";
#endif
    const auto before = std::set_new_handler([] { std::abort(); }); // as the game ends
    EXPECT_FALSE(OMPages(std::size_t{1} << 46).isThere());
    std::set_new_handler(before);
}

TEST_F(OMCachedFileTest, WrongNamesAreCheckedAndTheLinkMayUncache) {
    EXPECT_EQ(OMCachedFile::cache(""), nullptr);
    OMCachedFile::cacheInBkgd("", nullptr, 0, true);
    OMCachedFile::uncache("");
    OMCachedFile::setBufferSize("", 1);
    for (const char* name : {"", "x"}) EXPECT_EQ(OMCachedFile::getBufferSize(name), 0U);
    Strings texts;
    for (const char* operation :
         {"cache", "cacheInBkgd", "uncache", "setBufferSize", "getBufferSize"})
        texts.push_back(std::string("OMCachedFile::") + operation + " - illegal filename!");
    texts.emplace_back("OMCachedFile::getBufferSize - x is not a cached file!");
    EXPECT_EQ(takeFailures(), texts);

    const auto uncache = [] { OMCachedFile::uncache(kName); };
    OMCachedFile::cacheInBkgd(kName, uncache, 0, false);
    EXPECT_TRUE(runTasks());
    EXPECT_FALSE(OMCachedFile::isCached(kName));
    OMCachedFile::cacheInBkgd(kName, uncache, 0, false);
    EXPECT_EQ(OMCachedFile::cache(kName), nullptr);
    EXPECT_EQ(takeFailures(), Strings{});
}

// Libraries over copies

TEST_F(OMCachedFileTest, TheOpenLibraryAndTheInformationFollowTheCopy) {
    for (const bool information : {false, true}) {
        if (information)
            OMIStreamDLL16::cacheInfo("a.rsc");
        else
            OMOpenLibrary::setKeepOpen(true);
        EXPECT_EQ(first(), "first"); // the source is open now
        cacheNow(true, "a.rsc");
        files.opened.clear();
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(files.opened, Strings{"C:\\HOME\\a.rsc"});
        OMCachedFile::uncache("a.rsc");
        EXPECT_FALSE(OMCachedFile::isCached("a.rsc")) << "an open library is no use of the copy";
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(files.opened.back(), "D:\\RSC\\a.rsc");
    }
    EXPECT_EQ(takeFailures(), Strings{});
    OMIStreamDLL16::uncacheInfo("a.rsc");
    cacheLater(false, "a.rsc");
    EXPECT_EQ(OMIStreamDLL16::getResIDs("a.rsc", "WAVE"), (std::vector<int>{1, 2}));
    cacheLater(false);
    EXPECT_EQ(OMIStreamFile::getInfo(kName), data.size());
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::openDLL - instance count for cached file a.rsc is zero!",
                       "OMIStreamFile::getInfo - instance count for cached file a.bin is zero!"}));
    EXPECT_EQ(OMIStreamFile::getInfo("none"), std::nullopt);
}

TEST_F(OMCachedFileTest, KeepsTheInformationOfALibrary) {
    files.put("D:\\RSC\\b.rsc", NEBuilder().add("WAVE", 1, "other").build());
    OMIStreamDLL16::cacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("A.RSC");
    files.opened.clear();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(first(), "first");
        EXPECT_EQ(OMIStreamDLL16(1, "WAVE", "b.rsc", kOMIStreamCache).fill(), 16U);
        EXPECT_EQ(OMIStreamDLL16(2, "WAVE", "a.rsc", 5).fill(), 5U);
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
    cacheNow(false, "a.rsc");
    OMIStreamDLL16::cacheInfo("a.rsc");
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::uncacheInfo - info is not being cached for file a.rsc!",
                       "OMIStreamDLL16::cacheInfo - error opening none.rsc!",
                       "OMIStreamDLL16::cacheInfo - memory cached file a.rsc is not allowed!"}));
}

} // namespace
