#include "omwavesamples.h"

#include "omistream.h"
#include "omwavemix.h"

#include <algorithm>
#include <utility>

bool OMWaveSamples::isStreamed() const { return !stream_.isWhole(); }

void OMWaveSamples::load(std::int64_t start, std::int64_t end, std::size_t blockSize,
                         std::size_t blocks) {
    blockSize_ = blockSize;
    if (!isStreamed()) {
        if (whole_.empty()) whole_ = stream_.readAll();
        return;
    }
    maxBlocks_ = 2 * blocks;
    storage_.resize(maxBlocks_ * blockSize);
    const auto step = static_cast<std::int64_t>(blockSize);
    const std::int64_t preloadEnd =
        std::min(end, start + step * static_cast<std::int64_t>(blocks) - 1);
    for (std::int64_t at = start; at <= preloadEnd; at += step)
        chunk(at, static_cast<std::size_t>(std::min(step, end - at + 1)));
}

void OMWaveSamples::unload() {
    // The stream must not write into blocks that are gone.
    if (!storage_.empty()) stream_.setDstBuffer(kOMIStreamBuffered);
    whole_ = {};
    storage_ = std::vector<std::uint8_t>();
    blocks_.clear();
    oldest_ = 0;
}

bool OMWaveSamples::has(std::int64_t position) const {
    return !isStreamed() || std::ranges::find(blocks_, position, &Block::position) != blocks_.end();
}

OMWaveSamples::Chunk OMWaveSamples::chunk(std::int64_t position, std::size_t count) {
    if (!isStreamed()) return wholeChunk(position, count);
    const auto found = std::ranges::find(blocks_, position, &Block::position);
    if (found == blocks_.end()) return read(position, count);
    return storage(static_cast<std::size_t>(found - blocks_.begin())).first(found->count);
}

OMWaveSamples::Chunk OMWaveSamples::wholeChunk(std::int64_t position, std::size_t count) {
    const std::size_t offset = dataOffset_ + static_cast<std::size_t>(position);
    const Chunk all(reinterpret_cast<const std::uint8_t*>(whole_.data()), whole_.size());
    const Chunk there = all.subspan(std::min(offset, all.size()));
    if (there.size() >= count) return there.first(count);
    // The data end early. Only one chunk of a play window has both samples and silence.
    std::vector<std::uint8_t>& padded = there.empty() ? silence_ : cut_;
    padded.assign(blockSize_, OMWaveMix::kSilence);
    std::ranges::copy(there, padded.begin());
    return Chunk(padded).first(count);
}

/// Replaces the oldest block: those still in use are always among the newest.
OMWaveSamples::Chunk OMWaveSamples::read(std::int64_t position, std::size_t count) {
    std::size_t place = blocks_.size();
    if (place < maxBlocks_) {
        blocks_.push_back({position, count});
    } else {
        place = std::exchange(oldest_, (oldest_ + 1) % maxBlocks_);
        blocks_[place] = {position, count};
    }
    const auto block = storage(place).first(count);
    stream_.setDstBuffer(static_cast<int>(count), std::as_writable_bytes(block));
    stream_.seek(static_cast<std::int64_t>(dataOffset_) + position);
    std::ranges::fill(block.subspan(stream_.fill()), OMWaveMix::kSilence);
    return block;
}
