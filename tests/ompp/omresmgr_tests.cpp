// Which file a resource is found in: random use against a model, where tables come from and where
// they end. And modules and their resources, over which omistream_tests.cpp has streams.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamfile.h"
#include "omresmgr.h"

#include <array>
#include <random>

using testing_support::NEBuilder;
using testing_support::toBytes;
using testing_support::toText;

namespace {

using Entries = std::vector<OMResMgrEntry>;

class OMResMgrTest : public testing_support::OMAppTest {
  protected:
    static std::string fileOf(int id, std::string_view type = "WAVE") {
        const OMResMgrFile* file = OMResMgrFindFile(id, type);
        return file ? file->name() : "none";
    }
};

TEST_F(OMResMgrTest, AnyUseIsThatOfTheModel) {
    struct File {
        std::string name{}; ///< by which it was used first; empty: it is not in use
        int uses = 0, activations = 0;
    };
    std::array<File, 4> all;
    std::map<std::string, std::vector<std::pair<int, File*>>> types;
    std::mt19937 random(20261126);
    for (int step = 0; step < 8000; ++step) {
        const std::size_t which = random() % all.size();
        File& file = all[which];
        const std::string name = std::string(1, (random() % 2 ? "abcd" : "ABCD")[which]) + ".rsc";
        const bool flag = random() % 2 == 0;
        Strings texts;
        const auto isUsed = [&](const std::string& operation) {
            if (file.name.empty()) texts = {operation + " - file " + name + " not being used!"};
            return !file.name.empty();
        };
        switch (random() % 5) {
        case 0: {
            Entries table;
            for (auto left = random() % 30; left > 0; --left)
                table.push_back({static_cast<std::int16_t>(random() % 8 - 1),
                                 random() % 3 == 0 ? "ASEQ" : "WAVE"});
            OMResMgrUseDLL16(name, table, flag);
            if (file.name.empty()) {
                file.name = name;
                std::map<std::string, std::ptrdiff_t> added;
                for (const auto& [id, type] : table) {
                    auto& entries = types[std::string(type)];
                    entries.insert(entries.begin() + added[std::string(type)]++, {id, &file});
                }
            }
            ++file.uses, file.activations += flag;
            break;
        }
        case 1:
            OMResMgrActivate(name);
            if (isUsed("OMResMgrActivate")) ++file.activations;
            break;
        case 2:
            OMResMgrDeactivate(name);
            if (isUsed("OMResMgrDeactivate") && --file.activations < 0) {
                file.activations = 0;
                texts = {"OMResMgrDeactivate - too many deactivates for file " + file.name + "!"};
            }
            break;
        default:
            OMResMgrStopUsing(name, flag);
            if (!isUsed("OMResMgrStopUsing")) break;
            if (flag && file.activations > 0) --file.activations;
            if (file.uses > 0 && --file.uses > 0) break;
            if (file.activations > 0) {
                texts = {"OMResMgrStopUsing - file " + file.name + " is still active!"};
            } else {
                file = {};
                for (auto& [type, entries] : types)
                    std::erase_if(entries, [&](const auto& each) { return each.second == &file; });
            }
        }
        EXPECT_EQ(takeFailures(), std::exchange(texts, {}));
        if (flag) continue; // tables are sorted when they are searched only
        const char* const type = random() % 3 == 0 ? "ASEQ" : "WAVE";
        const int id = static_cast<int>(random() % 8) - 1;
        auto& entries = types[type];
        for (std::size_t i = 0; i < entries.size(); ++i)
            for (std::size_t j = i + 1; j < entries.size(); ++j)
                if (entries[i].first > entries[j].first) std::swap(entries[i], entries[j]);
        std::vector<std::string> active;
        for (const auto& [listed, holder] : entries)
            if (listed == id && holder->activations > 0) active.push_back(holder->name);
        if (active.size() > 1)
            texts = {"OMResMgrFindFile - active, duplicate id " + std::to_string(id) + " found!"};
        EXPECT_EQ(fileOf(id, type), active.empty() ? "none" : active.front());
        EXPECT_EQ(takeFailures(), texts);
        ASSERT_FALSE(HasFailure()) << step;
    }
}

TEST_F(OMResMgrTest, TakesTheTableFromWhereverItIsGiven) {
    files.put("own.rsc", NEBuilder().add("WAVE", 1, "x").add("ASEQ", 2, "y").build());
    OMResMgrUseDLL16("own.rsc", true);
    const std::array<OMResMgrEntry, 4> terminated{{{0, "WAVE"}, {5, "WAVE"}, {0, ""}, {6, "WAVE"}}};
    OMResMgrUseDLL16("terminated.rsc", OMResMgrTerminated{terminated.data()}, true);
    files.put(
        "table.txt",
        "7 WAVE\r\n\t\x01 8\tASEQ rest\rno number\n10\n\n99999 WAVE\n4444444444 R\n11NFNT\n9 " +
            std::string(100, 'T') + "\n12 WAVE");
    for (const int mode : {kOMIStreamCache, 10}) {
        OMIStreamFile table("table.txt", mode);
        OMResMgrUseDLL16("stream" + std::to_string(mode), table, mode == 10);
    }
    const std::string cutType(79, 'T');
    const struct {
        int id;
        std::string_view type, file;
    } rows[] = {
        {1, "WAVE", "own.rsc"},          {2, "ASEQ", "own.rsc"},   {1, "ASEQ", "none"},
        {5, "WAVE", "terminated.rsc"},   {6, "WAVE", "none"},      {7, "WAVE", "stream10"},
        {8, "ASEQ", "stream10"},         {10, "WAVE", "none"},     {99999, "WAVE", "none"},
        {99999 - 65536, "WAVE", "none"}, {11, "NFNT", "stream10"}, {9, cutType, "stream10"},
        {12, "WAVE", "stream10"},        {7, "wave", "none"},
    };
    for (const auto& [id, type, file] : rows) EXPECT_EQ(fileOf(id, type), file) << id << type;
    EXPECT_EQ(takeFailures(), Strings{});
    EXPECT_NE(files.text("zorbelog.txt").find("stream10: 2, the first"), std::string::npos);
    for (const std::size_t size : {65536, 65535}) {
        files.put("table.txt", "20 WAVE\n" + std::string(size - 8, ' '));
        OMIStreamFile table("table.txt", kOMIStreamCache);
        OMResMgrUseDLL16("a.rsc", table, true);
        OMResMgrUseRes("a.dll", table, true);
        EXPECT_EQ(fileOf(20) != "none", size < 65536);
    }
    EXPECT_EQ(takeFailures(),
              (Strings{"OMResMgrUseDLL16 - resource table cannot be larger than 64K!",
                       "OMResMgrUseRes - resource table cannot be larger than 64K!",
                       "OMResMgrFindFile - active, duplicate id 20 found!"}));
}

TEST_F(OMResMgrTest, ATableEndsAtExactlyItsLimit) {
    for (const auto& counts : {std::vector{8192}, {8193}, {8191, 2, 1, 1}, {1, 1, 8191, 8190}}) {
        int next = 1; // ids go on from one file to the next
        int total = 0;
        std::size_t refused = 0;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            Entries entries{{static_cast<std::int16_t>(i + 1), "ASEQ"}};
            for (int id = next; id < next + counts[i]; ++id)
                entries.push_back({static_cast<std::int16_t>(id), "WAVE"});
            const std::string name = std::to_string(i);
            OMResMgrUseDLL16(name, entries, true);
            const bool fits = total + counts[i] <= 8192;
            total += fits ? counts[i] : 0;
            refused += !fits;
            EXPECT_EQ(fileOf(next), fits ? name : "none") << i;
            next += counts[i];
            EXPECT_EQ(fileOf(next - 1), fits ? name : "none") << i;
            EXPECT_EQ(fileOf(static_cast<int>(i + 1), "ASEQ"), name) << "other types are added";
        }
        EXPECT_EQ(takeFailures(),
                  Strings(refused, "OMResMgrFile::addToResTypeList - too many resources!"));
        OMResMgrStopUsing("0", true);
        const Entries later{{1, "WAVE"}};
        OMResMgrUseDLL16("later", later, true);
        EXPECT_EQ(fileOf(1), "later") << "there is room again";
        OMResMgrClear();
    }
}

TEST_F(OMResMgrTest, GivesNoStreamsOfWhatItCannotFind) {
    const Strings invalid{"OMResMgrGetIStreamInfo - invalid parameter!",
                          "OMResMgrGetIStream - invalid parameter!"};
    for (const auto& [id, type] : {std::pair(0, "WAVE"), {-1, "WAVE"}, {1, ""}, {2, "WAVE"}}) {
        EXPECT_FALSE(OMResMgrGetIStreamInfo(id, type));
        EXPECT_EQ(OMResMgrGetIStream(id, type, kOMIStreamCache), nullptr);
        EXPECT_EQ(takeFailures(),
                  id == 2 ? Strings{"OMResMgrGetIStream - resource (id 2 type WAVE) not found!"}
                          : invalid);
    }
}

// Resources of the program itself and of module files

class OMResTest : public testing_support::OMAppTest {
  protected:
    OMResTest() {
        machine.modules().resources = {{{"TEXT", 1}, toBytes("of the program")},
                                       {{"WAVE", 2}, toBytes("sound")}};
        files.put(
            "mod.dll",
            NEBuilder().add("TEXT", 1, "of the module...").add("CURSOR", 3, "a cursor").build());
    }
    /// What the resource manager finds of them all.
    static std::string found() {
        std::string all;
        for (const auto& [id, type] :
             {std::pair(1, "TEXT"), std::pair(2, "WAVE"), std::pair(3, "CURSOR")})
            all += OMResMgrGetIStreamInfo(id, type)
                       ? toText(OMResMgrGetIStream(id, type, kOMIStreamCache)->readAll()).c_str()
                       : "none",
                all += '/';
        return all;
    }
};

TEST_F(OMResTest, ModulesTellWhyAndCountLocksAndLeaveTheirResourcesLoaded) {
    files.put("text.dll", "no module");
    for (const auto& [name, error] : {std::pair("none.dll", OMResFile::Error::NotFound),
                                      std::pair("text.dll", OMResFile::Error::CannotLoad)}) {
        const OMResFile file(name);
        EXPECT_EQ(file.error(), error) << name;
        EXPECT_TRUE(file.getResTypes().empty() && file.getResIDs("TEXT").empty()) << name;
    }
    auto file = std::make_unique<OMResFile>("mod.dll");
    OMRes missing(2, "TEXT", file.get());
    EXPECT_EQ(missing.status(), OMRes::Status::NotLoaded);
    EXPECT_EQ(missing.lock(), nullptr);
    EXPECT_EQ(missing.status(), OMRes::Status::CannotLock);

    OMRes resource(1, "TEXT", file.get());
    EXPECT_EQ(resource.lock(), resource.lock());
    resource.unlock();
    EXPECT_TRUE(resource.isLocked());
    resource.unlock();
    EXPECT_EQ(takeFailures(), Strings{});
    resource.unlock();
    EXPECT_EQ(resource.status(), OMRes::Status::CannotUnlock);
    const std::byte* bytes = OMRes(1, "TEXT", file.get()).lock();
    EXPECT_EQ(takeFailures(), (Strings{"OMRes::unlock - too many unlocks!",
                                       "OMRes::~OMRes - instance is still locked!"}));
    EXPECT_EQ(toText({bytes, 16}), "of the module...");
    file.reset();
    EXPECT_EQ(takeFailures().size(), 1U) << "some are still attached";
    EXPECT_EQ(toText({resource.lock(), 16}), "of the module...");
    resource.unlock();
}

TEST_F(OMResTest, TheResourceManagerUsesModules) {
    OMResMgrUseRes("", true); // the program itself
    EXPECT_EQ(found(), "of the program/sound/none/");
    OMResMgrUseRes("mod.dll", true);
    EXPECT_EQ(OMResMgrFindFile(3, "CURSOR")->name(), "mod.dll");
    OMResMgrStopUsing("", true);
    EXPECT_EQ(found(), "of the module.../none/a cursor/");
    OMResMgrStopUsing("MOD.DLL", true);
    EXPECT_EQ(found(), "none/none/none/");

    const OMResMgrEntry entries[] = {{1, "TEXT"}, {0, ""}};
    OMResMgrUseRes("mod.dll", OMResMgrTerminated{entries}, true);
    EXPECT_EQ(found(), "of the module.../none/none/") << "only what the table says";
    OMResMgrStopUsing("mod.dll", true);
    files.put("table", "3 CURSOR\n");
    OMCachedFile::cache("table"); // a stream over a cached file was filled once when it was made
    OMIStreamFile table("table", kOMIStreamCache);
    OMResMgrUseRes("mod.dll", table, true);
    EXPECT_EQ(found(), "none/none/a cursor/");
    EXPECT_EQ(takeFailures(), Strings{});
}

} // namespace
