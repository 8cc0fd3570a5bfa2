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

#include <optional>

namespace testing_support {

class FrameworkTest : public testing::Test {
  protected:
    FrameworkTest() {
        OMSetPlatform(&machine);
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { failures.emplace_back(failure.message); });
    }
    ~FrameworkTest() override {
        OMCachedFile::clear();
        OMLibraryInfo::clear();
        OMResMgrClear();
        OMPathClear();
        OMOpenLibrary::setKeepOpen(false);
        OMDebug::setCheckListener(nullptr);
        OMSetPlatform(nullptr);
    }

    /// The messages of the failed checks since the last call.
    std::vector<std::string> takeFailures() { return std::exchange(failures, {}); }

    MemoryPlatform machine;
    MemoryFiles& files = machine.files();
    std::vector<std::string> failures;
};

/// With an application, which a test may end.
class OMAppTest : public FrameworkTest {
  protected:
    using Strings = std::vector<std::string>;

    std::optional<OMApp> app{std::in_place, OMApp::DisplayMode::PopUp, OMColor(),
                             platform::Rect{0, 0, 640, 480}, 8};
};

} // namespace testing_support
