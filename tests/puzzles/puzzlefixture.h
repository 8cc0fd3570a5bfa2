// What tests of puzzles stand on: a machine in memory with scripts and a window of 640 x 480,
// objects that lie in script variables, a player with a mouse, and a log of events.
//
// The picture with the number 100 * W + H is W x H pixels of one colour.
#pragma once

#include "ompp/memorystream.h"
#include "trinkets/aseqbuilder.h"
#include "trinkets/scriptfixture.h"

#include "commands/vocabulary.h"
#include "omeffectsounds.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "puzzles/rcontainer.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// A container that does as the test says.
class PlainContainer final : public RContainer {
  public:
    static const OMSClass kClass;
    using RContainer::RContainer;

    bool accepts = true;
    bool full = false;
    bool solved = false;
    std::optional<std::int64_t> score; ///< instead of the pixels in which the answer lies over it

    Hit hitScore(RAnswer& answer, platform::Point) override {
        const std::int64_t pixels = score ? *score : overlapScore(answer);
        return {accepts && isEnabled() && overlapScore(answer) > 0, pixels};
    }
    [[nodiscard]] bool isFull() const override { return full; }
    [[nodiscard]] bool isSolved() const override { return solved; }
    static std::unique_ptr<OMScriptableObject> create() {
        return createContainer<PlainContainer>();
    }
};

inline const OMSClass PlainContainer::kClass{"PlainContainer", &RContainer::kClass, {}, &create};

class PuzzleTest : public ScriptTest, private OMEffectSounds {
  protected:
    using Strings = std::vector<std::string>;

    PuzzleTest() {
        OMSRegistry::global().registerClass(PlainContainer::kClass);
        AOImage::setSourceLocator([](int id) -> std::unique_ptr<OMIStream> {
            if (id < 101) return nullptr;
            AseqBuilder image;
            image.block(id / 100, id % 100, 'a');
            image.sequence({entry(AOEntry::kHold), entry(0, 1000), entry(AOEntry::kEnd)});
            return std::make_unique<MemoryStream>(image.build());
        });
    }
    ~PuzzleTest() override {
        onEvent = nullptr;
        reactions.clear();
        if (thread) thread->unload();
        thread.reset();
        YHeap::recreate();
        AOImage::setSourceLocator(nullptr);
        OMEffectSounds::setCurrent(nullptr);
    }

    // Objects by the names of their variables.

    void make(const std::string& name, const char* className,
              std::initializer_list<std::string> arguments) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        for (const std::string& argument : arguments) list.push(argument);
        std::unique_ptr<OMScriptableObject> object = OMSRegistry::global().create(className);
        ASSERT_TRUE(object) << className;
        YHeap& heap = YHeap::current();
        heap.get(heap.intern(name)).setObject(std::move(object));
        hear(name);
    }
    [[nodiscard]] static bool lives(const std::string& name) {
        return OMScriptableObject::named(name) != nullptr;
    }
    template <class Object = OMScriptableObject>
    [[nodiscard]] static Object& the(const std::string& name) {
        OMScriptableObject* object = OMScriptableObject::named(name);
        if (!object) throw std::runtime_error(name + " is gone");
        return dynamic_cast<Object&>(*object);
    }
    static RAnswer& answer(const std::string& name) { return the<RAnswer>(name); }
    static RContainer& container(const std::string& name) { return the<RContainer>(name); }
    static PlainContainer& plain(const std::string& name) { return the<PlainContainer>(name); }
    /// As `drop` does.
    static void drop(const std::string& name) {
        YHeap& heap = YHeap::current();
        heap.get(heap.intern(name)).makeEmpty();
    }
    static void set(const std::string& name, const char* property, const std::string& value) {
        EXPECT_TRUE(the(name).setProperty(property, value)) << name << " " << property;
    }
    static std::string get(const std::string& name, const char* property) {
        return the(name).getProperty(property).value_or("<none>");
    }
    /// As `play` does, but that events reach their handlers.
    static void play(const std::string& name, const char* method,
                     std::initializer_list<std::string_view> arguments = {}) {
        EXPECT_TRUE(the(name).invoke(method, arguments)) << name << " " << method;
    }

    // A puzzle and what belongs to it.

    /// A puzzle p without anything.
    void makePuzzle(const std::string& name = "p") { make(name, "RPuzzle", {"0"}); }
    /// Answers of 20 x 20 pixels side by side, added to p.
    void addAnswers(const Strings& names) {
        int x = 20;
        for (const std::string& name : names) {
            make(name, "RGraphicAnswer", {"2020", std::to_string(x), "400", "50"});
            set(name, "attribute", name);
            play("p", "addAnswer", {name});
            x += 40;
        }
    }
    /// Containers of 80 x 80 pixels side by side, added to p.
    void addContainers(const Strings& names, const char* className = "PlainContainer") {
        int x = 100;
        for (const std::string& name : names) {
            make(name, className, {"-1", std::to_string(x), "100", "80", "80", "10"});
            play("p", "addContainer", {name});
            x += 160;
        }
    }
    static platform::Point corner(const std::string& name) {
        return {the<OMTrinket>(name).x(), the<OMTrinket>(name).y()};
    }

    // Events.

    /// Writes the events of an object down, as "name.event ". A reaction comes after that.
    void hear(const std::string& name) {
        for (const char* event : kEvents) {
            if (!the(name).hasProperty(event)) continue;
            the(name).attachHandler(event, [this, name, event] {
                const std::string what = name + "." + event;
                heard += what + " ";
                if (onEvent) onEvent(what);
                const auto found = reactions.find(what);
                if (found == reactions.end()) return;
                const std::function<void()> react = found->second; // may be taken out
                react();
            });
        }
    }
    std::string takeHeard() { return std::exchange(heard, {}); }

    // The player.

    [[nodiscard]] static platform::Point middle(const std::string& name) {
        const platform::Rect r = the<OMTrinket>(name).boundingRectangle();
        return {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    }
    void pickUp(const std::string& name) {
        window.mouseMove(middle(name));
        window.mouseDown(middle(name));
    }
    void dragTo(platform::Point point) { window.mouseMove(point); }
    void release() { window.mouseUp(window.input().lastMousePosition()); }
    void move(const std::string& name, platform::Point to) {
        pickUp(name);
        dragTo(to);
        release();
    }
    /// Onto the middle of another one.
    void move(const std::string& name, const std::string& onto) { move(name, middle(onto)); }

    static constexpr const char* kEvents[] = {
        "pickedUp",       "dropped",       "addedToContainer", "removedFromContainer",
        "answerPlaced",   "answerRemoved", "answerFlyOn",      "answerFlyOff",
        "containersFull", "answersUsed",   "puzzleSolved",     "puzzleWrong"};
    static constexpr platform::Point kNowhere{600, 440};

    OMTrinketWindow window{{0, 0, 640, 480}, nullptr, "Test"};
    RScriptClasses classes;
    std::string heard;
    std::function<void(const std::string& what)> onEvent;
    std::map<std::string, std::function<void()>> reactions; ///< by "name.event"
    std::vector<int> played;                                ///< sounds

  private:
    int playEffect(int id, OMLink) override {
        played.push_back(id);
        return static_cast<int>(played.size());
    }
    void endEffect(int) override {}
};

} // namespace testing_support
