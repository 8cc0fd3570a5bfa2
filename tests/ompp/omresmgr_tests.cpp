#include "frameworkfixture.h"
#include "growth.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omexchangeorder.h"
#include "omistreamdll16.h"
#include "omistreamfile.h"
#include "omresmgr.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <random>

using testing_support::Bytes;
using testing_support::FrameworkTest;
using testing_support::NEBuilder;

namespace {

using Strings = std::vector<std::string>;
using Entries = std::vector<OMResMgrEntry>;

class OMResMgrTest : public FrameworkTest {
  protected:
    static std::string fileOf(int id, std::string_view type = "WAVE") {
        const OMResMgrFile* file = OMResMgrFindFile(id, type);
        return file ? file->name() : "none";
    }
    static bool isUsed(std::string_view name) {
        bool used = true;
        OMDebug::setCheckListener([&](const OMDebug::Failure&) { used = false; });
        OMResMgrActivate(name);
        if (used) OMResMgrDeactivate(name);
        OMDebug::setCheckListener(nullptr);
        return used;
    }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(OMResMgrTest, TakesTheTableFromWhereverItIsGiven) {
    files.put("own.rsc", NEBuilder().add("WAVE", 1, "x").add("ASEQ", 2, "y").build());
    OMResMgrUseDLL16("own.rsc", true);

    const Entries counted = {{3, "WAVE"}, {4, "ASEQ"}};
    OMResMgrUseDLL16("counted.rsc", counted, true);

    const std::array<OMResMgrEntry, 4> terminated{{{0, "WAVE"}, {5, "WAVE"}, {0, ""}, {6, "WAVE"}}};
    OMResMgrUseDLL16("terminated.rsc", OMResMgrTerminated{terminated.data()}, true);

    const std::string longType = "9 " + std::string(100, 'T');
    files.put("table.txt", "7 WAVE\r\n\t\x01 8\tASEQ rest\rno number\n10\n\n99999 WAVE\n11NFNT\n" +
                               longType + "\n12 WAVE");
    for (int mode : {kOMIStreamCache, 10}) {
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
    EXPECT_TRUE(takeFailures().empty());
}

TEST_F(OMResMgrTest, RefusesTableTextsOf64K) {
    files.put("large.txt", "1 WAVE\n" + std::string(65536 - 7, ' '));
    files.put("fits.txt", "1 WAVE\n" + std::string(65535 - 7, ' '));
    OMIStreamFile large("large.txt", kOMIStreamCache);
    OMResMgrUseDLL16("a.rsc", large, true);
    EXPECT_EQ(takeFailures(),
              Strings{"OMResMgrUseDLL16 - resource table cannot be larger than 64K!"});
    EXPECT_FALSE(isUsed("a.rsc"));
    OMIStreamFile fits("fits.txt", kOMIStreamCache);
    OMResMgrUseDLL16("a.rsc", fits, true);
    EXPECT_EQ(fileOf(1), "a.rsc");
}

TEST_F(OMResMgrTest, FindsResourcesWhileTheirFileIsActive) {
    const Entries one = {{1, "WAVE"}};
    OMResMgrUseDLL16("a.rsc", one, false);
    EXPECT_EQ(fileOf(1), "none");
    OMResMgrActivate("A.RSC");
    OMResMgrActivate("a.rsc");
    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(fileOf(1), "a.rsc") << "activations count";
    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(fileOf(1), "none");
    EXPECT_TRUE(takeFailures().empty());

    OMResMgrDeactivate("a.rsc");
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrDeactivate - too many deactivates for file a.rsc!"});
    OMResMgrActivate("a.rsc");
    EXPECT_EQ(fileOf(1), "a.rsc") << "the refused one left no debt";

    OMResMgrActivate("b.rsc");
    OMResMgrDeactivate("b.rsc");
    OMResMgrStopUsing("b.rsc", true);
    EXPECT_EQ(takeFailures(), (Strings{"OMResMgrActivate - file b.rsc not being used!",
                                       "OMResMgrDeactivate - file b.rsc not being used!",
                                       "OMResMgrStopUsing - file b.rsc not being used!"}));
}

TEST_F(OMResMgrTest, ForgetsAFileAfterItsLastUse) {
    const Entries one = {{1, "WAVE"}};
    const Entries other = {{2, "WAVE"}};
    OMResMgrUseDLL16("a.rsc", one, true);
    OMResMgrUseDLL16("a.rsc", other, false); // in use already: its table stays
    EXPECT_EQ(fileOf(2), "none");
    OMResMgrStopUsing("a.rsc", true);
    EXPECT_TRUE(isUsed("a.rsc"));
    OMResMgrStopUsing("a.rsc", false);
    EXPECT_FALSE(isUsed("a.rsc"));
    EXPECT_EQ(fileOf(1), "none");
}

TEST_F(OMResMgrTest, KeepsAFileThatIsStillActive) {
    const Entries one = {{1, "WAVE"}};
    OMResMgrUseDLL16("a.rsc", one, true);
    OMResMgrStopUsing("a.rsc", false);
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrStopUsing - file a.rsc is still active!"});
    EXPECT_EQ(fileOf(1), "a.rsc");
    OMResMgrStopUsing("a.rsc", true);
    EXPECT_TRUE(takeFailures().empty());
    EXPECT_FALSE(isUsed("a.rsc"));
}

TEST_F(OMResMgrTest, AnswersDuplicatesInTheOrderOfTheTable) {
    const Entries table = {{7, "WAVE"}, {9, "WAVE"}};
    OMResMgrUseDLL16("old.rsc", table, true);
    OMResMgrUseDLL16("new.rsc", table, true);
    const Strings duplicate = {"OMResMgrFindFile - active, duplicate id 7 found!"};
    // The table holds 7n 9n 7o 9o; sorting it leaves 7n 7o 9n 9o.
    EXPECT_EQ(fileOf(7), "new.rsc");
    EXPECT_EQ(takeFailures(), duplicate);
    OMResMgrDeactivate("new.rsc");
    EXPECT_EQ(fileOf(7), "old.rsc");
    EXPECT_TRUE(takeFailures().empty());
    OMResMgrActivate("new.rsc");
    OMResMgrDeactivate("old.rsc");
    EXPECT_EQ(fileOf(7), "new.rsc");
    EXPECT_TRUE(takeFailures().empty()) << "only active files count as duplicates";
}

TEST_F(OMResMgrTest, EqualIdsStandAsAnExchangeSortLeavesThem) {
    const Entries early = {{7, "WAVE"}, {3, "WAVE"}};
    const Entries late = {{7, "WAVE"}};
    OMResMgrUseDLL16("early.rsc", early, true);
    OMResMgrUseDLL16("late.rsc", late, true);
    // 7late 7early 3 becomes 3 7early 7late: the first 7 went to the place of the 3.
    EXPECT_EQ(fileOf(7), "early.rsc");
}

TEST_F(OMResMgrTest, RefusesATypeWithTooManyResources) {
    Entries entries;
    for (int i = 0; i < 8192; ++i) entries.push_back({static_cast<std::int16_t>(i + 1), "WAVE"});
    entries.push_back({1, "ASEQ"});
    OMResMgrUseDLL16("full.rsc", entries, true);
    EXPECT_TRUE(takeFailures().empty());
    const Entries more = {{9000, "WAVE"}, {2, "ASEQ"}};
    OMResMgrUseDLL16("more.rsc", more, true);
    const Strings tooMany = {"OMResMgrFile::addToResTypeList - too many resources!"};
    EXPECT_EQ(takeFailures(), tooMany);
    EXPECT_EQ(fileOf(9000), "none");
    EXPECT_EQ(fileOf(2, "ASEQ"), "more.rsc") << "other types are not concerned";
    EXPECT_EQ(fileOf(8192), "full.rsc");

    for (OMResMgrEntry& entry : entries) entry.type = "RRGB";
    OMResMgrUseDLL16("toomany.rsc", entries, true);
    EXPECT_EQ(takeFailures(), tooMany);
    EXPECT_EQ(fileOf(1, "RRGB"), "none");
    OMResMgrStopUsing("full.rsc", true);
    OMResMgrUseDLL16("later.rsc", more, true);
    EXPECT_EQ(fileOf(9000), "later.rsc") << "there is room again";
}

TEST_F(OMResMgrTest, ATableEndsAtExactlyItsLimit) {
    const auto ids = [](int first, int count, std::string_view type = "WAVE") {
        Entries entries;
        for (int i = 0; i < count; ++i)
            entries.push_back({static_cast<std::int16_t>(first + i), type});
        return entries;
    };
    struct Row {
        const char* name;
        std::vector<int> counts; ///< of one file after the other; ids go on
        std::vector<bool> added;
    };
    const Row rows[] = {
        {"one file below", {8191}, {true}},
        {"one file full", {8192}, {true}},
        {"one file above", {8193}, {false}},
        {"up to the limit", {8191, 1}, {true, true}},
        {"past the limit", {8191, 2}, {true, false}},
        {"a smaller one after a refused one", {8191, 2, 1, 1}, {true, false, true, false}},
        {"grown by several", {4096, 2048, 2048, 1}, {true, true, true, false}},
        {"a large one after small ones", {1, 1, 8191, 8190}, {true, true, false, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        int next = 1;
        std::size_t refused = 0;
        for (std::size_t i = 0; i < row.counts.size(); ++i) {
            Entries entries = ids(next, row.counts[i]);
            entries.push_back({static_cast<std::int16_t>(i + 1), "ASEQ"});
            const std::string name = std::to_string(i);
            OMResMgrUseDLL16(name, entries, true);
            const std::string expected = row.added[i] ? name : "none";
            EXPECT_EQ(fileOf(next), expected) << i;
            EXPECT_EQ(fileOf(next + row.counts[i] - 1), expected) << i;
            EXPECT_EQ(fileOf(static_cast<int>(i + 1), "ASEQ"), name) << "other types are added";
            next += row.counts[i];
            if (!row.added[i]) ++refused;
        }
        EXPECT_EQ(takeFailures(),
                  Strings(refused, "OMResMgrFile::addToResTypeList - too many resources!"));
        OMResMgrClear();
    }
}

TEST_F(OMResMgrTest, EqualIdsOfOneFileAreDuplicates) {
    const Entries table = {{7, "WAVE"}, {7, "WAVE"}, {7, "ASEQ"}};
    OMResMgrUseDLL16("a.rsc", table, true);
    EXPECT_EQ(fileOf(7), "a.rsc");
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrFindFile - active, duplicate id 7 found!"});
    EXPECT_EQ(fileOf(7, "ASEQ"), "a.rsc");
    EXPECT_TRUE(takeFailures().empty()) << "types are told apart";
    files.put("b.rsc", NEBuilder().add("RRGB", 5, "first").add("RRGB", 5, "second").build());
    OMResMgrUseDLL16("b.rsc", true);
    const auto stream = OMResMgrGetIStream(5, "RRGB", kOMIStreamCache);
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrFindFile - active, duplicate id 5 found!"});
    EXPECT_EQ(testing_support::toText(stream->readAll()).substr(0, 5), "first");
}

TEST_F(OMResMgrTest, ADamagedLibraryIsUsedWithoutWhatItLost) {
    const std::string invalid = "OMIStreamDLL16IsValidDLL - invalid file!";
    const Bytes good = NEBuilder().add("WAVE", 1, "one").add("ASEQ", 2, "two").build();
    struct Row {
        const char* name;
        Bytes bytes;
        std::string wave;
        std::string aseq;
        Strings failures;
    };
    const auto cut = [&](std::size_t size) {
        return Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
    };
    const Row rows[] = {
        {"whole", good, "a.rsc", "a.rsc", {}},
        {"without the second resource", cut(good.size() - 16), "a.rsc", "none", {}},
        {"without resources", cut(good.size() - 32), "none", "none", {}},
        {"without headers", cut(127), "none", "none", {invalid}},
        {"empty", {}, "none", "none", {invalid}},
        {"zeros", Bytes(good.size()), "none", "none", {invalid}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        files.put("a.rsc", row.bytes);
        OMResMgrUseDLL16("a.rsc", true);
        EXPECT_EQ(takeFailures(), row.failures);
        EXPECT_EQ(fileOf(1), row.wave);
        EXPECT_EQ(fileOf(2, "ASEQ"), row.aseq);
        EXPECT_TRUE(isUsed("a.rsc")) << "it is a file in use all the same";
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { failures.emplace_back(failure.message); });
        OMResMgrStopUsing("a.rsc", true);
        EXPECT_TRUE(takeFailures().empty());
    }
}

// A text of another kind may be taken for a map, and then every few bytes of it are a file.
TEST_F(OMResMgrTest, ManyFilesAndTypesTakeTimeInProportion) {
    const auto work = [](int count) {
        std::vector<std::string> names;
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
    EXPECT_TRUE(takeFailures().empty());
}

TEST_F(OMResMgrTest, GivesStreams) {
    files.put("a.rsc", NEBuilder().add("WAVE", 1, "bytes").build());
    OMResMgrUseDLL16("a.rsc", true);
    EXPECT_TRUE(OMResMgrGetIStreamInfo(1, "WAVE"));
    EXPECT_FALSE(OMResMgrGetIStreamInfo(2, "WAVE"));
    EXPECT_TRUE(takeFailures().empty());
    const auto stream = OMResMgrGetIStream(1, "WAVE", kOMIStreamCache);
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->className(), "OMIStreamDLL16");
    EXPECT_EQ(testing_support::toText(stream->readAll()).substr(0, 5), "bytes");

    EXPECT_EQ(OMResMgrGetIStream(2, "WAVE", kOMIStreamCache), nullptr);
    EXPECT_EQ(takeFailures(), Strings{"OMResMgrGetIStream - resource (id 2 type WAVE) not found!"});
    for (const auto& [id, type] : {std::pair(0, "WAVE"), std::pair(-1, "WAVE"), std::pair(1, "")}) {
        EXPECT_FALSE(OMResMgrGetIStreamInfo(id, type));
        EXPECT_EQ(OMResMgrGetIStream(id, type, kOMIStreamCache), nullptr);
        EXPECT_EQ(takeFailures(), (Strings{"OMResMgrGetIStreamInfo - invalid parameter!",
                                           "OMResMgrGetIStream - invalid parameter!"}));
    }
}

std::vector<std::size_t> plainExchangeSort(const std::vector<std::int16_t>& ids) {
    std::vector<std::size_t> order(ids.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t i = 0; i + 1 < order.size(); ++i)
        for (std::size_t j = i + 1; j < order.size(); ++j)
            if (ids[order[i]] > ids[order[j]]) std::swap(order[i], order[j]);
    return order;
}

TEST(OMExchangeOrder, IsThatOfThePlainSort) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::int16_t> ids(random() % 40);
        const unsigned range = 1 + random() % 12;
        for (std::int16_t& id : ids)
            id = static_cast<std::int16_t>(static_cast<int>(random() % range) - 3);
        ASSERT_EQ(OMExchangeOrder(ids), plainExchangeSort(ids)) << "round " << round;
    }
    std::vector<std::int16_t> large(1500);
    for (std::int16_t& id : large) id = static_cast<std::int16_t>(random() % 100);
    EXPECT_EQ(OMExchangeOrder(large), plainExchangeSort(large));
}

} // namespace
