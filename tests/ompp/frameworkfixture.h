// What tests of the framework stand on: a machine in memory with nothing installed by earlier
// tests, and a record of the failed non-fatal checks.
#pragma once

#include "memoryfiles.h"

#include "omapp.h"
#include "omcachedfile.h"
#include "omdebug.h"
#include "omopenlibrary.h"
#include "ompath.h"
#include "omplatform.h"
#include "omresmgr.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

namespace testing_support {

class Framework {
  public:
    explicit Framework(const platform::ScreenMode& screen = {}) : machine(screen) {
        OMSetPlatform(&machine);
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { failures.emplace_back(failure.message); });
    }
    ~Framework() {
        OMCachedFile::clear();
        OMLibraryInfo::clear();
        OMResMgrClear();
        OMPathClear();
        OMOpenLibrary::setKeepOpen(false);
        OMDebug::setCheckListener(nullptr);
        OMSetPlatform(nullptr);
    }
    Framework& operator=(Framework&&) = delete;

    /// The messages of the failed checks since the last call.
    std::vector<std::string> takeFailures() { return std::exchange(failures, {}); }
    /// What was written into the log since the last call.
    std::string takeLog() {
        std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }

    MemoryPlatform machine;
    MemoryFiles& files = machine.files();
    std::vector<std::string> failures;
};

class FrameworkTest : public testing::Test, protected Framework {};

/// With an application, which a test may end.
class OMAppTest : public FrameworkTest {
  protected:
    using Strings = std::vector<std::string>;

    /// Runs all tasks until a copy is complete or forgotten; false when it takes ages.
    bool finishCopy(std::string_view name) {
        for (int round = 0; round < 20000; ++round) {
            const OMCachedFile* file = OMCachedFile::find(name);
            if (!file || file->isComplete()) return true;
            app->tasks().runAll();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
        return false;
    }

    std::optional<OMApp> app{std::in_place, OMApp::DisplayMode::PopUp, OMColor(),
                             platform::Rect{0, 0, 640, 480}, 8};
};

} // namespace testing_support
