// A movie. Frame by frame it goes straight onto the window's canvas, or, collecting, into a canvas
// of its own that the window composes like the picture of any trinket.
//
//     m=RSmackerMovie file x y [extraBuffer] [useMoviePalette] [collect]
//
// Straight playback has the screen for itself: the window rests, the mouse cursor is hidden, and
// each frame copies just what it changed. The window's back buffer knows nothing of it, so at the
// end the window composes anew all that was covered.
//
// Movies bring their own sound. As long as there is one, be it open or not, the sound engine leaves
// the device to them.
//
// Handlers and links may do anything to the movie that calls them: release it, play it again,
// destroy it.
#pragma once

#include "ominstalled.h"
#include "ommemcanvas.h"
#include "ompalette.h"
#include "omtask.h"
#include "omtrinketwindow.h"

#include "platform/movies.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class RSmackerMovie;

/// What the movies of a game share. It outlives them.
class RMovies : public OMInstalled<RMovies> {
  public:
    /// While held, all movies stand still, also those that are started then: time and sound wait.
    /// Holds count; what is not held stays so. Scripts do not see it.
    void hold(bool on);
    /// One hold, however often hosts tell that the game comes or goes.
    void holdInBackground(bool on);
    /// If the current movie has its own colours: sets those again that were there before.
    void restoreWindowPalette();

  private:
    friend class RSmackerMovie;

    RSmackerMovie* current_ = nullptr;
    std::vector<RSmackerMovie*> all_;
    int holds_ = 0;
    bool inBackground_ = false;
    /// The window's colours before movies set theirs, from the opening of a movie with its own on
    /// until it got them back; and what the window has of movies now.
    std::optional<OMPalette> savedPalette_;
    std::optional<OMDevicePalette> moviePalette_;
};

class RSmackerMovie final : public OMTrinket {
  public:
    static const OMSClass kClass;

    struct Options {
        int x = 0; ///< upper left corner in window pixels
        int y = 0;
        int extraBuffer = platform::MovieRequest::kAutomaticExtra; ///< bytes for reading ahead
        bool useMoviePalette = true;
        bool preload = false; ///< reads the whole file first; copies in the background go on
        OMLink finished;      ///< called in place of the event
        OMLink signal;        ///< the same
    };

    /// There is an RMovies. Looks for the file in the current directory, then in the search path.
    /// One that cannot be played calls `finished` from here, and the object stays without a movie:
    /// all numbers are 0, all methods do nothing.
    RSmackerMovie(OMTrinketWindow& window, const std::string& file, Options options);
    /// Ends playback, but tells neither links nor handlers.
    ~RSmackerMovie() override;

    /// With the arguments of the script; null without a main window, and without an RMovies.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// The movie that was opened, or began to go straight onto the window, last. When it goes or
    /// collects, another one that goes straight takes its place. Null without one.
    [[nodiscard]] static RSmackerMovie* current();

    [[nodiscard]] bool isOpen() const { return movie_ != nullptr; }
    [[nodiscard]] bool isCollecting() const { return collected_ != nullptr; }

    // Playback. What is not going to be played reports its completion at once.

    void start();
    /// Ends a playback, with `finished`.
    void stop();
    /// Stops and closes the file.
    void release();
    /// Halts a playback and has it go on from where it was, both without `finished`.
    void setPlaying(bool on);
    /// Not on without a movie; not off while another movie is the current one.
    void setCollecting(bool on);

    // The movie, all 0 without one.

    /// From 0 on; what is written is kept inside the movie.
    [[nodiscard]] int frame() const { return movie_ ? movie_->frame() : 0; }
    void setFrame(int frame);
    [[nodiscard]] int frames() const { return movie_ ? movie_->frameCount() : 0; }
    [[nodiscard]] int rate() const; ///< frames per second
    [[nodiscard]] int height() const { return movie_ ? movie_->height() : 0; }
    [[nodiscard]] int width() const { return movie_ ? movie_->width() : 0; }

    /// Whether reaching the frame, which counts from 0, is told by `signal`. Not that of the last
    /// frame, where playback ends.
    void setSignal(int frame, bool on);

    // For scripts; they read further arguments themselves.

    [[nodiscard]] std::string summary();
    [[nodiscard]] std::string summaryText();
    void addSignals() { setSignals(true); }
    void removeSignals() { setSignals(false); }

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    /// What is not seen is not hit: not unless it plays or collects.
    [[nodiscard]] bool containsPoint(platform::Point point) const override;
    /// Only while it collects.
    void dragBy(int& dx, int& dy) override;

  private:
    friend class RMovies;

    void onRetire() override;
    /// The empty text, or why it cannot be played.
    [[nodiscard]] std::string open(const std::string& file);
    void setSignals(bool on);
    [[nodiscard]] bool usesOwnPalette() const { return movie_ && options_.useMoviePalette; }
    void savePalette();
    void forgetPalette();

    // Playing.
    void play();
    void runUnlessHeld();
    [[nodiscard]] bool isCovered() const;
    void show(const OMRegion& changed);
    bool canShow();
    [[nodiscard]] OMRegion takeChanged();
    void copyTo(OMCanvas& canvas, const OMRegion& region, platform::Point corner);
    void goOn();
    void sendSignal();
    void endPlayback();
    void takeScreen();
    void leaveScreen();
    void handCurrentOn();
    void startCollecting();
    void stopCollecting();

    // Colours.
    void usePalette();
    void installPalette();
    void givePaletteBack();
    [[nodiscard]] const OMDevicePalette& colors();

    RMovies& shared_;
    Options options_;
    std::unique_ptr<platform::Movie> movie_; ///< null: not open
    std::vector<bool> signals_;              ///< of each frame
    int summaryIndex_ = 0;                   ///< of the next read
    int summaryTextIndex_ = 0;

    bool playing_ = false;
    bool halted_ = false;
    bool jumped_ = false; ///< somebody wrote the frame
    std::unique_ptr<OMTask> task_;
    std::optional<OMTrinketWindow::Rest> rest_; ///< while it plays straight onto the window
    OMRegion covered_;                          ///< what it has shown there since
    std::unique_ptr<OMMemCanvas> collected_;    ///< while it collects

    bool decoded_ = false;            ///< the movie's picture has frames in it
    bool wholeDue_ = false;           ///< what is shown next is all of the picture
    std::uint32_t presentations_ = 0; ///< of the window, when it was shown last
    bool paletteDue_ = false;         ///< the next frame sets the movie's colours
    platform::Point shownAt_{};
    OMDevicePalette ownColors_{};                 ///< the movie's, as the device has them
    std::optional<OMDevicePalette> copiedColors_; ///< those of the pixels that were copied last
};
