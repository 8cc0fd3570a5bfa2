// printf-style texts: the messages of the program are quoted in that form everywhere.
#pragma once

#include <string>

[[nodiscard, gnu::format(printf, 1, 2)]] std::string OMFormat(const char* format, ...);
