// Lists of things that others own, which may change while they are gone through.
#include "omlist.h"

#include "frameworkfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OMLists : public testing_support::FrameworkTest {
  protected:
    OMLists() { fill(); }
    void fill() {
        for (int& item : items) list.append(&item);
    }
    std::vector<int> content() {
        std::vector<int> values;
        OMListLocator<int> locator(list);
        while (const int* item = locator.next()) values.push_back(*item);
        return values;
    }
    /// The items that an apply visits while `function` does something to the list.
    template <class Function>
    std::vector<int> visit(Function function) {
        std::vector<int> visited;
        list.apply([&](int& item) {
            visited.push_back(item);
            function(item);
        });
        return visited;
    }

    int items[5] = {1, 2, 3, 4, 5};
    int extra = 9;
    OMList<int> list;
};

TEST_F(OMLists, KeepsOrderAndCount) {
    list.insertInOrder(&extra, [](int) { return true; });
    list.insertInOrder(&items[0], [](int item) { return item >= 4; });
    list.insertInOrder(&extra, [](int) { return false; });
    EXPECT_THAT(content(), ElementsAre(9, 1, 2, 3, 1, 4, 5, 9));
    EXPECT_TRUE(list.remove(&items[0]));
    EXPECT_THAT(content(), ElementsAre(9, 2, 3, 1, 4, 5, 9)) << "the first of two";
    EXPECT_TRUE(list.remove(&extra));
    EXPECT_TRUE(list.remove(&extra));
    EXPECT_FALSE(list.remove(&extra));
    EXPECT_EQ(list.count(), 5U);
    EXPECT_EQ(*list.first(), 2);
    EXPECT_EQ(*list.last(), 5);
    EXPECT_EQ(list.find([](int item) { return item > 2; }), &items[2]);
    EXPECT_EQ(list.findLast([](int item) { return item < 4; }), &items[0]);
    EXPECT_EQ(list.find([](int item) { return item > 5; }), nullptr);
    OMListLocator<int> locator(list);
    EXPECT_EQ(locator.next(), &items[1]);
    list.clear();
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.last(), nullptr);
}

TEST_F(OMLists, VisitedItemsMayChangeTheList) {
    EXPECT_THAT(visit([&](int& item) { list.remove(&item); }), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(content(), IsEmpty());
    fill();
    EXPECT_THAT(visit([&](int item) {
                    if (item == 2) list.remove(&items[2]), list.remove(&items[3]);
                    if (item == 5) list.remove(&items[0]), list.append(&extra);
                }),
                ElementsAre(1, 2, 5))
        << "the next one is known before a visit";
    EXPECT_THAT(content(), ElementsAre(2, 5, 9));
    EXPECT_THAT(visit([&](int) { list.clear(); }), ElementsAre(2));
}

TEST_F(OMLists, NestedAppliesKeepTheirPlaces) {
    std::vector<int> inner;
    const auto outer = visit([&](int item) {
        if (item != 2) return;
        inner = visit([&](int other) {
            if (other == 3) list.remove(&items[2]); // next of the outer one
            if (other == 4) list.remove(&items[3]);
        });
    });
    EXPECT_THAT(inner, ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(outer, ElementsAre(1, 2, 5));
    const auto nest = [this](int depth, auto& self) -> void {
        list.apply([&](int&) { depth > 1 ? self(depth - 1, self) : void(++extra); });
    };
    nest(3, nest);
    EXPECT_EQ(extra, 9 + 27);
    EXPECT_THAT(visit([](int) {}), ElementsAre(1, 2, 5)) << "and all are over";
    EXPECT_EXIT(nest(4, nest), testing::ExitedWithCode(255),
                "tos > 1(.|\n)*too many nested calls to apply");
}

} // namespace
