// The buffers that wait for a wave-out device, and how far they have been played.
#pragma once

#include "platform/waveout.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace platform {

class WaveQueue {
  public:
    /// Marks the buffer as prepared; one without samples is done at once.
    void add(WaveBuffer& buffer) {
        buffer.prepared = true;
        buffer.done = buffer.data.empty();
        if (buffer.done) return;
        queued_.push_back({&buffer, 0});
        waiting_ += buffer.data.size();
    }

    /// Bytes that have not been played.
    [[nodiscard]] std::size_t waiting() const { return waiting_; }

    /// Hands on so many bytes, or as many as there are, piece by piece. No flag changes.
    template <class Take>
    void play(std::size_t bytes, Take take) {
        for (Queued& each : queued_) {
            const auto rest = each.buffer->data.subspan(each.played);
            const auto piece = rest.first(std::min(bytes, rest.size()));
            if (!piece.empty()) take(piece);
            each.played += piece.size();
            waiting_ -= piece.size();
            bytes -= piece.size();
        }
    }

    /// Buffers that have been played are done.
    void settle() {
        for (; !queued_.empty() && queued_.front().isPlayed(); queued_.pop_front())
            queued_.front().buffer->done = true;
    }

    /// Empties it; `take` gets each buffer, from its beginning.
    template <class Take>
    void empty(Take take) {
        waiting_ = 0;
        for (const Queued& each : std::exchange(queued_, {})) take(*each.buffer);
    }
    /// Empties it; all buffers are done.
    void drop() {
        empty([](WaveBuffer& buffer) { buffer.done = true; });
    }

  private:
    struct Queued {
        WaveBuffer* buffer;
        std::size_t played; ///< bytes

        [[nodiscard]] bool isPlayed() const { return played == buffer->data.size(); }
    };

    std::deque<Queued> queued_;
    std::size_t waiting_ = 0;
};

} // namespace platform
