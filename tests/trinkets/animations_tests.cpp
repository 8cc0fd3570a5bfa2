// How animations play and what their handlers and editors may do meanwhile: rows of a sequence, of
// what is done to it, and of what is then seen and heard.
#include "trinkets/windowfixture.h"
#include "wordtable.h"

#include "aosounds.h"
#include "omsarguments.h"
#include "omsregistry.h"
#include "ranimation.h"

#include <cstdio>

using namespace testing_support;
using platform::Rect;
using State = OMAnimation::State;

namespace {

/// "a30+5+6": frame a (0) for 30 ms, its offset 5, 6; "!500+42": the code -500 with the argument
/// 42; "S7": sound 7; H, L, E: hold, loop, end.
AOEntry entryOf(const std::string& text) {
    int number = 0;
    int x = 0;
    int y = 0;
    std::sscanf(text.c_str() + 1, "%d%d%d", &number, &x, &y);
    switch (text[0]) {
    case 'H': return entry(-4);
    case 'L': return entry(-2);
    case 'E': return entry(-1);
    case 'S': return entry(-101, number);
    case '!': return entry(-number, x);
    default: return entry(text[0] - 'a', number, x, y);
    }
}
/// Sequences end with "/".
std::vector<AOSequence> sequencesOf(std::istream& in) {
    std::vector<AOSequence> all(1);
    for (std::string word; in >> word && word != "|";) {
        const auto star = word.find('*'); // so many of them
        if (word == "/")
            all.emplace_back();
        else
            all.back().insert(all.back().end(),
                              star < word.size() ? std::stoul(word.substr(star + 1)) : 1,
                              entryOf(word));
    }
    return all;
}

class AnimationTest : public WindowTest, private AOSounds {
  protected:
    AnimationTest() { OMSRegistry::global().registerClass(RAnimation::kClass); }
    ~AnimationTest() override { OMSRegistry::global().unregisterAll(); }

    /// Rows of "SEQUENCES | WORDS => SEEN". Frames 0 to 3 are blocks of the colours a to d.
    void expectAll(const char* table) {
        for (const auto& [row, expected] : rowTable(table, " ")) {
            std::istringstream in(row);
            AseqBuilder builder;
            for (const char frame : {'a', 'b', 'c', 'd'}) builder.block(10, 10, frame);
            builder.sequences = sequencesOf(in);
            image = builder.image();
            all.clear();
            playing.clear();
            out.clear();
            now = 0;
            AOSounds::setCurrent(this);
            deeds = heard = busy = 0;
            add();
            for (std::string word; in >> word && current();) {
                const OMUnderWay underWay;
                perform(word);
            }
            flush();
            static constexpr const char* kStates[] = {"Stopped", "Playing", "Held", "Resumed"};
            if (heard > kMostHeard) out += std::to_string(heard) + " ";
            out += current() ? kStates[static_cast<int>(current()->state())] : "gone";
            EXPECT_EQ(out, expected) << row;
        }
        all.clear();
    }

  private:
    RAnimation* current() { return all.at(which).get(); }
    /// The animations of a row share their image.
    void add() { add(std::make_unique<RAnimation>(window, image, 1, 0, 0)); }
    void add(std::unique_ptr<RAnimation> made) {
        which = all.size();
        all.push_back(std::move(made));
        current()->announceBorn("RAnimation");
        for (const char* event :
             {"looped", "finished", "marker", "paused", "special", "frameNotify"})
            listen(event);
    }
    /// The event, or the link, is heard of, and something is done then.
    void listen(const std::string& event, const std::string& deed = {}) {
        const auto act = [this, event, deed] {
            if (event != "marker" || !deed.empty()) hear(event);
            if (!deed.empty() && ++deeds < 20) perform(std::string(deed));
        };
        OMAnimation::PlayLinks& links = current()->playLinks();
        if (event == "looped") links.looped = act;
        if (event == "finished") links.finished = act;
        if (event == "stopAt") links.stopAt = act;
        if (event == "silent") links.allSoundsDone = act;
        if (event == "marker")
            links.marker = [this, act](int code) {
                hear(std::to_string(code));
                act();
            };
        if (event == "completed") current()->setCompletionLink(act);
        if (event == "frame") current()->addFrameListener([act](RAnimation::FrameNews) { act(); });
        current()->attachHandler(event, act);
    }
    std::string property(const std::string& name) { return current()->getProperty(name).value(); }
    void hear(const std::string& what) {
        flush();
        if (++heard <= kMostHeard) out += what + " ";
    }
    void flush() {
        if (ms > 0) out += color + std::to_string(ms) + " ";
        ms = 0;
    }
    /// What is seen at each millisecond.
    void playUntil(std::uint32_t end) {
        for (; now < end && current(); ++now) {
            current()->step(0xFFFFFFF0U + now); // the clock wraps
            if (!current()) return;
            const char shown = shownColor();
            if (shown != color) flush();
            color = shown;
            ++ms;
        }
    }
    char shownColor() {
        OMMemCanvas canvas(60, 60, 8);
        current()->paint(canvas, OMRegion(canvas.bounds()));
        const Rect r = current()->boundingRectangle();
        if (!current()->isVisible()) return '-';
        return r.empty() ? '.' : static_cast<char>(*canvas.pixels().at(r.left, r.top));
    }
    void perform(const std::string& word) {
        carryOut(word);
        for (const std::string& failure : takeFailures()) hear("!" + failure);
    }
    void carryOut(const std::string& word) {
        const auto colon = word.find(':');
        const auto equals = word.find('=');
        const std::string text = equals < word.size() ? word.substr(equals + 1) : "";
        const std::string verb = word.substr(0, equals);
        const int number = std::atoi(text.c_str());
        RAnimation* const a = current(); // null when it is gone
        const auto byte = [&](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
        const bool here = text.empty();
        if (word[0] == '+') return void(now += static_cast<std::uint32_t>(std::stoi(word))); // late
        if (std::isdigit(word[0])) return playUntil(static_cast<std::uint32_t>(std::stoi(word)));
        if (colon < word.size()) return listen(word.substr(0, colon), word.substr(colon + 1));
        if (word == "kill") return void(all[which] = nullptr);
        if (word == "another") return add();
        if (word == "copy")
            return add(std::unique_ptr<RAnimation>(
                static_cast<RAnimation*>(a->makeDuplicate().release())));
        if (verb == "to") return void(which = static_cast<std::size_t>(number));
        if (word == "seen") return hear(std::string(1, shownColor()));
        if (word == "at") return hear("at " + property("x") + "," + property("y"));
        if (word == "next?") return hear("next" + std::to_string(a->position()));
        if (word == "codes") {
            std::string codes;
            for (int i = 0; i < a->sequenceLength(); ++i)
                codes += std::to_string(a->entryAt(i)->code) + ",";
            return hear(codes + std::to_string(a->sequenceIndex()) + "/" +
                        std::to_string(a->sequenceCount()));
        }
        if (verb == "repeat") return a->setRepeatCount(number);
        if (word == "forever") return a->forever();
        if (verb == "late") return a->setCatchUp(number == 0);
        if (verb == "sync") return a->setSoundSync(number != 0);
        if (verb == "stop") return here ? a->stop() : a->setStopPosition(number);
        if (verb == "seq") return a->setSequence(number, true);
        if (verb == "place") return a->place(number, number + 1);
        if (verb == "pos") return a->setPosition(number);
        if (verb == "silence") return playing.extract(number).mapped()();
        if (word == "mute") return AOSounds::setCurrent(nullptr);
        if (verb == "del") return a->deletePosition(here ? OMAnimation::kCurrent : number);
        if (verb == "delSeq") return a->deleteSequence(here ? OMAnimation::kCurrent : number);
        if (verb == "recolor") return a->replaceColorIndex(byte(0), byte(1));
        if (verb == "swap") return a->swapColorIndices(byte(0), byte(1));
        const std::string last = text.substr(text.find(',') + 1);
        const bool next = text[0] == '.';
        if (verb == "ins") return a->insertEntry(entryOf(last), next ? a->position() : number);
        if (verb == "rep")
            return a->replaceEntry(entryOf(last), next ? OMAnimation::kCurrent : number);
        if (verb == "addSeq")
            return void(a->addSequence(here ? AOSequence{} : AOSequence{entryOf(text), entry(-2)}));
        if (verb == "code") {
            if (const auto found = a->entryAt(number)) hear(std::to_string(found->code));
            return;
        }
        if (equals == word.npos && word.back() != '?')
            return void(a->invoke(word, {}) || (hear("refused " + word), true));
        const auto dot = verb.find('.'); // a property, perhaps with an index
        const std::string name = verb.substr(0, std::min(dot, verb.find('?')));
        OMSArguments::global().clear();
        if (dot < verb.size()) OMSArguments::global().push(verb.substr(dot + 1, 1));
        if (equals == word.npos) return hear(property(name));
        a->setProperty(name, text);
    }

    // Sounds. 404 is missing, 405 cannot be played at first, 1 ends while it is being started.
    Start play(AOVoice&, int id, OMLink done) override {
        hear("sound" + std::to_string(id));
        if (id == 404) return Start::Never;
        if (id == 405 && ++busy == 1) return Start::NotNow;
        if (id == 1)
            done();
        else
            playing[id] = std::move(done);
        return Start::Plays;
    }
    void stop(AOVoice&) override { playing.clear(); }
    void pause(AOVoice&) override {}
    void resume(AOVoice&) override {}
    void forget(AOVoice&) override { EXPECT_TRUE(playing.empty()); }

    std::shared_ptr<AOImage> image;
    std::vector<std::unique_ptr<RAnimation>> all;
    std::size_t which = 0;
    std::map<int, OMLink> playing;
    std::uint32_t now = 0;
    std::string out;
    char color = 0;
    int ms = 0;
    static constexpr int kMostHeard = 20;
    int heard = 0;
    int deeds = 0;
    int busy = 0;
};

TEST_F(AnimationTest, SequencesArePlayedByTheirCodes) {
    expectAll(R"(
    a30 b50 !3 c20 L | 100 => a30 b50 c20 Playing
    a30 b50 !3 c20 L | framerate=30 100 => a33 b33 c33 looped a1 Playing
    a10 b10 E | 100 => a10 b10 finished paused -80 Stopped
    a10 b10 E | repeat=2 100 => a10 b10 looped a10 b10 finished paused b60 Held
    a30 b50 !3 c20 L | repeat=2 150 => a30 b50 c20 looped a30 b20 Playing
    a10 b10 E | framerate=50 forever 100 => a20 b20 looped a20 b20 looped a20 Playing
    a10 H b10 L | 50 => a10 finished paused a40 Held
    a10 H b10 L | forever 50 => a10 b10 looped a10 b10 looped a10 Playing
    H a10 b10 L | 50 => a50 Held
    a10 H b10 c10 L | 20 resume 25 pause 100 resume 130 stop resume 150 play 165
    => a10 finished paused a10 b80 c10 looped a10 finished paused a30 b10 c5 Playing
    a10 H b10 c10 L | stop pause 10 framerate=100 play 35 framerate=-3 framerate?
    => a20 finished paused a15 0 Held
    a10 b10 c10 d10 H | 10 +25 40 => a10 b1 c1 d3 Playing
    a10 b10 c10 d10 H | late=1 10 +25 60 => a10 b10 c10 d5 Playing
    a10 !500+42 !499 b10 L | special:param.4? 15 => a10 -500 special 42 b5 Playing
    a10 b10 c10 L E | stopAt:pause stop=2 50 resume 100 stop=0 140
    => a10 stopAt b40 c10 looped a10 b10 c10 looped a10 b10 c10 looped stopAt c20 Held
    a10+3+4 b10+20+0 L E | at 15 at place=40 at x? 25 at
    => at 3,4 a10 b5 at 20,0 at 40,41 40 b5 looped a5 at 23,45 Playing
    b10+3-3 b10 H | param.0? param.2? param.3? param.4? param.5? param.4=70000 param.4? copy
    param.4? another param.4? => 1 3 -3 10  4464 4464 10 Playing
    !77 a !77 b c H / d H | frame? frameCount? frame=3 seen frame? frame=0 frame=4 frame=-1
    frame=-2147483648 seen sequence=2 seen sequence? sequence=0 sequence=3 sequence=-2147483648
    => 1 3 c 3 c d 2 !Invalid sequence !Invalid sequence !Invalid sequence Playing
    a10 !77 b10 L E | 15 frameNotification=1 frame: 25 frameNotification? 35 frameNotification=2
    frameNotification? 45 => a10 b10 looped frameNotify frame a5 1 a5
    => frameNotify frame b5 0 b5 looped frame a5 Playing
    a10 b10 H E | completed: 25 => a10 b10 finished paused completed b5 Held
    a10 b10 H E | completed: finished:completed: 25 seq=0 50
    => a10 b10 finished paused completed b5 a10 b10 finished paused completed b5 Held)");
}

TEST_F(AnimationTest, HandlersMaySendTheAnimationElsewhereOrDestroyIt) {
    expectAll(R"(
    a10 !500 b10 E / c10 H d10 H | special:sequence=2 40 paused:play play 70
    => a10 -500 special c11 finished paused c19 d10 finished paused finished paused
    => -11 finished paused -9 Playing
    a10 H b10 c10 H | paused:pos=2 25 next? => a10 finished paused b15 next2 Held
    !500 L | paused:play repeat=2 3
    => -500 special looped -500 special finished paused .1 -500 special looped
    => -500 special looped .1 -500 special looped -500 special looped .1 Playing
    a1 !500 b1 L | marker:kill 9 => a1 -500 marker gone
    a1 !500 b1 L | frame:kill 9 => frame frame gone
    a1 !500 b1 L | stopAt:kill stop=2 9 => a1 -500 special stopAt gone
    a1 !500 b1 L | stopAt:kill stop=0 9 => a1 -500 special b1 looped stopAt gone
    a1 b1 L | looped:kill repeat=1 finished:kill 9 => a1 b1 finished gone)");
}

TEST_F(AnimationTest, WithoutFramesAStepIsAtMostTwoRounds) {
    expectAll(R"(
    | 1 => finished paused -1 Stopped
    !500 L | 1 => -500 special looped -500 special looped .1 Playing
    !32768 | 1 => -32768 special finished paused -1 Stopped
    !499 !5 L | 1 => looped looped .1 Playing
    !700*32000 L | 1
    => -700 special -700 special -700 special -700 special -700 special -700 special -700
    => special -700 special -700 special -700 special .1 128002 Playing
    S404*32000 L | 1 => sound404 looped looped .1 Playing
    z99 z32767 L | 1 => .1 Playing
    !500 L | repeat=3 5
    => -500 special looped -500 special looped .1 -500 special finished paused .4 Held
    | repeat=3 5 => looped looped .1 finished paused .4 Held)");
}

TEST_F(AnimationTest, SoundsHoldThePlaybackInSync) {
    expectAll(R"(
    a10 S7 b10 S404 c10 S1 d10 H | 500 silence=7 550
    => a10 sound7 a490 b10 sound404 c10 sound1 c1 d10 finished paused d19 Held
    a10 S1 b10 c H | silent:pos=3 30 => a10 sound1 silent c2 finished paused c18 Held
    a10 S1 b10 c H | silent:kill 30 => a10 sound1 silent gone
    S7 a10 H b10 H | sync=0 1 sync=1 15 silence=7 20 => sound7 a15 finished paused a5 Held
    S7 a10 H b10 H | sync=0 1 sync=1 15 play silence=7 20 => sound7 a15 b5 Playing
    S405 a10 L | 30 => sound405 a10 looped sound405 a20 Held
    a10 S7 b10 S8 H | 20 soundOn=0 50 mute soundOn=1 seq=0 80
    => a10 sound7 a10 b10 finished paused b20 a10 b10 finished paused b10 Held
    S7 a10 S8 b10 H | 10 resume 40 silence=7 42 pause silence=8 45 => sound7 a20 sound8 a25 Held)");
}

TEST_F(AnimationTest, SequencesAreEditedWhileTheyPlay) {
    expectAll(R"(
    a b c L / d L | del=-2 del=4 rep=-2,d rep=4,d ins=-2,d ins=-1,d ins=5,d code=-2 code=5 code=4
    delSeq=-2 delSeq=2 codes
    => !Invalid sequence position !Invalid sequence position !Invalid sequence position
    => !Invalid sequence position !Invalid sequence position !Invalid sequence position
    => !Invalid sequence position !Invalid sequence position !Invalid sequence position -1
    => !Invalid sequence !Invalid sequence 0,1,2,-2,0/2 Playing
    a b c L | another to=0 ins=4,d10 del=1 copy to=0 del=0 codes to=2 codes to=1 codes another codes
    => 2,-2,3,0/1 0,2,-2,3,0/1 0,1,2,-2,0/1 0,1,2,-2,0/1 Playing
    a10 b10 c10 L / d L | another another ins=3,!77 another seq=1 to=0 1 rep=.,d10 seen to=1 seen
    to=2 seen to=3 seen another seen to=2 rep=0,c10 codes to=0 codes
    => a1 d d a d d 2,1,2,-77,-2,0/2 3,1,2,-2,0/2 Playing
    a10 b10 c10 L | 10 ins=0,d10 seen frame? 30 del=0 50 ins=.,d10 70 del codes 90
    => a10 a 2 b10 c10 looped a10 b10 d10 c10 0,1,3,-2,0/1 looped a10 b10 Playing
    a10 !500 b10 L | marker:del 15 codes => a10 -500 marker special a1 b4 0,1,-2,0/1 Playing
    a10 !500 b10 L | marker:ins=.,!501 15 codes
    => a10 -500 marker special b5 0,-501,-500,1,-2,0/1 Playing
    a10 H b10 c10 L | 11 del=0 seen play 25 => a10 finished paused a1 b b10 c4 Playing
    a10 b10 L | another to=0 1 param.1=3 param.2=40 seen at to=1 seen => a1 d at 40,0 a Playing
    a10 b10 L / d10 b L | another to=0 addSeq= addSeq=d10 codes to=1 codes to=0 seq=2 code=0 codes
    seq=3 15 delSeq=0 codes 20 next? delSeq=1 codes next? delSeq codes delSeq=0 codes 30 ins=0,a del
    addSeq=b10 seq=0 visible=1 seen codes
    => 0,1,-2,0/4 0,1,-2,0/2 -1 2/4 d10 looped d5 3,-2,2/3 d5 next1 3,-2,1/2 next1 3,1,-2,0/1
    => 0/0 finished paused -10 !Invalid sequence !Invalid sequence position b 1,-2,0/1 Playing
    a10 b10 c10 L | another to=0 recolor=ax seen to=1 seen to=0 swap=xb 30 copy to=0 recolor=cy seen
    to=2 seen to=1 rep=0,d10 codes to=0 codes
    => x a b10 x10 c10 y c 3,1,2,-2,0/1 3,1,2,-2,0/1 Playing)");
}

TEST_F(AnimationTest, OpaquePixelsAreHitAsTheyAreTurned) {
    const auto picture = AseqBuilder().frame({"a.c"}).sequence({entry(-4), entry(0)}).image();
    RAnimation a(window, picture, 1, 20, 20);
    for (const auto& [direction, hits] : {std::pair(0, "x..."), {5, "..x."}}) {
        a.setDrawDirection(direction);
        cycle();
        std::string seen;
        for (const auto& [x, y] : {std::pair(22, 20), {21, 20}, {20, 22}, {23, 20}})
            seen += window.input().hitTest({x, y}) ? 'x' : '.';
        EXPECT_EQ(seen, hits);
    }
    EXPECT_EQ(a.width() * 10 + a.height(), 13);
    EXPECT_EQ(pixelsOf(window.canvas(), {20, 20, 23, 23}), "a../.../c../");
}

} // namespace
