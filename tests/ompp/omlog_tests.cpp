#include "omlog.h"

#include "frameworkfixture.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using testing_support::FrameworkTest;

class OMLogs : public FrameworkTest {
  protected:
    OMLogs() {
        OMLog::setLevel(OMLog::kAll);
        OMLog::setFallbackDirectory({});
        files.erase("zorbelog.txt");
    }
    ~OMLogs() override {
        OMLog::setLevel(OMLog::kAll);
        OMLog::setFallbackDirectory({});
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
        {0, "e\nw\nm\n"},
        {1, "ERROR: e\nw\nm\n"},
        {2, "ERROR: e\nWarning: w\nm\n"},
        {3, "ERROR: e\nWarning: w\nm\n"},
        {7, "e\nw\nm\n"},
        {-1, "e\nw\nm\n"},
    };
    for (const auto& row : rows) {
        OMLog::setLevel(row.level);
        taken();
        OMLog::write(OMLog::Kind::Error, "e");
        OMLog::write(OMLog::Kind::Warning, "w");
        OMLog::write(OMLog::Kind::Message, "m");
        EXPECT_EQ(taken(), row.lines) << row.level;
    }
}

TEST_F(OMLogs, ChangesOfTheLevelAreLogged) {
    const struct {
        int level;
        const char* name;
    } rows[] = {{0, "NONE\n\n"}, {1, "ERRORS\n\n"}, {2, "WARNINGS\n\n"},
                {3, "ALL\n\n"},  {7, ""},           {-5, ""}};
    for (const auto& row : rows) {
        OMLog::setLevel(row.level);
        EXPECT_EQ(OMLog::level(), row.level);
        EXPECT_EQ(taken(), std::string("Debug Level changed to ") + row.name);
    }
}

TEST_F(OMLogs, ARunBeginsAndEndsItsLog) {
    OMLog::write(OMLog::Kind::Message, "before");
    OMLog::start();
    OMLog::writef(OMLog::Kind::Warning, "%s %d%%", "half of", 50);
    OMLog::close();
    EXPECT_EQ(taken(), "Starting Logging, Debug Level set to ALL\n\nWarning: half of 50%\n"
                       "\nClosing Log\n\n");
    OMLog::setLevel(9);
    OMLog::start();
    EXPECT_EQ(taken(), "Starting Logging, Debug Level set to ");
}

TEST_F(OMLogs, MenuCommandsSetTheLevel) {
    for (const int command : {59407, 59408, 59409, 59410}) {
        EXPECT_TRUE(OMLog::handleCommand(command));
        EXPECT_EQ(OMLog::level(), command - 59407);
    }
    taken();
    for (const int command :
         {59406, 59411, 0, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_FALSE(OMLog::handleCommand(command)) << command;
    EXPECT_EQ(taken(), "");
}

TEST_F(OMLogs, TheHomeDirectoryIsTheSecondChoice) {
    files.writeProtected = "C:\\GAME";
    OMLog::write(OMLog::Kind::Message, "lost");
    OMLog::setFallbackDirectory("C:\\HOME\\");
    OMLog::start();
    OMLog::write(OMLog::Kind::Message, "kept");
    EXPECT_EQ(files.text("C:\\HOME\\zorbelog.txt"),
              "Starting Logging, Debug Level set to ALL\n\nkept\n");
    EXPECT_EQ(taken(), "");
    files.writeProtected.clear();
    OMLog::write(OMLog::Kind::Message, "here");
    EXPECT_EQ(taken(), "here\n") << "asked anew for every line";
    files.writeProtected = "C:";
    OMLog::write(OMLog::Kind::Message, "nowhere");
}

TEST_F(OMLogs, FormattedTextsHaveAnyLength) {
    const std::string longText(5000, 'x');
    EXPECT_EQ(OMFormat("<%s>%c", longText.c_str(), 'y').size(), 5003U);
    EXPECT_EQ(OMFormat("%s", ""), "");
    EXPECT_EQ(OMFormat("%.1lf %ld %5d|", 2.25, -7L, 42), "2.2 -7    42|");
}

} // namespace
