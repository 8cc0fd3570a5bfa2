// What scripts read and write of a player's numbers, each at its place in the record.
#include "world/computedproperties.h"

#include <gmock/gmock.h>

#include <optional>
#include <sstream>

namespace {

using namespace world;

/// A name and what of it is tried, with ";" between: arguments ("-" is an empty one); @ and the
/// place of the number, if one is read; what is written > what is stored then, else nothing; = and
/// what is read, if not 1000 and the place.
constexpr const char* kCases = R"(
currentLocation @92 SIGNIN>46 =CWS2; @92 Nowhere>0 =CWS2
backpackItemPresent 0 @60; 12; -1; 2147483647; -2147483648
missingItemSlot 1 @36; 12 @47; 13; 0; -2147483648
patternItem 1 @84; 4; 0; -2147483648;
patternItemCount =3
isAutoLevelingEnabled CBA1 @93 0>0; PWS2 @687 1>1; - @223 0>0; CHUB; cws1
currentDataset CBA2 4 @108 7>7; CWS2 1 @245 -7>-7; CWS2 - @246 7>7; CWS2 3 @247 12x>12; CWS2 5; CWS2 0; CWS1
currentLevel CMA @148 3>3; OMA @159 260>4; CHUB; - @250 258>2 =2
itemPresent 1 CHUB @116; 6 CWS1 @222; 7 CWS1 =0; 0 CWS1 =0; 13 CHUB =0; 1 CBA1 =0
itemsPresentCount OHUB =12; CMA
levelColor 4 CMA @153; - CWS2 @266; 5 CWS1; 0 CMA; -2147483648 CMA
visitedCount CBA1 @99 5>5; CHUB @128 5>5; CWS1 @206 5>5; OHUB @142 70000>70000; SIGNIN
hubRoundsCompleted CHUB @115 -1>255; OHUB @129 2>2 =3; -
wsCurrentLevelEntryCount - @252 9>9; CWS1
wsNextItemInQueue CWS1 @211
wsTotalCorrectGuessCount @257 5>5; CWS1 1 @198 32768>-32768
wsTotalGuessCount CWS1 4 @205 5>5; CWS2 - @261 65538>2; CBA1 1)";

class ComputedProperties : public testing::Test {
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
    ~ComputedProperties() override { OMSArguments::global().clear(); }
    using Words = std::vector<std::string>;
    static const ComputedProperty& property(std::string_view name, const Words& arguments) {
        OMSArguments::global().clear();
        for (const std::string& word : arguments)
            OMSArguments::global().push(word == "-" ? "" : word);
        return *std::ranges::find(computedProperties(), name, &ComputedProperty::name);
    }
    std::string read(std::string_view name, const Words& arguments = {}) {
        return property(name, arguments).read(record, OMSArguments::global());
    }
    void write(std::string_view name, const Words& arguments, std::string_view value) {
        const ComputedProperty& named = property(name, arguments);
        if (named.write) named.write(record, OMSArguments::global(), value);
    }

    PlayerRecord record;
};

TEST_F(ComputedProperties, ReadAndWriteTheNumberThatTheWordsName) {
    const PlayerRecord before = record;
    std::istringstream lines(kCases + 1);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream cases(line);
        std::string name;
        cases >> name;
        for (std::string one; std::getline(cases, one, ';');) {
            SCOPED_TRACE(name + one);
            Words arguments;
            std::optional<std::size_t> place;
            std::optional<std::string> text;
            std::string value = "77";
            record = before;
            PlayerRecord after = before;
            std::istringstream words(one);
            for (std::string word; words >> word;) {
                if (const std::size_t sign = word.find('>'); sign != std::string::npos) {
                    value = word.substr(0, sign);
                    after.numbers()[place.value()] = std::stoi(word.substr(sign + 1));
                } else if (word[0] == '@')
                    place = std::stoul(word.substr(1));
                else if (word[0] == '=')
                    text = word.substr(1);
                else
                    arguments.push_back(word);
            }
            if (!text) text = place ? std::to_string(1000 + *place) : "";
            EXPECT_EQ(read(name, arguments), *text);
            write(name, arguments, value);
            EXPECT_TRUE(std::ranges::equal(record.numbers(), after.numbers()));
        }
    }
    record.currentLocation = 17;
    EXPECT_EQ(read("currentLocation"), "");
    for (const int outside : {-1, 0, 5, 2'147'483'647}) {
        record.activities[1].currentLevel = outside;
        for (const char* name : {"wsCurrentLevelEntryCount", "wsTotalGuessCount", "currentDataset"})
            EXPECT_EQ(read(name, {"CWS2"}), "") << outside;
        record.hubs[1].rounds = outside;
        for (const char* name : {"missingItemSlot", "patternItem", "patternItemCount"})
            EXPECT_EQ(read(name, {"1"}).empty(), outside != 0) << outside;
    }
}

TEST_F(ComputedProperties, AnotherLevelForgetsTheResults) {
    ActivityRecord& activity = record.activities[1];
    write("currentLevel", {"CWS2"}, "258"); // 2 in eight bits
    EXPECT_EQ(activity.resultCount, 1255) << "it is the same level";
    write("currentLevel", {"CWS2"}, "3");
    EXPECT_EQ(activity.currentLevel, 3);
    EXPECT_EQ(activity.resultCount, 0);
    EXPECT_EQ(std::ranges::count(activity.results, 0), kRecentResults);
    EXPECT_EQ(activity.correctSinceDistribution, 1244) << "the others stay";
}

} // namespace
