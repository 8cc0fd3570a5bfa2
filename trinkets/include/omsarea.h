// The arguments of classes that cover an area: "x y width height [z]".
#pragma once

#include "omtrinketwindow.h"

#include <memory>
#include <optional>

struct OMSArea {
    /// What becomes of lengths below 0.
    enum class Lengths { Zero, Any };

    platform::Rect box;
    std::optional<int> z;

    /// The next arguments of a script as an area of the window. Missing ones are 0; all are kept to
    /// what trinkets may have.
    [[nodiscard]] static OMSArea read(Lengths lengths);

    /// How classes that cover an area are created, in the main window. Null without one.
    template <class Class, Lengths kLengths = Lengths::Zero>
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> create() {
        OMTrinketWindow* window = OMTrinketWindow::mainWindow();
        if (!window) return nullptr;
        const OMSArea area = read(kLengths);
        auto object = std::make_unique<Class>(*window, area.box);
        if (area.z) object->setZ(*area.z);
        return object;
    }
};
