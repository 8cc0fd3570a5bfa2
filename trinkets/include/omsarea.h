// The arguments of classes that cover an area.
#pragma once

#include "omsarguments.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <memory>
#include <optional>

struct OMSArea {
    static constexpr std::string_view kArguments = "x y width height [z]";
    /// What becomes of lengths below 0.
    enum class Lengths { Zero, Any };

    platform::Rect box;
    std::optional<int> z;

    /// The next arguments of a script as an area of the window. Missing ones are 0; all are kept to
    /// what trinkets may have.
    [[nodiscard]] static OMSArea read(Lengths lengths) {
        constexpr int kFarthest = OMTrinket::kFarthest;
        OMSArguments& arguments = OMSArguments::global();
        const auto next = [&](int least) {
            return std::clamp(arguments.nextInteger(), least, kFarthest);
        };
        const int shortest = lengths == Lengths::Any ? -kFarthest : 0;
        OMSArea area;
        const int left = next(-kFarthest);
        const int top = next(-kFarthest);
        const int width = next(shortest);
        const int height = next(shortest);
        area.box = {left, top, left + width, top + height};
        if (arguments.hasNext()) area.z = arguments.nextInteger();
        return area;
    }

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
