#include "zorbetmps/texts/renewal.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/nearest.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <utility>

namespace mps {

namespace {

using formats::texts::Catalogue;
using formats::texts::Entry;

/// A text that changed in so much of its letters, or less, keeps its translation.
constexpr int kMuchAlike = 4;

std::string nowUtc() {
    char date[sizeof "2000-01-01 00:00+0000"];
    const std::time_t seconds = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return {date, std::strftime(date, sizeof date, "%Y-%m-%d %H:%M+0000", &utc)};
}

/// The fields that translators' programs expect.
Entry catalogueHead(const std::string& project, const std::string& language) {
    const bool isTemplate = language.empty();
    Entry head;
    head.translation = "Project-Id-Version: " + project +
                       "\nPO-Revision-Date: " + (isTemplate ? "YEAR-MO-DA HO:MI+ZONE" : nowUtc()) +
                       "\nLast-Translator: \nLanguage-Team: \nLanguage: " + language +
                       "\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n"
                       "Content-Transfer-Encoding: 8bit\n";
    return head;
}

std::string bareScriptName(std::string_view script) {
    return formats::lowerAscii(script.substr(script.find_last_of("\\/") + 1));
}

/// With what is told of the text now.
Entry withDescription(const DrawnText& text, Entry entry) {
    entry.remark.clear();
    for (const std::string& remark : text.remarks)
        entry.remark += (entry.remark.empty() ? "" : "\n") + remark;
    entry.places.clear();
    for (const TextPlace& place : text.places) entry.places.push_back(place.shown());
    entry.text = text.text;
    entry.isObsolete = false;
    return entry;
}

class Renewing {
  public:
    Renewing(const DrawnTexts& texts, const Catalogue& old) : texts_(texts), old_(old) {
        taken_.resize(old.size());
        for (std::size_t i = 0; i < old.size(); ++i) byTexts_.emplace(old[i].text, i);
    }

    RenewedCatalogue renew(const std::string& project, const std::string& language) {
        addHead(project, language);
        // All that stay by themselves first, so that what is left is gone.
        std::vector<std::vector<Entry>> entries;
        for (const DrawnText& text : texts_.texts) entries.push_back(kept(text));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const DrawnText& text = texts_.texts[i];
            const bool isCovered =
                std::ranges::any_of(entries[i], [](const Entry& e) { return e.context.empty(); });
            if (text.isTaken && !isCovered) entries[i].push_back(fresh(text));
            for (Entry& entry : entries[i]) result_.catalogue.push_back(std::move(entry));
        }
        addObsolete();
        return std::move(result_);
    }

  private:
    void addHead(const std::string& project, const std::string& language) {
        const auto head = std::ranges::find_if(
            old_, [](const Entry& entry) { return entry.text.empty() && !entry.isObsolete; });
        if (head == old_.end()) {
            result_.catalogue.push_back(catalogueHead(project, language));
            return;
        }
        result_.catalogue.push_back(*head);
        taken_[static_cast<std::size_t>(head - old_.begin())] = true;
    }

    /// One for each context.
    std::vector<Entry> kept(const DrawnText& text) {
        std::map<std::string, Entry> entries;
        const auto [first, last] = byTexts_.equal_range(text.text);
        for (auto at = first; at != last; ++at) {
            const Entry& old = old_[at->second];
            if (taken_[at->second] || !isOf(old, text) || (old.isObsolete && !text.isTaken))
                continue;
            taken_[at->second] = true;
            Entry& entry = entries[old.context];
            if (entry.translation.empty()) entry = withDescription(text, old);
        }
        std::vector<Entry> all;
        for (auto& [context, entry] : entries) all.push_back(std::move(entry));
        return all;
    }

    Entry fresh(const DrawnText& text) {
        Entry entry = withDescription(text, {});
        ++result_.fresh;
        int least = static_cast<int>(text.text.size()) / kMuchAlike + 1;
        std::size_t best = old_.size();
        for (std::size_t i = 0; i < old_.size(); ++i) {
            if (taken_[i] || old_[i].translation.empty()) continue;
            const int far = distance(text.text, old_[i].text);
            if (far >= least) continue;
            least = far;
            best = i;
        }
        if (best == old_.size()) return entry;
        ++result_.fuzzy;
        taken_[best] = true;
        entry.translation = old_[best].translation;
        entry.notes = old_[best].notes;
        entry.isFuzzy = true;
        return entry;
    }

    void addObsolete() {
        for (std::size_t i = 0; i < old_.size(); ++i) {
            if (taken_[i] || old_[i].translation.empty() || old_[i].text.empty()) continue;
            Entry entry = old_[i];
            if (!entry.isObsolete) ++result_.gone;
            entry.isObsolete = true;
            entry.places.clear();
            entry.remark.clear();
            const auto same = [&](const Entry& other) {
                return other.text == entry.text && other.context == entry.context;
            };
            if (std::ranges::none_of(result_.catalogue, same))
                result_.catalogue.push_back(std::move(entry));
        }
    }

    const DrawnTexts& texts_;
    const Catalogue& old_;
    std::vector<bool> taken_; ///< of the old entries, those that are in the result
    std::multimap<std::string_view, std::size_t> byTexts_;
    RenewedCatalogue result_;
};

} // namespace

bool isOf(const Entry& entry, const DrawnText& text) {
    const std::string script = bareScriptName(entry.context);
    return script.empty() || std::ranges::any_of(text.scripts, [&](const std::string& one) {
               return bareScriptName(one) == script;
           });
}

RenewedCatalogue renewed(const DrawnTexts& texts, const Catalogue& old, const std::string& project,
                         const std::string& language) {
    return Renewing(texts, old).renew(project, language);
}

Catalogue emptyCatalogue(const DrawnTexts& texts, const std::string& project,
                         const std::string& language) {
    return renewed(texts, {}, project, language).catalogue;
}

} // namespace mps
