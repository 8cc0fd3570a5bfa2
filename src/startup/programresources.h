// What the program carries itself: its texts in each language, its icon and its version strings.
// All texts that a translator has to know are in the tables of programresources.cpp.
#pragma once

#include "platform/host/game/gameinfo.h"
#include "platform/host/machine/hostmodules.h"
#include "platform/host/screen/boxbuttons.h"

#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The program's texts in one language, those of its boxes and of their buttons.
class RProgramTexts {
  public:
    /// The program has them in Portuguese ("pt"), also when `language` is empty, and in English,
    /// which stands in for all other languages. Of `own`, the texts that a game brings, those of
    /// the language take the place of the program's.
    explicit RProgramTexts(std::string_view language = {},
                           std::span<const platform::BoxText> own = {});
    RProgramTexts& operator=(RProgramTexts&&) = delete;

    /// A table for the platform's modules, with the icon. It lives as long as this object.
    [[nodiscard]] std::span<const platform::ProgramResource> resources() const {
        return resources_;
    }
    /// What is to stand on buttons, by the words that input files and reports have for them.
    [[nodiscard]] const platform::ButtonLabels& buttons() const { return buttons_; }
    /// What of `own` cannot be used, in sentences for people.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    /// The text called `name`, Latin-1.
    [[nodiscard]] std::string text(std::string_view name, std::string_view portuguese,
                                   std::string_view english) const;
    void take(const platform::BoxText& own, bool isOfLanguage);

    bool isPortuguese_;
    std::vector<std::pair<std::string, std::string>> own_; ///< by name, Latin-1
    std::deque<std::string> texts_; ///< the bytes of the resources, which stay where they are
    std::vector<platform::ProgramResource> resources_;
    platform::ButtonLabels buttons_;
    std::vector<std::string> problems_;
};

/// Lives as long as the program.
[[nodiscard]] std::span<const platform::VersionString> RVersionStrings();

/// A warning text by its number, Latin-1. One that is missing is replaced by a text that says so,
/// and logged as an error.
[[nodiscard]] std::string RWarningText(int id);

namespace warningtext {
inline constexpr int kCannotSwitch = 1001;
inline constexpr int kNoDriver = 1002;
inline constexpr int kOldProcessor = 1010;
inline constexpr int kLargeScreen = 1015;
inline constexpr int kSmallScreen = 1016;
inline constexpr int kManyColors = 1017;
inline constexpr int kFewColors = 1018;
inline constexpr int kNoSound = 1019;
inline constexpr int kLittleMemory = 1020;
inline constexpr int kNoMoreMemory = 1021;
inline constexpr int kLittleSpace1 = 1022; ///< in front of the drive
inline constexpr int kLittleSpace2 = 1023; ///< in front of the megabytes
inline constexpr int kLittleSpace3 = 1024; ///< in front of the drive again
inline constexpr int kLittleSpace4 = 1025;
inline constexpr int kCannotReadCd = 1026;
inline constexpr int kDoNotShowAgain = 1027;
inline constexpr int kAlreadyOpen = 1030;
inline constexpr int kNotKept = 1031;       ///< in front of the folder; a reason follows
inline constexpr int kDiskIsFull = 1032;    ///< a reason
inline constexpr int kMayNotWrite = 1033;   ///< a reason
inline constexpr int kFolderInUse = 1034;   ///< a reason
inline constexpr int kSavingFails = 1035;   ///< a reason: all others
inline constexpr int kCannotOpen = 1036;    ///< in front of the file
inline constexpr int kStaysAsItIs = 1037;   ///< behind it
inline constexpr int kNothingIsKept = 1038; ///< the end of each of these
inline constexpr int kReallyLeave = 1100;   ///< of the exit screen, which is no warning
} // namespace warningtext

/// Of the same kind, but spoken (RWarningText reads them, too).
namespace spokentext {
inline constexpr int kOn = 1200;
inline constexpr int kOff = 1201;
inline constexpr int kNoVoice = 1202; ///< is shown
// What things are called that have no name.
inline constexpr int kButton = 1210;
inline constexpr int kPicture = 1211;
inline constexpr int kPlace = 1212;
inline constexpr int kPiece = 1213;
inline constexpr int kList = 1214;
inline constexpr int kBackpack = 1215;
inline constexpr int kMap = 1216;
inline constexpr int kBackground = 1217;
inline constexpr int kText = 1218;
// What is said besides a name.
inline constexpr int kCanBeMoved = 1220; ///< behind it; in front of it are all others
inline constexpr int kInHand = 1221;
inline constexpr int kOver = 1222;
inline constexpr int kLetGo = 1223;
inline constexpr int kPutBack = 1224;
} // namespace spokentext

/// The program's icon: a BMP file of 8 bits a pixel; index 0 is transparent. Lives as long as the
/// program.
[[nodiscard]] std::span<const std::byte> RProgramIcon();
