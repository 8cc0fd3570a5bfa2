// What tests of actions stand on: a machine in memory with window, scripts and the game's types of
// actions, animations 1 (two frames of 10 ms, without end) and 2 (two frames, once), and a log of
// what happened when.
#pragma once

#include "actions/actioncontainer.h"
#include "commands/vocabulary.h"
#include "movie/rsmackermovie.h"
#include "omao.h"
#include "ompp/memorystream.h"
#include "omsarguments.h"
#include "omsexception.h"
#include "omtrinketwindow.h"
#include "omwaveengine.h"
#include "trinkets/aseqbuilder.h"
#include "trinkets/scriptfixture.h"

namespace testing_support {

class ActionTest : public ScriptTest {
  protected:
    ActionTest() {
        AOImage::setSourceLocator([](int id) -> std::unique_ptr<OMIStream> {
            if (id != 1 && id != 2) return nullptr;
            AseqBuilder image;
            image.block(4, 4, 'a').block(4, 4, 'b');
            image.sequence({entry(0, 10), entry(1, 10), entry(id == 1 ? -2 : -4), entry(-1)});
            return std::make_unique<MemoryStream>(image.build());
        });
        OMSobException::setNotification(
            [this](const OMSobException& report) { reports.push_back(report.text()); });
    }
    ~ActionTest() override {
        if (thread) thread->unload();
        thread.reset();
        OMSobException::setNotification(nullptr);
        AOImage::setSourceLocator(nullptr);
    }

    /// What `play container add ...` does.
    static void add(ActionContainer& container, std::initializer_list<const char*> arguments) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        for (const char* argument : arguments) list.push(argument);
        container.addFromScript();
    }
    /// Writes `name` into the log, with the time, whenever the action finishes.
    template <class Container>
    void watch(Container& action, const std::string& name, std::function<void()> then = {}) {
        action.takeClass(Container::kClass);
        action.attachHandler("finished", [this, name, then] {
            note(name);
            if (then) then();
        });
    }
    void note(const std::string& what) {
        log += std::to_string(machine.clock().now - begun) + " " + what + "; ";
    }
    /// Passes of a millisecond, and what was noted since the last call.
    std::string after(int ms) {
        pass(ms);
        return std::exchange(log, {});
    }
    /// The log counts its times from here.
    void begin() { begun = machine.clock().now; }
    std::vector<std::string> takeReports() { return std::exchange(reports, {}); }

    OMWaveEngine sounds;
    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
    RScriptClasses classes;
    RMovies movies;
    std::vector<std::string> reports;
    std::string log;
    std::uint32_t begun = machine.clock().now;
};

} // namespace testing_support
