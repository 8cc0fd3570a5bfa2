#include "zorbetmps/check/nearest.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <vector>

namespace mps {

int distance(std::string_view one, std::string_view other) {
    if (one == other) return 0;
    const std::string a = formats::lowerLatin1(one);
    const std::string b = formats::lowerLatin1(other);
    if (a == b) return 1;
    // Rows of the table of the distances between the beginnings of both.
    std::vector<int> before(b.size() + 1);
    std::vector<int> last(b.size() + 1);
    std::vector<int> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int changed = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({changed, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

std::string_view nearest(std::string_view word, std::span<const std::string_view> words) {
    // One slip in three letters, and no more than three.
    int least = std::min(static_cast<int>(word.size()) / 3, 3) + 1;
    if (word.size() == 2) least = 2; // its letters exchanged, or one of them wrong
    std::string_view best;
    for (const std::string_view candidate : words) {
        const int far = distance(word, candidate);
        if (far == 0 || far >= least || far >= static_cast<int>(candidate.size())) continue;
        least = far;
        best = candidate;
    }
    return best;
}

std::string didYouMean(std::string_view word, std::span<const std::string_view> words) {
    const std::string_view best = nearest(word, words);
    return best.empty() ? "" : "; did you mean " + std::string(best) + "?";
}

} // namespace mps
