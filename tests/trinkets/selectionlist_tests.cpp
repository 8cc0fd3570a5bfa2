// The names of a selection list: looking through them, typing, taking back, and all limits.
#include "selectionlist.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Mode = SelectionList::Mode;
using Typed = SelectionList::Typed;

SelectionList listOf(std::initializer_list<const char*> names) {
    SelectionList list;
    for (const char* name : names) list.insert(name);
    return list;
}

SelectionList listOf(int count) {
    SelectionList list;
    for (int i = 0; i < count; ++i)
        list.insert("Name " + std::to_string(10 + i)); // of equal lengths, so in this order
    return list;
}

Typed type(SelectionList& list, std::string_view text) {
    Typed last = Typed::Taken;
    for (const char c : text) last = list.type(c);
    return last;
}

TEST(SelectionList, TypingFindsANameOrMakesANewOne) {
    SelectionList list = listOf({"Rui", "Bia", "Ana"});
    EXPECT_EQ(list.current(), "Ana");
    EXPECT_EQ(list.mode(), Mode::Browsing);
    EXPECT_EQ(type(list, "r"), Typed::Taken);
    EXPECT_EQ(list.mode(), Mode::Matching);
    EXPECT_EQ(list.current(), "Rui");
    list.takeBack();
    EXPECT_EQ(list.mode(), Mode::Browsing);

    EXPECT_EQ(type(list, "ana"), Typed::Taken);
    EXPECT_EQ(list.mode(), Mode::Matching);
    EXPECT_EQ(list.typed(), "Ana");
    EXPECT_FALSE(list.isNew());
    EXPECT_EQ(type(list, "x"), Typed::Taken);
    EXPECT_EQ(list.mode(), Mode::New);
    EXPECT_EQ(list.current(), "Anax");
    EXPECT_EQ(list.count(), 4);
    EXPECT_TRUE(list.isNew() && list.isValid());
    EXPECT_EQ(type(list, " DA"), Typed::Taken);
    EXPECT_EQ(list.current(), "Anax Da");

    for (int i = 0; i < 4; ++i) list.takeBack();
    EXPECT_EQ(list.mode(), Mode::Matching) << "an old name begins so again";
    EXPECT_EQ(list.current(), "Ana");
    EXPECT_EQ(list.count(), 3);
}

TEST(SelectionList, TakingBackFindsANameBehindTheNewOne) {
    SelectionList list = listOf({"Marta", "Maria"});
    type(list, "mas");
    EXPECT_EQ(list.current(), "Mas");
    list.takeBack();
    EXPECT_EQ(list.current(), "Maria");
    type(list, "a");
    EXPECT_EQ(list.current(), "Maa");
    list.takeBack(); // the first that begins so now lies behind the one that goes
    EXPECT_EQ(list.current(), "Maria");
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.mode(), Mode::Matching);

    SelectionList alone;
    type(alone, "zo");
    EXPECT_EQ(alone.current(), "Zo");
    alone.takeBack();
    EXPECT_EQ(alone.current(), "Z");
    EXPECT_TRUE(alone.isValid());
    alone.takeBack();
    EXPECT_EQ(alone.count(), 0);
    EXPECT_EQ(alone.mode(), Mode::Browsing);
    EXPECT_FALSE(alone.isValid() || alone.canTakeBack());
    alone.takeBack();
}

TEST(SelectionList, TypedTextIsLimited) {
    SelectionList list = listOf({"Ana"});
    EXPECT_EQ(type(list, " "), Typed::LeadingSpace);
    EXPECT_EQ(type(list, "jo\xC3O "), Typed::Taken);
    EXPECT_EQ(list.typed(), "Jo\xE3o ") << "words begin with a capital, the rest is small";
    EXPECT_EQ(type(list, " "), Typed::SecondSpace);
    EXPECT_EQ(type(list, "\xE9rico abcde"), Typed::Taken);
    EXPECT_EQ(list.typed().size(), SelectionList::kMaxLength);
    EXPECT_EQ(list.current(), "Jo\xE3o \xC9rico Abcde");
    EXPECT_FALSE(list.canType());
    EXPECT_EQ(type(list, "x"), Typed::TooLong);
    EXPECT_EQ(type(list, " "), Typed::TooLong);
    EXPECT_EQ(list.typed().size(), SelectionList::kMaxLength);
    SelectionList cut = listOf({"abcdefghijklmnopq", ""});
    EXPECT_EQ(cut.current(), "abcdefghijklmnop");
    EXPECT_EQ(cut.count(), 1) << "an empty name is none";
}

TEST(SelectionList, AFullListTakesNoNewName) {
    SelectionList list;
    for (int i = 0; i < SelectionList::kMaxEntries; ++i)
        EXPECT_TRUE(list.insert("N" + std::to_string(i)));
    EXPECT_TRUE(list.isFull());
    EXPECT_FALSE(list.insert("Ana"));
    EXPECT_FALSE(list.startNew());
    EXPECT_EQ(type(list, "n9"), Typed::Taken);
    EXPECT_EQ(type(list, "x"), Typed::ListFull);
    EXPECT_EQ(list.typed(), "N9");
    EXPECT_EQ(list.mode(), Mode::Matching);
    EXPECT_EQ(list.current(), "N9");
    list.remove();
    EXPECT_TRUE(list.removedOldEntry());
    EXPECT_EQ(list.removedEntry(), "N9");
    EXPECT_EQ(type(list, "zo"), Typed::Taken);
    EXPECT_EQ(list.current(), "Zo");
    EXPECT_EQ(list.highlighted(), SelectionList::kMaxEntries - 1);
}

TEST(SelectionList, RemovingKeepsAHighlight) {
    SelectionList list = listOf({"A", "B", "C"});
    list.highlight("C");
    list.remove();
    EXPECT_EQ(list.current(), "B") << "the last one goes to the new last one";
    list.highlight("A");
    list.remove();
    EXPECT_EQ(list.current(), "B");
    EXPECT_EQ(list.removedEntry(), "A");
    type(list, "bx");
    list.remove();
    EXPECT_FALSE(list.removedOldEntry());
    EXPECT_EQ(list.removedEntry(), "A") << "a new name is no loss";
    EXPECT_EQ(list.typed(), "");
    EXPECT_EQ(list.mode(), Mode::Browsing);
    list.remove();
    EXPECT_FALSE(list.isValid());
    EXPECT_EQ(list.current(), "");
    list.remove();
    EXPECT_EQ(list.removedEntry(), "B");
}

TEST(SelectionList, BrowsingKeepsTheHighlightInView) {
    SelectionList list = listOf(10);
    EXPECT_FALSE(list.canMove(-1) || list.canScroll(-1));
    for (int i = 0; i < 3; ++i) list.move(1);
    EXPECT_EQ(list.highlighted(), 3);
    EXPECT_EQ(list.firstVisible(), 2) << "centred when it left the view";
    list.scroll(1);
    list.scroll(1);
    EXPECT_EQ(list.firstVisible(), 4);
    EXPECT_EQ(list.highlighted(), 4) << "moved along at the upper edge";
    list.scroll(3);
    list.scroll(3);
    EXPECT_EQ(list.firstVisible(), 7);
    EXPECT_EQ(list.highlighted(), 7);
    EXPECT_FALSE(list.canScroll(1));
    list.scroll(1);
    EXPECT_EQ(list.firstVisible(), 7);
    list.highlight("Name 19");
    list.scroll(-1);
    EXPECT_EQ(list.highlighted(), 8) << "moved along at the lower edge";
    list.scroll(-3);
    EXPECT_EQ(list.firstVisible(), 3);
    EXPECT_EQ(list.highlighted(), 5);
    list.scroll(-3);
    list.scroll(-3);
    EXPECT_EQ(list.firstVisible(), 0);
    EXPECT_EQ(list.highlighted(), 2);
    list.highlight("Name 18");
    EXPECT_EQ(list.firstVisible(), 7);
    list.highlight("Nobody");
    EXPECT_EQ(list.highlighted(), 0);
    EXPECT_EQ(list.firstVisible(), 0);
    list.setVisibleLines(20);
    EXPECT_FALSE(list.canScroll(1));

    type(list, "name 12");
    list.move(1);
    EXPECT_EQ(list.current(), "Name 13");
    EXPECT_EQ(list.mode(), Mode::Browsing);
    EXPECT_EQ(list.typed(), "");
    type(list, "x");
    EXPECT_FALSE(list.canMove(-1) || list.canScroll(-1));
    list.move(-1);
    list.highlight("Name 12");
    EXPECT_EQ(list.current(), "X") << "what is typed is not left by accident";
}

TEST(SelectionList, ANewNameMayBeginAnotherOne) {
    SelectionList list = listOf({"Ana", "Bia"});
    type(list, "an");
    EXPECT_TRUE(list.startNew());
    EXPECT_EQ(list.mode(), Mode::Editing);
    EXPECT_EQ(list.current(), "An");
    EXPECT_TRUE(list.isNew() && list.isValid());
    type(list, "a");
    EXPECT_EQ(list.current(), "Ana");
    EXPECT_FALSE(list.isValid()) << "there is one already";
    type(list, "b");
    EXPECT_TRUE(list.isValid());
    EXPECT_EQ(list.highlighted(), 1) << "in its place behind Ana";
    list.takeBack();
    list.takeBack();
    EXPECT_EQ(list.current(), "An");
    EXPECT_TRUE(list.isValid());
    EXPECT_EQ(list.highlighted(), 0);
    list.takeBack();
    list.takeBack();
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.mode(), Mode::Browsing);

    EXPECT_TRUE(list.startNew());
    EXPECT_FALSE(list.isValid()) << "it has no name yet";
    EXPECT_TRUE(list.insert("Aba"));
    EXPECT_EQ(list.current(), "") << "names that come meanwhile do not take its place";
    type(list, "zo");
    EXPECT_EQ(list.current(), "Zo");
    EXPECT_EQ(list.highlighted(), 3);
    EXPECT_TRUE(list.startNew()) << "is under way";
    list.remove();
    EXPECT_EQ(list.count(), 3);
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
