#include "gametest/junit.h"

#include <algorithm>
#include <numeric>
#include <pugixml.hpp>

namespace gametest {

namespace {

std::string secondsText(double seconds) { return std::to_string(seconds); }

void addCase(pugi::xml_node suite, const std::string& game, const Result& result) {
    pugi::xml_node test = suite.append_child("testcase");
    test.append_attribute("classname") = game.c_str();
    test.append_attribute("name") = result.name.c_str();
    test.append_attribute("time") = secondsText(result.seconds).c_str();
    for (const std::string& fault : result.faults)
        test.append_child("failure").append_attribute("message") = fault.c_str();
}

} // namespace

bool writeJUnit(const std::filesystem::path& file, const std::string& game,
                const std::vector<Result>& results) {
    pugi::xml_document document;
    pugi::xml_node suite = document.append_child("testsuite");
    const auto failures =
        std::ranges::count_if(results, [](const Result& result) { return !result.faults.empty(); });
    const double seconds =
        std::accumulate(results.begin(), results.end(), 0.0,
                        [](double sum, const Result& result) { return sum + result.seconds; });
    suite.append_attribute("name") = game.c_str();
    suite.append_attribute("tests") = static_cast<unsigned>(results.size());
    suite.append_attribute("failures") = static_cast<unsigned>(failures);
    suite.append_attribute("time") = secondsText(seconds).c_str();
    for (const Result& result : results) addCase(suite, game, result);
    return document.save_file(file.c_str(), "  ", pugi::format_default, pugi::encoding_utf8);
}

} // namespace gametest
