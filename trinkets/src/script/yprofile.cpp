#include "yprofile.h"

#include <algorithm>
#include <utility>
#include <vector>

YProfile::Statement::Statement(YProfile& profile, std::string stack)
    : profile_(profile), stack_(std::move(stack)), outer_(std::exchange(profile.innermost_, this)),
      begun_(std::chrono::steady_clock::now()) {}

YProfile::Statement::~Statement() {
    const std::chrono::nanoseconds whole = std::chrono::steady_clock::now() - begun_;
    Spent& spent = profile_.spent_[stack_];
    ++spent.times;
    spent.time += whole - others_;
    if (outer_) outer_->others_ += whole;
    profile_.innermost_ = outer_;
}

std::string YProfile::report() const {
    std::vector<const std::pair<const std::string, Spent>*> rows;
    for (const auto& row : spent_) rows.push_back(&row);
    std::ranges::sort(rows, [](const auto* a, const auto* b) {
        return std::pair(b->second.time, a->first) < std::pair(a->second.time, b->first);
    });
    std::string text;
    for (const auto* row : rows)
        text += std::to_string(row->second.times) + ' ' + std::to_string(row->second.time.count()) +
                ' ' + row->first + '\n';
    return text;
}
