// Movies as libavcodec decodes them.
#pragma once

#include "formats/reading.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include <cstring>
#include <memory>

namespace moviejudge {

using formats::Bytes;
using testing_support::SeenFrame;

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
    avcodec_open2(codec.get(), avcodec_find_decoder(parameters.codec_id), nullptr);
    return codec;
}

inline void takePicture(const AVFrame& from, SeenFrame& to) {
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

/// The good frames of a file by their numbers; sounds of the first track.
inline std::map<std::int64_t, SeenFrame> decode(const std::string& path) {
    av_log_set_level(AV_LOG_QUIET);
    std::map<std::int64_t, SeenFrame> frames;
    AVFormatContext* opened = nullptr;
    avformat_open_input(&opened, path.c_str(), av_find_input_format("smk"), nullptr);
    const Format format(opened);
    std::vector<Codec> codecs;
    for (unsigned i = 0; format && i < format->nb_streams; ++i)
        codecs.push_back(openCodec(*format->streams[i]->codecpar));
    const Packet packet(av_packet_alloc());
    const Picture picture(av_frame_alloc());
    Bytes sound;
    for (int result = 0, errors = 0; format && result != AVERROR_EOF && errors < 16;) {
        result = av_read_frame(format.get(), packet.get());
        if (result < 0) {
            ++errors;
            continue;
        }
        const int stream = packet->stream_index;
        AVCodecContext* const codec = codecs[static_cast<std::size_t>(stream)].get();
        if (stream <= 1 && avcodec_send_packet(codec, packet.get()) >= 0)
            while (avcodec_receive_frame(codec, picture.get()) >= 0) {
                if (stream == 0) {
                    takePicture(*picture, frames[packet->pts]);
                } else {
                    const int size = picture->nb_samples * codec->ch_layout.nb_channels *
                                     av_get_bytes_per_sample(codec->sample_fmt);
                    sound.insert(sound.end(), picture->data[0], picture->data[0] + size);
                }
            }
        if (stream == 0) {
            if (frames.contains(packet->pts)) frames[packet->pts].sound = sound;
            sound.clear();
        }
        av_packet_unref(packet.get());
    }
    return frames;
}

} // namespace moviejudge
