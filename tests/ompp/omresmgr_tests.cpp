// Which file a resource is found in.
#include "frameworkfixture.h"
#include "growth.h"
#include "nebuilder.h"

#include "omexchangeorder.h"
#include "omistreamdll16.h"
#include "omistreamfile.h"
#include "omresmgr.h"

#include <array>
#include <numeric>
#include <random>

using testing_support::NEBuilder;

namespace {

using Entries = std::vector<OMResMgrEntry>;

class OMResMgrTest : public testing_support::OMAppTest {
  protected:
    static std::string fileOf(int id, std::string_view type = "WAVE") {
        const OMResMgrFile* file = OMResMgrFindFile(id, type);
        return file ? file->name() : "none";
    }
    const Strings duplicate = {"OMResMgrFindFile - active, duplicate id 7 found!"};
};

TEST_F(OMResMgrTest, TakesTheTableFromWhereverItIsGiven) {
    files.put("own.rsc", NEBuilder().add("WAVE", 1, "x").add("ASEQ", 2, "y").build());
    OMResMgrUseDLL16("own.rsc", true);

    const Entries counted = {{3, "WAVE"}, {4, "ASEQ"}};
    OMResMgrUseDLL16("counted.rsc", counted, true);

    const std::array<OMResMgrEntry, 4> terminated{{{0, "WAVE"}, {5, "WAVE"}, {0, ""}, {6, "WAVE"}}};
    OMResMgrUseDLL16("terminated.rsc", OMResMgrTerminated{terminated.data()}, true);

    const std::string longType = "9 " + std::string(100, 'T');
    files.put("table.txt",
              "7 WAVE\r\n\t\x01 8\tASEQ rest\rno number\n10\n\n99999 WAVE\n4444444444 R\n11NFNT\n" +
                  longType + "\n12 WAVE");
    for (const int mode : {kOMIStreamCache, 10}) {
        OMIStreamFile table("table.txt", mode);
        OMResMgrUseDLL16("stream" + std::to_string(mode), table, mode == 10);
    }
    struct Row {
        int id;
        std::string_view type;
        std::string_view file;
    };
    const std::string cutType(79, 'T');
    const Row rows[] = {
        {1, "WAVE", "own.rsc"},     {2, "ASEQ", "own.rsc"},     {1, "ASEQ", "none"},
        {3, "WAVE", "counted.rsc"}, {4, "ASEQ", "counted.rsc"}, {5, "WAVE", "terminated.rsc"},
        {6, "WAVE", "none"},        {7, "WAVE", "stream10"},    {8, "ASEQ", "stream10"},
        {10, "WAVE", "none"},       {99999, "WAVE", "none"},    {99999 - 65536, "WAVE", "none"},
        {11, "NFNT", "stream10"},   {9, cutType, "stream10"},   {12, "WAVE", "stream10"},
        {7, "wave", "none"},
    };
    for (const Row& row : rows) EXPECT_EQ(fileOf(row.id, row.type), row.file) << row.id << row.type;
    EXPECT_EQ(takeFailures(), Strings{});
    EXPECT_NE(files.text("zorbelog.txt").find("stream10: 2, the first"), std::string::npos);
}

TEST_F(OMResMgrTest, TableTextsAreSmallerThan64K) {
    for (const std::size_t size : {65536, 65535}) {
        files.put("table.txt", "1 WAVE\n" + std::string(size - 7, ' '));
        OMIStreamFile table("table.txt", kOMIStreamCache);
        OMResMgrUseDLL16("a.rsc", table, true);
        OMResMgrUseRes("a.dll", table, true);
        EXPECT_EQ(OMResMgrFindFile(1, "WAVE") != nullptr, size < 65536);
    }
    EXPECT_EQ(takeFailures(),
              (Strings{"OMResMgrUseDLL16 - resource table cannot be larger than 64K!",
                       "OMResMgrUseRes - resource table cannot be larger than 64K!",
                       "OMResMgrFindFile - active, duplicate id 1 found!"}));
}

TEST_F(OMResMgrTest, FindsResourcesWhileTheirFileIsUsedAndActive) {
    const Entries one = {{1, "WAVE"}};
    const Entries other = {{2, "WAVE"}};
    OMResMgrUseDLL16("a.rsc", one, false);
    EXPECT_EQ(fileOf(1), "none");
    OMResMgrActivate("A.RSC");
    OMResMgrActivate("a.rsc");
    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(fileOf(1), "a.rsc") << "activations count";
    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(fileOf(1), "none");
    EXPECT_EQ(takeFailures(), Strings{});
    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrDeactivate - too many deactivates for file a.rsc!"});
    OMResMgrUseDLL16("a.rsc", other, true); // in use already: its table stays
    EXPECT_EQ(fileOf(1), "a.rsc") << "the refused one left no debt";
    EXPECT_EQ(fileOf(2), "none");

    OMResMgrStopUsing("a.rsc", false);
    EXPECT_EQ(takeFailures(), Strings{}) << "used once more";
    OMResMgrStopUsing("a.rsc", false);
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrStopUsing - file a.rsc is still active!"});
    EXPECT_EQ(fileOf(1), "a.rsc");
    OMResMgrStopUsing("a.rsc", true);
    EXPECT_EQ(fileOf(1), "none");
    OMResMgrActivate("a.rsc");
    OMResMgrDeactivate("a.rsc");
    OMResMgrStopUsing("a.rsc", true);
    EXPECT_EQ(takeFailures(), (Strings{"OMResMgrActivate - file a.rsc not being used!",
                                       "OMResMgrDeactivate - file a.rsc not being used!",
                                       "OMResMgrStopUsing - file a.rsc not being used!"}));
}

TEST_F(OMResMgrTest, AnswersDuplicatesInTheOrderOfTheTable) {
    const Entries table = {{7, "WAVE"}, {9, "WAVE"}, {7, "ASEQ"}};
    OMResMgrUseDLL16("old.rsc", table, true);
    OMResMgrUseDLL16("new.rsc", table, true);
    // The table holds 7n 9n 7o 9o; sorting it leaves 7n 7o 9n 9o.
    EXPECT_EQ(fileOf(7), "new.rsc");
    EXPECT_EQ(takeFailures(), duplicate);
    OMResMgrDeactivate("new.rsc");
    EXPECT_EQ(fileOf(7), "old.rsc");
    OMResMgrActivate("new.rsc");
    OMResMgrDeactivate("old.rsc");
    EXPECT_EQ(fileOf(7), "new.rsc");
    EXPECT_EQ(takeFailures(), Strings{}) << "only active files count as duplicates";
    OMResMgrClear();

    const Entries early = {{7, "WAVE"}, {3, "WAVE"}};
    const Entries late = {{7, "WAVE"}};
    OMResMgrUseDLL16("early.rsc", early, true);
    OMResMgrUseDLL16("late.rsc", late, true);
    // 7late 7early 3 becomes 3 7early 7late: the first 7 went to the place of the 3.
    EXPECT_EQ(fileOf(7), "early.rsc");
    EXPECT_EQ(takeFailures(), duplicate);
    OMResMgrClear();

    files.put("a.rsc", NEBuilder().add("WAVE", 7, "first").add("WAVE", 7, "second").build());
    OMResMgrUseDLL16("a.rsc", true);
    const auto stream = OMResMgrGetIStream(7, "WAVE", kOMIStreamCache);
    EXPECT_EQ(takeFailures(), duplicate) << "those of one file are some too";
    EXPECT_EQ(testing_support::toText(stream->readAll()).substr(0, 5), "first");
}

TEST_F(OMResMgrTest, ATableEndsAtExactlyItsLimit) {
    struct Row {
        const char* name;
        std::vector<int> counts; ///< of one file after the other; ids go on
        std::vector<bool> added;
    };
    const Row rows[] = {
        {"one file full", {8192}, {true}},
        {"one file above", {8193}, {false}},
        {"a smaller one after a refused one", {8191, 2, 1, 1}, {true, false, true, false}},
        {"a large one after small ones", {1, 1, 8191, 8190}, {true, true, false, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        int next = 1;
        std::size_t refused = 0;
        for (std::size_t i = 0; i < row.counts.size(); ++i) {
            Entries entries{{static_cast<std::int16_t>(i + 1), "ASEQ"}};
            for (int id = next; id < next + row.counts[i]; ++id)
                entries.push_back({static_cast<std::int16_t>(id), "WAVE"});
            const std::string name = std::to_string(i);
            OMResMgrUseDLL16(name, entries, true);
            const std::string expected = row.added[i] ? name : "none";
            EXPECT_EQ(fileOf(next), expected) << i;
            next += row.counts[i];
            EXPECT_EQ(fileOf(next - 1), expected) << i;
            EXPECT_EQ(fileOf(static_cast<int>(i + 1), "ASEQ"), name) << "other types are added";
            if (!row.added[i]) ++refused;
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

// A text of another kind may be taken for a map, and then every few bytes of it are a file.
TEST_F(OMResMgrTest, ManyFilesAndTypesTakeTimeInProportion) {
    const auto work = [](int count) {
        Strings names;
        for (int i = 0; i < count; ++i) names.push_back(std::to_string(i));
        for (const std::string& name : names) {
            const Entries own = {{1, name}, {2, name}};
            OMResMgrUseDLL16(name, own, true);
        }
        EXPECT_EQ(fileOf(2, names.back()), names.back());
        for (const std::string& name : names) OMResMgrStopUsing(name, true);
        EXPECT_EQ(fileOf(2, names.back()), "none");
    };
    EXPECT_LT(testing_support::growthOfFour(4000, work), testing_support::kInProportion);
    EXPECT_EQ(takeFailures(), Strings{});
}

TEST_F(OMResMgrTest, GivesNoStreamsOfWhatItCannotFind) {
    EXPECT_FALSE(OMResMgrGetIStreamInfo(2, "WAVE"));
    EXPECT_EQ(OMResMgrGetIStream(2, "WAVE", kOMIStreamCache), nullptr);
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrGetIStream - resource (id 2 type WAVE) not found!"});
    for (const auto& [id, type] : {std::pair(0, "WAVE"), std::pair(-1, "WAVE"), std::pair(1, "")}) {
        EXPECT_FALSE(OMResMgrGetIStreamInfo(id, type));
        EXPECT_EQ(OMResMgrGetIStream(id, type, kOMIStreamCache), nullptr);
        EXPECT_EQ(takeFailures(), (Strings{"OMResMgrGetIStreamInfo - invalid parameter!",
                                           "OMResMgrGetIStream - invalid parameter!"}));
    }
}

TEST(OMExchangeOrder, IsThatOfThePlainSort) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::int16_t> ids(random() % (round == 0 ? 1500 : 40));
        const unsigned range = 1 + random() % 12;
        for (std::int16_t& id : ids)
            id = static_cast<std::int16_t>(static_cast<int>(random() % range) - 3);
        std::vector<std::size_t> order(ids.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        for (std::size_t i = 0; i + 1 < order.size(); ++i)
            for (std::size_t j = i + 1; j < order.size(); ++j)
                if (ids[order[i]] > ids[order[j]]) std::swap(order[i], order[j]);
        ASSERT_EQ(OMExchangeOrder(ids), order) << "round " << round;
    }
}

} // namespace
