// The names of a selection list: looking through them, typing, taking back, and all limits.
#include "selectionlist.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Mode = SelectionList::Mode;
SelectionList listOf(std::initializer_list<const char*> names) {
    SelectionList list;
    for (const char* name : names) list.insert(name);
    return list;
}

void type(SelectionList& list, std::string_view text) {
    for (const char c : text) list.type(c);
}

TEST(SelectionList, TakingBackFindsANameBehindTheNewOne) {
    SelectionList list = listOf({"Marta", "Maria"});
    type(list, "maa");
    EXPECT_EQ(list.current(), "Maa");
    list.takeBack(); // the first that begins so now lies behind the one that goes
    EXPECT_EQ(list.current(), "Maria");
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.mode(), Mode::Matching);
}

TEST(SelectionList, NamesMayComeWhileOneIsTyped) {
    SelectionList list = listOf({"Ana"});
    type(list, "z");
    for (const char* name : {"Zoe", "Zu", "Zob", "Abel", "Bia", "Caio"}) list.insert(name);
    EXPECT_EQ(list.current(), "Z");
    EXPECT_LT(list.highlighted() - list.firstVisible(), list.visibleLines()) << "stays in view";
    type(list, "x");
    EXPECT_EQ(list.current(), "Zx");
    EXPECT_EQ(list.highlighted(), list.count() - 1) << "in its place behind Zu";
    list.insert("Zx");
    EXPECT_FALSE(list.isValid()) << "there are two now";
    type(list, "y");
    EXPECT_TRUE(list.isValid());
}

TEST(SelectionList, StaysInOrderWhateverIsDone) {
    std::mt19937 engine{2026};
    const auto random = [&](int most) { return std::uniform_int_distribution(0, most)(engine); };
    SelectionList list;
    for (int step = 0; step < 20000; ++step) {
        const std::string name(1, static_cast<char>('A' + random(2)));
        switch (random(9)) {
        case 0: list.insert(name + static_cast<char>('a' + random(2))); break;
        case 1: list.remove(); break;
        case 2: list.takeBack(); break;
        case 3: list.startNew(); break;
        case 4: list.move(random(2) - 1); break;
        case 5: list.scroll(random(8) - 4); break;
        case 6: list.highlight(std::string_view(name)); break;
        case 7: list.setVisibleLines(random(6)); break;
        default: list.type(static_cast<char>(random(9) == 0 ? ' ' : 'a' + random(2))); break;
        }
        ASSERT_LE(list.count(), SelectionList::kMaxEntries);
        for (int i = 1; i < list.count(); ++i) ASSERT_LE(list.entry(i - 1), list.entry(i)) << step;
        ASSERT_GE(list.highlighted(), 0);
        ASSERT_LT(list.highlighted(), std::max(list.count(), 1));
        ASSERT_GE(list.firstVisible(), 0);
        ASSERT_TRUE(list.isNew() ? list.current() == list.typed()
                                 : list.current().starts_with(list.typed()))
            << step;
        ASSERT_EQ(list.mode() == Mode::Browsing, list.typed().empty() && !list.isNew()) << step;
    }
}

} // namespace
