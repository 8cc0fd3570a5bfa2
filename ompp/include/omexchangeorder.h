// The order in which a plain exchange sort leaves its entries, found in better time.
//
// Which of several equal entries comes first after that sort is not their old order, and files rely
// on it, so no other sort will do as it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Indices into `ids` in the order that this sort would leave the entries in:
///     for (i = 0; i + 1 < n; ++i)
///         for (j = i + 1; j < n; ++j)
///             if (ids[i] > ids[j]) swap(ids[i], ids[j]);
[[nodiscard]] std::vector<std::size_t> OMExchangeOrder(std::span<const std::int16_t> ids);
