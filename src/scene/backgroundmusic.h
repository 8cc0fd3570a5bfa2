// The music behind the scenes: one sound that is repeated for ever, with a volume, a switch, a
// count of pauses and a fade. There is one for the whole game, which scripts reach through their
// scene ports (rscenprt.h); it outlives these, so that it plays on from scene to scene.
//
// Fades count in the time of scenes and are held while this stands still, and while the music is
// paused.
#pragma once

#include "ominstalled.h"
#include "omtask.h"
#include "scene/scenepause.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

class RStreamSound;

class BackgroundMusic : public OMInstalled<BackgroundMusic> {
  public:
    static constexpr int kNoMusic = -1; ///< an id

    /// The current music while it lives. `scene` must outlive it. Fatal without an application.
    explicit BackgroundMusic(ScenePause& scene);
    ~BackgroundMusic();

    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] int volume() const { return volume_; } ///< 0 to 100
    [[nodiscard]] bool isEnabled() const { return enabled_; }

    /// Another id starts at once, at the volume that there is.
    void setId(int id);
    /// Clamped to 0 to 100. Ends a fade.
    void setVolume(int volume);
    /// Disabled, it stops at once, and what starts is only remembered; enabled, that is started.
    void setEnabled(bool enabled);

    /// Starts a sound, or goes on with the one that plays at another volume. With a fade of more
    /// than 0 seconds the volume comes up from 0. Without RSoundStreams, or a sound of that id,
    /// nothing plays. While the sound engine has yielded the device, it waits for that.
    void start(int id, int volume, int fadeSeconds);
    /// What plays begins anew, out of the resource as it is now.
    void readAgain();
    /// With a fade of more than 0 seconds when the volume has gone down to 0.
    void stop(int fadeSeconds);
    /// Pauses are counted: as many resumes end them.
    void pause();
    /// While a movie is current the music stays paused until the next resume or start.
    void resume();
    /// Whoever paused it is gone: as many resumes as there were pauses.
    void forgetPauses();

  private:
    /// Times in ticks of the scenes' time.
    struct Fade {
        int from;
        int to;
        bool thenStop;
        std::int64_t start;
        std::int64_t duration;
        std::optional<std::int64_t> heldSince; ///< while the music is paused or waits
        OMTask task;
    };

    void createSound();
    void deleteSound();
    /// Unless it plays already, or waits in a pause for it.
    void play();
    /// Has the music and its fade begin when the sound engine has the device back.
    void awaitDevice();
    void hold();
    void release();
    void holdFade();
    void releaseFade();
    void beginFade(int from, int to, int seconds, bool thenStop);
    /// What the fade's task does in every pass.
    void fade();

    ScenePause& scene_;
    int id_ = kNoMusic;
    int volume_;
    bool enabled_ = true;
    int pauses_ = 0;
    bool held_ = false; ///< the sound is paused by us
    std::unique_ptr<RStreamSound> music_;
    bool playing_ = false; ///< the sound was started and has not ended for want of a device
    std::unique_ptr<OMTask> waiting_; ///< only while the sound waits for the device
    std::unique_ptr<Fade> fade_;      ///< only while there is a sound
};
