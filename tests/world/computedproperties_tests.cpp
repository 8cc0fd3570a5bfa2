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

constexpr int kNone = -1;
constexpr std::int32_t kReadOnly = -9;

TEST_F(ComputedProperties, ReadAndWriteTheNumberThatTheWordsName) {
    struct Case {
        const char* words;
        int place; ///< of the number; kNone: nothing is read or written
        const char* value = "77";
        std::int32_t written = kReadOnly;
        const char* text = nullptr; ///< what is read, if not 1000 and the place
    };
    const std::pair<std::string, std::vector<Case>> rows[] = {
        {"currentLocation", {{"", 92, "SIGNIN", 46, "CWS2"}, {"", 92, "Nowhere", 0, "CWS2"}}},
        {"backpackItemPresent", {{"0", 60}, {"12", kNone}, {"-1", kNone}}},
        {"missingItemSlot", {{"1", 36}, {"12", 47}, {"13", kNone}}},
        {"patternItem", {{"1", 84}, {"4", kNone}, {"", kNone}}},
        {"patternItemCount", {{"", 0, "77", kReadOnly, "3"}}},
        {"isAutoLevelingEnabled",
         {{"CBA1", 93, "0", 0},
          {"PWS2", 687, "1", 1},
          {"-", 223, "0", 0},
          {"CHUB", kNone},
          {"cws1", kNone}}},
        {"currentDataset",
         {{"CBA2 4", 108, "7", 7},
          {"CWS2 1", 245, "-7", -7},
          {"CWS2 -", 246, "7", 7},
          {"CWS2 3", 247, "12x", 12},
          {"CWS2 5", kNone},
          {"CWS1", kNone}}},
        {"currentLevel",
         {{"CMA", 148, "3", 3},
          {"OMA", 159, "260", 4},
          {"CHUB", kNone},
          {"-", 250, "258", 2, "2"}}},
        {"itemPresent",
         {{"1 CHUB", 116},
          {"6 CWS1", 222},
          {"7 CWS1", 0, "77", kReadOnly, "0"},
          {"13 CHUB", 0, "77", kReadOnly, "0"},
          {"1 CBA1", 0, "77", kReadOnly, "0"}}},
        {"itemsPresentCount", {{"OHUB", 0, "77", kReadOnly, "12"}, {"CMA", kNone}}},
        {"levelColor", {{"4 CMA", 153}, {"- CWS2", 266}, {"5 CWS1", kNone}}},
        {"visitedCount",
         {{"CBA1", 99, "5", 5},
          {"CHUB", 128, "5", 5},
          {"CWS1", 206, "5", 5},
          {"OHUB", 142, "70000", 70000},
          {"SIGNIN", kNone}}},
        {"hubRoundsCompleted",
         {{"CHUB", 115, "-1", 255}, {"OHUB", 129, "2", 2, "3"}, {"-", kNone}}},
        {"wsCurrentLevelEntryCount", {{"-", 252, "9", 9}, {"CWS1", kNone}}},
        {"wsNextItemInQueue", {{"CWS1", 211}}},
        {"wsTotalCorrectGuessCount", {{"", 257, "5", 5}, {"CWS1 1", 198, "32768", -32768}}},
        {"wsTotalGuessCount",
         {{"CWS1 4", 205, "5", 5}, {"CWS2 -", 261, "65538", 2}, {"CBA1 1", kNone}}},
    };
    const PlayerRecord before = record;
    for (const auto& [name, cases] : rows)
        for (const auto& [words, place, value, written, text] : cases) {
            const std::string all = name + " " + words;
            record = before;
            PlayerRecord after = before;
            if (place != kNone && written != kReadOnly)
                after.numbers()[static_cast<std::size_t>(place)] = written;
            const std::string number = place == kNone ? "" : std::to_string(1000 + place);
            EXPECT_EQ(read(all), text ? text : number) << all;
            write(all, value);
            EXPECT_TRUE(std::ranges::equal(record.numbers(), after.numbers())) << all;
        }
    record.currentLocation = 17;
    EXPECT_EQ(read("currentLocation"), "");
    record.hubs[1].rounds = 5;
    for (const char* words : {"missingItemSlot 1", "patternItem 1", "patternItemCount"})
        EXPECT_EQ(read(words), "") << "there is no sixth door";
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
