#include "movieact.h"

#include "actionparameters.h"
#include "movie/rsmackermovie.h"
#include "omsbirths.h"
#include "omtrinketwindow.h"

#include <utility>

MovieAction::MovieAction(Settings settings, bool interruptible)
    : OMSCopied(interruptible), settings_(std::move(settings)) {}

MovieAction::MovieAction(const MovieAction& other) : OMSCopied(other), settings_(other.settings_) {}

std::unique_ptr<Action> MovieAction::create(ActionParameters& parameters) {
    Settings settings{.file = parameters.text("filename"),
                      .extraBuffer = parameters.integer("extraBufferMemory",
                                                        platform::MovieRequest::kAutomaticExtra,
                                                        "SMACKAUTOEXTRA"),
                      .useMoviePalette = parameters.flag("useMoviePalette", true),
                      .cache = parameters.flag("cache", false)};
    return std::make_unique<MovieAction>(
        std::move(settings), parameters.interruptible("canInterrupt", ": (containerSpecified)"));
}

/// A movie that cannot be opened tells that it has finished before it is there.
void MovieAction::begin() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (window && RMovies::current()) {
        const auto isThere = std::make_shared<bool>(false);
        movie_ = std::make_unique<RSmackerMovie>(
            *window, settings_.file,
            RSmackerMovie::Options{.extraBuffer = settings_.extraBuffer,
                                   .useMoviePalette = settings_.useMoviePalette,
                                   .preload = settings_.cache,
                                   .finished = [isThere, done = doneLink()] {
                                       if (*isThere) done();
                                   }});
        *isThere = true;
    }
    if (!movie_ || !movie_->isOpen()) {
        finish();
        return;
    }
    OMSBirths births;
    births.add(*movie_, RSmackerMovie::kClass);
    movie_->setTouchy(false); // no script has a handler for its clicks: they go through
    movie_->start();
}

void MovieAction::end(End) { movie_.reset(); }

void MovieAction::hold() { movie_->setPlaying(false); }
void MovieAction::goOn() { movie_->setPlaying(true); }
