#include "library/list.h"

#include "filesystem.h"
#include "formats/animation/animation.h"
#include "formats/font/nfnt.h"
#include "formats/movie/moviefile.h"
#include "library/nelibrary.h"
#include "pictures/cursor.h"
#include "refusal.h"
#include "sounds/gamesound.h"
#include "text.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace rsc {

namespace {

constexpr int kTypeWidth = 6;
constexpr int kIdWidth = 5;
constexpr int kSizeWidth = 9;

/// Frames, sequences and the size of the largest frame.
std::string describeAnimation(ByteSpan data) {
    const auto animation = valueOf(formats::animation::readWhole(data));
    int width = 0;
    int height = 0;
    for (const formats::animation::Frame& frame : animation.frames) {
        width = std::max(width, frame.width);
        height = std::max(height, frame.height);
    }
    return counted(animation.frames.size(), "frame") + ", " +
           counted(animation.sequences.size(), "sequence") + ", " + std::to_string(width) + "x" +
           std::to_string(height);
}

std::string describeFont(ByteSpan data) {
    const formats::font::Font font = valueOf(formats::font::read(data));
    const std::size_t count = font.glyphs.size() - (font.hasPureStandIn() ? 1 : 0);
    return counted(count, "character") + ", " + std::to_string(font.ascent) + "+" +
           std::to_string(font.descent) + " rows";
}

/// The size and hot spot of every picture.
std::string describePictures(ByteSpan data) {
    std::string text;
    for (const auto& [width, height, hotSpot, image] :
         valueOf(formats::picture::readCursorFile(data)).entries) {
        if (!text.empty()) text += "; ";
        text += std::to_string(width) + "x" + std::to_string(height) + ", hot spot " +
                std::to_string(hotSpot.x) + " " + std::to_string(hotSpot.y);
    }
    return text;
}

/// Refuses a file that is shorter than it says.
void checkMovieSize(const formats::MovieHeader& header, ByteSpan file) {
    std::uint64_t end = header.framesStart();
    if (end <= file.size())
        for (const auto& entry : formats::readMovieTables(
                 file.subspan(formats::MovieHeader::kSize, header.tablesSize())))
            end += entry.size;
    if (end > file.size()) throw Refusal("the movie is cut off");
}

/// In milliseconds, with two digits behind the point.
std::string frameTimeText(std::int64_t hundredths) {
    const std::string digits = std::to_string(hundredths % 100 + 100).substr(1);
    return std::to_string(hundredths / 100) + "." + digits;
}

std::string soundText(const formats::MovieSoundFormat& format) {
    return ", sound of " + std::to_string(format.rate) + " Hz, " + std::to_string(format.bits) +
           " bits, " + (format.channels == 2 ? "stereo" : "mono") +
           (format.packed ? ", packed" : "");
}

/// Its pictures and sounds.
std::string describeMovie(ByteSpan file) {
    const auto header = formats::readMovieHeader(file);
    if (!header) throw Refusal("the movie is cut off");
    checkMovieSize(*header, file);
    std::string text = std::to_string(header->width) + "x" + std::to_string(header->shownHeight()) +
                       ", " + counted(header->frames, "frame") + " of " +
                       frameTimeText(header->frameTime()) + " ms";
    if (header->hasRing()) text += ", a ring frame";
    for (std::size_t track = 0; track < formats::kMovieTracks; ++track)
        if (const auto format = header->sound(track)) text += soundText(*format);
    return text;
}

/// What a line says of a resource, and what an author must know besides.
struct Description {
    std::string text;
    std::string fault; ///< why the game cannot use it; empty when it can
};

Description describeCursor(ByteSpan data) {
    const std::string fault = whyArrow(data);
    if (fault.empty()) return {describePictures(data), {}};
    return {"the game shows the arrow: " + fault,
            "the game shows the arrow: " + fault +
                "; make it with a line \"cursor\" out of a PNG picture"};
}

Description describeSound(ByteSpan data) {
    const SoundReport report = examineSound(data);
    if (report.isReady()) return {report.text, {}};
    const std::string text = report.text + ": " + consequenceOf(report.heard);
    if (report.heard == Heard::WrongSpeed) return {text, {}};
    return {text,
            report.fault +
                "; pack its file with a line \"sound\", which converts sound files of any kind"};
}

/// Nothing when there is nothing to say.
Description describe(const std::string& type, ByteSpan data) {
    if (type == "ASEQ") return {describeAnimation(data), {}};
    if (type == "NFNT") return {describeFont(data), {}};
    if (type == "CURSOR") return describeCursor(data);
    if (type == kSoundType) return describeSound(data);
    return {};
}

class Lister {
  public:
    Lister(const std::filesystem::path& file, std::ostream& out, std::ostream& errors)
        : file_(file), out_(out), errors_(errors) {}

    bool list() {
        try {
            const Bytes bytes = readWholeFile(file_);
            if (formats::isMovie(bytes)) {
                out_ << describeMovie(bytes) << "\n";
                return whole_;
            }
            const NeLibrary library(bytes);
            for (const ResourceEntry& entry : library.entries()) listEntry(library, entry);
        } catch (const Refusal& refusal) {
            tell(refusal.what());
        }
        return whole_;
    }

  private:
    void listEntry(const NeLibrary& library, const ResourceEntry& entry) {
        const std::string id =
            entry.name.empty() ? std::to_string(entry.id) : printable(entry.name);
        out_ << std::left << std::setw(kTypeWidth) << printable(entry.type) << std::right << " "
             << std::setw(kIdWidth) << id << " " << std::setw(kSizeWidth) << entry.length << " "
             << std::setw(kSizeWidth) << entry.offset;
        try {
            const auto [text, fault] = describe(entry.type, library.data(entry));
            if (!text.empty()) out_ << "  " << text;
            if (!fault.empty()) tell(entry.title() + ": " + fault);
        } catch (const Refusal& refusal) {
            out_ << "  damaged";
            tell(entry.title() + ": " + refusal.what());
        }
        out_ << "\n";
    }

    void tell(const std::string& text) {
        errors_ << file_.string() << ": " << text << "\n";
        whole_ = false;
    }

    const std::filesystem::path& file_;
    std::ostream& out_;
    std::ostream& errors_;
    bool whole_ = true;
};

} // namespace

int runList(const std::vector<std::filesystem::path>& files, std::ostream& out,
            std::ostream& errors) {
    bool whole = true;
    for (const std::filesystem::path& file : files) {
        if (files.size() > 1) out << file.string() << ":\n";
        whole = Lister(file, out, errors).list() && whole;
    }
    return whole ? 0 : 1;
}

} // namespace rsc
