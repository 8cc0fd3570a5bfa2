// What trinkets in a window look like, hear of the mouse and the keys, and do in groups: rows of
// words and of what is then seen and heard.
#include "trinkets/windowfixture.h"
#include "wordtable.h"

#include "formats/picture/cursor.h"
#include "omcursor.h"
#include "ommultitrinket.h"
#include "omtcrsr.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

struct PlainBackground : OMTBackground {
    OMRegion paint(OMMemCanvas&, const OMRegion& dirty) override { return dirty; }
};

const char* const kEvents[] = {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"};

/// Trinkets are called by a letter, which is a tile's colour: "a=10,10,20,20", or "a#10,10,20,20"
/// for one that is updated as a rectangle, or "g=group".
class StageTest : public WindowTest {
  protected:
    StageTest() {
        auto& defaults = window.input().defaults();
        defaults.mouseDown = [this](Point) { hear("default.down"); };
        defaults.mouseUp = [this](Point) { hear("default.up"); };
        defaults.mouseMove = [this](Point) { hear("default.move"); };
        defaults.doubleClick = [this](Point) { hear("default.double"); };
        defaults.key = [this](const platform::KeyPress&) { hear("default.key"); };
    }
    std::string play(const std::string& words) {
        out.clear();
        window.setBackground(nullptr);
        window.input().setDisabled(false);
        std::istringstream in(words);
        for (std::string word; in >> word;) {
            const OMUnderWay underWay;
            perform(word);
        }
        all.clear();
        if (!out.empty()) out.pop_back();
        return out;
    }
    /// Rows of "WORDS => SEEN".
    void expectAll(const char* table, const std::string& before = {}) {
        for (const auto& [words, expected] : rowTable(table, " "))
            EXPECT_EQ(play(before + words), expected) << words;
    }

    std::map<char, std::unique_ptr<OMTrinket>> all;

  private:
    void hear(const std::string& what) { out += what + " "; }
    void hear(int number) { hear(std::to_string(number)); }
    std::string nameOf(const OMTrinket* trinket) {
        for (const auto& [name, one] : all)
            if (trinket && one.get() == trinket) return std::string(1, name);
        return ".";
    }
    static std::vector<int> numbersOf(const std::string& text) {
        std::vector<int> numbers;
        std::istringstream in(text);
        for (std::string part; std::getline(in, part, ',');)
            numbers.push_back(std::atoi(part.c_str()));
        numbers.resize(5);
        return numbers;
    }
    void make(char name, const std::string& text, OMTrinket::UpdateStyle style) {
        const std::vector<int> n = numbersOf(text);
        all[name] = nullptr;
        if (text == "group")
            all[name] = std::make_unique<OMMultiTrinket>(window);
        else
            all[name] = std::make_unique<Tile>(window, Rect{n[0], n[1], n[2], n[3]}, name, style);
        all[name]->takeClass(OMTrinket::kClass);
        for (const char* event : kEvents) listen(name, event, "");
    }
    /// An event, or a link, is heard of, and something is done then.
    void listen(char name, const std::string& event, const std::string& deed) {
        const auto told = [this, name, event, deed] {
            hear(std::string(1, name) + "." + event);
            std::istringstream in(std::string{deed});
            for (std::string part; std::getline(in, part, '+');) perform(part);
        };
        OMTrinket& trinket = *all[name];
        OMTrinket::Links& links = trinket.links();
        const std::map<std::string, OMLinkTo<void(Point)>*> pointed{
            {"down", &links.mouseDown},     {"up", &links.mouseUp},      {"move", &links.mouseMove},
            {"double", &links.doubleClick}, {"begin", &links.beginDrag}, {"drop", &links.drop}};
        if (const auto found = pointed.find(event); found != pointed.end())
            return void(*found->second = [told](Point) { told(); });
        if (event == "drag") return void(links.drag = [told](int, int) { told(); });
        if (event == "on") return void(links.flyOn = told);
        if (event == "off") return void(links.flyOff = told);
        if (event == "lost") return void(links.focusLost = told);
        if (event == "key") return void(links.key = [told](const platform::KeyPress&) { told(); });
        if (event == "step")
            return void(dynamic_cast<Tile&>(trinket).onStep = [told](std::uint32_t) { told(); });
        trinket.attachHandler(event, told);
    }
    void perform(const std::string& word) {
        const std::size_t equals = word.find('=');
        const std::size_t colon = word.find(':');
        const std::string verb = word.substr(0, std::min(equals, colon));
        const std::string text = equals < word.size() ? word.substr(equals + 1) : "";
        const std::vector<int> n = numbersOf(text);
        const Point at{n[0], n[1]};
        if (word[1] == '=' || word[1] == '#')
            return make(word[0], word.substr(2),
                        word[1] == '#' ? OMTrinket::UpdateStyle::Rectangle
                                       : OMTrinket::UpdateStyle::Regions);
        if (colon < equals) {
            const auto second = word.find(':', 2);
            return listen(word[0], word.substr(2, second - 2), word.substr(second + 1));
        }
        if (word[1] == '.' && !all[word[0]]) return;
        if (word[1] == '.') return tell(word[0], *all[word[0]], verb.substr(2), text, n);
        if (verb == "pixel")
            return hear(pixelsOf(window.canvas(), {n[0], n[1], n[0] + 1, n[1] + 1}));
        if (verb == "idle") {
            const auto [shown, composed] = workOfCycle();
            return hear(std::to_string(shown) + "+" + std::to_string(composed));
        }
        if (verb == "hit") return hear(nameOf(window.input().hitTest(at)));
        if (verb == "target") return hear(nameOf(window.input().mouseTarget()));
        if (verb == "under") return hear(nameOf(window.input().flyOverTrinket()));
        if (verb == "focus") return hear(nameOf(window.input().focus()));
        if (verb == "cursor") return hear(machine.display().cursor);
        if (verb == "move") return window.mouseMove(at);
        if (verb == "down") return window.mouseDown(at);
        if (verb == "up") return window.mouseUp(at);
        if (verb == "double") return window.doubleClick(at);
        if (verb == "key") return window.key({'k'});
        if (verb == "minimum") return window.setMinimumDepth(n[0]);
        if (verb == "present") return window.setPresenting(n[0] != 0);
        if (verb == "always") return window.setPresentAlways(n[0] != 0);
        if (verb == "disabled") return window.input().setDisabled(n[0] != 0);
        if (verb == "ground") return window.setBackground(std::make_unique<PlainBackground>());
        if (verb == "deaf") return window.background()->setEventMask(~0U);
        ASSERT_EQ(verb, "hearing");
        OMTBackground& ground = *window.background();
        ground.mouseDown = [this](Point) { hear("ground.down"); };
        ground.mouseUp = [this](Point) { hear("ground.up"); };
        ground.mouseMove = [this](Point) { hear("ground.move"); };
        ground.doubleClick = [this](Point) { hear("ground.double"); };
    }
    void tell(char name, OMTrinket& trinket, const std::string& verb, const std::string& text,
              const std::vector<int>& n) {
        const auto group = [&]() -> OMMultiTrinket& {
            return dynamic_cast<OMMultiTrinket&>(trinket);
        };
        const auto member = [&]() -> OMTrinket& { return *all.at(text[0]); };
        const std::vector<int> more = numbersOf(text.substr(std::min<std::size_t>(text.size(), 2)));
        const Rect r = trinket.boundingRectangle();
        if (verb == "?")
            return hear(std::to_string(r.left) + "," + std::to_string(r.top) + "," +
                        std::to_string(r.right) + "," + std::to_string(r.bottom));
        if (verb == "index") return hear(trinket.indexInWindow());
        if (verb == "cursors?") return hear(trinket.cursor() * 100 + trinket.grabCursor());
        if (verb == "flags")
            return hear(trinket.isMovable() * 100 + trinket.isTouchy() * 10 + trinket.isVisible());
        if (verb == "state") return hear(static_cast<int>(trinket.mouseState()));
        if (verb == "painted")
            return hear(static_cast<int>(std::exchange(dynamic_cast<Tile&>(trinket).painted, 0)));
        if (verb == "offset") return trinket.offset(n[0], n[1]);
        if (verb == "top") return trinket.setTopLayer(0);
        if (verb == "mask") return trinket.setEventMask(static_cast<std::uint32_t>(n[0]));
        if (verb == "cursors") return trinket.setCursors(n[0], n[1]);
        if (verb == "capture") return trinket.setMouseCapture(n[0] != 0, n[1] != 0);
        if (verb == "corral") return trinket.setCorral({n[0], n[1], n[2], n[3]});
        if (verb == "bounds") return trinket.setDragBounds({n[0], n[1], n[2], n[3]});
        if (verb == "snap") return trinket.setSnapGrid({n[0], n[1], {n[2], n[3]}});
        if (verb == "drop") return trinket.onDrop({});
        if (verb == "focus") return window.input().setFocus(trinket);
        if (verb == "gone") return void(all[name] = nullptr);
        if (verb == "add")
            return hear(group().add(member(), more[0], more[1]) ? "added" : "refused");
        if (verb == "remove") return group().remove(member());
        if (verb == "show") return group().showMember(member(), more[0] != 0);
        if (verb == "member") return hear(nameOf(group().member(n[0])));
        if (verb == "count") return hear(static_cast<int>(group().memberCount()));
        if (verb == "place") return trinket.place(n[0], n[1]);
        if (verb == "z?") return hear(trinket.z());
        EXPECT_TRUE(trinket.setProperty(verb, text)) << verb;
    }

    std::string out;
};

// Pictures

TEST_F(StageTest, TheLaterOfTwoAtTheSameDepthLiesAbove) {
    expectAll(R"(
    a=0,0,20,20 b=0,0,20,20 hit=12,5 a.z=3 hit=12,5 b.z=3 hit=12,5 a.top hit=12,5 a.z? a.index
    minimum=32766 hit=12,5 minimum=3 a.z=2 hit=12,5 b.touchy=0 hit=12,5 b.touchy=1 b.mask=1 hit=12,5
    minimum=0 => b a b a 32765 1 . b . .)");
}

TEST_F(StageTest, OnlyWhatChangesIsComposedAndShown) {
    cycle();
    expectAll(R"(
    a=10,10,20,20 b=50,50,60,60 idle idle b.painted a.place=30,10 idle a.offset=2,0 idle a.x=31
    a.x=33 idle a.x=33 idle b.painted a.place=45,45 idle b.painted
    => 8000+8000 0+0 100 200+200 120+120 110+110 0+0 0 200+200 25
    a#10,10,20,20 idle idle a.place=30,10 idle => 8000+8000 0+0 300+300
    a=10,10,40,40 b=20,20,30,30 idle b.visible=0 idle pixel=25,25 b.place=22,20 idle b.visible=1 idle
    pixel=31,25 b.place=60,20 b.gone idle pixel=31,25
    => 8000+8000 100+100 a/ 0+0 100+100 b/ 100+100 a/
    idle a=200,200,210,210 idle b=0,0,10,10 b.place=95,0 idle a.place=95,75 idle
    a.place=2147483647,-2147483648 a.offset=2147483647,-2147483648 a.? idle
    => 8000+8000 0+0 50+50 25+25 268435456,-268435456,268435466,-268435446 25+25
    a=0,0,10,10 present=0 idle pixel=5,5 a.offset=5,0 idle always=1 a.offset=0,5 idle always=0
    a.offset=10,0 idle present=1 idle => 0+8000 ./ 0+150 8000+150 0+200 200+0
    a=0,0,10,10 b=20,0,30,10 c=40,0,50,10 d=20,0,30,10 b:step:a.gone+c.gone+e=60,0,70,10+b.z=5
    d:step:d.z=6 idle idle pixel=45,5 pixel=65,5
    => b.step d.step 8000+8000 b.step d.step 100+100 ./ e/)");
}

// The mouse and the keys

TEST_F(StageTest, TrinketsHearOfTheMouse) {
    expectAll(R"(
    a.cursors=-3,-4 move=15,15 cursor down=15,15 cursor a.state move=18,14 a.? up=18,14 cursor
    move=50,50 cursor
    => default.move a.flyOn -3 a.mouseDown -4 0 13,9,23,19 a.mouseUp -3 default.move a.flyOff
    => -1
    a:down: a:up: a:move: a:double: a:begin: a:drag: a:drop: a:on: a:off: move=15,15 down=15,15
    move=16,15 up=16,15 move=17,15 double=17,15 move=50,50
    => default.move a.on a.flyOn a.down a.mouseDown a.begin a.move a.drag a.drop a.up a.mouseUp
    => default.move a.double a.dblClick default.move a.off a.flyOff
    a.movable=0 down=15,15 up=15,15 a:down:a.capture=1 down=15,15 move=50,50 a.? up=50,50 a.state
    a.capture=0,1 target move=51,51 a.capture=1,1 move=15,15
    => a.mouseDown default.up a.flyOn a.down a.mouseDown 10,10,20,20 a.mouseUp 2 . default.move
    => a.flyOff a.flyOn
    a.mask=396 move=15,15 under double=15,15 target down=15,15 move=18,18 a.? a.mask=2 up=18,18
    target
    => default.move a default.double . a.mouseDown default.move 10,10,20,20 default.up .
    ground down=50,50 up=50,50 move=51,51 double=51,51 hearing down=50,50 up=50,50 move=51,51
    double=51,51 down=150,50 deaf down=50,50 up=50,50 move=51,51 double=51,51
    => default.down default.up default.move default.double ground.down ground.up ground.move
    => ground.double default.down default.down default.up default.move default.double
    disabled=1 down=15,15 up=15,15 move=15,15 double=15,15 key disabled=0 key => default.key
    b=50,50,60,60 down=15,15 b.capture=1 a.state move=18,15 a.? b.? a.capture=0 target b.capture=0
    up=18,15 target down=15,15 move=16,15 a.? up=16,15 a:down:b.capture=1 a:begin: down=15,15
    a.state target b.capture=0
    => a.mouseDown 1 10,10,20,20 53,50,63,60 b default.up a.flyOn . a.mouseDown 11,10,21,20
    => a.mouseUp a.down a.mouseDown 1 b
    a:key: a:lost: b=0,0,10,10 key a.focus key a.mask=32 key b.focus focus a.focus a.gone focus
    => default.key a.key default.key a.lost b a.lost .)",
              "a=10,10,20,20 ");
}

TEST_F(StageTest, DragsStayInTheirCorralAndDropsSnap) {
    expectAll(R"(
    a.corral=10,10,15,60 down=25,25 move=26,30 a.? move=90,30 a.? move=12,30 a.? move=-40,30 a.?
    move=25,30 a.? => a.mouseDown 10,25,20,35 10,25,20,35 10,25,20,35 10,25,20,35 10,25,20,35
    a.snap=10 a.place=24,21 a.drop a.? a.place=26,21 a.drop a.? a.place=25,21 a.drop a.?
    a.place=-15,21 a.drop a.? a.snap=10,0,3 a.place=25,21 a.drop a.? a.snap=-10 a.place=25,21
    a.drop a.? a.snap=0,7 a.place=25,21 a.drop a.?
    => 20,21,30,31 30,21,40,31 20,21,30,31 -20,21,-10,31 23,21,33,31 20,21,30,31 25,21,35,31
    a.snap=10,10 a.place=23,23 a.bounds=50,50,60,60 a.drop a.? a.offset=-3 a.drop a.?
    a.bounds=29,29,31,31 a.drop a.? a.place=23,23 a.movable=0 a.drop a.?
    => 23,23,33,33 20,23,30,33 20,20,30,30 23,23,33,33)",
              "a=20,20,30,30 ");
}

// Groups

constexpr const char* kGrouped =
    "a=10,10,20,20 b=30,30,45,40 g=group g.z=50 g.add=a,7 g.add=b,8,2 ";

TEST_F(StageTest, GroupsAreWhereTheirVisibleMembersAre) {
    expectAll(R"(
    b.place=50,5 g.? b.visible=0 g.? g.visible=0 g.? g.visible=1 g.remove=a g.member=7 g.member=8
    g.? b.gone g.offset=3,4 g.?
    => added added 10,5,65,20 10,10,20,20 10,5,65,20 . b 50,5,65,15 53,9,53,9
    o=group e=group o.add=g,0 o.add=e,1 o.? hit=12,12 o.z=70 hit=12,12 e.gone o.offset=5,5 g.gone
    o.? => added added added added 10,10,45,40 a a 15,15,15,15
    g.place=20,15 a.? b.? a.z? b.z? a.z=60 g.z=60 a.z? b.z? hit=22,17 g.z=2147483647 b.z?
    g.movable=0 g.touchy=0 g.visible=0 g.cursors=-3,-4 a.flags b.flags a.cursors? b.cursors?
    d=0,0,5,5 g.add=d,9,-1 d.flags d.z? g.show=d,0 g.? g.visible=1 a.flags d.flags g.show=d,1
    d.flags
    => added added 20,15,30,25 40,35,55,45 50 52 60 62 a 2147483647 0 0 -304 -304 added 0
    => 2147483646 20,15,55,45 1 0 1
    o=group o.add=a,1 g.count g.add=g,1 g.add=o,1 o.add=g,1 g.offset=1,0 a.?
    => added added added 1 refused added refused 11,10,21,20)",
              kGrouped);
}

TEST_F(StageTest, GroupsAreDraggedAndHearWhatTheirMembersHear) {
    expectAll(R"(
    g:drag: down=35,35 move=40,36 a.? b.? g.gone move=50,36 a.?
    => added added g.mouseDown b.mouseDown g.drag 15,11,25,21 35,31,50,41 15,11,25,21
    g.snap=16 g:drop: down=35,35 move=35,37 up=35,37 a.? b.?
    => added added g.mouseDown b.mouseDown g.drop g.mouseUp b.mouseUp 16,12,26,22 36,32,51,42
    g:down: a:down: move=15,15 down=15,15 up=15,15 double=15,15 move=70,70 g.remove=a move=15,15
    down=15,15 up=15,15 double=15,15
    => added added default.move g.flyOn a.flyOn g.mouseDown g.down a.mouseDown g.mouseUp
    => a.mouseUp g.dblClick a.dblClick default.move g.flyOff a.flyOff default.move a.flyOn
    => a.down a.mouseDown a.mouseUp a.dblClick
    g.remove=a g.add=a,7,-1 hit=15,15 hit=35,35 hit=25,25 down=15,15 move=16,15 b.?
    => added added added g b . g.mouseDown 31,30,46,40
    g.cursors=-3,-4 move=15,15 cursor a.gone cursor move=60,60
    => added added default.move g.flyOn a.flyOn -3 -1 default.move g.flyOff
    g.snap=16 down=15,15 move=16,15 a.gone move=26,15 b.? up=26,15 b.? target b.capture=1 b.gone
    target => added added g.mouseDown a.mouseDown 41,30,56,40 g.mouseUp 48,30,63,40 . .
    a:mouseDown:a.gone move=15,15 down=15,15 move=20,15 up=20,15 move=70,70 b.?
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown g.mouseUp g.flyOff
    => default.move 35,30,50,40)",
              kGrouped);
    for (const auto& [mask, word] : {std::pair(1, "mouseDown"),
                                     {2, "mouseUp"},
                                     {8, "dblClick"},
                                     {128, "flyOn"},
                                     {256, "flyOff"}}) {
        std::string heard = "added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown "
                            "g.mouseUp a.mouseUp g.dblClick a.dblClick default.move g.flyOff "
                            "a.flyOff";
        const std::string unheard = " g." + std::string(word);
        heard.erase(heard.find(unheard), unheard.size());
        EXPECT_EQ(play(kGrouped + std::string("g.mask=") + std::to_string(mask) +
                       " move=15,15 down=15,15 up=15,15 double=15,15 move=70,70"),
                  heard);
    }
}

// What no row shows

TEST_F(StageTest, HooksRunAtTheirPointsOfTheCycle) {
    std::string order;
    Tile tile(window, {0, 0, 10, 10}, 10);
    tile.onStep = [&](std::uint32_t clock) { order += "step" + std::to_string(clock) + " "; };
    auto& hooks = window.hooks();
    for (const auto& [hook, name] : {std::pair(&hooks.first, "first "),
                                     {&hooks.last, "last "},
                                     {&hooks.beforeAnimation, "before "},
                                     {&hooks.afterAnimation, "after "},
                                     {&hooks.beforeTrinkets, "trinkets "},
                                     {&hooks.afterTrinkets, "painted "},
                                     {&hooks.afterPresent, "shown "}})
        *hook = [&order, name = name] { order += name; };
    hooks.input = [&](auto kind) { order += std::to_string(static_cast<int>(kind)); };
    machine.clock().now = 5000;
    window.resetClock();
    cycle();
    window.addPauseTime(100); // no pause
    cycle();
    window.beginPause();
    window.addPauseTime(2);
    window.endPause();
    cycle();
    play("down=15,15 up=15,15 move=15,15 double=15,15 key disabled=1 down=15,15");
    EXPECT_EQ(order, "first before step1 after trinkets painted shown last first before step2 "
                     "after last first before step1 after last 12340");
}

// Cursors

TEST_F(StageTest, ARowOfCursorsIsShownOverAndOverUntilItOrItsWindowEnds) {
    OMTrinketWindow::setCursorLocator([](int id) {
        const Bytes file = toBytes(formats::picture::writeCursor({1, 1, {}, {0xFF00FF00}}));
        return std::make_shared<const OMCursor>(id, file);
    });
    OMAnimCursor row({1, 2, 3}, 100), other({4}, 100);
    row.set(2);
    row.uninstall();
    EXPECT_EQ(takeFailures(),
              (Strings{"Setting non-current cursor", "Uninstalling non-current cursor"}));
    row.install(window);
    std::string seen;
    for (const std::uint32_t ms : {0, 99, 1, 100, 150, 49, 1, 400}) {
        machine.clock().now += ms;
        app->tasks().runAll();
        seen += std::to_string(machine.display().cursor);
    }
    EXPECT_EQ(seen, "11231123") << "late pictures are passed over";
    other.install(window);
    EXPECT_TRUE(other.imCurrent() && !row.imCurrent());
    other.uninstall();
    row.install(*std::make_unique<OMTrinketWindow>(Rect{0, 0, 20, 20}, nullptr, ""));
    EXPECT_FALSE(row.imCurrent());
    EXPECT_EQ(app->tasks().count(), 0u);
    OMTrinketWindow::setCursorLocator(nullptr);
}

} // namespace
