// What tests of the world's memory stand on: a machine in memory, a data file that is a text, and
// properties that are read with words as scripts have them.
#pragma once

#include "../trinkets/scriptfixture.h"

#include "omsarguments.h"
#include "omscrptb.h"
#include "world/worldmemory.h"

#include <optional>
#include <string>
#include <string_view>

namespace testing_support {

class WorldTest : public ScriptTest {
  protected:
    /// Another run of the program, without its shutdown.
    void startWorld() {
        memory.reset();
        memory = std::make_unique<world::WorldMemory>(
            [this] { return file; }, [this](const std::string& bytes) { file = bytes; });
    }
    ~WorldTest() override {
        if (thread) thread->unload();
        thread.reset();
        memory.reset();
    }

    /// What was logged since the last call.
    std::string logged() {
        std::string text = machine.files().text("zorbelog.txt");
        machine.files().erase("zorbelog.txt");
        return text;
    }

    /// Fills the argument list; "-" is an empty word.
    static void pushWords(std::string_view words) {
        OMSArguments::global().clear();
        while (!words.empty()) {
            const std::string_view word = words.substr(0, words.find(' '));
            OMSArguments::global().push(word == "-" ? "" : word);
            words.remove_prefix(std::min(words.size(), word.size() + 1));
        }
    }

    std::optional<std::string> file; ///< none: it cannot be opened
    std::unique_ptr<world::WorldMemory> memory;
};

} // namespace testing_support
