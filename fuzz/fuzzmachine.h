// What the fuzz targets share: a machine in memory that is new for every input, an application, the
// resource layer's process-wide state wiped afterwards, and the two ways in which an input may
// fail.
//
// A failed fatal check is a designed end of the program, so it ends the input, not the process. A
// broken expectation of a target is a finding.
#pragma once

#include "expect.h"
#include "memoryfiles.h"

#include "omapp.h"
#include "omcachedfile.h"
#include "omdebug.h"
#include "omopenlibrary.h"
#include "ompath.h"
#include "omplatform.h"
#include "omresmgr.h"

#include <cstdint>
#include <span>

namespace fuzzing {

using testing_support::Bytes;
using testing_support::MemoryFiles;
using testing_support::MemoryPlatform;

/// A failed fatal check; thrown instead of ending the process.
struct ProgramEnd {};

/// Numbers at the start of an input; the rest of it is the file itself. 0 when there are no more.
class Choices {
  public:
    Choices(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    int byte() {
        if (rest_.empty()) return 0;
        const int value = rest_.front();
        rest_ = rest_.subspan(1);
        return value;
    }
    /// One of 8, 16, 24 and 32 bits a pixel.
    int depth() { return 8 * (1 + byte() % 4); }
    [[nodiscard]] bool empty() const { return rest_.empty(); }
    /// Signed, 16 bits.
    int word() {
        const int low = byte();
        return static_cast<std::int16_t>(low | byte() << 8);
    }
    [[nodiscard]] Bytes rest() const {
        const auto bytes = std::as_bytes(rest_);
        return {bytes.begin(), bytes.end()};
    }

  private:
    std::span<const std::uint8_t> rest_;
};

/// A machine in memory. What inputs leave no trace in is made once, for a screen takes longer to
/// make than most inputs take to run.
class Machine final : public platform::Platform {
  public:
    testing_support::MemoryClock& clock() override { return clock_; }
    platform::Display& display() override { return lasting().display(); }
    platform::Events& events() override { return lasting().events(); }
    platform::Dialogs& dialogs() override { return dialogs_; }
    MemoryFiles& files() override { return files_; }
    platform::Modules& modules() override { return lasting().modules(); }
    testing_support::MemoryWaveOut& waveOut() override { return waveOut_; }
    platform::Typefaces& typefaces() override { return lasting().typefaces(); }
    platform::Movies& movies() override { return lasting().movies(); }
    platform::Machine& machine() override { return lasting().machine(); }
    std::unique_ptr<platform::TextWindow>
    openTextWindow(const platform::TextWindowRequest& request,
                   platform::TextWindowOwner& owner) override {
        return lasting().openTextWindow(request, owner);
    }
    void keepSettings(std::string_view) override {}
    void closeIn() override {}
    void complain(std::string_view) override {}
    void mainLoopBegins() override {}
    void passEnded() override {}
    void programEnds(int) override {}
    [[noreturn]] void terminate(int) override { throw ProgramEnd(); }

  private:
    static MemoryPlatform& lasting() {
        static MemoryPlatform machine;
        return machine;
    }

    MemoryFiles files_;
    testing_support::MemoryClock clock_;
    testing_support::MemoryDialogs dialogs_;
    testing_support::MemoryWaveOut waveOut_;
};

/// Everything one input needs.
class World {
  public:
    World() { OMSetPlatform(&machine); }
    ~World() {
        OMCachedFile::clear();
        OMLibraryInfo::clear();
        OMResMgrClear();
        OMPathClear();
        OMOpenLibrary::setKeepOpen(false);
        app_.reset();
        OMApp::useGDI();
        OMSetPlatform(nullptr);
    }
    World& operator=(World&&) = delete;

    /// Most objects need it.
    void makeApp() {
        app_.emplace(OMApp::DisplayMode::PopUp, OMColor(), platform::Rect{0, 0, 640, 480}, 8);
    }
    /// The same on a screen of another depth, of surfaces.
    void makeApp(int depth, int width, int height) {
        app_.reset();
        if (depth == 8) return makeApp();
        OMApp::useDirectDraw();
        app_.emplace(OMApp::DisplayMode::FullScreen, OMColor(), platform::Rect{0, 0, width, height},
                     depth);
    }

    Machine machine;
    MemoryFiles& files = machine.files();

  private:
    std::optional<OMApp> app_;
};

} // namespace fuzzing
