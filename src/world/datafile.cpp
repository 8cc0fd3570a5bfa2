#include "datafile.h"

#include "formats/base/bytes.h"

#include <algorithm>
#include <bit>
#include <span>

namespace world::datafile {

namespace {

constexpr std::string_view kGlobalEnd = "GLOBAL_END";
constexpr std::string_view kPlayerEnd = "PLAYER_END";
constexpr std::size_t kMostBytes = 1023; ///< of a line, with its line feed
constexpr char kLineEnd = '\n';
constexpr std::size_t kUsualProperties = 400; ///< bytes that those of a player take

// ---------------------------------------------------------------------------- composing

bool isName(std::string_view name) {
    return name.size() < kMostBytes && name.find(kLineEnd) == std::string_view::npos &&
           name != kGlobalEnd && name != kPlayerEnd;
}

void addLine(std::string& file, std::string_view text) {
    file += asStored(text);
    file += kLineEnd;
}

/// `mark` will end the section.
void addProperties(std::string& file, const Properties& properties, std::string_view mark) {
    for (const auto& property : properties) {
        if (!property->isPersistent() || !isName(property->name())) continue;
        const std::string value = property->text();
        // Whoever looks for the players looks for this line alone.
        if (mark == kGlobalEnd && value == mark) continue;
        addLine(file, property->name());
        addLine(file, value);
    }
}

/// Little-endian.
void addNumbers(std::string& file, const PlayerRecord& record) {
    const std::span<const std::int32_t> numbers = record.numbers();
    if constexpr (std::endian::native == std::endian::little)
        file.append(reinterpret_cast<const char*>(numbers.data()), numbers.size_bytes());
    else
        for (const std::int32_t number : numbers)
            for (int shift = 0; shift < 32; shift += 8) file += static_cast<char>(number >> shift);
}

// ---------------------------------------------------------------------------- reading

class DataReader {
  public:
    explicit DataReader(std::string_view bytes)
        : reader_(std::as_bytes(std::span(bytes.data(), bytes.size()))) {}

    /// True as soon as the last byte was read.
    [[nodiscard]] bool atEnd() const { return reader_.remaining() == 0; }

    /// What is longer than a line goes on in the next one.
    std::string_view line() {
        const std::size_t start = reader_.position();
        std::string_view text = reader_.text(std::min(kMostBytes, reader_.remaining()));
        const std::size_t end = text.find(kLineEnd);
        if (end == std::string_view::npos) return text;
        reader_.seek(start + end + 1);
        return text.substr(0, end);
    }

    /// As many as are there whole; the others stay as they are. False when some are missing.
    bool numbers(std::span<std::int32_t> numbers) {
        for (std::int32_t& number : numbers) {
            if (reader_.remaining() < sizeof number) {
                reader_.skip(reader_.remaining());
                return false;
            }
            number = reader_.i32();
        }
        return true;
    }

  private:
    formats::ByteReader reader_;
};

/// Calls `set` with each name and its value; true when the section ends with its mark. The mark is
/// also one when it is the last of the file.
template <class Set>
bool readSection(DataReader& reader, std::string_view mark, Set set) {
    std::string_view name = reader.line();
    while (!reader.atEnd() && name != mark) {
        set(name, reader.line());
        name = reader.line();
    }
    return name == mark;
}

} // namespace

std::string asStored(std::string_view value) {
    std::string text(value.substr(0, kMostBytes - 1));
    std::ranges::replace(text, kLineEnd, ' ');
    return text;
}

std::string compose(const Properties& globals, const Players& players) {
    std::string file;
    file.reserve(kUsualProperties + players.size() * (kRecordSize + kUsualProperties));
    addProperties(file, globals, kGlobalEnd);
    addLine(file, kGlobalEnd);
    for (const auto& player : players) {
        addNumbers(file, player->record());
        addProperties(file, player->stored(), kPlayerEnd);
        for (const auto& [name, value] : player->strangers()) {
            if (!isName(name)) continue;
            addLine(file, name);
            addLine(file, value);
        }
        addLine(file, kPlayerEnd);
    }
    return file;
}

bool readGlobals(std::string_view bytes, const Properties& globals) {
    DataReader reader(bytes);
    const bool whole = readSection(reader, kGlobalEnd, [&](auto name, auto value) {
        if (Property* property = lastNamed(globals, name)) property->setText(value);
    });
    return whole || bytes.empty();
}

bool readPlayers(std::string_view bytes, const Properties& templates, Players& players,
                 const OMLinkTo<void(std::string_view)>& unknown) {
    DataReader reader(bytes);
    bool whole = bytes.empty();
    // Whatever stands before the mark: a line too many does not lose the players.
    while (!whole && !reader.atEnd()) whole = reader.line() == kGlobalEnd;
    while (!reader.atEnd()) {
        Player& player = *players.emplace_back(std::make_unique<Player>(templates));
        const bool numbers = reader.numbers(player.record().numbers());
        bool isNamed = false; // as every player that was written
        const bool properties = readSection(reader, kPlayerEnd, [&](auto name, auto value) {
            isNamed = isNamed || name == kPlayerName;
            if (player.setValue(name, value)) return;
            unknown(name);
            player.addStranger(name, value);
        });
        whole = whole && numbers && properties && isNamed;
    }
    return whole;
}

} // namespace world::datafile
