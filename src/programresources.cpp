#include "programresources.h"

#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"

#include <array>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kTextType = "TEXT";

/// Texts in Portuguese, Latin-1.
struct Text {
    int id;
    std::string_view text;
};
constexpr Text kTexts[] = {
    {warningtext::kCannotReadCd,
     "O Zorbet n\xE3o consegue ler o seu CD. Veja se o disco est\xE1 na "
     "unidade e se est\xE1 limpo, e comece de novo."sv},
};

constexpr platform::VersionString kVersion[] = {
    {"ProductName", "Zorbet Voyages"},
    {"ProductVersion", ZORBET_VERSION},
};

} // namespace

std::span<const platform::ProgramResource> RProgramResources() {
    static const auto resources = [] {
        std::array<platform::ProgramResource, std::size(kTexts)> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = {kTextType, kTexts[i].id, std::as_bytes(std::span(kTexts[i].text))};
        return table;
    }();
    return resources;
}

std::span<const platform::VersionString> RVersionStrings() { return kVersion; }

std::string RWarningText(int id) {
    const auto bytes = OMPlatform().modules().resource(kTextType, id);
    if (bytes) return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
    OMLog::writef(OMLog::Kind::Error, "Warning message TEXT resource %d not found", id);
    return OMFormat("TEXT resource %d not found.", id);
}
