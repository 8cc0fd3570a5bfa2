// Settings, the device, and which sounds are where. How buffers are filled and taken back is in
// omwaveservice.cpp.
#include "omwaveengine.h"

#include "omdebug.h"
#include "omlog.h"
#include "omplatform.h"
#include "omwavesound.h"

#include <algorithm>
#include <utility>

using platform::WaveOutHold;

OMWaveEngine* OMWaveEngine::instance_ = nullptr;

namespace {

constexpr int kLowRate = 11025;
constexpr int kHighRate = 22050;

bool isWithin(int value, int low, int high) { return value >= low && value <= high; }

bool check(bool holds, const char* condition, const char* message) {
    return OMDebug::check(holds, condition, message);
}

} // namespace

OMWaveEngine::OMWaveEngine() : device_(OMPlatform().waveOut()) {
    OMDebug::require(instance_ == nullptr, "instance == NULL",
                     "OMWaveEngine::OMWaveEngine - only one instance of OMWaveEngine is allowed!");
    instance_ = this;
}

OMWaveEngine::~OMWaveEngine() {
    OMDebug::require(sounds_ == 0, "numInstances == 0",
                     "OMWaveEngine::~OMWaveEngine - cannot delete an OMWaveEngine with instances "
                     "of OMWaveSound!");
    device_.close();
    instance_ = nullptr;
}

OMWaveEngine& OMWaveEngine::require() {
    OMDebug::require(
        instance_ != nullptr, "OMWaveEngine::current() == NULL",
        "OMWaveSound::OMWaveSound - must have an OMWaveEngine instance before creating "
        "an OMWaveSound!");
    return *instance_;
}

// Settings

void OMWaveEngine::setBufferSize(int bytes) {
    if (!check(sounds_ == 0, "numInstances == 0",
               "OMWaveSound::setBufferSize - cannot change buffer size if there are instances of "
               "OMWaveSound!") ||
        !check(isWithin(bytes, 1, kMaxBufferSize), "size > 0",
               "OMWaveSound::setBufferSize - invalid parameter!"))
        return;
    bufferSize_ = bytes;
}

void OMWaveEngine::setNumBuffers(int count) {
    if (!check(sounds_ == 0 && isWithin(count, kMinBuffers, kMaxBuffers),
               "numInstances == 0 && num >= 2", "OMWaveSound::setNumBuffers - invalid parameter!"))
        return;
    numBuffers_ = count;
    latencyDelta_ = std::min(latencyDelta_, count - 1);
    minInQueue_ = std::min(minInQueue_, count);
}

void OMWaveEngine::setLatencyDelta(int buffers) {
    if (!check(soundingCount() == 0, "playing + finishing == 0",
               "OMWaveSound::setLatencyDelta - cannot change the latency delta if there are sounds "
               "playing!") ||
        !check(isWithin(buffers, 1, numBuffers_ - 1), "delta >= 1 && delta < numBuffers",
               "OMWaveSound::setLatencyDelta - invalid parameter!"))
        return;
    latencyDelta_ = buffers;
}

void OMWaveEngine::setMinNumBuffersInQueue(int count) {
    if (check(isWithin(count, 2, numBuffers_), "num >= 2 && num <= numBuffers",
              "OMWaveSound::setMinNumBuffersInQueue - invalid parameter!"))
        minInQueue_ = count;
}

// The device

bool OMWaveEngine::testDevice(bool keepOpen) {
    keepOpen_ = keepOpen;
    if (yields_ > 0) return false;
    if (device_.isOpen()) {
        if (!keepOpen) settle();
        return true;
    }
    if (!device_.open(kLowRate)) return false;
    device_.close();
    const bool available = device_.open(kHighRate);
    if (available && suspended_) device_.pause();
    if (available) noteSilence();
    if (!keepOpen) device_.close();
    return available;
}

/// Called again and again, since a device may go away at any time.
void OMWaveEngine::noteSilence() {
    if (silenceNoted_ || !isSilent()) return;
    silenceNoted_ = true;
    OMLog::writef(OMLog::Kind::Warning,
                  "No sound is heard (%s). The game goes on silently; to hear it, connect a sound "
                  "device or start the sound server, and start the game again",
                  device_.whySilent().c_str());
}

bool OMWaveEngine::openDeviceFor(const OMWaveSound& sound) {
    if (yields_ > 0) return false;
    const bool inUse = soundingCount() > 0 || !paused_.empty();
    if (!inUse) forgetQueue(); // a new beginning is not late
    if (device_.isOpen() && (inUse || device_.rate() == sound.sampleRate())) return true;
    resetRing();
    if (!device_.open(sound.sampleRate())) return false;
    noteSilence();
    if (suspended_) device_.pause();
    return true;
}

void OMWaveEngine::restartDevice() {
    if (!suspended_) device_.restart();
}

void OMWaveEngine::resetRing() {
    ring_.reset(device_);
    if (suspended_) device_.pause();
    forgetQueue();
}

void OMWaveEngine::forgetQueue() {
    sent_ = false;
    quietBuffers_ = 0;
}

void OMWaveEngine::suspend() {
    if (suspended_) return;
    suspended_ = true;
    suspendedMs_ = OMMilliseconds();
    device_.pause();
}

void OMWaveEngine::resume() {
    if (!suspended_) return;
    suspended_ = false;
    latencies_.push_back(static_cast<int>(OMMilliseconds() - suspendedMs_));
    notifyLatency();
    restartDevice();
}

void OMWaveEngine::yieldDevice() {
    if (++yields_ > 1) return;
    while (soundingCount() > 0) {
        OMWaveSound& sound = playing_.empty() ? *finishing_.front() : *playing_.front();
        resumedLater_.push_back(&sound);
        sound.pause();
    }
    resetRing();
    yieldedRate_ = device_.rate();
    device_.close();
}

void OMWaveEngine::reclaimDevice() {
    if (yields_ == 0 || --yields_ > 0) return;
    if (testDevice(true) && !paused_.empty() && yieldedRate_ != 0) {
        device_.open(yieldedRate_);
        if (suspended_) device_.pause();
    }
    while (OMWaveSound* sound = OMWaveTakeFirst(resumedLater_)) sound->resume();
}

bool OMWaveEngine::resumesLater(OMWaveSound& sound) {
    if (yields_ == 0 || !OMWaveContains(paused_, sound)) return false;
    if (!OMWaveContains(resumedLater_, sound)) resumedLater_.push_back(&sound);
    return true;
}

// Latency

int OMWaveEngine::addLatencyListener(OMLinkTo<void(int)> listener) {
    listeners_.push_back({++lastListener_, std::move(listener)});
    return lastListener_;
}

void OMWaveEngine::removeLatencyListener(int number) {
    std::erase_if(listeners_, [&](const Listener& listener) { return listener.number == number; });
}

void OMWaveEngine::notifyLatency() {
    const std::vector<int> latencies = std::exchange(latencies_, {});
    const std::vector<Listener> listeners = listeners_; // they may leave meanwhile
    for (const int ms : latencies)
        for (const Listener& listener : listeners)
            if (std::ranges::find(listeners_, listener.number, &Listener::number) !=
                listeners_.end())
                listener.link(ms);
}

// The sounds

void OMWaveEngine::attach() {
    if (sounds_ == 0) allocate();
    ++sounds_;
}

void OMWaveEngine::detach() {
    if (--sounds_ == 0) release();
}

void OMWaveEngine::allocate() {
    ring_.allocate(numBuffers_, bufferSize_);
    sums_.resize(blockSize());
    task_ = std::make_unique<OMTask>(OMLinkToObj(this, &OMWaveEngine::service), kTaskPriority);
}

void OMWaveEngine::release() {
    settle();
    ring_.release();
    sums_ = std::vector<std::int16_t>();
    task_.reset();
}

bool OMWaveEngine::withdraw(OMWaveSound& sound) {
    ring_.forget(sound);
    OMWaveRemove(resumedLater_, sound);
    const bool sounding = OMWaveRemove(playing_, sound) || OMWaveRemove(finishing_, sound);
    const bool waiting = OMWaveRemove(paused_, sound) || OMWaveRemove(finished_, sound);
    if (!sounding) return waiting;
    if (soundingCount() > 0)
        subtractQueued(sound);
    else
        resetRing();
    sound.contributions_.clear();
    return true;
}

bool OMWaveEngine::suspendSound(OMWaveSound& sound) {
    if (!OMWaveContains(playing_, sound) && !OMWaveContains(finishing_, sound)) return false;
    sound.rewind();
    const bool later = OMWaveContains(resumedLater_, sound);
    withdraw(sound);
    if (later) resumedLater_.push_back(&sound);
    paused_.push_back(&sound);
    return true;
}

void OMWaveEngine::resumeSound(OMWaveSound& sound) {
    if (!OMWaveRemove(paused_, sound)) return;
    // An open device keeps its rate: the other sounds were mixed for it, and so was this one.
    if (!device_.isOpen() && !openDeviceFor(sound)) {
        finished_.push_back(&sound); // the device is gone: nobody shall wait for this sound
        return;
    }
    start(sound, true);
}

void OMWaveEngine::changeVolume(const OMWaveSound& sound, const OMWaveMix::VolumeTable& before) {
    if (sound.contributions_.empty()) return;
    const WaveOutHold hold(device_);
    for (const OMWaveSound::Contribution& part : sound.contributions_) {
        const OMWaveOutputBuffer& buffer = ring_[part.slot];
        if (!buffer.header.done)
            OMWaveMix::change(buffer.samples, part.samples, before, sound.table_);
    }
}
