// Where the program lies, and with it what came with it.
#pragma once

#include <string>
#include <string_view>

/// What lies beside the program's folder under this name, whether it is there or not; empty when
/// the host does not tell where the program lies.
[[nodiscard]] std::string besideProgram(std::string_view name);

/// Another program of the same folder, in the same way.
[[nodiscard]] std::string programBeside(std::string_view name);
