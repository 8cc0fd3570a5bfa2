#include "platform/host/movies/moviedecoder.h"

#include "platform/host/machine/handle.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <bit>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int kStreamBuffer = 32 << 10;
constexpr int kMostErrors = 16; ///< of reading, in a row; then there are no more frames

void freeStream(AVIOContext* stream) {
    av_freep(&stream->buffer);
    avio_context_free(&stream);
}
void closeFormat(AVFormatContext* format) { avformat_close_input(&format); }
void freeCodec(AVCodecContext* codec) { avcodec_free_context(&codec); }
void freePacket(AVPacket* packet) { av_packet_free(&packet); }
void freeFrame(AVFrame* frame) { av_frame_free(&frame); }

using Stream = Handle<AVIOContext, freeStream>;
using Format = Handle<AVFormatContext, closeFormat>;
using Codec = Handle<AVCodecContext, freeCodec>;
using Packet = Handle<AVPacket, freePacket>;
using Frame = Handle<AVFrame, freeFrame>;

MovieFile& fileOf(void* opaque) { return *static_cast<MovieFile*>(opaque); }

int readFile(void* opaque, std::uint8_t* bytes, int size) {
    const auto wanted = std::as_writable_bytes(std::span(bytes, static_cast<std::size_t>(size)));
    const std::size_t count = fileOf(opaque).read(wanted);
    return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
}

std::int64_t seekFile(void* opaque, std::int64_t offset, int whence) {
    MovieFile& file = fileOf(opaque);
    const auto size = static_cast<std::int64_t>(file.size());
    if (whence & AVSEEK_SIZE) return size;
    switch (whence & ~AVSEEK_FORCE) {
    case SEEK_SET: break;
    case SEEK_CUR: offset += static_cast<std::int64_t>(file.position()); break;
    case SEEK_END: offset += size; break;
    default: return AVERROR(EINVAL);
    }
    if (offset < 0) return AVERROR(EINVAL);
    file.seek(static_cast<std::uint64_t>(offset));
    return offset;
}

Stream openStream(MovieFile& file) {
    auto* buffer = static_cast<std::uint8_t*>(av_malloc(kStreamBuffer));
    if (!buffer) return nullptr;
    Stream stream(avio_alloc_context(buffer, kStreamBuffer, 0, &file, readFile, nullptr, seekFile));
    if (!stream) av_free(buffer);
    return stream;
}

Format openFormat(AVIOContext& stream) {
    const AVInputFormat* const movies = av_find_input_format("smk");
    AVFormatContext* format = movies ? avformat_alloc_context() : nullptr;
    if (!format) return nullptr;
    format->pb = &stream;
    // Frees the context when it fails.
    if (avformat_open_input(&format, nullptr, movies, nullptr) < 0) return nullptr;
    return Format(format);
}

Codec openCodec(const AVCodecParameters& parameters) {
    Codec codec(avcodec_alloc_context3(nullptr));
    const AVCodec* const decoder = avcodec_find_decoder(parameters.codec_id);
    if (!codec || !decoder || avcodec_parameters_to_context(codec.get(), &parameters) < 0)
        return nullptr;
    codec->thread_count = 1;
    if (avcodec_open2(codec.get(), decoder, nullptr) < 0) return nullptr;
    return codec;
}

/// The file's claims of how large its trees are in memory may be wrong either way. What they can
/// need at most follows from their bytes, as each node takes a bit, and from there being no more
/// than 65,536 different values.
bool setTreeSizes(AVCodecParameters& parameters, std::size_t treesSize) {
    constexpr std::size_t kSizes = 16;
    constexpr std::size_t kMostNodes = 2 << 16;
    constexpr std::size_t kExtraNodes = 3;
    if (!parameters.extradata ||
        static_cast<std::size_t>(parameters.extradata_size) != kSizes + treesSize)
        return false;
    const std::size_t size = 4 * (std::min(8 * treesSize, kMostNodes) + kExtraNodes);
    for (std::size_t i = 0; i < kSizes; ++i)
        parameters.extradata[i] = static_cast<std::uint8_t>(size >> 8 * (i % 4));
    return true;
}

Rgb colourOf(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value)};
}

} // namespace

struct MovieDecoder::State {
    State(MovieFile& movieFile, const MovieHeader& movieHeader, const Clock& theClock)
        : file(movieFile), header(movieHeader), clock(theClock) {}

    MovieFile& file;
    const MovieHeader header;
    const Clock& clock;

    Stream stream;
    Format format; ///< reads through the stream, so it is closed first
    Codec pictureCodec;
    Codec soundCodec; ///< null when the sound cannot be played
    int pictureIndex = -1;
    int soundIndex = -1;
    Packet packet{av_packet_alloc()};
    Frame frame{av_frame_alloc()};   ///< what is being decoded
    Frame picture{av_frame_alloc()}; ///< the last good one, unless it was let go
    std::optional<int> ahead;        ///< the frame whose packet is in `packet` already

    int number = -1;
    bool ended = false; ///< nothing more can be read
    bool hadPicture = false;
    MoviePalette palette{};
    std::vector<std::uint8_t> sound;
    std::uint32_t decodeMs = 0;
    std::size_t largestPacket = 0;
    std::size_t largestSound = 0;

    bool start();
    bool findStreams();
    void stop();
    void next();
    bool readPacket();
    [[nodiscard]] int packetFrame() const;
    void decodePicture();
    void decodeSound();
    void addSound();
    bool isPicture() const;
};

bool MovieDecoder::State::start() {
    file.seek(0);
    stream = openStream(file);
    if (stream) format = openFormat(*stream);
    return packet && frame && picture && format && findStreams();
}

void MovieDecoder::State::stop() {
    av_packet_unref(packet.get());
    av_frame_unref(picture.get());
    soundCodec.reset();
    pictureCodec.reset();
    format.reset();
    stream.reset();
    ahead.reset();
    number = -1;
    ended = hadPicture = false;
    palette = {};
    sound.clear();
}

bool MovieDecoder::State::findStreams() {
    int soundsBefore = 0;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        AVCodecParameters& parameters = *format->streams[i]->codecpar;
        if (parameters.codec_type == AVMEDIA_TYPE_VIDEO && !pictureCodec) {
            if (parameters.codec_id != AV_CODEC_ID_SMACKVIDEO ||
                !setTreeSizes(parameters, header.treesSize))
                return false;
            pictureIndex = static_cast<int>(i);
            pictureCodec = openCodec(parameters);
        } else if (parameters.codec_type == AVMEDIA_TYPE_AUDIO && header.sound &&
                   soundsBefore++ == header.sound->stream) {
            const bool known = parameters.codec_id == AV_CODEC_ID_SMACKAUDIO ||
                               parameters.codec_id == AV_CODEC_ID_PCM_U8 ||
                               parameters.codec_id == AV_CODEC_ID_PCM_S16LE;
            if (!known || parameters.sample_rate != header.sound->format.rate) continue;
            soundIndex = static_cast<int>(i);
            soundCodec = openCodec(parameters);
        }
    }
    return pictureCodec != nullptr;
}

void MovieDecoder::State::next() {
    sound.clear();
    if (number < header.frames) ++number;
    if (ended || number >= header.wholeFrames) return;
    while (ahead || readPacket()) {
        if (packet->stream_index == soundIndex) {
            if (soundCodec) decodeSound();
        } else if (packet->stream_index == pictureIndex) {
            const int which = ahead.value_or(packetFrame());
            ahead.reset();
            if (which > number) { // this one was too damaged to be read
                ahead = which;
                return;
            }
            if (which == number) {
                decodePicture();
                av_packet_unref(packet.get());
                return;
            }
        }
        av_packet_unref(packet.get());
    }
    ended = true;
}

bool MovieDecoder::State::readPacket() {
    for (int errors = 0; errors < kMostErrors; ++errors) {
        const int result = av_read_frame(format.get(), packet.get());
        if (result == AVERROR_EOF) return false;
        if (result < 0) continue; // goes on with the next frame
        largestPacket = std::max(largestPacket, static_cast<std::size_t>(packet->size));
        return true;
    }
    return false;
}

int MovieDecoder::State::packetFrame() const {
    const bool inRange = packet->pts >= 0 && packet->pts < header.frames;
    return inRange ? static_cast<int>(packet->pts) : header.frames;
}

bool MovieDecoder::State::isPicture() const {
    return frame->format == AV_PIX_FMT_PAL8 && frame->width == header.width &&
           frame->height == header.height && frame->data[0] && frame->data[1];
}

void MovieDecoder::State::decodePicture() {
    const std::uint32_t start = clock.milliseconds();
    if (avcodec_send_packet(pictureCodec.get(), packet.get()) >= 0) {
        while (avcodec_receive_frame(pictureCodec.get(), frame.get()) >= 0) {
            if (!isPicture()) continue;
            std::swap(frame, picture);
            hadPicture = true;
            const auto* const colours = reinterpret_cast<const std::uint32_t*>(picture->data[1]);
            for (std::size_t i = 0; i < palette.size(); ++i) palette[i] = colourOf(colours[i]);
        }
    }
    av_frame_unref(frame.get());
    decodeMs += clock.milliseconds() - start;
}

void MovieDecoder::State::decodeSound() {
    const std::uint32_t start = clock.milliseconds();
    if (avcodec_send_packet(soundCodec.get(), packet.get()) >= 0)
        while (avcodec_receive_frame(soundCodec.get(), frame.get()) >= 0) addSound();
    av_frame_unref(frame.get());
    decodeMs += clock.milliseconds() - start;
}

void MovieDecoder::State::addSound() {
    const SoundFormat& wanted = header.sound->format;
    const AVSampleFormat kind = wanted.bits == 16 ? AV_SAMPLE_FMT_S16 : AV_SAMPLE_FMT_U8;
    if (frame->format != kind || frame->nb_samples <= 0 || !frame->buf[0]) return;
    const auto size =
        static_cast<std::size_t>(frame->nb_samples) * static_cast<std::size_t>(wanted.blockSize());
    if (size > static_cast<std::size_t>(frame->buf[0]->size)) return;
    const std::size_t before = sound.size();
    sound.insert(sound.end(), frame->data[0], frame->data[0] + size);
    if constexpr (std::endian::native == std::endian::big)
        for (std::size_t i = before; wanted.bits == 16 && i + 1 < sound.size(); i += 2)
            std::swap(sound[i], sound[i + 1]);
    largestSound = std::max(largestSound, sound.size());
}

std::unique_ptr<MovieDecoder> MovieDecoder::open(MovieFile& file, const MovieHeader& header,
                                                 const Clock& clock) {
    av_log_set_level(AV_LOG_QUIET); // what is damaged is told by our results
    auto state = std::make_unique<State>(file, header, clock);
    if (!state->start()) return nullptr;
    return std::unique_ptr<MovieDecoder>(new MovieDecoder(std::move(state)));
}

MovieDecoder::MovieDecoder(std::unique_ptr<State> state) : state_(std::move(state)) {}
MovieDecoder::~MovieDecoder() = default;

void MovieDecoder::next() { state_->next(); }

void MovieDecoder::rewind() {
    state_->stop();
    state_->ended = !state_->start(); // the file may have changed
}

int MovieDecoder::frame() const { return state_->number; }

MoviePixels MovieDecoder::picture() const {
    return {state_->picture->data[0], state_->picture->linesize[0]};
}

void MovieDecoder::letGo() { av_frame_unref(state_->picture.get()); }
bool MovieDecoder::hadPicture() const { return state_->hadPicture; }
const MoviePalette& MovieDecoder::palette() const { return state_->palette; }
std::span<const std::uint8_t> MovieDecoder::sound() const { return state_->sound; }
std::uint32_t MovieDecoder::decodeMs() const { return state_->decodeMs; }

std::size_t MovieDecoder::highestMemory() const {
    const MovieHeader& header = state_->header;
    const auto pixels =
        static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height);
    constexpr std::size_t kPictures = 2; // one that is decoded next, one that is not shown yet
    return kPictures * pixels + header.treesSize + state_->largestPacket + state_->largestSound +
           kStreamBuffer;
}

} // namespace platform
