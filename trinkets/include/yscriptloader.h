// How a script comes to a thread: found by its name, read, and compiled unless it is precompiled.
#pragma once

#include "omlink.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class OMIStream;
class YEngine;
struct YScript;

/// Turns a script's name into a stream; null when there is no such script.
using YScriptLocator = OMLinkTo<std::unique_ptr<OMIStream>(std::string_view name)>;

/// The name of the file that a person chooses.
[[nodiscard]] std::string YChooseScript();

/// A file of the current directory, else what the locator finds; its variables come into the heap.
/// One that cannot be read ends the program; one that does not compile is shown and gives null.
[[nodiscard]] std::unique_ptr<YScript> YLoadScript(YEngine& engine, const std::string& name,
                                                   const YScriptLocator& locator);

/// What is wrong with a script and what it includes, as "FILE:LINE: TEXT"; nothing when it could be
/// loaded now. Its variables come into no heap that scripts use, and nobody is shown anything.
[[nodiscard]] std::vector<std::string> YCheckScript(const std::string& name,
                                                    const YScriptLocator& locator);
