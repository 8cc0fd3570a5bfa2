// What is read of each format, as a text; that of a refusal begins with "!".
#pragma once

#include "formats/animation/animation.h"
#include "formats/font/nfnt.h"
#include "formats/library/index.h"
#include "formats/map/audiomap.h"
#include "formats/movie/moviedecoder.h"
#include "formats/picture/bitmap.h"
#include "formats/picture/cursor.h"
#include "formats/sound/wave.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace testing_support {

using namespace formats;

/// Two digits a byte; "(n)" for three and more bytes of 0.
inline std::string hex(ByteSpan bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    while (!bytes.empty()) {
        const auto other = std::ranges::find_if(bytes, [](int byte) { return byte != 0; });
        const auto zeros = static_cast<std::size_t>(other - bytes.begin());
        text += zeros > 2 ? "(" + std::to_string(zeros) + ")"
                          : std::string{kDigits[bytes[0] / 16], kDigits[bytes[0] % 16]};
        bytes = bytes.subspan(zeros > 2 ? zeros : 1);
    }
    return text;
}

/// The bytes of such a text.
inline Bytes bytesOf(const std::string& text) {
    Bytes bytes;
    for (std::size_t at = 0; at < text.size(); at += 2)
        if (text[at] != '(')
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
        else {
            bytes.resize(bytes.size() + std::stoul(text.substr(at + 1)));
            at = text.find(')', at) - 1;
        }
    return bytes;
}

inline Bytes asBytes(std::string_view text) { return {text.begin(), text.end()}; }
inline std::string textOf(ByteSpan bytes) { return {bytes.begin(), bytes.end()}; }

/// Whether a text is as told, where "*" stands for anything.
inline bool isTold(std::string_view text, std::string_view told) {
    const auto star = told.find('*');
    if (star == told.npos) return text == told;
    return text.starts_with(told.substr(0, star)) && text.ends_with(told.substr(star + 1));
}

inline std::string replacedAll(std::string text, const std::string& old, const std::string& now) {
    for (std::size_t at = 0; (at = text.find(old, at)) != text.npos; at += now.size())
        text.replace(at, old.size(), now);
    return text;
}

/// The rows of a table that begins with a line end, cut at "=>". A line that begins with four
/// blanks goes on with the one before.
inline std::vector<std::vector<std::string>> rowsOf(const std::string& table) {
    std::vector<std::vector<std::string>> rows;
    std::istringstream lines(replacedAll(table.substr(1), "\n    ", " "));
    for (std::string line; std::getline(lines, line); rows.back().push_back(line)) {
        rows.emplace_back();
        for (std::size_t end; (end = line.find(" => ")) != line.npos; line = line.substr(end + 4))
            rows.back().push_back(line.substr(0, end));
    }
    return rows;
}

/// Types, numbers, places and first bytes.
inline std::string readLibrary(ByteSpan bytes) {
    const auto index = library::Index::read(readAt(bytes), bytes.size());
    if (!index) return "!no library";
    std::ostringstream text;
    text << (index->isDamaged() ? "damaged" : index->hasNameTable() ? "name table" : "whole");
    for (const std::string& type : index->types())
        for (const int id : index->ids(type)) {
            const auto [offset, length] = index->find(id, type).value();
            text << ' ' << type << ' ' << id << '@' << offset << '+' << length << ':'
                 << hex(bytes.subspan(offset).first(offset < bytes.size()));
            EXPECT_LT(offset + length, bytes.size() + 32768);
        }
    return text.str();
}

inline std::string readMap(ByteSpan bytes) {
    std::ostringstream text;
    std::string problems;
    const std::string all = textOf(bytes);
    map::ResourceMap read(all, [&](int line, const char* problem) {
        problems += "\n" + std::to_string(line) + ": " + problem;
    });
    text << (read.isUsable() ? read.identifier() : "!");
    for (map::Library file; read.next(file);) {
        text << "; " << file.name;
        for (const auto& [type, id] : file.resources) text << ", " << type << ' ' << id;
    }
    return text.str() + problems;
}

inline std::string readAudioMap(ByteSpan bytes) {
    std::ostringstream text;
    const auto sounds = map::readAudioMap(
        textOf(bytes), [&](int line, const char*) { text << "line " << line << "? "; });
    for (const auto& [animation, sequence, sound] : sounds)
        text << animation << ' ' << sequence << ' ' << sound << "; ";
    return text.str();
}

/// Of a refusal the one of who wants it whole, and then the one of who plays it.
inline std::string readAnimation(ByteSpan bytes) {
    const auto played = animation::read(bytes);
    const auto [whole, refusal] = animation::readWhole(bytes);
    std::string seen; // whatever is there can be looked at
    for (const auto& frame : played.value.frames) seen += textOf(frame.rows);
    if (!refusal.empty()) return "!" + refusal + (played.ok() ? "" : "; ") + played.refusal;
    EXPECT_TRUE(played.ok() && !seen.empty() && played.value.sequences == whole.sequences);
    std::ostringstream text;
    text << whole.framesPerSecond << "/s " << whole.x << ' ' << whole.y << ' ' << whole.depth;
    for (const auto& [width, height, rows] : whole.frames)
        text << ' ' << width << 'x' << height << ':' << hex(rows);
    for (const auto& sequence : whole.sequences) {
        text << " |";
        for (const auto& [dx, dy, code, argument] : sequence)
            text << ' ' << dx << ',' << dy << ',' << code << ',' << argument;
    }
    return text.str();
}

inline std::string readBitmap(ByteSpan bytes) {
    picture::BitmapFault fault{};
    const auto bitmap = picture::readBitmap(bytes, fault);
    if (!bitmap) return "!" + std::to_string(static_cast<int>(fault));
    std::ostringstream text;
    text << bitmap->width << 'x' << bitmap->height << 'x' << bitmap->depth;
    for (int y = 0; y < bitmap->height; ++y) text << ' ' << hex(bitmap->row(y));
    return text.str();
}

inline std::string coloursOf(const auto& palette) {
    Bytes colours;
    for (const auto& [red, green, blue] : palette)
        colours.insert(colours.end(), {red, green, blue});
    return hex(colours);
}
inline std::string readPalette(ByteSpan bytes) {
    const auto palette = picture::readPalette(bytes);
    return palette ? coloursOf(*palette) : "!cut off";
}

inline std::string readFont(ByteSpan bytes) {
    const auto [font, refusal] = font::read(bytes);
    if (!refusal.empty()) return "!" + refusal;
    std::ostringstream text;
    text << (font.bigEndian ? "big " : "") << font.firstChar << '-' << font.lastChar << ' '
         << font.ascent << '+' << font.descent << '+' << font.leading;
    for (const auto& [code, glyph] : font.glyphs) {
        text << "; " << code << ':' << glyph.advance << ' ' << glyph.left;
        for (int y = 0; y < glyph.height; ++y)
            for (int x = 0; x < glyph.width; ++x)
                text << (x == 0 ? " " : "") << (glyph.ink[glyph.at(x, y)] ? '#' : '.');
    }
    return text.str();
}

/// Of each picture what the directory and its pixels say; "-" where these are of another kind. Then
/// what is shown.
inline std::string readCursors(ByteSpan bytes) {
    const auto [file, refusal] = picture::readCursorFile(bytes);
    if (!refusal.empty()) return "!" + refusal;
    std::ostringstream text;
    text << file.length;
    const auto put = [&](const auto& one, const picture::CursorPixels& pixels) {
        ByteWriter out(std::endian::big);
        for (const std::uint32_t pixel : pixels) out.u32(pixel);
        text << ' ' << one.width << 'x' << one.height << '@' << one.hotSpot.x << ','
             << one.hotSpot.y << ':' << (pixels.empty() ? "-" : hex(out.bytes()));
    };
    for (const auto& entry : file.entries) {
        const auto [pixels, fault] = picture::plainPixels(entry);
        if (!fault.empty()) return "!" + fault;
        put(entry, pixels.value_or(picture::CursorPixels()));
    }
    if (const auto shown = picture::readCursor(bytes)) put(*shown, shown->pixels);
    return text.str();
}

inline std::string readSound(ByteSpan bytes) {
    static constexpr const char* kFaults[] = {
        " rate",     " channels", " bits",       " synthesizers", " synthesizer", " options",
        " commands", " command",  " parameter1", " parameter2",   " encoding"};
    const auto facts = sound::examine(bytes);
    const auto [offset, length, rate] = facts.header;
    EXPECT_LE(offset + length, bytes.size());
    if (facts.kind == facts.Kind::Unknown) return "unknown";
    std::ostringstream text;
    text << offset << '+' << length << ' ' << rate << ' ' << facts.channels << ' ' << facts.bits;
    if (facts.claimedLength != length) text << " of " << facts.claimedLength;
    if (facts.coding != facts.kPcm) text << " coding " << facts.coding;
    for (const sound::Fault fault : facts.faults) text << kFaults[static_cast<int>(fault)];
    return text.str() + (facts.hasFormat ? "" : " no format");
}

/// Of a movie.
struct SeenFrame {
    Bytes picture;
    MoviePalette palette{};
    Bytes sound; ///< of the first track
    bool isKey = false;
    bool hasPalette = false;
};

/// The good frames by their numbers; none when the trees are damaged. The head must be whole.
inline std::map<std::int64_t, SeenFrame> framesOf(ByteSpan file) {
    const auto header = readMovieHeader(file).value();
    const ByteSpan tables = file.subspan(MovieHeader::kSize);
    auto decoder =
        MovieDecoder::make(header, tables.subspan(header.tablesSize(), header.treesSize), 0);
    std::map<std::int64_t, SeenFrame> frames;
    file = file.subspan(header.framesStart());
    std::int64_t number = 0;
    for (const auto& entry : readMovieTables(tables.first(header.tablesSize()))) {
        if (!decoder || entry.size > file.size()) break;
        if (decoder->decode(file.first(entry.size), entry.contents))
            frames[number] = {decoder->picture(), decoder->palette(), decoder->sound(), entry.key,
                              (entry.contents & entry.kHasPalette) != 0};
        file = file.subspan(entry.size);
        ++number;
    }
    return frames;
}

inline std::string readMovie(ByteSpan bytes) {
    constexpr unsigned kMost = 64; // pixels a side
    const auto header = readMovieHeader(bytes);
    if (!header || header->width - 1 >= kMost || header->height - 1 >= kMost) return "!";
    if (header->framesStart() > bytes.size()) return "!cut off";
    const auto frames = framesOf(bytes);
    if (frames.size() != header->storedFrames()) return "!cut off or damaged";
    std::ostringstream text;
    text << header->width << 'x' << header->shownHeight() << ' ' << header->frames << " of "
         << header->frameTime() << (header->hasRing() ? " ring" : "");
    for (const auto& [number, frame] : frames)
        text << (frame.isKey ? " key " : " ")
             << (frame.hasPalette ? "palette " + coloursOf(frame.palette) + " " : "")
             << hex(frame.picture) << " " << hex(frame.sound);
    return text.str();
}

} // namespace testing_support
