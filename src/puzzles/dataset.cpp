#include "dataset.h"

#include "omrandom.h"

DSEntry& DataSet::entry(int number) {
    const auto count = static_cast<std::size_t>(number);
    if (entries_.size() < count) entries_.resize(count);
    return entries_[count - 1];
}

const DSEntry& DataSet::randomEntry() const {
    return entries_[OMRandomBelow(static_cast<std::uint32_t>(entries_.size()))];
}
