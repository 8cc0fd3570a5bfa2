// goldenlibrary FOLDER
//
// Writes FOLDER/golden.rsc and FOLDER/resource.map, the content of the golden pictures.
#include "goldenart.h"
#include "goldenletters.h"

#include "nebuilder.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr int kWrongUse = 2;
constexpr int kFailed = 1;

bool write(const std::string& path, const char* data, std::size_t size) {
    std::ofstream file(path, std::ios::binary);
    file.write(data, static_cast<std::streamsize>(size));
    file.close();
    if (!file) std::fprintf(stderr, "%s cannot be written\n", path.c_str());
    return static_cast<bool>(file);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("goldenlibrary FOLDER\n", stderr);
        return kWrongUse;
    }
    const std::string folder = argv[1];
    testing_support::NEBuilder library;
    std::string lines;
    int count = 0;
    const auto add = [&](const char* type, int id, const golden::Bytes& resource) {
        library.add(type, id, resource);
        lines += std::string(type) + " " + std::to_string(id) + "\n";
        ++count;
    };
    for (const golden::Colors& colors : golden::palettes())
        add("RRGB", colors.id, golden::resource(colors.palette));
    for (const auto& pictures : {golden::pictures(), golden::puzzlePictures(),
                                 golden::gamePictures(), golden::progressPictures()})
        for (const golden::Picture& picture : pictures)
            add("ASEQ", picture.id, picture.animation.resource());
    for (const golden::Font& font : golden::fonts()) add("NFNT", font.id, font.resource);

    const golden::Bytes bytes = library.build();
    const std::string map =
        "GOLDEN\n" + std::to_string(count) + "\ngolden.rsc\n" + lines + "ENDFILE\n";
    const bool written =
        write(folder + "/golden.rsc", reinterpret_cast<const char*>(bytes.data()), bytes.size()) &&
        write(folder + "/resource.map", map.data(), map.size());
    return written ? 0 : kFailed;
}
