// Waveforms put together from harmonics. Harmonics too high for a note are left out, so that none
// comes back as a wrong low tone.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

class Wavetable {
  public:
    /// Levels of the harmonics, of which one is not 0; their size does not matter: a table with all
    /// of them reaches up to fixedmath::kUnit.
    explicit Wavetable(std::vector<int> harmonics);

    using Table = std::vector<std::int32_t>;
    /// The table for a phase step, 32 bits a turn.
    const Table& tableFor(std::int64_t step);
    /// What a table has at a phase, between its entries too.
    [[nodiscard]] static std::int64_t at(const Table& table, std::uint32_t phase);

  private:
    [[nodiscard]] std::vector<std::int64_t> sum(std::size_t harmonics) const;

    std::vector<int> harmonics_;
    std::int64_t peak_;                   ///< of the sum of all harmonics
    std::map<std::size_t, Table> tables_; ///< by the number of harmonics
};
