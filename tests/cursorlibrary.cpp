// cursorlibrary FILE
//
// Writes the library of the script test "cursors": cursors 1 and 2.
#include "curbuilder.h"
#include "nebuilder.h"

#include <cstdio>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("cursorlibrary FILE\n", stderr);
        return 2;
    }
    testing_support::NEBuilder library;
    int id = 0;
    for (const std::uint32_t colour : {0xFF40A0E0u, 0xFFE0A040u}) {
        testing_support::CurPicture picture{.width = 32, .height = 32, .hotSpot = {15, 15}};
        picture.pixels.assign(32 * 32, colour);
        library.add("CURSOR", ++id, testing_support::buildCursor({picture}));
    }
    const testing_support::Bytes bytes = library.build();
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return file ? 0 : 1;
}
