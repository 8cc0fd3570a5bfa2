// Sounds as files that other programs play. Those of the RIFF kind are such files already;
// Macintosh sound resources (docs/formats.md) are wrapped in a header of that kind.
#pragma once

#include "bytes.h"

#include <optional>

namespace rsc {

/// The bytes of the RIFF WAVE file that a resource begins with, as its header says, at most what is
/// there; none when it is no such file.
[[nodiscard]] std::optional<std::size_t> riffLength(ByteSpan resource);

/// A Macintosh sound resource as a RIFF WAVE file; none when it is no such resource. A length that
/// is more than there is counts as what is there.
[[nodiscard]] std::optional<Bytes> macSoundToWav(ByteSpan resource);

} // namespace rsc
