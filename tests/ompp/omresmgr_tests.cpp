// Which file a resource is found in, against a model; where tables come from and end.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamfile.h"
#include "omresmgr.h"

#include <array>
#include <random>

using namespace testing_support;

namespace {

using Entries = std::vector<OMResMgrEntry>;

class OMResMgrTest : public OMAppTest {
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
    const OMResMgrEntry terminated[] = {{0, "WAVE"}, {5, "WAVE"}, {0, ""}, {6, "WAVE"}};
    OMResMgrUseDLL16("terminated.rsc", OMResMgrTerminated{terminated}, true);
    files.put("table", "7 WAVE\r\n\t\x01 8\tASEQ rest\rno number\n10\n\n99999 WAVE\n"
                       "4444444444 R\n11NFNT\n9 " +
                           std::string(100, 'T') + "\n12 WAVE");
    for (const int mode : {kOMIStreamCache, 10}) {
        OMIStreamFile table("table", mode);
        OMResMgrUseDLL16("stream" + std::to_string(mode), table, mode == 10);
    }
    const std::string cutType(79, 'T');
    const struct {
        std::string_view file, type;
        std::vector<int> ids;
    } rows[] = {
        {"own.rsc", "WAVE", {1}},        {"own.rsc", "ASEQ", {2}},
        {"terminated.rsc", "WAVE", {5}}, {"stream10", "WAVE", {7, 12}},
        {"stream10", "ASEQ", {8}},       {"stream10", "NFNT", {11}},
        {"stream10", cutType, {9}},      {"none", "WAVE", {6, 10, 99999, 99999 - 65536}},
    };
    for (const auto& [file, type, ids] : rows)
        for (const int id : ids) EXPECT_EQ(fileOf(id, type), file) << id << type;
    EXPECT_NE(takeLog().find("stream10: 2, the first"), std::string::npos);
    for (const std::size_t size : {65536, 65535}) {
        files.put("table", "20 WAVE\n" + std::string(size - 8, ' '));
        OMIStreamFile table("table", kOMIStreamCache);
        OMResMgrUseDLL16("a.rsc", table, true);
        OMResMgrUseRes("a.dll", table, true);
        EXPECT_EQ(fileOf(20) != "none", size < 65536);
    }
    const std::string large = " - resource table cannot be larger than 64K!";
    EXPECT_EQ(takeFailures(), (Strings{"OMResMgrUseDLL16" + large, "OMResMgrUseRes" + large,
                                       "OMResMgrFindFile - active, duplicate id 20 found!"}));
    EXPECT_FALSE(OMResMgrGetIStreamInfo(0, "WAVE") || OMResMgrGetIStream(2, "WAVE", -1));
    EXPECT_EQ(takeFailures(),
              (Strings{"OMResMgrGetIStreamInfo - invalid parameter!",
                       "OMResMgrGetIStream - resource (id 2 type WAVE) not found!"}));
}

TEST_F(OMResMgrTest, ATableEndsAtExactlyItsLimit) {
    int next = 1; // ids go on from one file to the next
    for (const auto& [count, fits] : {std::pair{8191, true}, {2, false}, {1, true}, {1, false}}) {
        const std::string name = std::to_string(next);
        Entries entries{{static_cast<std::int16_t>(next), "ASEQ"}};
        for (int i = 0; i < count; ++i)
            entries.push_back({static_cast<std::int16_t>(next + i), "WAVE"});
        OMResMgrUseDLL16(name, entries, true);
        next += count;
        EXPECT_EQ(fileOf(next - 1), fits ? name : "none") << name;
        EXPECT_EQ(fileOf(next - count, "ASEQ"), name) << "other types are added";
        const std::string text = "OMResMgrFile::addToResTypeList - too many resources!";
        EXPECT_EQ(takeFailures(), Strings(fits ? 0 : 1, text));
    }
}

TEST_F(OMResMgrTest, UsesModulesAndTheProgramItself) {
    machine.modules().resources = {{{"TEXT", 1}, toBytes("program")}};
    files.put("mod.dll", NEBuilder().add("TEXT", 1, "module").add("CURSOR", 3, "a").build());
    const auto expectFound = [](int id, const char* type, const std::string& text) {
        const auto stream = OMResMgrGetIStream(id, type, kOMIStreamCache);
        EXPECT_STREQ(stream ? toText(stream->readAll()).c_str() : "", text.c_str());
    };
    OMResMgrUseRes("", true);
    expectFound(1, "TEXT", "program");
    const OMResMgrEntry entries[] = {{1, "TEXT"}, {0, ""}};
    OMResMgrUseRes("mod.dll", OMResMgrTerminated{entries}, true);
    EXPECT_EQ(fileOf(3, "CURSOR"), "none") << "only what the table says";
    OMResMgrStopUsing("MOD.DLL", true);
    OMResMgrUseRes("mod.dll", true);
    expectFound(3, "CURSOR", "a");
    OMResMgrStopUsing("", true);
    expectFound(1, "TEXT", "module");
}

} // namespace
