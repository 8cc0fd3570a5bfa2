#include "zorbetmps/scripts/authorstext.h"

#include "formats/base/latin1.h"

namespace mps {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool beginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

} // namespace

AuthorsText::AuthorsText(std::string_view bytes) : bytes_(bytes) {
    std::vector<formats::LackedLetter> lacked;
    letters_ = formats::latin1FromAuthor(std::string(bytes), lacked);
    if (bytes_.starts_with(kUtf8Mark)) {
        mark_ = bytes_.substr(0, kUtf8Mark.size());
        bytes_.remove_prefix(kUtf8Mark.size());
    }
    if (letters_.size() == bytes_.size()) return;
    for (std::size_t i = 0; i < bytes_.size(); ++i)
        if (beginsCharacter(bytes_[i])) starts_.push_back(i);
    starts_.push_back(bytes_.size());
}

std::string_view AuthorsText::bytes(std::size_t begin, std::size_t end) const {
    if (starts_.empty()) return bytes_.substr(begin, end - begin);
    return bytes_.substr(starts_[begin], starts_[end] - starts_[begin]);
}

} // namespace mps
