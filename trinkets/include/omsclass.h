// What scripts see of a class: its name, and its whole vocabulary as rows of one constexpr array,
// in the order of the class's reference page.
//
//     constexpr OMSEntry kVocabulary[] = {
//         oms::data<&Lamp::level, &Lamp::setLevel>("level", "brightness, 0 to 100"),
//         oms::readOnly<&Lamp::hours>("hours", "hours burnt"),
//         oms::data<&Lamp::hum, &Lamp::setHum>("hum", "-1: none").of("sound"),
//         oms::method<&Lamp::blink>("blink", "[times]"), // void blink(std::optional<int> times)
//         oms::lasting<&Lamp::fade>("fade", "ms"),       // calls fireCompletion when it is done
//         oms::event("lit"),
//     };
//     const OMSClass Lamp::kClass{"Lamp", &OMTrinket::kClass, kVocabulary, &Lamp::create};
//
// Getters return int, bool, double, std::string or a rectangle, setters take one of the first four,
// methods what omsarguments.h converts. A property with index arguments reads them from the
// argument list itself.
#pragma once

#include "omsarguments.h"
#include "omscrptb.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

/// One row of a class table.
struct OMSEntry {
    OMScriptableObjectProperty::Kind kind;
    std::string_view name;
    std::string_view help;
    void (*set)(OMScriptableObject&, std::string_view) = nullptr; ///< null: writes are ignored
    std::string (*get)(OMScriptableObject&) = nullptr;
    void (*run)(OMScriptableObject&) = nullptr;
    bool lasting = false;           ///< the method reports itself when its work is finished
    bool isNumber = false;          ///< what a property stores is a number, or yes and no
    std::string_view resource = {}; ///< what a property numbers: "animation", "sound", ...
    bool isSerial = false;          ///< a read without an argument is of the next of several values

    /// The same row of a property that holds the number of a resource. The word is what the tables
    /// call such numbers among the arguments, too.
    [[nodiscard]] constexpr OMSEntry of(std::string_view named) const {
        OMSEntry entry = *this;
        entry.resource = named;
        return entry;
    }
    /// The same row of a property whose reads go from one value to the next.
    [[nodiscard]] constexpr OMSEntry serial() const {
        OMSEntry entry = *this;
        entry.isSerial = true;
        return entry;
    }
};

/// A class as scripts know it. It outlives all objects of the class.
struct OMSClass {
    std::string_view name;
    const OMSClass* base;                 ///< whose vocabulary the objects have too
    std::span<const OMSEntry> vocabulary; ///< hides the same names of the base
    /// With the arguments in OMSArguments::global(); null when it refuses. No function for classes
    /// that only have heirs, or whose objects only the program makes.
    std::unique_ptr<OMScriptableObject> (*create)() = nullptr;
    /// What it takes then, in the form of the methods' arguments: "animation [z] | animation x
    /// y z".
    std::string_view arguments = {};
    /// What objects have at times, and add and remove themselves.
    std::span<const OMSEntry> passing = {};

    /// The row of that name here or in a base; null without.
    [[nodiscard]] const OMSEntry* find(std::string_view entry) const {
        for (const OMSClass* from = this; from; from = from->base)
            for (const OMSEntry& row : from->vocabulary)
                if (row.name == entry) return &row;
        return nullptr;
    }
};

namespace oms {

namespace detail {

/// The object, as what its members belong to: a part that is no scriptable object knows whose it
/// is.
template <class Part>
Part& partOf(OMScriptableObject& object) {
    if constexpr (std::is_base_of_v<OMScriptableObject, Part>)
        return static_cast<Part&>(object);
    else
        return Part::of(object);
}

template <auto Member>
struct Call;
template <class Object, class... Arguments, void (Object::*Member)(Arguments...)>
struct Call<Member> {
    static void run(OMScriptableObject& object) {
        callWithArguments(partOf<Object>(object), Member);
    }
};

template <auto Member>
struct Set;
template <class Object, class Value, void (Object::*Member)(Value)>
struct Set<Member> {
    static constexpr bool kIsNumber = std::is_arithmetic_v<std::decay_t<Value>>;
    static void run(OMScriptableObject& object, std::string_view text) {
        (partOf<Object>(object).*Member)(fromText<std::decay_t<Value>>(text));
    }
};

template <auto Member>
struct Get;
template <class Object, class Value, Value (Object::*Member)() const>
struct Get<Member> {
    static std::string run(OMScriptableObject& object) {
        return toText((partOf<Object>(object).*Member)());
    }
};
template <class Object, class Value, Value (Object::*Member)()>
struct Get<Member> {
    static std::string run(OMScriptableObject& object) {
        return toText((partOf<Object>(object).*Member)());
    }
};

} // namespace detail

template <auto Getter, auto Setter>
constexpr OMSEntry data(std::string_view name, std::string_view help = {}) {
    return {OMScriptableObjectProperty::Kind::Data,
            name,
            help,
            &detail::Set<Setter>::run,
            &detail::Get<Getter>::run,
            nullptr,
            false,
            detail::Set<Setter>::kIsNumber};
}

template <auto Getter>
constexpr OMSEntry readOnly(std::string_view name, std::string_view help = {}) {
    return {OMScriptableObjectProperty::Kind::Data,
            name,
            help,
            nullptr,
            &detail::Get<Getter>::run,
            nullptr};
}

/// Reading it gives nothing.
template <auto Setter>
constexpr OMSEntry writeOnly(std::string_view name, std::string_view help = {}) {
    return {OMScriptableObjectProperty::Kind::Data, name, help, &detail::Set<Setter>::run};
}

template <auto Method>
constexpr OMSEntry method(std::string_view name, std::string_view help = {}) {
    return {OMScriptableObjectProperty::Kind::Method,
            name,
            help,
            nullptr,
            nullptr,
            &detail::Call<Method>::run};
}

/// A method whose work goes on after the call: the object calls fireCompletion at its end.
template <auto Method>
constexpr OMSEntry lasting(std::string_view name, std::string_view help = {}) {
    OMSEntry entry = method<Method>(name, help);
    entry.lasting = true;
    return entry;
}

constexpr OMSEntry event(std::string_view name, std::string_view help = {}) {
    return {OMScriptableObjectProperty::Kind::Event, name, help};
}

/// The rows of several tables as one table: what classes share is written once.
template <std::size_t... Sizes>
constexpr auto joined(const OMSEntry (&... tables)[Sizes]) {
    std::array<OMSEntry, (Sizes + ...)> all{};
    auto end = all.begin();
    ((end = std::ranges::copy(tables, end).out), ...);
    return all;
}

/// How classes without arguments are created.
template <class Class>
std::unique_ptr<OMScriptableObject> create() {
    return std::make_unique<Class>();
}

} // namespace oms
