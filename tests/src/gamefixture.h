// What tests of the game's objects on the screen stand on: a machine in memory with a window of
// 640 x 480, objects made and used as scripts do it, pictures by their numbers, sounds that are
// written down, and a player's hand with the mouse.
#pragma once

#include "ompp/frameworkfixture.h"
#include "ompp/memorystream.h"
#include "trinkets/aseqbuilder.h"

#include "omao.h"
#include "omeffectsounds.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

class GameObjectTest : public OMAppTest, private OMEffectSounds {
  protected:
    GameObjectTest() {
        installPictures();
        app->begin();
    }
    ~GameObjectTest() override {
        OMEffectSounds::setCurrent(nullptr);
        AOImage::setSourceLocator(nullptr);
    }

    void installPictures() {
        AOImage::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            const auto found = pictures.find(id);
            if (found == pictures.end()) return nullptr;
            return std::make_unique<MemoryStream>(found->second.build());
        });
    }

    // What scripts do.

    static void pushWords(const std::string& words) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        std::istringstream in(words);
        for (std::string word; in >> word;) list.push(word);
    }
    /// As `c=CLASS words`, without an owner.
    template <class Class>
    std::unique_ptr<Class> make(const std::string& words) {
        pushWords(words);
        std::unique_ptr<OMScriptableObject> made = Class::kClass.create();
        if (!made) throw std::runtime_error("not made: " + words);
        made->takeClass(Class::kClass);
        return std::unique_ptr<Class>(dynamic_cast<Class*>(made.release()));
    }
    /// As `set object name [index] value`.
    static void set(OMScriptableObject& object, const char* name, int value,
                    const std::string& index = {}) {
        pushWords(index);
        object.setProperty(name, std::to_string(value));
    }
    /// As `get object name [index]`.
    static std::string get(OMScriptableObject& object, const char* name,
                           const std::string& index = {}) {
        pushWords(index);
        return object.getProperty(name).value_or("nothing");
    }
    /// As `play object method words`.
    static void play(OMScriptableObject& object, const char* method, const std::string& words) {
        pushWords(words);
        object.invoke(method);
    }

    // What the player does.

    void drag(platform::Point from, platform::Point to) {
        window.mouseDown(from);
        window.mouseMove(to);
        window.mouseUp(to);
    }
    void click(platform::Point at) {
        window.mouseDown(at);
        window.mouseUp(at);
    }

    static std::string placeOf(const OMTrinket& trinket) {
        return std::to_string(trinket.x()) + "," + std::to_string(trinket.y());
    }
    /// A picture of one colour that stands.
    void addPicture(int id, int width, int height, char color = 'a', int x = 0, int y = 0) {
        AseqBuilder builder;
        builder.x = x;
        builder.y = y;
        builder.block(width, height, color).sequence({entry(AOEntry::kHold), entry(0, 100)});
        pictures[id] = builder;
    }

    static void uninstallSounds() { setCurrent(nullptr); }
    std::vector<int> takePlayed() { return std::exchange(played, {}); }
    Strings takeHeard() { return std::exchange(heard, {}); }
    /// Notes an event of an object.
    void listen(OMScriptableObject& object, const char* event) {
        object.attachHandler(event, [this, event] { heard.emplace_back(event); });
    }
    /// The texts of the boxes since the last call, each of which must have the style.
    Strings takeBoxes(std::uint32_t style) {
        Strings texts;
        for (const auto& box : std::exchange(machine.dialogs().boxes, {})) {
            EXPECT_EQ(box.style, style) << box.text;
            texts.push_back(box.text);
        }
        return texts;
    }

    OMTrinketWindow window{{0, 0, 640, 480}, nullptr, "Test"};
    std::map<int, AseqBuilder> pictures; ///< resources by their numbers
    std::vector<int> played;             ///< sounds
    Strings heard;                       ///< events

  private:
    int playEffect(int id, OMLink) override {
        played.push_back(id);
        return static_cast<int>(played.size());
    }
    void endEffect(int) override {}
};

} // namespace testing_support
