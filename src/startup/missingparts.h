// What of a game was looked for and is not there, told to whoever started the program.
#pragma once

#include <span>
#include <string>

/// `roots` are the folders that were searched (RResources::roots).
void RTellNoLibrary(std::span<const std::string> roots);
void RTellNoStartScript(std::span<const std::string> roots, const std::string& script);
