#include "omlist.h"

#include "frameworkfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using testing_support::FrameworkTest;

class OMLists : public FrameworkTest {
  protected:
    OMLists() {
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
    list.prepend(&extra);
    EXPECT_THAT(content(), ElementsAre(9, 1, 2, 3, 4, 5));
    list.insertWhere(&items[0], [](int item) { return item == 4; });
    EXPECT_THAT(content(), ElementsAre(9, 1, 2, 3, 1, 4, 5));
    list.insertWhere(&extra, [](int) { return false; });
    EXPECT_EQ(list.count(), 8U);
    EXPECT_TRUE(list.remove(&items[0]));
    EXPECT_THAT(content(), ElementsAre(9, 2, 3, 1, 4, 5, 9)) << "the first of two";
    EXPECT_TRUE(list.remove(&extra));
    EXPECT_TRUE(list.remove(&extra));
    EXPECT_FALSE(list.remove(&extra));
    EXPECT_EQ(*list.first(), 2);
    EXPECT_EQ(*list.last(), 5);
    EXPECT_EQ(list.find([](int item) { return item > 2; }), &items[2]);
    EXPECT_EQ(list.findLast([](int item) { return item < 4; }), &items[0]);
    EXPECT_EQ(list.find([](int item) { return item > 5; }), nullptr);
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.first(), nullptr);
    EXPECT_EQ(list.last(), nullptr);
}

TEST_F(OMLists, VisitedItemsMayChangeTheList) {
    EXPECT_THAT(visit([&](int& item) { list.remove(&item); }), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(content(), IsEmpty());

    for (int& item : items) list.append(&item);
    EXPECT_THAT(visit([&](int item) {
                    if (item == 2)
                        for (int& other : {std::ref(items[2]), std::ref(items[3])})
                            list.remove(&other);
                }),
                ElementsAre(1, 2, 5))
        << "the next ones";
    EXPECT_THAT(visit([&](int item) {
                    if (item == 5) list.remove(&items[0]);
                }),
                ElementsAre(1, 2, 5))
        << "one that has been visited";
    EXPECT_THAT(visit([&](int item) {
                    if (item == 2) list.clear();
                }),
                ElementsAre(2));
    for (int& item : items) list.append(&item);
    EXPECT_THAT(visit([&](int item) {
                    if (item == 5) list.append(&extra);
                }),
                ElementsAre(1, 2, 3, 4, 5))
        << "the next one was known already";
    EXPECT_EQ(*list.last(), 9);
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
    int deepest = 0;
    list.apply([&](int&) { list.apply([&](int&) { list.apply([&](int&) { ++deepest; }); }); });
    EXPECT_EQ(deepest, 27);
    EXPECT_THAT(visit([](int) {}), ElementsAre(1, 2, 5)) << "and all are over";
}

using OMListDeath = OMLists;

TEST_F(OMListDeath, FourNestedAppliesAreFatal) {
    const auto nest = [&] {
        list.apply([&](int&) {
            list.apply([&](int&) { list.apply([&](int&) { list.apply([](int&) {}); }); });
        });
    };
    EXPECT_EXIT(nest(), ExitedWithCode(255), "tos > 1(.|\n)*too many nested calls to apply");
}

TEST_F(OMLists, LocatorsStartAnew) {
    OMListLocator<int> locator(list);
    EXPECT_EQ(locator.next(), &items[0]);
    EXPECT_EQ(locator.next(), &items[1]);
    locator.rewind();
    EXPECT_EQ(locator.next(), &items[0]);
    list.clear();
    locator.rewind();
    EXPECT_EQ(locator.next(), nullptr);
    EXPECT_EQ(locator.next(), nullptr);
}

} // namespace
