// What trinkets in a window look like, hear of the mouse and the keys, and do in groups: rows of
// words and of what is then seen and heard.
#include "ompp/curbuilder.h"
#include "trinkets/windowfixture.h"
#include "wordtable.h"

#include "omcursor.h"
#include "ommultitrinket.h"
#include "omtcrsr.h"

#include <map>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

/// A group that declares what scripts see.
struct Group : OMMultiTrinket {
    explicit Group(OMTrinketWindow& window) : OMMultiTrinket(window) { takeClass(kClass); }
};

struct PlainBackground : OMTBackground {
    OMRegion paint(OMMemCanvas&, const OMRegion& dirty) override { return dirty; }
};

const char* const kEvents[] = {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"};
const char* const kLinks[] = {"down", "up", "move", "double", "begin", "drag", "drop", "on", "off"};

/// Trinkets are called by a letter, which is a tile's colour: "a=10,10,20,20", or "a#10,10,20,20"
/// for one that is updated as a rectangle, or "g=group".
class StageTest : public WindowTest {
  protected:
    StageTest() {
        OMTrinketInput::Defaults& defaults = window.input().defaults();
        defaults.mouseDown = [this](Point) { hear("default.down"); };
        defaults.mouseUp = [this](Point) { hear("default.up"); };
        defaults.mouseMove = [this](Point) { hear("default.move"); };
        defaults.doubleClick = [this](Point) { hear("default.double"); };
        defaults.key = [this](const platform::KeyPress&) { hear("default.key"); };
    }
    std::string play(const std::string& words) {
        out.clear();
        deeds = 0;
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
            all[name] = std::make_unique<Group>(window);
        else
            all[name] = std::make_unique<Tile>(window, Rect{n[0], n[1], n[2], n[3]}, name, style);
        for (const char* event : kEvents) listen(name, event, "");
    }
    void act(const std::string& deed) {
        if (++deeds > 50) return;
        std::istringstream in(deed);
        for (std::string part; std::getline(in, part, '+');) perform(part);
    }
    /// An event, or a link, is heard of, and something is done then.
    void listen(char name, const std::string& event, const std::string& deed) {
        const auto told = [this, name, event, deed] {
            hear(std::string(1, name) + "." + event);
            act(std::string(deed));
        };
        const auto at = [told](Point) { told(); };
        OMTrinket& trinket = *all[name];
        OMTrinket::Links& links = trinket.links();
        if (event == "down") return void(links.mouseDown = at);
        if (event == "up") return void(links.mouseUp = at);
        if (event == "move") return void(links.mouseMove = at);
        if (event == "double") return void(links.doubleClick = at);
        if (event == "begin") return void(links.beginDrag = at);
        if (event == "drop") return void(links.drop = at);
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
            const Work work = workOfCycle();
            return hear(std::to_string(work.shown) + "+" + std::to_string(work.composed));
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
        if (verb == "lost") return window.mouseReleaseLost();
        if (verb == "minimum") return window.setMinimumDepth(n[0]);
        if (verb == "present") return window.setPresenting(n[0] != 0);
        if (verb == "always") return window.setPresentAlways(n[0] != 0);
        if (verb == "disabled") return window.input().setDisabled(n[0] != 0);
        if (verb == "mask") return window.setDefaultEventMask(static_cast<std::uint32_t>(n[0]));
        if (verb == "ground") return window.setBackground(std::make_unique<PlainBackground>());
        if (verb == "deaf") return window.background()->setEventMask(~0U);
        if (verb == "hearing") {
            OMTBackground& ground = *window.background();
            ground.mouseDown = [this](Point) { hear("ground.down"); };
            ground.mouseUp = [this](Point) { hear("ground.up"); };
            ground.mouseMove = [this](Point) { hear("ground.move"); };
            ground.doubleClick = [this](Point) { hear("ground.double"); };
            return;
        }
        ADD_FAILURE() << word;
    }
    void tell(char name, OMTrinket& trinket, const std::string& verb, const std::string& text,
              const std::vector<int>& n) {
        const auto group = [&]() -> Group& { return dynamic_cast<Group&>(trinket); };
        const auto member = [&]() -> OMTrinket& { return *all.at(text[0]); };
        const std::vector<int> more = numbersOf(text.substr(std::min<std::size_t>(text.size(), 2)));
        const Rect r = trinket.boundingRectangle();
        if (verb == "?")
            return hear(std::to_string(r.left) + "," + std::to_string(r.top) + "," +
                        std::to_string(r.right) + "," + std::to_string(r.bottom));
        if (verb == "z?") return hear(trinket.z());
        if (verb == "index") return hear(trinket.indexInWindow());
        if (verb == "cursors?") return hear(trinket.cursor() * 100 + trinket.grabCursor());
        if (verb == "flags")
            return hear(trinket.isMovable() * 100 + trinket.isTouchy() * 10 + trinket.isVisible());
        if (verb == "mask?") return hear(static_cast<int>(trinket.eventMask()));
        if (verb == "state") return hear(static_cast<int>(trinket.mouseState()));
        if (verb == "painted")
            return hear(static_cast<int>(std::exchange(dynamic_cast<Tile&>(trinket).painted, 0)));
        if (verb == "place") return trinket.place(n[0], n[1]);
        if (verb == "offset") return trinket.offset(n[0], n[1]);
        if (verb == "x") return trinket.setX(n[0]);
        if (verb == "z") return trinket.setZ(n[0]);
        if (verb == "top") return trinket.setTopLayer(0);
        if (verb == "visible") return trinket.setVisible(n[0] != 0);
        if (verb == "movable") return trinket.setMovable(n[0] != 0);
        if (verb == "touchy") return trinket.setTouchy(n[0] != 0);
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
        if (verb == "removeAll") return group().removeAll();
        if (verb == "show") return group().showMember(member(), more[0] != 0);
        if (verb == "member") return hear(nameOf(group().member(n[0])));
        if (verb == "count") return hear(static_cast<int>(group().memberCount()));
        ADD_FAILURE() << verb;
    }

    std::string out;
    int deeds = 0;
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
    a.movable=0 down=15,15 up=15,15 a:down:a.capture=1 down=15,15 move=50,50 a.? up=50,50 a.state
    a.capture=0,1 target move=51,51 a.capture=1,1 move=15,15
    => a.mouseDown default.up a.flyOn a.down a.mouseDown 10,10,20,20 a.mouseUp 2 . default.move
    => a.flyOff a.flyOn
    a.mask=396 move=15,15 under double=15,15 target down=15,15 move=18,18 a.? a.mask=2 up=18,18
    target mask=32 b=0,0,1,1 b.mask? mask=0
    => default.move a default.double . a.mouseDown default.move 10,10,20,20 default.up . 32
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

TEST_F(StageTest, WhoeverIsCalledMayDestroyAnything) {
    for (const std::string deed :
         {"a.gone", "b.gone", "c.gone", "a.gone+b.gone+c.gone+ground+d=5,5,60,60", "c.capture=1",
          "g.gone", "g.removeAll", "g.gone+a.gone+c.gone"})
        for (const bool grouped : {false, true}) {
            std::vector<std::string> calls(std::begin(kEvents), std::end(kEvents));
            if (!grouped) calls.insert(calls.end(), std::begin(kLinks), std::end(kLinks));
            for (const std::string& call : calls) {
                SCOPED_TRACE(call + " " + deed);
                const std::string heard = (grouped ? "g." : "a.") + call;
                const std::string seen = play(
                    "b=10,10,20,20 c=20,10,30,20 a=10,10,20,20 ground g=group " +
                    std::string(grouped ? "g.z=9 g.add=a,0 g.add=c,1 g:" : "a:") + call + ":" +
                    deed +
                    " move=15,15 double=15,15 up=15,15 down=15,15 move=16,16 up=16,16 move=25,15 "
                    "move=70,70 idle c.capture=0 a.gone target");
                EXPECT_NE((" " + seen).find(" " + heard), std::string::npos) << seen;
                EXPECT_TRUE(seen.ends_with(" .")) << seen;
                EXPECT_EQ(window.trinketCount(), 0u);
            }
        }
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    EXPECT_EQ(window.input().flyOverTrinket(), nullptr);
}

// Groups

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
              "a=10,10,20,20 b=30,30,45,40 g=group g.z=50 g.add=a,7 g.add=b,8,2 ");
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
    g.mask=1 move=15,15 down=15,15 up=15,15 double=15,15 move=70,70
    => added added default.move g.flyOn a.flyOn a.mouseDown g.mouseUp a.mouseUp g.dblClick
    => a.dblClick default.move g.flyOff a.flyOff
    g.mask=2 move=15,15 down=15,15 up=15,15 double=15,15 move=70,70
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown a.mouseUp g.dblClick
    => a.dblClick default.move g.flyOff a.flyOff
    g.mask=8 move=15,15 down=15,15 up=15,15 double=15,15 move=70,70
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown g.mouseUp a.mouseUp
    => a.dblClick default.move g.flyOff a.flyOff
    g.mask=128 move=15,15 down=15,15 up=15,15 double=15,15 move=70,70
    => added added default.move a.flyOn g.mouseDown a.mouseDown g.mouseUp a.mouseUp g.dblClick
    => a.dblClick default.move g.flyOff a.flyOff
    g.mask=256 move=15,15 down=15,15 up=15,15 double=15,15 move=70,70
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown g.mouseUp a.mouseUp
    => g.dblClick a.dblClick default.move a.flyOff
    g.remove=a g.add=a,7,-1 hit=15,15 hit=35,35 hit=25,25 down=15,15 move=16,15 b.?
    => added added added g b . g.mouseDown 31,30,46,40
    g.cursors=-3,-4 move=15,15 cursor a.gone cursor move=60,60
    => added added default.move g.flyOn a.flyOn -3 -1 default.move g.flyOff
    g.snap=16 down=15,15 move=16,15 a.gone move=26,15 b.? up=26,15 b.? target b.capture=1 b.gone
    target => added added g.mouseDown a.mouseDown 41,30,56,40 g.mouseUp 48,30,63,40 . .
    a:mouseDown:a.gone move=15,15 down=15,15 move=20,15 up=20,15 move=70,70 b.?
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown g.mouseUp g.flyOff
    => default.move 35,30,50,40
    a:mouseDown:a.gone g.movable=0 move=15,15 down=15,15 move=20,15 up=20,15 move=70,70 b.?
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown default.move g.flyOff
    => default.up default.move 30,30,45,40
    a:mouseUp:a.gone move=15,15 down=15,15 move=20,15 up=20,15 move=70,70 b.? target
    => added added default.move g.flyOn a.flyOn g.mouseDown a.mouseDown g.mouseUp a.mouseUp
    => g.flyOff default.move 35,30,50,40 .
    a:dblClick:a.gone move=15,15 double=15,15 up=15,15 move=70,70 b.? target
    => added added default.move g.flyOn a.flyOn g.dblClick a.dblClick default.up g.flyOff
    => default.move 30,30,45,40 .
    a:flyOff:a.gone move=15,15 move=70,70 b.? target
    => added added default.move g.flyOn a.flyOn default.move g.flyOff a.flyOff 30,30,45,40 .)",
              "a=10,10,20,20 b=30,30,45,40 g=group g.z=50 g.add=a,7 g.add=b,8,2 ");
}

// What no row shows

TEST_F(StageTest, HooksRunAtTheirPointsOfTheCycle) {
    std::string order;
    const auto note = [&](const char* text) { return [&order, text] { order += text; }; };
    Tile tile(window, {0, 0, 10, 10}, 10);
    tile.onStep = [&](std::uint32_t) { order += "step "; };
    window.hooks().first = note("first ");
    window.hooks().beforeAnimation = note("before ");
    window.hooks().afterAnimation = note("after ");
    window.hooks().beforeTrinkets = note("trinkets ");
    window.hooks().afterTrinkets = note("painted ");
    window.hooks().afterPresent = note("shown ");
    window.hooks().last = note("last ");
    window.hooks().input = [&](OMTrinketWindow::Input kind) {
        order += std::to_string(static_cast<int>(kind));
    };
    cycle();
    EXPECT_EQ(std::exchange(order, {}), "first before step after trinkets painted shown last ");
    cycle();
    EXPECT_EQ(std::exchange(order, {}), "first before step after last ");
    play("down=15,15 up=15,15 move=15,15 double=15,15 key disabled=1 down=15,15");
    EXPECT_EQ(order, "12340");
}

TEST_F(StageTest, FramesAreCountedOnceASecondInTheTitle) {
    Tile tile(window, {0, 0, 10, 10}, 10);
    for (int i = 0; i < 1000; ++i) {
        if (i < 40) tile.offset(1, 0);
        cycle();
    }
    EXPECT_EQ(machine.display().title, "Test") << "the last cycle has shown nothing";
    tile.offset(1, 0);
    cycle();
    EXPECT_EQ(machine.display().title, "41");
}

TEST_F(StageTest, ANewPaletteBlackensTheWindowOnlyWhenColoursChange) {
    Tile tile(window, {0, 0, 100, 80}, 10);
    OMPalette colors{};
    colors[100] = {0x1200, 0x3400, 0x5600};
    window.setPalette(colors, false);
    cycle();
    ASSERT_EQ(screenPixel(5, 5), 10);
    colors[100] = {0x12FF, 0x3400, 0x5600}; // the same high bytes
    colors[3] = {0x7700, 0, 0};             // not the game's
    window.setPalette(colors, true);
    EXPECT_EQ(screenPixel(5, 5), 10);
    colors[245] = {0x0100, 0x0200, 0};
    window.setPalette(colors, true);
    EXPECT_EQ(screenPixel(5, 5), 0);
    EXPECT_EQ(machine.display().palette()[100], (platform::Rgb{0x12, 0x34, 0x56}));
    EXPECT_EQ(window.backBuffer().getPaletteEntry(245).green(), 0x0200);
    EXPECT_EQ(machine.display().palette()[3], platform::staticPalette()[3]);
}

TEST_F(StageTest, TheClockStandsStillForPauses) {
    machine.clock().now = 5000;
    window.resetClock();
    machine.clock().now = 5300;
    window.addPauseTime(100); // no pause
    EXPECT_EQ(window.clock(), 300u);
    window.beginPause();
    window.addPauseTime(100);
    window.endPause();
    EXPECT_EQ(window.clock(), 200u);
    window.resetClock();
    std::uint32_t told = 1;
    Tile tile(window, {0, 0, 1, 1}, 10);
    tile.onStep = [&](std::uint32_t clock) { told = clock; };
    machine.clock().now += 7;
    window.idle();
    EXPECT_EQ(told, 7u);
}

TEST_F(StageTest, TrinketsMayOutliveTheirWindowAndBelongToOne) {
    auto other = std::make_unique<OMTrinketWindow>(Rect{0, 0, 100, 80}, nullptr, "");
    EXPECT_EQ(OMTrinketWindow::mainWindow(), &window);
    Tile tile(*other, {0, 0, 10, 10}, 10);
    Group group(window);
    EXPECT_FALSE(group.add(tile, 1));
    group.place(3, 4);
    group.setZ(50);
    const auto copy = group.duplicate();
    EXPECT_EQ(dynamic_cast<OMMultiTrinket&>(*copy).boundingRectangle(), (Rect{3, 4, 3, 4}));
    EXPECT_EQ(dynamic_cast<OMMultiTrinket&>(*copy).z(), 50);
    other->input().setFocus(tile);
    other.reset();
    tile.place(5, 5);
    tile.setZ(3);
    tile.setVisible(false);
    tile.setMouseCapture(true);
    tile.setMouseCapture(false);
    EXPECT_EQ(tile.indexInWindow(), -1);
    EXPECT_FALSE(tile.isShown());
}

// Cursors

struct CursorTest : StageTest {
    CursorTest() {
        OMTrinketWindow::setCursorLocator([](int id) -> std::shared_ptr<const OMCursor> {
            if (id < 1) return OMCursor::load(id);
            if (id > 9) return nullptr;
            return std::make_shared<const OMCursor>(id, buildCursor({CurPicture{}}));
        });
        tile.setCursors(kOMCursorText, kOMCursorCross);
    }
    ~CursorTest() override { OMTrinketWindow::setCursorLocator(nullptr); }
    int shown() { return machine.display().cursor; }
    Tile tile{window, {10, 10, 20, 20}, 10};
};

struct Follower final : OMTCursor {
    explicit Follower(int id) : OMTCursor(id) {}
    void moved(Point point) override { points.push_back(point); }
    std::vector<Point> points;
};

TEST_F(CursorTest, NewOnesOfATrinketAreSeenAtOnce) {
    const auto set = [this](std::optional<int> normal, std::optional<int> grab) {
        OMSetCursors(tile, normal, grab, "no locator");
        return std::vector<int>{shown(), tile.cursor(), tile.grabCursor()};
    };
    using Numbers = std::vector<int>;
    window.mouseMove({15, 15});
    EXPECT_EQ(shown(), kOMCursorText);
    EXPECT_EQ(set(kOMCursorWait, 2), (Numbers{kOMCursorWait, kOMCursorWait, 2}));
    window.mouseDown({15, 15});
    EXPECT_EQ(set(3, 4), (Numbers{4, 3, 4})) << "it is held";
    window.mouseUp({15, 15});
    EXPECT_EQ(set(5, {}), (Numbers{5, 5, 5}));
    EXPECT_EQ(set(77, 6), (Numbers{kOMCursorArrow, kOMCursorArrow, 6}))
        << "there is no such cursor";
    EXPECT_EQ(set({}, {})[2], OMTrinket::defaultGrabCursor);
    window.input().setCursorManagement(false);
    EXPECT_EQ(set(7, 8)[0], kOMCursorArrow);
    window.input().setCursorManagement(true);
    window.mouseMove({50, 50});
    EXPECT_EQ(set(9, 9)[0], OMTrinket::defaultCursor) << "the pointer is elsewhere";
    OMTrinketWindow::setCursorLocator(nullptr);
    EXPECT_EQ(set(1, 1)[1], 9);
    EXPECT_EQ(takeFailures(), Strings{"no locator"});
}

TEST_F(CursorTest, ACurrentCursorTakesThePlaceOfThoseOfTrinkets) {
    Follower first(1);
    Follower second(2);
    first.set(2);
    first.uninstall();
    EXPECT_EQ(takeFailures(),
              (Strings{"Setting non-current cursor", "Uninstalling non-current cursor"}));
    first.install(window);
    window.mouseMove({15, 15});
    EXPECT_EQ(shown(), 1);
    first.set(kOMCursorWait);
    EXPECT_EQ(shown(), kOMCursorWait);
    EXPECT_EQ(first.points, std::vector<Point>{Point(15, 15)});
    second.install(window);
    EXPECT_TRUE(second.imCurrent() && !first.imCurrent());
    EXPECT_EQ(shown(), 2);
    window.mouseMove({16, 15});
    EXPECT_EQ(first.points.size() * 10 + second.points.size(), 11u);
    second.uninstall();
    EXPECT_EQ(shown(), kOMCursorText) << "that of the trinket under the pointer";
    window.mouseDown({15, 15});
    first.install(window);
    EXPECT_EQ(shown(), kOMCursorWait) << "as it was set last";
    first.uninstall();
    EXPECT_EQ(shown(), kOMCursorCross) << "the trinket is held";
    EXPECT_TRUE(failures.empty());
    first.install(window);
    window.cursorMove() = {};
    first.set(2);
    EXPECT_EQ(shown(), kOMCursorWait);
    first.uninstall();
    EXPECT_FALSE(first.imCurrent());
    EXPECT_EQ(takeFailures(), Strings(2, "CursorMove link not set for current OMTCursor"));
}

TEST_F(CursorTest, ARowIsShownOverAndOverUntilItOrItsWindowEnds) {
    OMAnimCursor row({1, 2, 3}, 100);
    const auto pass = [&](std::uint32_t ms) {
        machine.clock().now += ms;
        app->tasks().runAll();
        return shown();
    };
    row.install(window);
    std::vector<int> seen{shown()};
    for (const std::uint32_t ms : {99, 1, 100, 150, 49, 1, 400}) seen.push_back(pass(ms));
    EXPECT_EQ(seen, (std::vector<int>{1, 1, 2, 3, 1, 1, 2, 3})) << "late pictures are passed over";
    row.uninstall();
    EXPECT_EQ(pass(100), OMTrinket::defaultCursor);
    {
        OMTrinketWindow other({0, 0, 20, 20}, nullptr, "");
        row.install(other);
        row.install(window);
        EXPECT_EQ(other.managedCursor(), nullptr);
        row.install(other);
    }
    EXPECT_FALSE(row.imCurrent());
    EXPECT_EQ(app->tasks().count(), 0u);
    pass(100);
    Follower(1).install(window);
    window.mouseMove({15, 15});
    EXPECT_EQ(shown(), kOMCursorText);
    EXPECT_TRUE(failures.empty());
}

} // namespace
