// An action that plays a movie at the upper left corner of the window.
#pragma once

#include "action.h"

#include <memory>
#include <string>

class RSmackerMovie;

class MovieAction final : public OMSCopied<MovieAction, Action> {
  public:
    struct Settings {
        std::string file;
        int extraBuffer; ///< bytes, or platform::MovieRequest::kAutomaticExtra
        bool useMoviePalette;
        bool cache; ///< reads the whole file before it plays
    };

    MovieAction(Settings settings, bool interruptible);
    MovieAction(const MovieAction& other);
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    Settings settings_;
    std::unique_ptr<RSmackerMovie> movie_; ///< while active
};
