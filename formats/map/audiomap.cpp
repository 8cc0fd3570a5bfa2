#include "formats/map/audiomap.h"

#include <limits>
#include <optional>

namespace formats::map {

namespace {

constexpr std::string_view kAnimationField = "AO:";
constexpr std::string_view kSequenceField = "Sequence:";
constexpr std::string_view kSoundField = "Sound:";

bool fitsInt16(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return value >= Limits::min() && value <= Limits::max();
}

std::optional<SequenceSound> parseSound(TextScanner line) {
    const auto field = [&](std::string_view name) -> std::optional<int> {
        return line.literal(name) ? line.number() : std::nullopt;
    };
    const auto animation = field(kAnimationField);
    const auto sequence = field(kSequenceField);
    const auto sound = field(kSoundField);
    if (!animation || !sequence || !sound || !fitsInt16(*animation) || !fitsInt16(*sequence))
        return std::nullopt;
    return SequenceSound{*animation, *sequence, *sound};
}

} // namespace

std::vector<SequenceSound> readAudioMap(std::string_view text, const Problem& problem) {
    std::vector<SequenceSound> sounds;
    TextScanner scanner(text);
    for (auto line = scanner.line(kLineLength); !line.empty(); line = scanner.line(kLineLength)) {
        if (const auto sound = parseSound(TextScanner(line)))
            sounds.push_back(*sound);
        else
            problem(scanner.lineNumber(), "not of the form AO: n  Sequence: n  Sound: n");
    }
    return sounds;
}

std::string writeAudioMap(std::span<const SequenceSound> sounds) {
    std::string text;
    const auto field = [&](std::string_view name, int number, char end) {
        text.append(name).append(1, ' ').append(std::to_string(number)).append(1, end);
    };
    for (const auto& [animation, sequence, sound] : sounds) {
        field(kAnimationField, animation, '\t');
        field(kSequenceField, sequence, '\t');
        field(kSoundField, sound, '\n');
    }
    return text;
}

} // namespace formats::map
