// soundmaker SCORE WAVE: renders a score into a RIFF WAVE file, 8-bit mono at 22,050 samples a
// second.
//
// A fault is told as SCORE:LINE: text with exit code 1, and no file is written. A wrong command
// line ends with exit code 2.
#include "finish.h"
#include "formats/sound/wave.h"
#include "scorereader.h"
#include "synth.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

constexpr std::size_t kMaxScoreBytes = 1 << 20;

int fail(const std::string& text) {
    std::cerr << text << '\n';
    return 1;
}

int makeSound(const std::string& scoreName, const std::string& waveName) {
    std::ifstream input(scoreName, std::ios::binary);
    if (!input) return fail(scoreName + ": cannot be read");
    const std::string text(std::istreambuf_iterator<char>(input), {});
    if (text.size() > kMaxScoreBytes) return fail(scoreName + ": larger than a megabyte");
    try {
        const Score score = readScore(text);
        const auto bytes =
            formats::sound::writeRiff(finishSamples(score, playScore(score)), kSampleRate);
        std::ofstream output(waveName, std::ios::binary | std::ios::trunc);
        output.write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
        output.close();
        return output ? 0 : fail(waveName + ": cannot be written");
    } catch (const ScoreFault& fault) {
        return fail(scoreName + ":" + std::to_string(fault.line()) + ": " + fault.what());
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) return makeSound(argv[1], argv[2]);
    std::cerr << "usage: soundmaker SCORE WAVE\n";
    return 2;
}
