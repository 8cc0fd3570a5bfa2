// What scripts read and write of a player's numbers, each at its place in the record.
#include "world/computedproperties.h"

#include "worldfixture.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using testing_support::WorldTest;
using namespace world;

class ComputedProperties : public WorldTest {
  protected:
    /// The number at each place is 1000 and the place; CWS2 is current, at level 2, and OHUB's door
    /// is the one with three gems.
    ComputedProperties() {
        const auto numbers = record.numbers();
        for (std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] = 1000 + static_cast<std::int32_t>(i);
        record.currentLocation = 2;
        record.activities[1].currentLevel = 2;
        record.hubs[1].rounds = 3;
    }
    /// The words are the property's name and its arguments.
    static const ComputedProperty& property(std::string_view words) {
        const std::string_view name = words.substr(0, words.find(' '));
        pushWords(words.substr(std::min(words.size(), name.size() + 1)));
        return *std::ranges::find(computedProperties(), name, &ComputedProperty::name);
    }
    std::string read(std::string_view words) {
        return property(words).read(record, OMSArguments::global());
    }
    void write(std::string_view words, std::string_view value) {
        const ComputedProperty& named = property(words);
        if (named.write) named.write(record, OMSArguments::global(), value);
    }

    PlayerRecord record;
};

TEST_F(ComputedProperties, ReadTheNumberThatTheArgumentsName) {
    struct Row {
        const char* words;
        const char* text;
    };
    const Row rows[] = {
        {"backpackItemPresent 0", "1060"},
        {"backpackItemPresent 12", ""},
        {"backpackItemPresent -1", ""},
        {"currentLocation", "CWS2"},
        {"missingItemSlot 1", "1036"},
        {"missingItemSlot 12", "1047"},
        {"missingItemSlot 13", ""},
        {"patternItem 1", "1084"},
        {"patternItem 4", ""}, // stored, but not of the pattern
        {"patternItem", ""},
        {"patternItemCount", "3"},
        {"isAutoLevelingEnabled CBA1", "1093"},
        {"isAutoLevelingEnabled PWS2", "1687"},
        {"isAutoLevelingEnabled -", "1223"},
        {"isAutoLevelingEnabled CHUB", ""},
        {"isAutoLevelingEnabled cws1", ""},
        {"currentDataset CBA2 4", "1108"},
        {"currentDataset CWS2 1", "1245"},
        {"currentDataset CWS2 -", "1246"},
        {"currentDataset CWS2 5", ""},
        {"currentDataset CWS1", ""}, // its level is none
        {"currentLevel CMA", "1148"},
        {"currentLevel -", "2"},
        {"itemPresent 1 CHUB", "1116"},
        {"itemPresent 6 CWS1", "1222"},
        {"itemPresent 7 CWS1", "0"},
        {"itemPresent 13 CHUB", "0"},
        {"itemPresent 1 CBA1", "0"},
        {"itemsPresentCount OHUB", "12"},
        {"itemsPresentCount CMA", ""},
        {"levelColor 4 CMA", "1153"},
        {"levelColor - CWS2", "1266"},
        {"levelColor 5 CWS1", ""},
        {"visitedCount CBA1", "1099"},
        {"visitedCount CHUB", "1128"},
        {"visitedCount CWS1", "1206"},
        {"visitedCount SIGNIN", ""},
        {"hubRoundsCompleted CHUB", "1115"},
        {"hubRoundsCompleted OHUB", "3"},
        {"hubRoundsCompleted -", ""},
        {"wsCurrentLevelEntryCount CWS2", "1252"},
        {"wsCurrentLevelEntryCount CWS1", ""},
        {"wsNextItemInQueue CWS1", "1211"},
        {"wsTotalCorrectGuessCount", "1257"},
        {"wsTotalGuessCount CWS1 4", "1205"},
        {"wsTotalGuessCount CBA1 1", ""},
    };
    for (const Row& expected : rows)
        EXPECT_EQ(read(expected.words), expected.text) << expected.words;
    record.currentLocation = 17;
    EXPECT_EQ(read("currentLocation"), "");
    record.hubs[1].rounds = 5;
    for (const char* words : {"missingItemSlot 1", "patternItem 1", "patternItemCount"})
        EXPECT_EQ(read(words), "") << "there is no sixth door";
}

TEST_F(ComputedProperties, WriteWhatTheyRead) {
    struct Row {
        const char* words;
        const char* value;
        int place; ///< of the number that changes; -1 for none
        std::int32_t number;
    };
    const Row rows[] = {
        {"currentLocation", "SIGNIN", 92, 46},
        {"currentLocation", "Nowhere", 92, 0},
        {"isAutoLevelingEnabled CBA1", "0", 93, 0},
        {"currentDataset CWS2 3", "12x", 247, 12},
        {"currentDataset CWS2 5", "12", -1, 0},
        {"currentLevel OMA", "260", 159, 4},
        {"currentLevel CHUB", "1", -1, 0},
        {"visitedCount OHUB", "70000", 142, 70000},
        {"hubRoundsCompleted CHUB", "-1", 115, 255},
        {"wsCurrentLevelEntryCount -", "9", 252, 9},
        {"wsTotalCorrectGuessCount CWS1 1", "32768", 198, -32768},
        {"wsTotalGuessCount CWS2 -", "65538", 261, 2},
        {"backpackItemPresent 0", "1", -1, 0},
    };
    const PlayerRecord before = record;
    for (const Row& expected : rows) {
        record = before;
        PlayerRecord after = before;
        if (expected.place >= 0)
            after.numbers()[static_cast<std::size_t>(expected.place)] = expected.number;
        write(expected.words, expected.value);
        EXPECT_TRUE(std::ranges::equal(record.numbers(), after.numbers())) << expected.words;
    }
}

TEST_F(ComputedProperties, AnotherLevelForgetsTheResults) {
    ActivityRecord& activity = record.activities[1];
    write("currentLevel CWS2", "258"); // 2 in eight bits
    EXPECT_EQ(activity.resultCount, 1255) << "it is the same level";
    write("currentLevel CWS2", "3");
    EXPECT_EQ(activity.currentLevel, 3);
    EXPECT_EQ(activity.resultCount, 0);
    EXPECT_EQ(std::ranges::count(activity.results, 0), kRecentResults);
    EXPECT_EQ(activity.correctSinceDistribution, 1244) << "the others stay";
}

TEST_F(ComputedProperties, NoNumberLeadsOutside) {
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    for (const int number : {kLeast, -1, 0, 4, 5, 12, kMost}) {
        for (const ComputedProperty& property : computedProperties()) {
            for (const char* first : {"-", "-2147483648", "-1", "0", "5", "2147483647", "CWS1",
                                      "CHUB", "OHUB", "OMA", "PBA"}) {
                const std::string words = std::string(property.name) + " " + first + " ";
                for (const char* second : {"-", "-2147483648", "0", "5", "2147483647", "PWS2"}) {
                    std::ranges::fill(record.numbers(), number);
                    const std::string text = read(words + second);
                    write(words + second, "77");
                    const auto changed =
                        std::ssize(record.numbers()) - std::ranges::count(record.numbers(), number);
                    // A level takes the results with it.
                    EXPECT_LE(changed, property.name == "currentLevel" ? 22 : 1) << words << second;
                    EXPECT_TRUE(changed == 0 || !text.empty() || property.name == "currentLocation")
                        << words << second;
                }
            }
        }
    }
}

} // namespace
