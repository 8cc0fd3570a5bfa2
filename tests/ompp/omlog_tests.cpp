// The log file: its lines, its level, and where it lies.
#include "omlog.h"

#include "frameworkfixture.h"

namespace {

class OMLogs : public testing_support::FrameworkTest {
  protected:
    OMLogs() { taken(); }
    ~OMLogs() override {
        OMLog::setLevel(OMLog::kAll);
        OMLog::setFallbackDirectory({});
    }
    std::string taken() { return files.take("zorbelog.txt"); }
    static void write(const std::string& line) { OMLog::write(OMLog::Kind::Message, line); }
};

TEST_F(OMLogs, TheLevelDecidesAboutPrefixesOnly) {
    const std::pair<int, std::string> rows[] = {
        {0, "NONE\n\ne\nw\nm\n"},
        {1, "ERRORS\n\nERROR: e\nw\nm\n"},
        {2, "WARNINGS\n\nERROR: e\nWarning: w\nm\n"},
        {3, "ALL\n\nERROR: e\nWarning: w\nm\n"},
        {4, "e\nw\nm\n"},
        {-1, "e\nw\nm\n"},
    };
    for (const auto& [level, lines] : rows) {
        EXPECT_EQ(OMLog::handleCommand(59407 + level), level >= 0 && level <= 3);
        if (level < 0 || level > 3) OMLog::setLevel(level);
        OMLog::write(OMLog::Kind::Error, "e");
        OMLog::write(OMLog::Kind::Warning, "w");
        write("m");
        EXPECT_EQ(taken(), "Debug Level changed to " + lines);
    }
}

TEST_F(OMLogs, BeginsAndEndsWithARunInTheFirstPlaceThatCanBeWritten) {
    write("before");
    OMLog::start();
    OMLog::writef(OMLog::Kind::Warning, "%s %d%%", std::string(5000, 'x').c_str(), 50);
    OMLog::close();
    const std::string begin = "Starting Logging, Debug Level set to ALL\n\n";
    EXPECT_EQ(taken(), begin + "Warning: " + std::string(5000, 'x') + " 50%\n\nClosing Log\n\n");

    files.writeProtected = "C:\\GAME";
    write("lost");
    OMLog::setFallbackDirectory("C:\\HOME\\");
    OMLog::start();
    write("kept");
    EXPECT_EQ(files.text("C:\\HOME\\zorbelog.txt"), begin + "kept\n");
    files.writeProtected.clear();
    write("here");
    EXPECT_EQ(taken(), "here\n") << "asked anew for every line";
    files.writeProtected = "C:";
    write("nowhere");
}

} // namespace
