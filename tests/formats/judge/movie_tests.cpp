// Our decoder of movies beside another one.
#include "formats/judge/moviejudge.h"
#include "formats/judge/randommovie.h"
#include "platform/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

void expectSame(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    const formats::Bytes file((std::istreambuf_iterator<char>(in)), {});
    const auto header = formats::readMovieHeader(file).value();
    auto ours = testing_support::framesOf(file);
    auto judged = moviejudge::decode(path);
    ASSERT_GE(judged.size(), header.frames); // it shows a ring frame, too
    for (std::int64_t i = 0; i < header.frames; ++i) {
        ASSERT_TRUE(ours.contains(i) && judged.contains(i)) << i;
        ASSERT_TRUE(ours[i].picture == judged[i].picture) << i;
        ASSERT_TRUE(ours[i].palette == judged[i].palette) << i;
        ASSERT_TRUE(ours[i].sound == judged[i].sound) << i;
    }
}

TEST(MovieJudge, FindsWhateverAMovieCanHoldToBeAsWeReadIt) {
    const TemporaryFolder folder;
    for (unsigned seed = 0; seed < 100 && !HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const auto file = testing_support::RandomMovie(seed).make(1 + seed % 7);
        folder.make("a.smk", {file.begin(), file.end()});
        expectSame(folder.path("a.smk"));
    }
}

TEST(MovieJudge, FindsTheSamplesMovieToBeAsWeReadIt) { expectSame(ZORBET_SAMPLE_MOVIE); }

} // namespace
