#include "library/map.h"

#include "foreignlibrary.h"
#include "formats/animation/animation.h"
#include "library/nelibrary.h"
#include "tooltest.h"

namespace {

using rsc::Bytes;
using rsc::Resource;

Bytes soundAnimation() {
    static const Bytes row = {1, 5};
    formats::animation::Animation aseq;
    aseq.frames = {{1, 1, row}};
    const formats::animation::Entry end{0, 0, -1, 0};
    aseq.sequences = {{{0, 0, 0, 5}, {0, 0, -101, 7}, {0, 0, 0, 5}, {0, 0, -101, 7}, end},
                      {end},
                      {{0, 0, -101, 9}, {0, 0, -101, 7}, {0, 0, -102, 8}, end}};
    return formats::animation::write(aseq);
}

constexpr std::string_view kSounds = "AO: 2001\tSequence: 1\tSound: 7\n"
                                     "AO: 2001\tSequence: 3\tSound: 9\n"
                                     "AO: 2001\tSequence: 3\tSound: 7\n"
                                     "AO: 3\tSequence: 1\tSound: 7\n"
                                     "AO: 3\tSequence: 3\tSound: 9\n"
                                     "AO: 3\tSequence: 3\tSound: 7\n";

class Map : public testfiles::ToolTest {
  protected:
    Map() {
        write("SCENE.RSC", {{"WAVE", 7, {1}}, {"ASEQ", 2001, soundAnimation()}});
        write("more.rsc", {{"ASEQ", 3, soundAnimation()}, {"WAVE", 9, {1}}});
        write("cursors.rsc", {{"CURSOR", 1, {1}}});
    }

    void write(const std::string& name, const std::vector<Resource>& resources) {
        folder_.write(name, rsc::buildNeLibrary("X", resources));
    }

    int map(const std::vector<std::string>& files, const std::string& to, bool audio = false,
            const std::string& name = "MINE") {
        const rsc::MapOptions options{paths(files), folder_.at(to), name, audio};
        return run([&](auto&, auto& errors) { return rsc::runMap(options, errors); });
    }
};

TEST_F(Map, DescribesLibrariesInTheirOrder) {
    const std::string expected = "MINE\n2\nscene.rsc\nWAVE 7\nASEQ 2001\nENDFILE\n"
                                 "more.rsc\nASEQ 3\nWAVE 9\nENDFILE\n";
    ASSERT_EQ(map({"SCENE.RSC", "cursors.rsc", "more.rsc"}, "maps", true), 0) << errors_;
    EXPECT_EQ(testfiles::namesIn(folder_.at("maps")),
              (std::vector<std::string>{"audio.map", "resource.map"}));
    EXPECT_EQ(folder_.read("maps/resource.map"), expected);
    EXPECT_EQ(folder_.read("maps/audio.map"), kSounds);
    ASSERT_EQ(map({"SCENE.RSC", "more.rsc"}, "maps/other.map"), 0) << errors_;
    EXPECT_EQ(folder_.read("maps/other.map"), expected);
    ASSERT_EQ(map({"more.rsc"}, "maps", false, ""), 0) << errors_;
    EXPECT_EQ(folder_.read("maps/resource.map").substr(0, 5), "more\n");
}

TEST_F(Map, RefusesWhatTheGameWouldNotFind) {
    constexpr std::uint16_t kIdMark = 0x8000;
    const auto foreign = [](const std::string& type, std::uint16_t id) {
        return testfiles::foreignLibrary(4, {{type, id, id == 0 ? "NAME" : "", 0, 1}}, Bytes(16));
    };
    folder_.write("type.rsc", foreign("WAVES", kIdMark | 1));
    folder_.write("control.rsc", foreign("A\nBC", kIdMark | 1));
    folder_.write("zero.rsc", foreign("WAVE", kIdMark));
    folder_.write("name.rsc", foreign("WAVE", 0));
    folder_.write(
        "twice.rsc",
        testfiles::foreignLibrary(
            4, {{"WAVE", kIdMark | 1, "", 0, 1}, {"WAVE", kIdMark | 1, "", 0, 1}}, Bytes(16)));
    write("bad.rsc", {{"ASEQ", 1, {1}}});
    write("hand.rsc", {{"CURSOR", 1, {1}}});
    const std::pair<std::string, std::string> cases[] = {
        {"type.rsc", ": WAVES cannot stand in a map"},
        {"control.rsc", ": A?BC 1 cannot stand in a map"},
        {"zero.rsc", ": WAVE 0 cannot stand in a map"},
        {"name.rsc", ": WAVE NAME cannot stand in a map"},
        {"twice.rsc", ": WAVE 1 is there twice"},
        {"hand.rsc", ": CURSOR cannot stand in a map"},
        {"bad.rsc", ": ASEQ 1: the animation has no frames"},
    };
    for (const auto& [file, text] : cases) {
        EXPECT_EQ(map({file}, "maps", true), 1);
        EXPECT_THAT(errors_, testing::HasSubstr(file + text));
    }
    EXPECT_EQ(map({"more.rsc"}, "maps", true, std::string(40, 'x')), 1);
    EXPECT_THAT(errors_, testing::HasSubstr("1 to 39 characters"));
    EXPECT_FALSE(std::filesystem::exists(folder_.at("maps")));
}

} // namespace
