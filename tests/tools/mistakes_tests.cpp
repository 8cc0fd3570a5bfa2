// What the check of scripts finds: in a corpus of scripts with mistakes, and in whole games.
#include "tooltest.h"

#include "formats/animation/animation.h"
#include "formats/base/latin1.h"

#include <regex>

namespace {

using namespace testfiles;

class Mistakes : public ToolTest {
  protected:
    /// The findings of a folder, "FILE LINE NAME" each.
    std::string check(const std::string& path) {
        mps({"check", at(path).string()});
        static const std::regex kPlace("@/(?:game/)?([^:]+):(?:([0-9]+):)?");
        std::istringstream lines(out_);
        std::string found;
        for (std::string line; std::getline(lines, line);) {
            std::smatch place;
            if (!std::regex_search(line, place, kPlace, std::regex_constants::match_continuous))
                return "no finding: " + line;
            const std::size_t bracket = line.rfind('[') + 1;
            const std::string rule =
                line.back() == ']' && bracket > 0 && std::islower(line[bracket])
                    ? line.substr(bracket, line.size() - 1 - bracket)
                : line.find(" is undefined") != line.npos ? "unknown-command"
                                                          : "syntax";
            found +=
                (found.empty() ? "" : ", ") + place[1].str() + ' ' + place[2].str() + ' ' + rule;
        }
        return found.empty() ? "nothing" : found;
    }
};

/// An animation whose sequences have so many frames.
Bytes animation(const std::vector<std::size_t>& frames) {
    formats::animation::Animation made;
    for (const std::size_t count : frames) made.sequences.emplace_back(count).push_back({0, 0, -1});
    return formats::animation::write(made);
}

TEST_F(Mistakes, AreFoundWhereTheyAre) {
    write("game/rsc/Harbour.RSC", {{"ASEQ", 100, animation({1})},
                                   {"ASEQ", 201, animation({1})},
                                   {"ASEQ", 2001, animation({1, 3})},
                                   {"ASEQ", 2002, animation({1})},
                                   {"ASEQ", 2003, animation({1})},
                                   {"WAVE", 201, {}},
                                   {"WAVE", 202, {}},
                                   {"WAVE", 204, {}}});
    std::ifstream file(ZORBET_MISTAKES);
    std::string corpus((std::istreambuf_iterator<char>(file)), {});
    corpus = std::regex_replace(corpus, std::regex("(^|\n)#[^\n]*"), "$1");
    corpus = std::regex_replace(corpus, std::regex("\n    "), " ");
    std::istringstream lines(corpus);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t end = line.find(" => ");
        if (end == line.npos) continue;
        const std::string script = line.substr(0, end);
        folder_.make(
            "game/Startup.mps",
            formats::latin1FromUtf8(std::regex_replace(script, std::regex(R"( \| )"), "\n"))
                .value());
        const std::string found = std::regex_replace(check("game"), std::regex("Startup.mps "), "");
        EXPECT_EQ(found, line.substr(end + 4)) << script;
        ++number;
    }
    EXPECT_GE(number, 150);
}

TEST_F(Mistakes, OfAGameAreThoseOfTheScriptsThatItBeginsWith) {
    const std::pair<const char*, const char*> files[] = {
        {"Startup.mps", "include Tools.mps\ncall hail \"Ana\"\nrelay \"One.mps\"\n"},
        {"scripts/one.mps", "include tools.mps\nname=1\ncall hail name\nsay other mine\n"},
        // A piece: what one of its users brings is no mistake of it.
        {"tools.mps", "procedure hail who\n[\nif mine\nsay who other+1\nif name\nsay name\n]\n"},
        {"scripts/lonely.mps", "call nobody\nsay \"a\" \xC3\xA9 \"\xC5\x82\"\n"},
        {"progress.map", "some Kept.mps\n"},
        {"scripts/kept.mps", "call nobody\n"},
    };
    for (const auto& [name, text] : files) folder_.make(std::string("game/") + name, text);
    EXPECT_EQ(check("game"), "Startup.mps 1 letter-case, Startup.mps 3 letter-case, "
                             "scripts/kept.mps 1 unknown-procedure, "
                             "scripts/lonely.mps  unreached, scripts/lonely.mps 2 letter, "
                             "scripts/lonely.mps 2 accent, "
                             "tools.mps 3 condition, tools.mps 4 never-set");
    EXPECT_EQ(check("game/scripts/lonely.mps"),
              "scripts/lonely.mps 1 unknown-procedure, scripts/lonely.mps 2 letter, "
              "scripts/lonely.mps 2 accent");
    EXPECT_EQ(check("game/tools.mps"), "tools.mps 3 condition, tools.mps 4 never-set");
}

TEST_F(Mistakes, WithResourcesAreThoseOfWhatTheGameHas) {
    folder_.make("game/Startup.mps", "PlaySound 8\nPlaySound 9\nboat=RAnimation 5 7\n"
                                     "set boat sequence 2\n");
    EXPECT_EQ(check("game"), "nothing");
    folder_.make("game/resources.manifest",
                 "library a.rsc\nsound 9 a.wav\npicture 5 a.png\nanimation 6\nframe a.png\n");
    EXPECT_EQ(check("game"), "Startup.mps 1 resource, Startup.mps 4 frame");
    write("game/RSC/b.rsc", {{"WAVE", 8, {}}});
    EXPECT_EQ(check("game"), "Startup.mps 2 resource, Startup.mps 3 resource");
    folder_.make("game/RSC/resource.map", "GAME\n1\ncd.rsc\nWAVE 9\nENDFILE\n");
    EXPECT_EQ(check("game"), "Startup.mps 3 resource");
    folder_.make("game/RSC/B.rsc", "damaged");
    EXPECT_EQ(check("game"), "RSC/b.rsc  same-name");
}

} // namespace
