// What the progress screen (rlaptrap.h) is made of, and where: a layout for practice and one for
// the game. Authors write them into "progress.map", a text file among the game's resources:
//
//     GAME                                the layout that follows
//     PANEL 12200 0 0                     its panel
//     PART seenOasisMap 12203 O*          at these locations, introduced by a sound
//     MAP OMA 12039 340 190               a location to choose
//     LEVELS HERE 12011 430 100 ...       four level buttons and a check box
//
// A line that makes no sense is logged with its number and left out. A layout that the file does
// not have is the built-in one.
#pragma once

#include "omao.h"
#include "omeffectsounds.h"
#include "world/playerrecord.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A location of a layout: the one that the screen was opened for.
inline constexpr int kProgressHere = -1;

/// An animation with its place in pixels from the left upper corner of the panel.
struct ProgressPicture {
    int id;
    int x;
    int y;
};

struct ProgressMapButton {
    int location; ///< or kProgressHere
    ProgressPicture picture;
};

struct ProgressLevels {
    int location; ///< or kProgressHere
    std::array<ProgressPicture, world::kLevels> buttons;
    std::optional<ProgressPicture> checkBox;
};

/// A part of a layout that only some locations have, and that is introduced once.
struct ProgressPart {
    std::string flag;                     ///< property of the player; empty for none
    int sound = OMEffectSounds::kNoSound; ///< played while the flag is not set
    std::vector<std::string> places; ///< names of locations, or their beginnings and "*"; none: all
    std::vector<ProgressMapButton> mapButtons;
    std::vector<ProgressLevels> levels;

    /// Whether it is there when the screen is opened for that location.
    [[nodiscard]] bool isAt(int location) const;
};

struct ProgressName {
    static constexpr int kSystemFont = -1;

    int x; ///< as those of pictures
    int y;
    int font;  ///< id of an `NFNT` resource, or kSystemFont
    int color; ///< palette index
};

struct ProgressMusic {
    ProgressPicture on;
    ProgressPicture off;
};

struct ProgressLayout {
    /// In window pixels, where the script says nothing else.
    ProgressPicture panel{-1, OMAnimation::kEmbedded, OMAnimation::kEmbedded};
    int sound = OMEffectSounds::kNoSound; ///< played the first time
    int hint = OMEffectSounds::kNoSound;
    std::optional<ProgressPicture> closeButton;
    std::optional<ProgressPicture> refusal;
    std::optional<ProgressName> name; ///< of the player
    std::optional<ProgressMusic> music;
    std::vector<ProgressPart> parts;
};

struct ProgressLayouts {
    ProgressLayout practice;
    ProgressLayout game;

    [[nodiscard]] static ProgressLayouts builtIn();
    /// `path` names the file in the log.
    [[nodiscard]] static ProgressLayouts read(std::string_view path, std::string_view text);
    /// Those of the file on the search path, or the built-in ones where there is none.
    [[nodiscard]] static ProgressLayouts find();
};
