// What scripts read and write of a player's numbers, each at its place in the record.
#include "world/computedproperties.h"

#include <gmock/gmock.h>

#include <optional>
#include <ranges>
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

/// The number at each place is 1000 and the place; CWS2 is current, at level 2, and OHUB's door is
/// the one with three gems.
PlayerRecord numbered() {
    PlayerRecord record;
    std::ranges::copy(std::views::iota(1000, 1745), record.numbers().begin());
    record.currentLocation = 2;
    record.activities[1].currentLevel = 2;
    record.hubs[1].rounds = 3;
    return record;
}

const ComputedProperty& property(std::string_view name, const std::vector<std::string>& arguments) {
    OMSArguments::global().clear();
    for (const std::string& word : arguments) OMSArguments::global().push(word == "-" ? "" : word);
    return *std::ranges::find(computedProperties(), name, &ComputedProperty::name);
}
std::string readFrom(PlayerRecord& record, std::string_view name,
                     const std::vector<std::string>& arguments) {
    return property(name, arguments).read(record, OMSArguments::global());
}

TEST(ComputedProperties, ReadAndWriteTheNumberThatTheWordsName) {
    std::istringstream lines(kCases + 1);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream cases(line);
        std::string name;
        cases >> name;
        for (std::string one; std::getline(cases, one, ';');) {
            SCOPED_TRACE(name + one);
            std::vector<std::string> arguments;
            std::optional<std::size_t> place;
            std::optional<std::string> text;
            std::string value = "77";
            PlayerRecord record = numbered(), after = record;
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
            EXPECT_EQ(readFrom(record, name, arguments), *text);
            if (const auto& named = property(name, arguments); named.write)
                named.write(record, OMSArguments::global(), value);
            EXPECT_TRUE(std::ranges::equal(record.numbers(), after.numbers()));
        }
    }
    PlayerRecord record = numbered();
    record.currentLocation = 17;
    record.hubs[1].rounds = 5; // of which there is no door
    for (const char* name :
         {"currentLocation", "patternItemCount", "missingItemSlot", "patternItem"})
        EXPECT_EQ(readFrom(record, name, {"1"}), "");
    OMSArguments::global().clear();
}

} // namespace
