// The log file: its lines, its level, and where it lies.
#include "omlog.h"

#include "frameworkfixture.h"

#include <limits>

namespace {

class OMLogs : public testing_support::FrameworkTest {
  protected:
    OMLogs() { reset(); }
    ~OMLogs() override { reset(); }
    void reset() {
        OMLog::setLevel(OMLog::kAll);
        OMLog::setFallbackDirectory({});
        taken();
    }
    /// What the log holds, which is then emptied.
    std::string taken() {
        std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }
};

TEST_F(OMLogs, TheLevelDecidesAboutPrefixesOnly) {
    const struct {
        int level;
        const char* lines;
    } rows[] = {
        {0, "NONE\n\ne\nw\nm\n"},
        {1, "ERRORS\n\nERROR: e\nw\nm\n"},
        {2, "WARNINGS\n\nERROR: e\nWarning: w\nm\n"},
        {3, "ALL\n\nERROR: e\nWarning: w\nm\n"},
        {7, "e\nw\nm\n"},
        {-1, "e\nw\nm\n"},
    };
    for (const auto& row : rows) {
        if (!OMLog::handleCommand(59407 + row.level)) OMLog::setLevel(row.level);
        OMLog::write(OMLog::Kind::Error, "e");
        OMLog::write(OMLog::Kind::Warning, "w");
        OMLog::write(OMLog::Kind::Message, "m");
        EXPECT_EQ(taken(), "Debug Level changed to " + std::string(row.lines)) << row.level;
    }
    for (const int command : {59406, 59411, std::numeric_limits<int>::min()})
        EXPECT_FALSE(OMLog::handleCommand(command)) << command;
}

TEST_F(OMLogs, ARunBeginsAndEndsItsLog) {
    OMLog::write(OMLog::Kind::Message, "before");
    OMLog::start();
    OMLog::writef(OMLog::Kind::Warning, "%s %d%%", std::string(5000, 'x').c_str(), 50);
    OMLog::close();
    EXPECT_EQ(taken(), "Starting Logging, Debug Level set to ALL\n\nWarning: " +
                           std::string(5000, 'x') + " 50%\n\nClosing Log\n\n");
}

TEST_F(OMLogs, TheHomeDirectoryIsTheSecondChoice) {
    files.writeProtected = "C:\\GAME";
    OMLog::write(OMLog::Kind::Message, "lost");
    OMLog::setFallbackDirectory("C:\\HOME\\");
    OMLog::start();
    OMLog::write(OMLog::Kind::Message, "kept");
    EXPECT_EQ(files.text("C:\\HOME\\zorbelog.txt"),
              "Starting Logging, Debug Level set to ALL\n\nkept\n");
    files.writeProtected.clear();
    OMLog::write(OMLog::Kind::Message, "here");
    EXPECT_EQ(taken(), "here\n") << "asked anew for every line";
    files.writeProtected = "C:";
    OMLog::write(OMLog::Kind::Message, "nowhere");
}

} // namespace
