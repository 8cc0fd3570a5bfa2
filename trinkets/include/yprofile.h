// Where the time of scripts goes: how often each statement was done and how long it took by itself,
// told apart by the calls and handlers that led to it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>

class YProfile {
  public:
    /// A statement that is at work while this lives. They may lie inside each other, as those of a
    /// handler that a statement calls; the outer one's time stands still then.
    class Statement {
      public:
        Statement(YProfile& profile, std::string stack);
        ~Statement();
        Statement& operator=(Statement&&) = delete;

      private:
        YProfile& profile_;
        std::string stack_;
        Statement* outer_;
        std::chrono::steady_clock::time_point begun_;
        std::chrono::nanoseconds others_{}; ///< of those inside
    };

    /// A line each: how often, nanoseconds, and the stack, outermost first, with ";" between; the
    /// last part is the place of the statement. Those that took longest come first.
    [[nodiscard]] std::string report() const;

  private:
    struct Spent {
        std::uint64_t times = 0;
        std::chrono::nanoseconds time{};
    };
    std::unordered_map<std::string, Spent> spent_; ///< by stacks
    Statement* innermost_ = nullptr;
};
