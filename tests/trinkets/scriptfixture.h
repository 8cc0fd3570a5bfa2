// Runs scripts on a machine in memory: an application, the engine, one thread, and as many passes
// of the main loop as a test wants. Scripts are written with "\n" as line end.
#pragma once

#include "ompp/frameworkfixture.h"
#include "ompp/memorystream.h"

#include "omrandom.h"
#include "omsexception.h"
#include "omsregistry.h"
#include "rthread.h"
#include "yengine.h"
#include "yheap.h"
#include "ykeyword.h"

namespace testing_support {

/// Each "\n" becomes a line end of scripts.
inline std::string withLineEnds(std::string text) {
    std::replace(text.begin(), text.end(), '\n', '\r');
    return text;
}

/// What a script locator hands out.
inline std::unique_ptr<OMIStream> textStream(std::string_view text) {
    return std::make_unique<MemoryStream>(toBytes(text));
}

class ScriptTest : public OMAppTest {
  protected:
    ScriptTest() {
        OMSeedRandom(1);
        YHeap::recreate();
        engine = std::make_unique<YEngine>();
    }
    ~ScriptTest() override {
        if (thread) thread->unload();
        thread.reset();
        engine.reset();
        YHeap::recreate();
        OMSRegistry::global().unregisterAll();
        YCommands::clear();
    }

    void put(const std::string& name, const std::string& text) {
        machine.files().put(name, withLineEnds(text));
    }

    /// Loads a script and lets it run for some passes of a millisecond each.
    void start(const std::string& text, int passes = 50) {
        put("test.mps", text);
        load("test.mps");
        pass(passes);
    }
    /// As start, at the pace of threads that run until they are blocked.
    void run(const std::string& text, int passes = 3) { start("yield off\n" + text, passes); }
    /// What an earlier script left is gone then.
    void load(const char* name, YScriptLocator locator = nullptr) {
        if (thread) thread->unload();
        thread.reset();
        YHeap::recreate();
        engine->emptyThreadStack();
        thread = std::make_unique<YThread>(*engine, name, std::move(locator));
        thread->run();
    }

    void pass(int count, int stepMs = 1) {
        app->begin();
        for (int i = 0; i < count; ++i) {
            app->pass();
            machine.clock().now += static_cast<std::uint32_t>(stepMs);
        }
    }

    /// What `say` and the trace's file output wrote so far, and forgets it.
    std::string said() {
        std::string text = machine.files().text("debug.txt");
        machine.files().erase("debug.txt");
        return text;
    }
    /// The texts of the boxes shown so far, and forgets them.
    Strings boxes() { return std::exchange(machine.dialogs().boxes, {}); }
    std::string value(const std::string& name) {
        YScratch scratch;
        const int index = YHeap::current().lookup(name);
        return index < 0 ? "<none>" : std::string(YHeap::current().get(index).string(scratch));
    }

    std::unique_ptr<YEngine> engine;
    std::unique_ptr<YThread> thread;
};

} // namespace testing_support
