// An animated object: the trinket that plays an animation resource (aoimage.h). The player
// (aoplayer.h) steps through its sequences, the picture (aopicture.h) is what it shows.
//
// The position of a trinket is its left upper corner. An animation also has an origin, from which
// each entry's dx and dy place its frame: moving the trinket moves the origin along.
#pragma once

#include "aopicture.h"
#include "aoplayer.h"
#include "omtrinket.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

class OMAnimation : public OMSCopied<OMAnimation, OMTrinket>, public AOPlayer {
  public:
    static const OMSClass kClass;

    /// As a coordinate: the one embedded in the resource.
    static constexpr int kEmbedded = 11111;

    /// Plays at once, unless the first entry of sequence 0 is a hold. `id` is the resource's. In a
    /// window whose back buffer is deeper than 8 bits, fatal without current palette record.
    OMAnimation(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    OMAnimation(const OMAnimation& other) = default;
    ~OMAnimation() override { retire(); }

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
    /// While on, the places that scripts and layouts give to animations count for nothing; off at
    /// first.
    static void setUseEmbeddedAnimationCoordinates(bool on) { embeddedOnly_ = on; }
    [[nodiscard]] static bool usesEmbeddedAnimationCoordinates() { return embeddedOnly_; }

    [[nodiscard]] int resourceId() const { return id_; }
    /// Of the frame shown, which an heir may draw other things around.
    [[nodiscard]] platform::Rect frameRectangle() const { return OMTrinket::boundingRectangle(); }
    /// The left upper one of that.
    [[nodiscard]] platform::Point corner() const {
        return {frameRectangle().left, frameRectangle().top};
    }
    /// From where the frames are placed by their dx and dy.
    [[nodiscard]] platform::Point origin() const;
    [[nodiscard]] int width() const { return boundingRectangle().width(); }
    [[nodiscard]] int height() const { return boundingRectangle().height(); }

    /// Stops; who waits for its end waits no longer.
    void endPlayback();

    [[nodiscard]] int drawDirection() const { return picture_.direction(); }
    void setDrawDirection(int direction);
    /// For canvases deeper than 8 bits. Null fails a check and changes nothing.
    void setPalette(std::shared_ptr<AOPaletteRecord> palette);
    [[nodiscard]] const auto& palette() const { return picture_.palette(); }
    // These change this animation's picture and that of its later copies. A box says so when the
    // back buffer has not 8 bits.
    void replaceColorIndex(std::uint8_t from, std::uint8_t to);
    void swapColorIndices(std::uint8_t first, std::uint8_t second);

    /// For scripts: a field of the current entry; which one is the next argument: 0 or 1 the code,
    /// 2 dx, 3 dy, 4 the argument. Empty for any other number.
    [[nodiscard]] std::string param() const;
    void setParam(int value);
    /// Leaves a picture of the frame shown in the background, under all trinkets; see
    /// OMTrinketWindow::stamp.
    void stamp();
    /// Takes its latest stamp out of the background again.
    void unstamp();

    void step(std::uint32_t clock) override { playStep(clock); }
    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    /// Paints what is shown on any canvas, the left upper corner of its bounding rectangle at `at`.
    virtual void paintAt(OMMemCanvas& canvas, platform::Point at);
    /// Whether the frame has an opaque pixel there.
    [[nodiscard]] bool containsPoint(platform::Point point) const override;

  protected:
    void onRetire() override;

    /// What scripts make a picture of, with the place that its resource was given or with another.
    static constexpr std::string_view kArguments = "animation [z] | animation x y z";
    struct ScriptArguments {
        OMTrinketWindow* window;
        int id;
        int x = kEmbedded;
        int y = kEmbedded;
        std::optional<platform::Point> size{}; ///< width and height
        std::optional<int> z{};
    };
    /// Of a script: "animation [z]" or "animation x y z", where kEmbedded is a coordinate too; for
    /// those who can do `withSize` also "animation x y width height [z]".
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
        return createFrom<Class>(arguments,
                                 arguments.window ? AOImage::locate(arguments.id) : nullptr);
    }

    /// Plays another image from its start on, at the same origin. Sounds of the old one end, and
    /// who waits for it is told.
    void changeImage(std::shared_ptr<AOImage> image, int id);
    [[nodiscard]] bool hasFrames() const { return picture_.image().frameCount() > 0; }

    /// Called before another picture is shown, or the same one elsewhere in its place.
    virtual void pictureChanges() { markChanged(); }
    /// The frame shown, its left upper corner at `at`.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at) {
        picture_.draw(canvas, clip, at);
    }

  private:
    void showEntry(const AOEntry& entry) override;
    void markerReached() override { fireEvent("special"); }
    void vanish() override { setVisible(false); }
    void tellFinished() override;

    [[nodiscard]] int windowDepth() const;
    void recolour(const char* what, std::uint8_t first, std::uint8_t second, bool both);

    static inline bool embeddedOnly_ = false;

    int id_;
    AOPicture picture_;
    platform::Point shownOffset_{}; ///< dx and dy of the entry shown
};
