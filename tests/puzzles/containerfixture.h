// What tests of containers stand on: a machine in memory with a window of 640 x 480, answers of any
// size, containers made as scripts make them, and sounds that are written down.
#pragma once

#include "ompp/frameworkfixture.h"
#include "ompp/memorystream.h"
#include "trinkets/aseqbuilder.h"

#include "omeffectsounds.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "puzzles/rattributecontainer.h"
#include "puzzles/rfabriccontainer.h"
#include "puzzles/rgraphicanswer.h"
#include "puzzles/rhorizontalcontainer.h"
#include "puzzles/rhorizontalvaluecontainer.h"
#include "puzzles/rstackingcontainer.h"
#include "puzzles/rvaluecontainer.h"

#include <functional>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace testing_support {

class PuzzleContainerTest : public OMAppTest, private OMEffectSounds {
  protected:
    using Answer = std::unique_ptr<RGraphicAnswer>;

    PuzzleContainerTest() {
        OMAnimation::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            const auto found = pictures.find(id);
            if (found == pictures.end()) return nullptr;
            return std::make_unique<MemoryStream>(found->second.build());
        });
        OMEffectSounds::setCurrent(this);
        app->begin();
    }
    ~PuzzleContainerTest() override {
        OMEffectSounds::setCurrent(nullptr);
        OMAnimation::setSourceLocator(nullptr);
    }

    /// As `c=CLASS words` in a script, without an owner.
    template <class Class>
    std::unique_ptr<Class> make(const std::string& words) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        std::istringstream in(words);
        for (std::string word; in >> word;) list.push(word);
        std::unique_ptr<OMScriptableObject> made = Class::kClass.create();
        if (!made) throw std::runtime_error("not made: " + words);
        made->takeClass(Class::kClass);
        return std::unique_ptr<Class>(dynamic_cast<Class*>(made.release()));
    }
    /// One of each kind.
    std::vector<std::unique_ptr<RContainer>> allKinds(const std::string& words) {
        std::vector<std::unique_ptr<RContainer>> all;
        all.push_back(make<RValueContainer>(words));
        all.push_back(make<RAttributeContainer>(words));
        all.push_back(make<RStackingContainer>(words));
        all.push_back(make<RHorizontalContainer>(words));
        all.push_back(make<RHorizontalValueContainer>(words));
        all.push_back(make<RFabricContainer>(words));
        return all;
    }
    /// A picture of one colour.
    Answer answer(int width, int height, int x, int y, const std::string& value = {}) {
        AseqBuilder builder;
        builder.block(width, height, 'a');
        builder.sequence({entry(AOEntry::kHold), entry(0, 100)});
        auto made = std::make_unique<RGraphicAnswer>(window, builder.image(), 1, x, y);
        made->takeClass(RGraphicAnswer::kClass);
        if (!value.empty()) made->setValue(value);
        return made;
    }
    /// Left, top, right, bottom.
    static void setInsets(RAnswer& answer, int left, int top, int right, int bottom) {
        answer.setExtraLeft(left);
        answer.setExtraTop(top);
        answer.setExtraRight(right);
        answer.setExtraBottom(bottom);
    }

    // What a puzzle does with a container, asked before or not.

    static RContainer::Hit hit(RContainer& container, RAnswer& answer) {
        return container.hitScore(answer, {answer.x(), answer.y()});
    }
    static void put(RAnswer& answer, RContainer& container) {
        answer.setContainer(&container);
        container.placeAnswer(answer);
    }
    static void take(RAnswer& answer) {
        if (RContainer* container = answer.container()) container->removeAnswer(answer);
        answer.setContainer(nullptr);
    }
    static std::string placeOf(const OMTrinket& trinket) {
        return std::to_string(trinket.x()) + "," + std::to_string(trinket.y());
    }

    static void uninstallSounds() { setCurrent(nullptr); }
    std::vector<int> takePlayed() { return std::exchange(played, {}); }

    OMTrinketWindow window{{0, 0, 640, 480}, nullptr, "Test"};
    std::map<int, AseqBuilder> pictures; ///< resources by their numbers
    std::vector<int> played;             ///< sounds

  private:
    int playEffect(int id, OMLink) override {
        played.push_back(id);
        return static_cast<int>(played.size());
    }
    void endEffect(int) override {}
};

} // namespace testing_support
