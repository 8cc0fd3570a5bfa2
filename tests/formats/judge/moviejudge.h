// Movies as libavcodec decodes them.
#pragma once

#include "formats/movieframesof.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <cstring>
#include <memory>

namespace moviejudge {

using formats::Bytes;
using formats::ByteSpan;

using Frame = testing_support::SeenFrame;

/// A file in memory that the library reads.
struct Source {
    ByteSpan bytes;
    std::int64_t at = 0;

    static int read(void* opaque, std::uint8_t* out, int size) {
        auto& source = *static_cast<Source*>(opaque);
        const auto left = static_cast<std::int64_t>(source.bytes.size()) - source.at;
        const auto count = std::min<std::int64_t>(size, left);
        if (count <= 0) return AVERROR_EOF;
        std::memcpy(out, source.bytes.data() + source.at, static_cast<std::size_t>(count));
        source.at += count;
        return static_cast<int>(count);
    }
    static std::int64_t seek(void* opaque, std::int64_t offset, int whence) {
        auto& source = *static_cast<Source*>(opaque);
        const auto size = static_cast<std::int64_t>(source.bytes.size());
        if (whence & AVSEEK_SIZE) return size;
        const int from = whence & ~AVSEEK_FORCE;
        return source.at = offset + (from == SEEK_CUR ? source.at : from == SEEK_END ? size : 0);
    }
};

template <class T, void (*kFree)(T**)>
struct Free {
    void operator()(T* object) const { kFree(&object); }
};
using Format = std::unique_ptr<AVFormatContext, Free<AVFormatContext, avformat_close_input>>;
using Codec = std::unique_ptr<AVCodecContext, Free<AVCodecContext, avcodec_free_context>>;
using Packet = std::unique_ptr<AVPacket, Free<AVPacket, av_packet_free>>;
using Picture = std::unique_ptr<AVFrame, Free<AVFrame, av_frame_free>>;

inline Codec openCodec(const AVCodecParameters& parameters) {
    Codec codec(avcodec_alloc_context3(nullptr));
    avcodec_parameters_to_context(codec.get(), &parameters);
    codec->thread_count = 1;
    if (avcodec_open2(codec.get(), avcodec_find_decoder(parameters.codec_id), nullptr) < 0)
        return nullptr;
    return codec;
}

/// The header's claims of the trees' memory do not count.
inline void setTreeSizes(AVCodecParameters& parameters) {
    const std::size_t nodes = 8 * static_cast<std::size_t>(parameters.extradata_size - 16);
    const std::size_t size = 4 * (std::min<std::size_t>(nodes, 2 << 16) + 3);
    for (std::size_t i = 0; i < 16; ++i)
        parameters.extradata[i] = static_cast<std::uint8_t>(size >> 8 * (i % 4));
}

inline void takePicture(const AVFrame& from, Frame& to) {
    for (int y = 0; y < from.height; ++y) {
        const std::uint8_t* const line = from.data[0] + y * from.linesize[0];
        to.picture.insert(to.picture.end(), line, line + from.width);
    }
    for (std::size_t i = 0; i < to.palette.size(); ++i) {
        std::uint32_t colour = 0;
        std::memcpy(&colour, from.data[1] + 4 * i, sizeof(colour));
        to.palette[i] = {static_cast<std::uint8_t>(colour >> 16),
                         static_cast<std::uint8_t>(colour >> 8), static_cast<std::uint8_t>(colour)};
    }
}

/// The good frames by their numbers; none when the file is refused.
inline std::map<std::int64_t, Frame> decode(ByteSpan file) {
    av_log_set_level(AV_LOG_QUIET);
    std::map<std::int64_t, Frame> frames;
    Source source{file};
    constexpr int kBuffer = 4096;
    AVIOContext* io = avio_alloc_context(static_cast<std::uint8_t*>(av_malloc(kBuffer)), kBuffer, 0,
                                         &source, Source::read, nullptr, Source::seek);
    {
        AVFormatContext* opened = avformat_alloc_context();
        opened->pb = io;
        const bool isOpen =
            avformat_open_input(&opened, nullptr, av_find_input_format("smk"), nullptr) >= 0;
        const Format format(isOpen ? opened : nullptr);
        std::vector<Codec> codecs;
        for (unsigned i = 0; format && i < format->nb_streams; ++i) {
            AVCodecParameters& parameters = *format->streams[i]->codecpar;
            if (parameters.codec_type == AVMEDIA_TYPE_VIDEO) setTreeSizes(parameters);
            codecs.push_back(openCodec(parameters));
        }
        const Packet packet(av_packet_alloc());
        const Picture picture(av_frame_alloc());
        Bytes sound;
        for (int errors = 0; format && codecs.at(0) && errors < 16;) {
            const int result = av_read_frame(format.get(), packet.get());
            if (result == AVERROR_EOF) break;
            if (result < 0) {
                ++errors;
                continue;
            }
            const int stream = packet->stream_index;
            AVCodecContext* const codec = codecs.at(static_cast<std::size_t>(stream)).get();
            if (codec && stream <= 1 && avcodec_send_packet(codec, packet.get()) >= 0)
                while (avcodec_receive_frame(codec, picture.get()) >= 0) {
                    if (stream == 0) {
                        takePicture(*picture, frames[packet->pts]);
                    } else {
                        const auto size = static_cast<std::size_t>(
                            picture->nb_samples * av_get_bytes_per_sample(codec->sample_fmt) *
                            codec->ch_layout.nb_channels);
                        sound.insert(sound.end(), picture->data[0], picture->data[0] + size);
                    }
                }
            if (stream == 0) {
                if (frames.contains(packet->pts)) frames[packet->pts].sound = sound;
                sound.clear();
            }
            av_packet_unref(packet.get());
        }
    }
    av_freep(&io->buffer);
    avio_context_free(&io);
    return frames;
}

} // namespace moviejudge
