#include "omexchangeorder.h"

#include <algorithm>
#include <numeric>

// Why this is the same order. One pass of the exchange sort carries the entry of place i away at
// the first smaller one, that one at the next smaller, and so on; the last and smallest ends in
// place i. So every entry of this chain moves to the place of the next one.
//
// Look at the entries with one id only (E), at the smaller ones (L), and forget the larger. While
// an L is left, a pass finds either an L first, which the chain takes out of its place, or an E,
// which the chain puts into the place of the first L, and that L's place is gone as a place of an
// L. So a pass turns "E1 E2 .. Ek L rest" into "E2 .. Ek E1 rest" and "L rest" into "rest". When no
// L is left the passes take the E from first to last. Reading the entries from first to last
// therefore works like a queue: an E joins at the end, an L sends the first E to the end.

namespace {

/// Counts marked places below a given one; a binary indexed tree.
class Marks {
  public:
    explicit Marks(std::size_t places) : counts_(places + 1) {}

    void mark(std::size_t place) {
        for (std::size_t i = place + 1; i < counts_.size(); i += lowestBit(i)) ++counts_[i];
    }
    [[nodiscard]] std::size_t below(std::size_t place) const {
        std::size_t count = 0;
        for (std::size_t i = place; i > 0; i -= lowestBit(i)) count += counts_[i];
        return count;
    }

  private:
    static std::size_t lowestBit(std::size_t i) { return i & (~i + 1); }

    std::vector<std::size_t> counts_;
};

/// Puts the ascending places of equal ids in the order of the queue. `smaller` marks the smaller
/// ids.
void runQueue(std::span<std::size_t> places, const Marks& smaller, std::size_t end) {
    std::size_t passed = smaller.below(places[0]);
    for (std::size_t size = 1; size <= places.size(); ++size) {
        // places[0, size) is the queue; the smaller ids up to the next place turn it.
        const std::size_t next = size < places.size() ? places[size] : end;
        const std::size_t until = smaller.below(next);
        const auto queue = places.first(size);
        std::rotate(queue.begin(),
                    queue.begin() + static_cast<std::ptrdiff_t>((until - passed) % size),
                    queue.end());
        passed = until;
    }
}

} // namespace

std::vector<std::size_t> OMExchangeOrder(std::span<const std::int16_t> ids) {
    std::vector<std::size_t> order(ids.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return ids[a] < ids[b]; });
    Marks smaller(ids.size());
    for (std::size_t first = 0; first < order.size();) {
        std::size_t last = first;
        while (last < order.size() && ids[order[last]] == ids[order[first]]) ++last;
        const auto group = std::span(order).subspan(first, last - first);
        const std::vector<std::size_t> places(group.begin(), group.end());
        runQueue(group, smaller, ids.size());
        for (std::size_t place : places) smaller.mark(place);
        first = last;
    }
    return order;
}
