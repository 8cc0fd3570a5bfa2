#include "zorbetmps/check/report.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

namespace mps {

void report(std::span<const Finding> findings, std::ostream& out) {
    for (const Finding& finding : findings) {
        out << finding.file << ':';
        if (finding.line > 0) out << finding.line << ':';
        if (finding.rule == Rule::Syntax || finding.rule == Rule::UnknownCommand) {
            out << ' ' << finding.text << '\n';
            continue;
        }
        const RuleAbout& about = aboutRule(finding.rule);
        if (finding.column > 0) out << finding.column << ':';
        out << ' ' << severityName(about.severity) << ": " << finding.text << " [" << about.name
            << "]\n";
    }
}

void reportJson(std::span<const Finding> findings, std::ostream& out) {
    auto list = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
        const RuleAbout& about = aboutRule(finding.rule);
        list.push_back({{"file", finding.file},
                        {"line", finding.line},
                        {"column", finding.column},
                        {"severity", severityName(about.severity)},
                        {"name", about.name},
                        {"text", finding.text}});
    }
    constexpr int kIndent = 1;
    // Paths may be any bytes.
    out << list.dump(kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

std::string ruleList() {
    constexpr int kNameWidth = 19;
    constexpr int kSeverityWidth = 9;
    std::ostringstream list;
    for (const RuleAbout& rule : allRules())
        list << "  " << std::left << std::setw(kNameWidth) << rule.name << std::setw(kSeverityWidth)
             << severityName(rule.severity) << rule.about << '\n';
    return list.str();
}

} // namespace mps
