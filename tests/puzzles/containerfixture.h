// What tests of containers stand on: a machine in memory with a window of 640 x 480, answers of any
// size, containers made as scripts make them, and sounds that are written down.
#pragma once

#include "src/gamefixture.h"

#include "puzzles/racont.h"
#include "puzzles/ranswer.h"
#include "puzzles/rcontainer.h"
#include "puzzles/rfabriccontainer.h"
#include "puzzles/rhcont.h"
#include "puzzles/rscont.h"

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace testing_support {

class PuzzleContainerTest : public GameObjectTest {
  protected:
    using Answer = std::unique_ptr<RGraphicAnswer>;

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
};

} // namespace testing_support
