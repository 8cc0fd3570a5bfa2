#include "pictures/quantizer.h"

#include "refusal.h"

#include "platform/host/machine/handle.h"

#include <dlfcn.h>
#include <libimagequant.h>

#include <memory>

namespace rsc {

namespace {

constexpr unsigned char kOpaque = 255;
constexpr double kStandardGamma = 0;
constexpr int kBestSpeed = 1; ///< the library's slowest and most careful way

using Attributes = platform::Handle<liq_attr, liq_attr_destroy>;
using Histogram = platform::Handle<liq_histogram, liq_histogram_destroy>;
using Result = platform::Handle<liq_result, liq_result_destroy>;

void check(liq_error error) {
    if (error != LIQ_OK)
        throw Refusal("the colours cannot be reduced (libimagequant error " +
                      std::to_string(error) + ")");
}

/// Sums over several threads come out differently with their number, and palettes with them.
void useOneThread() {
    using SetThreads = void (*)(int);
    if (void* set = dlsym(RTLD_DEFAULT, "omp_set_num_threads"))
        reinterpret_cast<SetThreads>(set)(1);
}

Histogram makeHistogram(const liq_attr& attributes, std::span<const ColourCount> colours) {
    std::vector<liq_histogram_entry> entries;
    entries.reserve(colours.size());
    for (const auto& [colour, count] : colours)
        entries.push_back({{colour.red, colour.green, colour.blue, kOpaque}, count});
    Histogram histogram(liq_histogram_create(&attributes));
    if (!histogram) check(LIQ_OUT_OF_MEMORY);
    check(liq_histogram_add_colors(histogram.get(), &attributes, entries.data(),
                                   static_cast<int>(entries.size()), kStandardGamma));
    return histogram;
}

} // namespace

bool canReduceColours() { return true; }

std::vector<platform::Rgb> reduceColours(std::span<const ColourCount> colours, int limit) {
    useOneThread();
    const Attributes attributes(liq_attr_create());
    if (!attributes) check(LIQ_OUT_OF_MEMORY);
    check(liq_set_max_colors(attributes.get(), limit));
    check(liq_set_speed(attributes.get(), kBestSpeed));
    const Histogram histogram = makeHistogram(*attributes, colours);
    liq_result* raw = nullptr;
    check(liq_histogram_quantize(histogram.get(), attributes.get(), &raw));
    const Result result(raw);
    const liq_palette& palette = *liq_get_palette(result.get());
    std::vector<platform::Rgb> reduced;
    for (unsigned i = 0; i < palette.count; ++i)
        reduced.push_back({palette.entries[i].r, palette.entries[i].g, palette.entries[i].b});
    return reduced;
}

} // namespace rsc
