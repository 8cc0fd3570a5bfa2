// Copies of files: random use against a model, how a background copy is stepped, and that every
// failure leaves the source in its place. Worth running under the thread sanitizer.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamdll16.h"
#include "omistreamfile.h"

#include <random>

using namespace testing_support;

namespace {

using Sizes = std::vector<std::size_t>;

constexpr const char* kName = "a.bin";
constexpr const char* kCopy = "C:\\HOME\\a.bin";

std::string textPattern(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(i * 31 + i / 256 * 7);
    return text;
}

class OMCachedFileTest : public OMAppTest {
  protected:
    OMCachedFileTest() {
        OMPathAddDirectory("D:\\RSC", false);
        OMPathSetStrict(true);
        files.put("D:\\RSC\\a.bin", data);
        files.put("D:\\RSC\\a.rsc",
                  NEBuilder().add("WAVE", 1, "first").add("WAVE", 2, data).build());
    }
    static std::string home(bool onDisk, const std::string& name = kName) {
        return onDisk ? "C:\\HOME\\" + name : "";
    }
    /// In memory without a destination.
    static OMCachedFile* cacheNow(const std::string& destination, const std::string& name = kName) {
        return destination.empty() ? OMCachedFile::cache(name)
                                   : OMCachedFile::cache(name, destination);
    }
    void cacheLater(const std::string& destination, const std::string& name = kName,
                    bool startNow = false, int priority = 0) {
        const OMLink link = [this, name] { completed.push_back(name); };
        if (destination.empty())
            OMCachedFile::cacheInBkgd(name, link, priority, startNow);
        else
            OMCachedFile::cacheInBkgd(name, destination, link, priority, startNow);
    }
    /// Steps of which the worker has time to finish each.
    void step(int count, const char* name = kName) {
        for (int i = 0; i <= count; ++i) {
            (void)OMCachedFile::getBufferSize(name);
            if (i < count) app->tasks().runAll();
        }
    }
    static std::string streamed(std::string_view name = kName) {
        return toText(OMIStreamFile(name, kOMIStreamCache).readAll());
    }
    /// The first resource of a library, and the file that was opened for it at last.
    std::string first(const char* library = "a.rsc") {
        files.opened.assign(1, "");
        OMIStreamDLL16 stream(1, "WAVE", library, kOMIStreamCache);
        const std::string text = toText(stream.readAll()).substr(0, 5);
        return text + " " + files.opened.back();
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
            EXPECT_TRUE(cacheNow(home(onDisk, file.name), file.name)->isComplete());
            break;
        case 2:
            cacheLater(home(onDisk, file.name), file.name, random() % 2 == 0,
                       static_cast<int>(random() % 3));
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
    cacheLater("");
    step(1); // opens
    EXPECT_EQ(files.readSizes, Sizes{2048}) << "one sector to start the drive";
    step(2);
    EXPECT_EQ(files.readSizes, (Sizes{2048, 8192, 8192}));
    ASSERT_TRUE(finishCopy(kName));
    // 12 chunks, then the last 1,696 bytes by the sector.
    Sizes expected(14, 8192);
    expected.front() = expected.back() = 2048;
    EXPECT_EQ(files.readSizes, expected);
    OMCachedFile::uncache(kName);
    cacheLater(kCopy, kName, true);
    step(0);
    EXPECT_EQ(files.readSizes.size(), 15U) << "the first step is made at once when told to";
    files.readSizes.clear();
    EXPECT_EQ(streamed(), data);
    EXPECT_EQ(files.readSizes, (Sizes{65536, 65536})) << "larger ones when somebody waits";
    EXPECT_EQ(OMCachedFile::getBufferSize(kName), 8192U);
    OMCachedFile::uncache(kName);

    const std::array<std::size_t, 3> rows[] = {
        {512, 10'000, 16'384}, {2048, 0, 2048}, {4096, 65'537, 131'072}, {16'384, 8192, 16'384}};
    for (const auto& [sector, wanted, rounded] : rows)
        for (const int steps : {0, 2, 3}) {
            files.sector = sector;
            cacheLater(home(steps == 2));
            step(steps);
            OMCachedFile::setBufferSize(kName, wanted);
            EXPECT_TRUE(finishCopy(kName));
            EXPECT_EQ(OMCachedFile::getBufferSize(kName), rounded) << wanted << " after " << steps;
            OMCachedFile::uncache(kName);
        }
    EXPECT_EQ(OMCachedFile::getBufferSize("x"), 0U);
    EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::getBufferSize - x is not a cached file!"});
}

TEST_F(OMCachedFileTest, ReadsTheSourceAfterAnyFailure) {
    constexpr std::size_t kNever = MemoryFiles::kNever;
    const struct {
        std::string name, destination, problem;
        std::size_t readsUntilError = kNever, bytesUntilFull = kNever;
    } rows[] = {
        {kName, "", "I/O error!", 1},
        {kName, kCopy, "I/O error!", 2},
        {kName, kCopy, "I/O error!", kNever, 70'000},
        {"none.bin", "", "opening none.bin failed!"},
        {"none.bin", kCopy, "opening none.bin or C:\\HOME\\a.bin failed!"},
        {"\\\\server\\a.bin", "", "opening \\\\server\\a.bin failed!"}, // no drive
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
                EXPECT_EQ(cacheNow(destination, name), nullptr);
            else
                cacheLater(destination, name, destination.empty());
            EXPECT_TRUE(finishCopy(name));
            EXPECT_FALSE(OMCachedFile::isCached(name) || files.exists(kCopy));
            const std::string place = atOnce                ? "OMCachedFile"
                                      : destination.empty() ? "IOThreadMemCache"
                                                            : "IOThreadDiskCache";
            EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::" + place + " - " + problem});
            EXPECT_EQ(streamed(), data) << "and it is not replaced";
        }
    files.readsUntilError = 3;
    cacheLater(kCopy);
    step(2);
    EXPECT_EQ(streamed(), data) << "a stream needs the copy that is under way";
    EXPECT_EQ(takeFailures().size(), 1U);
    files.readsUntilError = kNever;
    cacheLater(kCopy);
    step(4);
    files.put(kCopy, "replaced by somebody");
    EXPECT_TRUE(finishCopy(kName));
    EXPECT_EQ(takeFailures(), Strings{"OMCachedFile::IOThreadDiskCache - source and destination "
                                      "file sizes don't match!"});
    EXPECT_TRUE(completed.empty());
    EXPECT_EQ(streamed(), data);
}

TEST_F(OMCachedFileTest, TheLinkMayUncache) {
    for (const bool waits : {false, true}) {
        OMCachedFile::cacheInBkgd(
            kName, [] { OMCachedFile::uncache(kName); }, 0, false);
        EXPECT_TRUE(waits ? !OMCachedFile::cache(kName) : finishCopy(kName));
        EXPECT_FALSE(OMCachedFile::isCached(kName));
    }
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMCachedFileTest, TheInformationOfALibraryFollowsTheCopy) {
    files.put("D:\\RSC\\b.rsc", NEBuilder().add("WAVE", 1, "other").build());
    const std::string source = "first D:\\RSC\\a.rsc";
    OMIStreamDLL16::cacheInfo("a.rsc");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(first(), "first ") << "the source is open now";
        cacheNow("C:\\HOME\\a.rsc", "a.rsc");
        EXPECT_EQ(first(), "first C:\\HOME\\a.rsc");
        OMCachedFile::uncache("a.rsc");
        EXPECT_FALSE(OMCachedFile::isCached("a.rsc")) << "an open library is no use of the copy";
        EXPECT_EQ(first(), source);
    }
    OMIStreamDLL16::cacheInfo("A.RSC"); // once more
    for (const bool kept : {true, false}) {
        EXPECT_EQ(first("b.rsc"), "other D:\\RSC\\b.rsc");
        EXPECT_EQ(first(), "first ");
        OMIStreamDLL16::uncacheInfo("a.rsc");
        EXPECT_EQ(first(), kept ? "first " : source);
    }
    OMIStreamDLL16::uncacheInfo("a.rsc");
    OMIStreamDLL16::cacheInfo("none.rsc");
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamDLL16::uncacheInfo - info is not being cached for file a.rsc!",
                       "OMIStreamDLL16::cacheInfo - error opening none.rsc!"}));
}

} // namespace
