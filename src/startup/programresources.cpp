#include "startup/programresources.h"

#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"

#include "formats/base/latin1.h"
#include "platform/initext.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

constexpr std::string_view kTextType = "TEXT";

/// A text of a box: its number in the program, its name in a game's own table, and what it says, in
/// UTF-8. Texts that are pieces begin and end with their blanks.
struct Text {
    int id;
    std::string_view name;
    std::string_view portuguese;
    std::string_view english;
};
constexpr Text kTexts[] = {
    {warningtext::kCannotSwitch, "cannotSwitch",
     "O DirectDraw não conseguiu mudar o ecrã para o modo certo. Carregue em Continuar para jogar "
     "no modo atual, ou em Sair.",
     "DirectDraw could not switch the screen to the right mode. Press Continue to play in the "
     "present mode, or Quit."},
    {warningtext::kNoDriver, "noDriver",
     "O DirectX não funciona ou não está instalado. Carregue em Sair para voltar a instalar o "
     "Zorbet, ou em Continuar para jogar no modo atual.",
     "DirectX does not work or is not installed. Press Quit to install Zorbet again, or Continue "
     "to play in the present mode."},
    {warningtext::kOldProcessor, "oldProcessor", "O Zorbet precisa de um computador 486 ou melhor.",
     "Zorbet needs a 486 computer or a better one."},
    {warningtext::kLargeScreen, "largeScreen",
     "As imagens do Zorbet veem-se melhor em tamanho maior: ponha o ecrã em 640 × 480. Carregue em "
     "Sair para o mudar, ou em Continuar.",
     "Zorbet's pictures are easier to see when they are larger: set the screen to 640 × 480. Press "
     "Quit to change it, or Continue."},
    {warningtext::kSmallScreen, "smallScreen", "O Zorbet precisa de um ecrã de 640 × 480 ou maior.",
     "Zorbet needs a screen of 640 × 480 or a larger one."},
    {warningtext::kManyColors, "manyColors",
     "O Zorbet funciona melhor com 256 cores. Carregue em Sair para mudar o ecrã, ou em Continuar.",
     "Zorbet runs better with 256 colours. Press Quit to change the screen, or Continue."},
    {warningtext::kFewColors, "fewColors", "O Zorbet precisa de 256 cores ou mais.",
     "Zorbet needs 256 colours or more."},
    {warningtext::kNoSound, "noSound",
     "O Zorbet não consegue usar o som: está ocupado por outro programa ou não está instalado.",
     "Zorbet cannot use the sound: another program has it, or it is not installed."},
    {warningtext::kLittleMemory, "littleMemory",
     "Não há memória suficiente para o Zorbet. Feche outros programas e comece de novo.",
     "There is not enough memory for Zorbet. Close other programs and start again."},
    {warningtext::kNoMoreMemory, "noMoreMemory", "A memória acabou, e o Zorbet não pode continuar.",
     "There is no memory left, and Zorbet cannot go on."},
    {warningtext::kLittleSpace1, "littleSpace1", "Há pouco espaço livre no disco ",
     "There is little space left on disk "},
    {warningtext::kLittleSpace2, "littleSpace2", ": o Zorbet precisa de ", ": Zorbet needs "},
    {warningtext::kLittleSpace3, "littleSpace3", " megabytes. Apague o que já não usa no disco ",
     " megabytes. Remove what you do not need any more from disk "},
    {warningtext::kLittleSpace4, "littleSpace4", ", e comece de novo.", ", and start again."},
    {warningtext::kCannotReadCd, "cannotReadCd",
     "O Zorbet não consegue ler o seu CD. Veja se o disco está na unidade e se está limpo, e "
     "comece de novo.",
     "Zorbet cannot read its CD. See whether the disc is in the drive and clean, and start again."},
    {warningtext::kDoNotShowAgain, "doNotShowAgain", "Não mostrar este aviso outra vez",
     "Do not show this warning again"},
    {warningtext::kAlreadyOpen, "alreadyOpen",
     "O Zorbet já está aberto. Feche o outro e carregue em Repetir. Com Cancelar pode jogar, mas "
     "o jogo não fica guardado.",
     "Zorbet is open already. Close the other one and press Retry. With Cancel you can play, but "
     "the game is not saved."},
    {warningtext::kNotKept, "notKept", "O Zorbet não consegue guardar o jogo na pasta ",
     "Zorbet cannot save the game in the folder "},
    {warningtext::kDiskIsFull, "diskIsFull", ": o disco está cheio. Apague o que já não usa.",
     ": the disk is full. Remove what you do not need any more."},
    {warningtext::kMayNotWrite, "mayNotWrite",
     ": não se pode escrever ali. Peça ajuda a um adulto.",
     ": nothing may be written there. Ask a grown-up for help."},
    {warningtext::kFolderInUse, "folderInUse", ": está a ser usada por outro programa. Feche-o.",
     ": another program is using it. Close that one."},
    {warningtext::kSavingFails, "savingFails", ": algo falhou ali. Peça ajuda a um adulto.",
     ": something went wrong there. Ask a grown-up for help."},
    {warningtext::kCannotOpen, "cannotOpen", "O Zorbet não consegue abrir o jogo guardado em ",
     "Zorbet cannot open the game that is saved in "},
    {warningtext::kStaysAsItIs, "staysAsItIs", ": fica como está. Peça ajuda a um adulto.",
     ": it stays as it is. Ask a grown-up for help."},
    {warningtext::kNothingIsKept, "nothingIsKept", " O que joga agora não fica guardado.",
     " What you play now is not saved."},
    {warningtext::kReallyLeave, "reallyLeave", "Quer mesmo sair do jogo?",
     "Do you really want to leave the game?"},
    {spokentext::kOn, "speechOn", "Os textos são falados.", "Texts are spoken."},
    {spokentext::kOff, "speechOff", "Os textos já não são falados.",
     "Texts are not spoken any more."},
    {spokentext::kNoVoice, "noVoice",
     "O computador não tem voz para os textos. Peça a um adulto que instale speech-dispatcher e "
     "espeak-ng. Com Shift+F6 joga sem voz.",
     "The computer has no voice for texts. Ask a grown-up to install speech-dispatcher and "
     "espeak-ng. Shift+F6 plays without a voice."},
    {spokentext::kButton, "spokenButton", "botão", "button"},
    {spokentext::kPicture, "spokenPicture", "imagem", "picture"},
    {spokentext::kPlace, "spokenPlace", "lugar", "place"},
    {spokentext::kPiece, "spokenPiece", "peça", "piece"},
    {spokentext::kList, "spokenList", "lista", "list"},
    {spokentext::kBackpack, "spokenBackpack", "mochila", "backpack"},
    {spokentext::kMap, "spokenMap", "mapa", "map"},
    {spokentext::kBackground, "spokenBackground", "fundo", "background"},
    {spokentext::kText, "spokenText", "texto", "text"},
    {spokentext::kCanBeMoved, "spokenCanBeMoved", ", dá para levar", ", can be moved"},
    {spokentext::kInHand, "spokenInHand", "na mão: ", "in the hand: "},
    {spokentext::kOver, "spokenOver", "sobre ", "over "},
    {spokentext::kLetGo, "spokenLetGo", "largou: ", "let go: "},
    {spokentext::kPutBack, "spokenPutBack", "de volta: ", "put back: "},
};

/// What stands on a button, above a box or in the panel of what makes a game easier to play, by the
/// word that is the same in every language.
struct Label {
    std::string_view word;
    std::string_view name;
    std::string_view portuguese;
    std::string_view english;
};
constexpr Label kLabels[] = {
    {"OK", "ok", "OK", "OK"},
    {"Cancel", "cancel", "Cancelar", "Cancel"},
    {"Retry", "retry", "Repetir", "Retry"},
    {"Yes", "yes", "Sim", "Yes"},
    {"No", "no", "Não", "No"},
    {"Continuar", "goOn", "Continuar", "Continue"},
    {"Sair", "quit", "Sair", "Quit"},
    {"Error", "error", "Erro", "Error"},
    {"How do you want to play?", "comfort", "Como quer jogar?", "How do you want to play?"},
    {"Back to the game", "backToGame", "Voltar ao jogo", "Back to the game"},
    {"Play with keys alone", "keysAlone", "Jogar só com teclas", "Play with keys alone"},
    {"Hear the texts", "hearTexts", "Ouvir os textos", "Hear the texts"},
    {"Mouse pointer", "mousePointer", "Ponteiro do rato", "Mouse pointer"},
    {"Double click", "doubleClick", "Duplo clique", "Double click"},
    {"Normal", "normal", "Normal", "Normal"},
    {"Slow", "slow", "Lento", "Slow"},
    {"Very slow", "verySlow", "Muito lento", "Very slow"},
    {"Less flashing", "lessFlashing", "Menos clarões", "Less flashing"},
    {"Full screen", "fullScreen", "Ecrã inteiro", "Full screen"},
};

constexpr platform::VersionString kVersion[] = {
    {"ProductName", "Zorbet Voyages"},
    {"ProductVersion", ZORBET_VERSION},
};

bool isText(std::string_view name) {
    const auto isMeant = [name](const auto& row) { return platform::sameIniName(row.name, name); };
    return std::ranges::any_of(kTexts, isMeant) || std::ranges::any_of(kLabels, isMeant);
}

} // namespace

RProgramTexts::RProgramTexts(std::string_view language, std::span<const platform::BoxText> own)
    : isPortuguese_(language.empty() || platform::belongsToLanguage(language, "pt")) {
    for (const platform::BoxText& each : own)
        take(each, platform::sameIniName(each.language, language));
    for (const Text& row : kTexts) {
        texts_.push_back(text(row.name, row.portuguese, row.english));
        resources_.push_back({kTextType, row.id, std::as_bytes(std::span(texts_.back()))});
    }
    resources_.push_back({platform::kIconType, platform::kAppIcon, RProgramIcon()});
    for (const Label& row : kLabels)
        buttons_.emplace(row.word, text(row.name, row.portuguese, row.english));
}

/// Those of other languages are looked at as well, so that mistakes are told to whoever makes them.
void RProgramTexts::take(const platform::BoxText& own, bool isOfLanguage) {
    std::string_view text = own.text;
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') // keeps the blanks within
        text = text.substr(1, text.size() - 2);
    const std::optional<std::string> latin1 = formats::latin1FromUtf8(text);
    const std::string place = own.place + ": \"" + own.name + "\" ";
    if (!isText(own.name))
        problems_.push_back(place +
                            "is no text of the program; docs/configuration.md has them all");
    else if (!latin1)
        problems_.push_back(place + "has a letter that is not in Latin-1; write it without");
    else if (isOfLanguage)
        own_.emplace_back(own.name, *latin1);
}

std::string RProgramTexts::text(std::string_view name, std::string_view portuguese,
                                std::string_view english) const {
    const auto found = std::ranges::find_if(
        own_, [name](const auto& each) { return platform::sameIniName(each.first, name); });
    if (found != own_.end()) return found->second;
    return formats::latin1FromUtf8(isPortuguese_ ? portuguese : english).value_or("");
}

std::span<const platform::VersionString> RVersionStrings() { return kVersion; }

std::string RWarningText(int id) {
    const auto bytes = OMPlatform().modules().resource(kTextType, id);
    if (bytes) return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
    OMLog::writef(OMLog::Kind::Error, "Warning message TEXT resource %d not found", id);
    return OMFormat("TEXT resource %d not found.", id);
}
