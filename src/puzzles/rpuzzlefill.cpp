// How the entries of a puzzle come into being, and how a puzzle is filled from one of them.

#include "omformat.h"
#include "omid.h"
#include "omlog.h"
#include "omrandom.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"
#include "rpuzzle.h"
#include "rtext.h"
#include "world/shuffle.h"

#include <algorithm>
#include <initializer_list>
#include <numeric>
#include <string_view>

using platform::Rect;

namespace {

/// An object's first property of these that it has.
void setFirst(OMScriptableObject& object, std::initializer_list<std::string_view> properties,
              const std::string& value) {
    const auto first = std::ranges::find_if(
        properties, [&](std::string_view name) { return object.hasProperty(name); });
    if (first != properties.end()) object.setProperty(*first, value);
}

/// The others keep what they have. `method` writes records.
void noteMissing(const char* kind, std::size_t records, std::size_t objects, const char* method) {
    if (records < objects)
        OMLog::writef(
            OMLog::Kind::Warning,
            "RPuzzle: the entry has records for %d of %d %ss, the others stay as they are; "
            "%s adds records",
            static_cast<int>(records), static_cast<int>(objects), kind, method);
}

/// Where the text stands that fits its box.
void align(RText& text, int flag) {
    switch (static_cast<RPuzzle::Alignment>(flag)) {
    case RPuzzle::Alignment::Centred: text.offset(-text.textWidth() / 2, 0); return;
    case RPuzzle::Alignment::ToRight: text.offset(-text.textWidth(), 0); return;
    default: return;
    }
}

/// What a puzzle shows besides its answers must not catch the mouse in their place.
template <class Trinket>
void makeScenery(Trinket& trinket, int z) {
    trinket.setZ(z);
    trinket.setMovable(false);
    trinket.setTouchy(false);
}

} // namespace

// ---------------------------------------------------------------------------- entries

DSEntry* RPuzzle::entryToFill(int number) {
    if (number >= 1 && number <= DataSet::kMaxEntries) return &dataSet_.entry(number);
    RWarn(
        OMFormat("RPuzzle: entry number %d is not between 1 and %d", number, DataSet::kMaxEntries));
    return nullptr;
}

void RPuzzle::setAnswer(int number) {
    DSEntry* entry = entryToFill(number);
    if (!entry) return;
    OMSArguments& arguments = OMSArguments::global();
    for (std::string attribute; !(attribute = arguments.next()).empty();)
        entry->answers.push_back({attribute, arguments.next()});
}

void RPuzzle::setContainer(int number) {
    DSEntry* entry = entryToFill(number);
    if (!entry) return;
    OMSArguments& arguments = OMSArguments::global();
    for (std::string attribute; !(attribute = arguments.next()).empty();)
        entry->containers.push_back({attribute});
}

void RPuzzle::setPuzzleText(int number, int textNumber, int x, int y) {
    DSEntry* entry = entryToFill(number);
    if (!entry) return;
    OMSArguments& arguments = OMSArguments::global();
    const std::string fifth = arguments.next();
    const std::string sixth = arguments.next();
    const std::string seventh = arguments.next();
    const std::string eighth = arguments.next();
    DSText text{.number = static_cast<std::uint16_t>(textNumber), .x = x, .y = y};
    if (!seventh.empty() && !eighth.empty()) {
        text.width = OMSToInteger(fifth);
        text.height = OMSToInteger(sixth);
        text.z = OMSToInteger(seventh);
        text.text = eighth;
    } else {
        text.z = OMSToInteger(fifth);
        text.text = sixth;
        if (!seventh.empty()) text.flag = OMSToInteger(seventh);
    }
    entry->texts.push_back(std::move(text));
}

void RPuzzle::setPuzzleGraphic(int number) {
    DSEntry* entry = entryToFill(number);
    if (!entry) return;
    OMSArguments& arguments = OMSArguments::global();
    const int second = arguments.nextInteger();
    const int third = arguments.nextInteger();
    const std::string fourth = arguments.next();
    DSGraphic graphic;
    if (fourth.empty())
        graphic = {.z = second, .resourceId = OMNarrowId<std::uint16_t>(third)};
    else
        graphic = {second, third, OMSToInteger(fourth),
                   OMNarrowId<std::uint16_t>(arguments.nextInteger())};
    entry->graphics.push_back(graphic);
}

void RPuzzle::setPuzzleTextFont(const std::string& font, int size, const std::string& style,
                                int colorIndex) {
    if (style.empty())
        font_.useNFNT(OMSToInteger(font));
    else
        font_.useTrueType(font, OMSToInteger(style), size);
    setPuzzleTextColorIndex(colorIndex);
}

// ---------------------------------------------------------------------------- filling

void RPuzzle::start() {
    const OMSBirths births; // of its texts and graphics
    graphics_.clear();
    texts_.clear();
    if (dataSet_.isEmpty()) return;
    const unsigned start = ++starts_;
    const DSEntry entry = dataSet_.randomEntry(); // which a handler may add to
    fillAnswers(entry);
    if (starts_ == start) fillContainers(entry);
    if (starts_ != start) return; // a handler has started it anew
    for (const DSGraphic& graphic : entry.graphics) addGraphic(graphic);
    for (const DSText& text : entry.texts) addText(text);
}

void RPuzzle::fillAnswers(const DSEntry& entry) {
    noteMissing("answer", entry.answers.size(), answers_.size(), "setAnswer");
    std::vector<std::size_t> order(answers_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (scrambles_) world::shuffle(order);
    forEach(answers_, [&, start = starts_](RAnswer& answer, std::size_t index) {
        if (starts_ != start || order[index] >= entry.answers.size()) return;
        const DSAnswer& record = entry.answers[order[index]];
        answer.setProperty("attribute", record.attribute);
        setFirst(answer, {"text", "graphicID", "text1"}, record.text);
    });
}

void RPuzzle::fillContainers(const DSEntry& entry) {
    noteMissing("container", entry.containers.size(), containers_.size(), "setContainer");
    forEach(containers_, [&](RContainer& container, std::size_t index) {
        if (index < entry.containers.size())
            setFirst(container, {"attribute", "value", "answerMatchString", "correctSegments"},
                     entry.containers[index].attribute);
    });
}

void RPuzzle::addGraphic(const DSGraphic& record) {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return;
    std::unique_ptr<OMAnimation> graphic =
        OMAnimation::create(record.resourceId, record.x, record.y, *window);
    if (!graphic) return;
    makeScenery(*graphic, record.z);
    graphics_.push_back(std::move(graphic));
}

void RPuzzle::addText(const DSText& record) {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return;
    const bool bounded = record.width != DSText::kUnbounded;
    const int left = OMTrinket::nearestPlace(record.x);
    const int top = OMTrinket::nearestPlace(record.y);
    const Rect box =
        bounded ? Rect{left, top, OMTrinket::nearestPlace(std::int64_t{left} + record.width),
                       OMTrinket::nearestPlace(std::int64_t{top} + record.height)}
                : Rect{left, top, left + RText::kFitting, top + RText::kFitting};
    auto text = std::make_unique<RText>(*window, box);
    OMSBirths births;
    births.add(*text, RText::kClass);
    text->setFont(font_.use());
    text->setColorIndex(textColorIndex_);
    text->setWrap(bounded);
    text->setText(record.text);
    if (!bounded) align(*text, record.flag);
    makeScenery(*text, record.z);
    texts_.push_back(std::move(text));
}
