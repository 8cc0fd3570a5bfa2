#include "omopenlibrary.h"

#include "omdebug.h"
#include "omlog.h"
#include "ompath.h"

#include <optional>
#include <string>

namespace {

struct State {
    std::string name;
    std::unique_ptr<platform::File> file; ///< null when a stream took it over
    std::optional<OMNELibrary> library;   ///< none while no library is open
    bool keepOpen = false;

    [[nodiscard]] bool holds(std::string_view other) const {
        return library && OMPathSameName(name, other);
    }
    void release() {
        library.reset();
        file.reset();
    }
};

State& state() {
    static State theState;
    return theState;
}

void logOddities(const std::string& name, const OMNELibrary& library) {
    if (library.hasNameTable())
        OMLog::writef(OMLog::Kind::Error, "Resource library %s has a name table and cannot be read",
                      name.c_str());
    if (library.isDamaged())
        OMLog::writef(OMLog::Kind::Error, "Resource library %s is damaged, part of it is left out",
                      name.c_str());
}

void openState(std::string_view name) {
    State& open = state();
    open.release();
    std::unique_ptr<platform::File> file = OMPathOpen(name);
    if (!file) return;
    std::optional<OMNELibrary> library = OMNELibrary::read(*file);
    if (!OMDebug::check(library.has_value(), "!valid", "OMIStreamDLL16IsValidDLL - invalid file!"))
        return;
    open.name = name;
    logOddities(open.name, *library);
    open.file = std::move(file);
    open.library = std::move(library);
}

} // namespace

OMOpenLibrary::OMOpenLibrary(std::string_view name) {
    State& open = state();
    if (!open.holds(name))
        openState(name);
    else if (!open.file)
        open.file = OMPathOpen(name);
    if (open.library) library_ = &*open.library;
}

OMOpenLibrary::~OMOpenLibrary() {
    if (!state().keepOpen) state().release();
}

void OMOpenLibrary::setKeepOpen(bool keepOpen) {
    state().keepOpen = keepOpen;
    if (!keepOpen) state().release();
}

platform::File* OMOpenLibrary::handle(std::string_view name) {
    return state().holds(name) ? state().file.get() : nullptr;
}

std::unique_ptr<platform::File> OMOpenLibrary::takeHandle(std::string_view name) {
    return state().holds(name) ? std::move(state().file) : nullptr;
}
