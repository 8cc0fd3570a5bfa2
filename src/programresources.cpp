#include "programresources.h"

#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"
#include "programicon.h"

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
    {warningtext::kCannotSwitch,
     "O DirectDraw n\xE3o conseguiu mudar o ecr\xE3 para o modo certo. Carregue em Continuar para jogar no modo atual, ou em Sair."sv},
    {warningtext::kNoDriver,
     "O DirectX n\xE3o funciona ou n\xE3o est\xE1 instalado. Carregue em Sair para voltar a instalar o Zorbet, ou em Continuar para jogar no modo atual."sv},
    {warningtext::kOldProcessor, "O Zorbet precisa de um computador 486 ou melhor."sv},
    {warningtext::kLargeScreen,
     "As imagens do Zorbet veem-se melhor em tamanho maior: ponha o ecr\xE3 em 640 \xD7 480. Carregue em Sair para o mudar, ou em Continuar."sv},
    {warningtext::kSmallScreen, "O Zorbet precisa de um ecr\xE3 de 640 \xD7 480 ou maior."sv},
    {warningtext::kManyColors,
     "O Zorbet funciona melhor com 256 cores. Carregue em Sair para mudar o ecr\xE3, ou em Continuar."sv},
    {warningtext::kFewColors, "O Zorbet precisa de 256 cores ou mais."sv},
    {warningtext::kNoSound,
     "O Zorbet n\xE3o consegue usar o som: est\xE1 ocupado por outro programa ou n\xE3o est\xE1 instalado."sv},
    {warningtext::kLittleMemory,
     "N\xE3o h\xE1 mem\xF3ria suficiente para o Zorbet. Feche outros programas e comece de novo."sv},
    {warningtext::kNoMoreMemory, "A mem\xF3ria acabou, e o Zorbet n\xE3o pode continuar."sv},
    {warningtext::kLittleSpace1, "H\xE1 pouco espa\xE7o livre no disco "sv},
    {warningtext::kLittleSpace2, ": o Zorbet precisa de "sv},
    {warningtext::kLittleSpace3, " megabytes. Apague o que j\xE1 n\xE3o usa no disco "sv},
    {warningtext::kLittleSpace4, ", e comece de novo."sv},
    {warningtext::kCannotReadCd,
     "O Zorbet n\xE3o consegue ler o seu CD. Veja se o disco est\xE1 na unidade e se est\xE1 limpo, e comece de novo."sv},
    {warningtext::kDoNotShowAgain, "N\xE3o mostrar este aviso outra vez"sv},
    {warningtext::kReallyLeave, "Quer mesmo sair do jogo?"sv},
};

constexpr platform::VersionString kVersion[] = {
    {"ProductName", "Zorbet Voyages"},
    {"ProductVersion", ZORBET_VERSION},
};

} // namespace

std::span<const platform::ProgramResource> RProgramResources() {
    static const auto resources = [] {
        std::array<platform::ProgramResource, std::size(kTexts) + 1> table{};
        table.back() = {platform::kIconType, platform::kAppIcon, RProgramIcon()};
        for (std::size_t i = 0; i < std::size(kTexts); ++i)
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
