// Lists of things that others own, which may change while they are gone through: random use,
// also from within nested visits, against a standard list.
#include "omlist.h"

#include "frameworkfixture.h"

#include <list>
#include <random>

namespace {

class OMLists : public testing_support::FrameworkTest {
  protected:
    void remove(int* item) {
        const auto found = std::ranges::find(model, item);
        EXPECT_EQ(list.remove(item), found != model.end());
        if (found == model.end()) return;
        for (auto& each : next)
            if (each == found) ++each;
        model.erase(found);
    }
    void act(int depth) {
        int& item = items.at(random() % 8);
        const int limit = static_cast<int>(random() % 9);
        switch (random() % 6) {
        case 0:
            if (model.size() < 12) list.append(&item), model.push_back(&item);
            break;
        case 1: {
            const auto isBehind = [&](int other) { return other > limit; };
            auto place = model.end();
            while (place != model.begin() && isBehind(**std::prev(place))) --place;
            list.insertInOrder(&item, isBehind), model.insert(place, &item);
            break;
        }
        case 2:
            if (depth < OMList<int>::kApplyDepth) visit(depth + 1);
            break;
        default: remove(&item);
        }
        OMListLocator<int> locator(list);
        for (const int* each : model) EXPECT_EQ(locator.next(), each);
        EXPECT_EQ(locator.next(), nullptr);
        EXPECT_EQ(list.count(), model.size());
        const auto isSmaller = [&](const int* each) { return *each < limit; };
        const auto first = std::ranges::find_if(model, isSmaller);
        const auto last = std::find_if(model.rbegin(), model.rend(), isSmaller);
        const auto isBelow = [&](int each) { return each < limit; };
        EXPECT_EQ(list.find(isBelow), first == model.end() ? nullptr : *first);
        EXPECT_EQ(list.findLast(isBelow), last == model.rend() ? nullptr : *last);
    }
    void visit(int depth) {
        next.push_back(model.begin()); // what comes next is known before a visit
        list.apply([&](const int& item) {
            ASSERT_NE(next.back(), model.end());
            EXPECT_EQ(&item, *next.back()++);
            act(depth);
        });
        EXPECT_EQ(next.back(), model.end());
        next.pop_back();
    }

    std::array<int, 8> items{1, 2, 3, 4, 5, 6, 7, 8};
    OMList<int> list;
    std::list<int*> model;
    std::vector<std::list<int*>::iterator> next; ///< of each running visit
    std::mt19937 random{20261126};
};

TEST_F(OMLists, AnyUseIsThatOfAStandardList) {
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        act(0);
        EXPECT_EQ(list.first(), model.empty() ? nullptr : model.front());
        EXPECT_EQ(list.last(), model.empty() ? nullptr : model.back());
        if (step % 100 == 0) list.clear(), model.clear();
    }
    list.append(items.data());
    const auto nest = [this](int depth, auto& self) -> void {
        list.apply([&](int&) { depth > 1 ? self(depth - 1, self) : list.clear(); });
    };
    EXPECT_EXIT(nest(4, nest), testing::ExitedWithCode(255),
                "tos > 1(.|\n)*too many nested calls to apply");
    nest(3, nest);
    EXPECT_TRUE(list.empty());
}

} // namespace
