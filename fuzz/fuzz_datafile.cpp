// A damaged data file, whose players play on. Whatever the bytes are, what is read and written
// again is the same from then on, and no number of a record leads anywhere it must not.
#include "fuzzmachine.h"

#include "world/computedproperties.h"
#include "world/rules.h"
#include "world/worldmemory.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

using fuzzing::expect;
using world::Player;
using world::WorldMemory;

constexpr int kMostPlayers = 64; ///< played with; a file of line feeds has many

/// What is written of a world that was read from these bytes.
std::string rewritten(const std::string& bytes) {
    std::string written;
    WorldMemory memory([&] { return std::optional(bytes); },
                       [&](const std::string& text) { written = text; });
    memory.activateDataFile();
    memory.writeDataFile();
    return written;
}

void play(Player& player, fuzzing::Choices& choices) {
    const world::Report quiet = [](std::string_view) {};
    world::PlayerRecord& record = player.record();
    const int location = choices.byte() % 48;
    switch (choices.byte() % 6) {
    case 0: world::newGame(record, quiet); break;
    case 1: world::distributeItems(record, quiet); break;
    case 2:
        world::autoLevel(record, location,
                         {choices.word(), choices.word(), choices.word(), choices.word()}, quiet);
        break;
    case 3: world::resetNewPlayer(record, quiet); break;
    default:
        if (world::ActivityRecord* activity = record.activity(location)) {
            world::recordGuess(*activity, choices.byte() % 2 == 0);
            world::removeNextFromQueue(*activity);
        }
        world::addItem(record.items(location), choices.word());
        world::removeItem(record.items(location), choices.word());
    }
}

/// Every property with arguments of all kinds.
void look(world::PlayerRecord& record, fuzzing::Choices& choices) {
    for (const world::ComputedProperty& property : world::computedProperties()) {
        const std::string number = std::to_string(static_cast<int>(choices.byte()) - 100);
        for (const std::string& first : {number, std::string("OHUB"), std::string("CWS1")}) {
            OMSArguments words;
            words.push(first);
            words.push(first == number ? "OHUB" : number);
            if (property.write) property.write(record, words, std::to_string(choices.word()));
            words.rewind();
            (void)property.read(record, words);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World machine;
    machine.makeApp();
    fuzzing::Choices choices(data, size);
    fuzzing::Choices moves(data, std::min<std::size_t>(size, 64));
    for (int i = 0; i < 32; ++i) (void)choices.byte();
    const std::string bytes = testing_support::toText(choices.rest());

    const std::string once = rewritten(bytes);
    expect(rewritten(once) == once, "what was written is read as it is");

    std::string written;
    WorldMemory memory([&] { return std::optional(bytes); },
                       [&](const std::string& text) { written = text; });
    memory.activateDataFile();
    const int count = std::min(static_cast<int>(memory.playersCount()), kMostPlayers);
    for (int i = 0; i < count; ++i) {
        Player& player = memory.activatePlayer("#" + std::to_string(i));
        play(player, moves);
        look(player.record(), moves);
        play(player, moves);
    }
    memory.removePlayer("0");
    memory.shutDown();
    expect(rewritten(written) == written, "what was played is read as it was written");
    return 0;
}
