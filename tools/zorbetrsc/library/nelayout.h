// The layout of a library made elsewhere: everything of its file but the resources. Together with
// the resources it gives the same file again, whatever order, unit, places and further contents
// other tools have chosen.
//
// A layout is the library itself with zeros in the place of its resources, cut off behind the last
// byte that is no resource's. The headers and the table of contents stay whole.
#pragma once

#include "library/nelibrary.h"

namespace rsc {

[[nodiscard]] Bytes layoutOf(const NeLibrary& library);

/// Puts resources into the places of a layout. Their bytes must outlive it, as must the layout.
class LayoutFiller {
  public:
    /// Refuses what is no layout.
    explicit LayoutFiller(ByteSpan layout);

    /// Adds the first resource of the table that has this type and id, or the one of this number,
    /// counted from 1. Refused when there is none, when it was added before or is too large.
    void add(std::string_view type, std::uint16_t id, ByteSpan data);
    void addNumber(int number, ByteSpan data);

    /// The library. Refused when a resource is missing, or when two that share bytes differ there.
    [[nodiscard]] Bytes build() const;

  private:
    void put(std::size_t index, ByteSpan data);
    void checkPlaces(std::span<std::uint8_t> file) const;
    static std::span<std::uint8_t> placeOf(const ResourceEntry& entry,
                                           std::span<std::uint8_t> file);
    [[nodiscard]] std::size_t sizeOfFile() const;

    ByteSpan layout_;
    NeTable table_;
    std::vector<std::optional<ByteSpan>> contents_; ///< of each entry, zeros behind it left out
};

} // namespace rsc
