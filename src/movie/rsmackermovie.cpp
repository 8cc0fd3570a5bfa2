// Movies as objects: their words, their files, what they have in common. How they play is in
// rsmackermovieplay.cpp.
#include "movie/rsmackermovie.h"

#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omsclass.h"
#include "omwaveengine.h"
#include "yengine.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr OMSEntry kRSmackerMovieVocabulary[] = {
    oms::data<&RSmackerMovie::frame, &RSmackerMovie::setFrame>("frame", "current frame, from 0"),
    oms::readOnly<&RSmackerMovie::frames>("frames", "number of frames"),
    oms::readOnly<&RSmackerMovie::rate>("rate", "frames per second"),
    oms::readOnly<&RSmackerMovie::height>("height", "pixels"),
    oms::readOnly<&RSmackerMovie::width>("width", "pixels"),
    oms::readOnly<&RSmackerMovie::summary>("summary", "[index] facts of the playback").serial(),
    oms::readOnly<&RSmackerMovie::summaryText>("summaryText", "[index] what they are").serial(),
    oms::data<&RSmackerMovie::isCollecting, &RSmackerMovie::setCollecting>(
        "collecting", "is composed with the other objects"),
    oms::lasting<&RSmackerMovie::start>("start"),
    oms::lasting<&RSmackerMovie::start>(OMScriptableObject::kDefaultMethod),
    oms::method<&RSmackerMovie::stop>("stop"),
    oms::method<&RSmackerMovie::release>("release"),
    oms::method<&RSmackerMovie::addSignals>("addSignals", "frame ... | -1"),
    oms::method<&RSmackerMovie::removeSignals>("removeSignals", "frame ... | -1"),
    oms::event("signal", "it has come to one of the frames"),
    oms::event("finished", "playback has ended"),
};

/// What the facts of platform::MovieFact are to scripts; those without a text are unused.
constexpr std::array<const char*, platform::kMovieFacts> kSummaryTexts{
    "Total playback time in milliseconds (not including open time)",
    "Milliseconds*100 per frame (15 frames/sec = 6666)",
    "Time to open the file",
    "Total frames actually played",
    "Frames that were skipped to keep up with the audio",
    "Total number of sound skips",
    "Time necessary to blit to the screen",
    "Time necessary to read from the device",
    "Time necessary to decompress the frames",
    "Time necessary to read from the device during SmackWaits (normally idle time)",
    "Speed of the device in bytes/second (usually around 2x the spin speed)",
    "Time in milliseconds of the slowest frame",
    "Time in milliseconds of the second slowest frame",
    "The number of the slowest frame",
    "The number of the second slowest frame",
    "The size of the average frame in bytes",
    "",
    "",
    "The highest amount of memory used to playback this animation",
    "Total amount of memory allocated for the extra buffer",
    "Highest amount of data used in the extra buffer",
};

constexpr std::size_t kTopLayer = 2;
constexpr int kAllFrames = -1;       ///< in the place of a frame's number
constexpr int kFrameTimes = 100'000; ///< of platform::Movie::frameTime in a second

/// The index that a read is about: its argument, else the one after the last. One below 0 begins
/// again.
std::size_t takeIndex(int& next) {
    if (const auto index = oms::nextArgument<std::optional<int>>()) next = *index;
    next = std::clamp(next, 0, static_cast<int>(platform::kMovieFacts));
    return static_cast<std::size_t>(next++);
}

bool isSummaryIndex(std::size_t index) {
    return index < kSummaryTexts.size() && *kSummaryTexts[index] != '\0';
}

/// As with scripts: a file of the current directory, else one of the search path.
std::optional<std::string> findFile(const std::string& name) {
    if (name.empty()) return std::nullopt;
    return OMPlatform().files().exists(name) ? name : OMPathResolveFilename(name);
}

/// Whether its picture can be collected.
bool hasPossibleSize(const platform::Movie& movie) {
    const auto isSide = [](int length) { return length >= 1 && length <= OMMemCanvas::kMaxSide; };
    return isSide(movie.width()) && isSide(movie.height()) &&
           movie.width() * movie.height() <= OMMemCanvas::kMaxPixels;
}

} // namespace

const OMSClass RSmackerMovie::kClass{"RSmackerMovie", &OMTrinket::kClass, kRSmackerMovieVocabulary,
                                     &RSmackerMovie::createFromScript,
                                     "file x y [extra] [colours] [collect]"};

// From the file to the object

RSmackerMovie::RSmackerMovie(OMTrinketWindow& window, const std::string& file, Options options)
    : OMTrinket(window, UpdateStyle::Regions, {}), shared_(*RMovies::current()),
      options_(std::move(options)) {
    setTopLayer(kTopLayer);
    shared_.all_.push_back(this);
    OMWaveEngine* engine = OMWaveEngine::current();
    if (shared_.all_.size() == 1 && engine) engine->yieldDevice();
    const std::string problem = open(file);
    if (problem.empty()) return;
    OMLog::writef(OMLog::Kind::Error, "Movie %s cannot be played: %s", file.c_str(),
                  problem.c_str());
    const OMLink finished = options_.finished;
    finished();
}

RSmackerMovie* RSmackerMovie::current() {
    const RMovies* shared = RMovies::current();
    return shared ? shared->current_ : nullptr;
}

std::string RSmackerMovie::open(const std::string& file) {
    const auto path = findFile(file);
    if (!path)
        return "it is neither in the game's folder nor in one of its scripts and RSC folders";
    platform::Files::setLastRefusal({});
    YEngine::charge(YEngine::kLongCost);
    movie_ = OMPlatform().movies().open({*path, options_.preload, options_.extraBuffer});
    if (const std::error_code why = platform::Files::lastRefusal(); !movie_ && why)
        return why.message();
    if (!movie_)
        return "it is no movie, or is damaged, or this program plays none (zorbet --version tells)";
    if (!hasPossibleSize(*movie_)) {
        movie_.reset();
        return "its picture is too large";
    }
    setBounds({0, 0, movie_->width(), movie_->height()});
    place(options_.x, options_.y);
    markWhole();
    signals_.resize(static_cast<std::size_t>(movie_->frameCount()));
    savePalette();
    shared_.current_ = this;
    OMLog::writef(OMLog::Kind::Message, "%s %d %d %ld %d %d", file.c_str(), x(), y(),
                  long{options_.extraBuffer}, int{options_.useMoviePalette}, int{options_.preload});
    return {};
}

std::unique_ptr<OMScriptableObject> RSmackerMovie::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window || !RMovies::current()) return nullptr;
    const auto file = oms::nextArgument<std::string>();
    Options options;
    options.x = oms::nextArgument<int>();
    options.y = oms::nextArgument<int>();
    options.extraBuffer =
        std::max(oms::nextArgument<std::optional<int>>().value_or(options.extraBuffer),
                 platform::MovieRequest::kAutomaticExtra);
    options.useMoviePalette = oms::nextArgument<std::optional<bool>>().value_or(true);
    const bool collects = oms::nextArgument<std::string>() == "1";
    auto movie = std::make_unique<RSmackerMovie>(*window, file, std::move(options));
    if (collects) movie->setCollecting(true);
    return movie;
}

RSmackerMovie::~RSmackerMovie() { retire(); }

void RSmackerMovie::onRetire() {
    if (playing_) endPlayback();
    movie_.reset();
    std::erase(shared_.all_, this);
    handCurrentOn();
    forgetPalette();
    OMWaveEngine* engine = OMWaveEngine::current();
    if (shared_.all_.empty() && engine) engine->reclaimDevice();
    OMTrinket::onRetire();
}

void RSmackerMovie::release() {
    stop();
    if (isRetired()) return;
    if (playing_) endPlayback(); // a handler has started it again
    movie_.reset();
    if (std::exchange(collected_, nullptr)) invalidate();
    forgetPalette();
    fireCompletion();
}

// Properties

void RSmackerMovie::setFrame(int frame) {
    if (!movie_) return;
    YEngine::charge(YEngine::kLongCost);
    movie_->goTo(std::clamp(frame, 0, movie_->frameCount() - 1));
    jumped_ = true;
    paletteDue_ = true;
}

int RSmackerMovie::rate() const { return movie_ ? kFrameTimes / movie_->frameTime() : 0; }

std::string RSmackerMovie::summary() {
    const std::size_t index = takeIndex(summaryIndex_);
    return std::to_string(movie_ && isSummaryIndex(index) ? movie_->summary()[index] : 0);
}

std::string RSmackerMovie::summaryText() {
    const std::size_t index = takeIndex(summaryTextIndex_);
    return isSummaryIndex(index) ? kSummaryTexts[index] : "";
}

// Signals

void RSmackerMovie::setSignal(int frame, bool on) {
    if (movie_ && frame >= 0 && frame < movie_->frameCount())
        signals_[static_cast<std::size_t>(frame)] = on;
}

void RSmackerMovie::setSignals(bool on) {
    OMSArguments& arguments = OMSArguments::global();
    for (std::string text = arguments.next(); !text.empty(); text = arguments.next()) {
        const int number = OMSToInteger(text);
        if (number == kAllFrames)
            signals_.assign(signals_.size(), on);
        else
            setSignal(std::max(number, 1) - 1, on);
    }
}
