// Fidgets: what a character does by itself at times, and the groups in which they take turns.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

struct Fidget {
    int layer;             ///< of the character
    bool hidesSettlePose;  ///< while it plays
    bool isPlayed = false; ///< in this round
};

/// Fidgets of which one plays at a time, at random intervals.
class FidgetGroup {
  public:
    /// Seconds; the interval is below the maximum. It is always the minimum when the maximum is not
    /// larger. Negative ones count as 0.
    struct Interval {
        int minimum;
        int maximum;
    };

    /// Without repeats, each fidget plays once before any plays a second time.
    FidgetGroup(int id, const Interval& interval, bool noRepeat);

    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] const std::vector<Fidget>& fidgets() const { return all_; }
    /// Times in ticks of an OMTickClock.
    [[nodiscard]] bool isDue(std::int64_t now) const { return now >= nextTime_; }

    void setInterval(const Interval& interval) { interval_ = interval; }
    void setNoRepeat(bool noRepeat) { noRepeat_ = noRepeat; }
    /// It is due again one interval later, at the earliest in the next tick.
    void schedule(std::int64_t now);
    void add(int layer, bool hidesSettlePose) { all_.push_back({layer, hidesSettlePose}); }
    /// The one that plays now; none without fidgets.
    [[nodiscard]] std::optional<Fidget> pick();

  private:
    int id_;
    Interval interval_;
    bool noRepeat_;
    std::int64_t nextTime_ = 0;
    std::vector<Fidget> all_;
};
