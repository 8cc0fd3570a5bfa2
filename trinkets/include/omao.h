// An animated object: the trinket that plays an animation resource (aoimage.h).
//
// A sequence is a little program. In each idle cycle whose time has come the animation runs its
// entries from the current position on until a frame was shown, or until it holds. Events and links
// are called in the middle of that and may destroy the animation or send it elsewhere; what they
// asked for then counts.
//
// The position of a trinket is its left upper corner. An animation also has an origin, from which
// each entry's dx and dy place its frame: moving the trinket moves the origin along.
#pragma once

#include "aodeep.h"
#include "aoimage.h"
#include "omtrinket.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

class OMIStream;

/// How often an animation plays a sound at the moment.
struct AOSoundRecord {
    int id = 0; ///< of the sound resource
    int plays = 0;
    bool isMissing = false; ///< there is no such sound; a loop would complain in every round
};

class OMAnimation : public OMSCopied<OMAnimation, OMTrinket> {
  public:
    static const OMSClass kClass;

    /// As a coordinate: the one embedded in the resource.
    static constexpr int kEmbedded = 11111;
    static constexpr int kLoopForever = -1; ///< repeat count
    static constexpr int kNoStop = -1;      ///< stop position
    static constexpr int kCurrent = -1;     ///< the current sequence or entry, where edited

    enum class State : std::uint8_t {
        Stopped = 0,
        Playing = 1,
        Held = 2,    ///< by a hold code, a pause, the end of the repeats, or until a sound ends
        Resumed = 3, ///< plays on in the next step, which sets the time anew
    };

    /// What the owner wants to hear of.
    struct PlayLinks {
        OMLink looped;
        OMLink finished; ///< at a hold or at the end, before the event "paused"
        OMLink allSoundsDone;
        OMLinkTo<void(int code)> marker; ///< before the event "special"
        OMLink stopAt;
    };

    /// Plays at once, unless the first entry of sequence 0 is a hold. `id` is the resource's. In a
    /// window whose back buffer is deeper than 8 bits, fatal without current palette record.
    OMAnimation(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    OMAnimation(const OMAnimation& other);
    ~OMAnimation() override;

    /// How the game makes every animation of a resource that somebody gives a place: `at`, or the
    /// embedded one while such places count for nothing. An image without frames has none embedded.
    template <class Class, class... Further>
    [[nodiscard]] static std::unique_ptr<Class> make(OMTrinketWindow& window,
                                                     std::shared_ptr<AOImage> image, int id,
                                                     platform::Point at, Further&&... further) {
        if (embeddedOnly_ && image->frameCount() > 0) at = {kEmbedded, kEmbedded};
        return std::make_unique<Class>(window, std::move(image), id, at.x, at.y,
                                       std::forward<Further>(further)...);
    }
    /// For the program itself; its birth is announced (OMSBirths). Null when there is no such
    /// resource, or a damaged one.
    [[nodiscard]] static std::unique_ptr<OMAnimation> create(int id, int x, int y,
                                                             OMTrinketWindow& window);
    /// From the bytes of an `ASEQ` resource, such as AOPack makes, with the id 0; null when they
    /// are damaged.
    [[nodiscard]] static std::unique_ptr<OMAnimation>
    createFromImage(std::span<const std::byte> resource, int x, int y, OMTrinketWindow& window);
    /// The image of a resource, shared by all who have it; null when there is none.
    [[nodiscard]] static std::shared_ptr<AOImage> locate(int id);
    /// For those who can go without: a blank image where there is no such resource, which numbers
    /// below 0 ask for.
    [[nodiscard]] static std::shared_ptr<AOImage> locateOrBlank(int id);
    /// How the `ASEQ` resource of an id is found.
    static void setSourceLocator(OMLinkTo<std::unique_ptr<OMIStream>(int id)> locator);
    [[nodiscard]] static bool hasSourceLocator() { return static_cast<bool>(locator_); }
    /// While on, the places that scripts and layouts give to animations count for nothing; off at
    /// first.
    static void setUseEmbeddedAnimationCoordinates(bool on) { embeddedOnly_ = on; }
    [[nodiscard]] static bool usesEmbeddedAnimationCoordinates() { return embeddedOnly_; }

    /// All animations there are, in the order of their making.
    [[nodiscard]] static OMList<OMAnimation>& all() { return all_; }

    // Queries.

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] int resourceId() const { return id_; }
    [[nodiscard]] int sequenceCount() const { return static_cast<int>(sequences_.size()); }
    [[nodiscard]] int sequenceIndex() const { return sequence_; } ///< from 0
    [[nodiscard]] int position() const { return position_; }      ///< the entry that comes next
    [[nodiscard]] int shownPosition() const { return shown_; }
    /// Entries before the terminating one.
    [[nodiscard]] int sequenceLength() const;
    /// Frame entries of the current sequence.
    [[nodiscard]] int frameCount() const;
    /// Of the frame shown, which an heir may draw other things around.
    [[nodiscard]] platform::Rect frameRectangle() const { return OMTrinket::boundingRectangle(); }
    /// From where the frames are placed by their dx and dy.
    [[nodiscard]] platform::Point origin() const;
    [[nodiscard]] int width() const { return boundingRectangle().width(); }
    [[nodiscard]] int height() const { return boundingRectangle().height(); }
    [[nodiscard]] int repeatCount() const { return repeatCount_; }
    [[nodiscard]] int framesPerSecond() const { return framesPerSecond_; }
    [[nodiscard]] int drawDirection() const { return direction_; }
    [[nodiscard]] bool isSoundOn() const { return soundOn_; }
    [[nodiscard]] bool isSoundSync() const { return soundSync_; }
    [[nodiscard]] PlayLinks& playLinks() { return playLinks_; }

    // Playing.

    void play();
    void pause();
    void resume();
    void stop();
    /// Stops; who waits for its end waits no longer.
    void endPlayback();
    void forever();
    /// n > 0: n times in all, then hold on the last frame; 0: until the sequence ends itself.
    void setRepeatCount(int count) { repeatCount_ = count; }
    /// 0: each frame entry carries its duration. Negative rates count as 0.
    void setFramesPerSecond(int rate);
    void setSoundOn(bool on);
    void setSoundSync(bool on) { soundSync_ = on; }
    void setCatchUp(bool on) { catchUp_ = on; }
    void setDrawDirection(int direction);
    /// A sequence that does not exist fails a check and changes nothing. Without `restart` the
    /// position stays as far as the new sequence goes.
    void setSequence(int index, bool restart);
    /// Goes to an entry and shows the first frame from there on.
    void setPosition(int position);
    /// The stopAt link is called once, when playback has come to that position.
    void setStopPosition(int position) { stopPosition_ = position; }

    // Editing. Wrong indices and positions fail a check, and nothing changes. The first edit of a
    // sequence makes the animation's own copy of it, which others do not see. An entry that is
    // replaced in a sequence without such a copy changes in the image: every animation that shares
    // it sees the new one. Playback goes on with the entry that was next before; when the entry of
    // the frame shown is deleted, the next frame behind it is shown.

    /// A missing end is added. Returns the index.
    int addSequence(AOSequence entries);
    /// Instead of the current sequence the one that takes its place is shown, or the last one.
    void deleteSequence(int index = kCurrent);
    void replaceEntry(const AOEntry& entry, int position = kCurrent);
    void deletePosition(int position = kCurrent);
    /// Before the entry at `position`, which may be the end.
    void insertEntry(const AOEntry& entry, int position);
    [[nodiscard]] std::optional<AOEntry> entryAt(int position) const;

    struct NextSound {
        AOSoundRecord* record; ///< lives as long as the animation
        int id;
        int frame; ///< number of the frame it follows, from 1; 0 before the first one
        int position;
    };
    /// The first sound entry of the sequence behind `position` (-1: from its start on).
    [[nodiscard]] std::optional<NextSound> nextSound(int position);

    // Colours.

    /// For canvases deeper than 8 bits. Null fails a check and changes nothing.
    void setPalette(std::shared_ptr<AOPaletteRecord> palette);
    [[nodiscard]] const std::shared_ptr<AOPaletteRecord>& palette() const { return palette_; }
    // These change this animation's picture and that of its later copies. A box says so when the
    // back buffer has not 8 bits.
    void replaceColorIndex(std::uint8_t from, std::uint8_t to);
    void swapColorIndices(std::uint8_t first, std::uint8_t second);

    // For scripts; all numbers from 1.

    [[nodiscard]] int frameNumber() const;
    void setFrameNumber(int number);
    [[nodiscard]] int sequenceNumber() const { return sequence_ + 1; }
    void setSequenceNumber(int number);
    /// A field of the current entry; which one is the next argument: 0 or 1 the code, 2 dx, 3 dy,
    /// 4 the argument. Empty for any other number.
    [[nodiscard]] std::string param() const;
    void setParam(int value);
    /// Leaves a picture of the frame shown in the background, under all trinkets; see
    /// OMTrinketWindow::stamp.
    void stamp();
    /// Takes its latest stamp out of the background again.
    void unstamp();

    void step(std::uint32_t clock) override;
    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    /// Paints what is shown on any canvas, the left upper corner of its bounding rectangle at `at`.
    virtual void paintAt(OMMemCanvas& canvas, platform::Point at);
    /// Whether the frame has an opaque pixel there.
    [[nodiscard]] bool containsPoint(platform::Point point) const override;

  protected:
    void onRetire() override;

    struct ScriptArguments {
        OMTrinketWindow* window;
        int id;
        int x = kEmbedded;
        int y = kEmbedded;
        std::optional<platform::Point> size{}; ///< width and height
        std::optional<int> z{};
    };
    /// Of a script: "id [z]" or "id x y z", where kEmbedded is a coordinate too; for those who can
    /// do `withSize` also "id x y width height [z]".
    [[nodiscard]] static ScriptArguments readArguments(bool withSize = false);
    /// An object of a class, in the main window. Null without the window or the image.
    template <class Class>
    [[nodiscard]] static std::unique_ptr<Class> createFrom(const ScriptArguments& arguments,
                                                           std::shared_ptr<AOImage> image) {
        if (!arguments.window || !image) return nullptr;
        auto object = make<Class>(*arguments.window, std::move(image), arguments.id,
                                  platform::Point{arguments.x, arguments.y});
        if (arguments.z) object->setZ(*arguments.z);
        return object;
    }
    template <class Class>
    [[nodiscard]] static std::unique_ptr<Class> createFromArguments() {
        const ScriptArguments arguments = readArguments();
        return createFrom<Class>(arguments, arguments.window ? locate(arguments.id) : nullptr);
    }

    /// Plays another image from its start on, at the same origin. Sounds of the old one end, and
    /// who waits for it is told.
    void changeImage(std::shared_ptr<AOImage> image, int id);
    [[nodiscard]] bool hasFrames() const { return image_->frameCount() > 0; }

    /// Called in a step after each frame entry that was shown. The animation may be destroyed in
    /// it.
    virtual void frameShown() {}
    /// Called before another picture is shown, or the same one elsewhere in its place.
    virtual void pictureChanges() { markChanged(); }
    /// The frame shown, its left upper corner at `at`.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at);

  private:
    struct Sequence {
        int inImage = 0;
        std::unique_ptr<AOSequence> own; ///< null: the image's is used
    };

    [[nodiscard]] const AOSequence& entriesOf(const Sequence& sequence) const;
    [[nodiscard]] const AOSequence& entries() const;
    /// The own copy of the current sequence, made by its first edit.
    AOSequence& editableEntries();
    /// The end for a position that does not exist.
    [[nodiscard]] AOEntry at(int position) const;
    void entryReplaced(int position);
    [[nodiscard]] int nextPosition() const;
    void replaceInImage(int sequence, int position, const AOEntry& entry);
    [[nodiscard]] AOSoundRecord& soundRecord(int id);

    void fetchPalette();
    void prepareDeepFrames();
    void useImage(std::shared_ptr<AOImage> image, int id);
    void silence();
    /// For canvases as deep as this one, deeper than 8 bits; null after a failed check.
    [[nodiscard]] AODeepFrames* deepFrames(const OMCanvas& canvas);
    [[nodiscard]] int windowDepth() const;
    void recolour(const AOColorMap& map);
    [[nodiscard]] const AOFrame& frame() const { return image_->frame(shownFrame_); }
    [[nodiscard]] std::uint32_t durationMs(const AOEntry& entry) const;

    void restart();
    void rewind();
    void goTo(int position);
    void show(int position);

    // Each runs one entry and tells whether the step goes on with the next one.
    bool runEntry(std::uint32_t clock);
    bool runFrame(const AOEntry& entry, std::uint32_t clock);
    bool runSound(const AOEntry& entry);
    bool runHold();
    bool runEnd();
    bool runLoop();
    bool runMarker(const AOEntry& entry);
    bool advance();
    void passStop();
    void holdOnLastFrame();

    void startSound(int id);
    void soundEnded(unsigned sound, AOSoundRecord& record);
    void soundsSilent();
    void finish();

    static OMLinkTo<std::unique_ptr<OMIStream>(int id)> locator_;
    static AOImageStore store_;
    static inline bool embeddedOnly_ = false;

    static inline OMList<OMAnimation> all_;

    std::shared_ptr<AOImage> image_;
    int id_;
    std::vector<Sequence> sequences_;
    int framesPerSecond_;

    int sequence_ = 0;
    int position_ = 0;
    int shown_ = 0;   ///< position of the frame that is shown
    int current_ = 0; ///< the entry that scripts see: the one being run, else the one shown
    int shownFrame_ = -1;
    platform::Point shownOffset_{}; ///< dx and dy of the entry shown
    unsigned jumps_ = 0;            ///< counts changes of position from outside of a step
    bool stepping_ = false;         ///< a handler may run another idle cycle of the window
    bool lapped_ = false;           ///< went back to the start in this step, without a frame since

    State state_ = State::Playing;
    std::optional<std::uint32_t> dueMs_; ///< window clock
    int repeatCount_ = 0;
    bool soundOn_ = true;
    bool soundSync_ = true; ///< hold while a sound of the sequence plays
    bool catchUp_ = true;   ///< late frames follow each other faster, so that no time is lost
    int direction_ = 0;

    static constexpr unsigned kNoSound = 0;
    int playingSounds_ = 0;
    unsigned lastSound_ = kNoSound;    ///< sounds are numbered as they start
    unsigned awaitedSound_ = kNoSound; ///< held until it ends
    bool pendingFinish_ = false;
    int stopPosition_ = kNoStop;
    PlayLinks playLinks_;
    std::unordered_map<int, AOSoundRecord> soundRecords_; ///< by sound id

    std::shared_ptr<AOPaletteRecord> palette_;
    std::shared_ptr<AODeepFrames> deepFrames_; ///< null until they are needed
};
