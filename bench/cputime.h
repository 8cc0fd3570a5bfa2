// Time that this process spent on the processor, which a busy machine does not lengthen as it does
// the time of day.
#pragma once

#include <algorithm>
#include <ctime>
#include <vector>

/// Nanoseconds on the processor that a function takes.
template <class Function>
[[nodiscard]] double cpuNanoseconds(Function function) {
    const auto now = [] {
        std::timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    function();
    return now() - start;
}

/// Measurements of the same thing.
class Samples {
  public:
    void add(double sample) { samples_.push_back(sample); }
    [[nodiscard]] double least() const {
        return *std::min_element(samples_.begin(), samples_.end());
    }
    [[nodiscard]] double median() const {
        std::vector<double> sorted = samples_;
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
        std::nth_element(sorted.begin(), middle, sorted.end());
        return *middle;
    }

  private:
    std::vector<double> samples_;
};
