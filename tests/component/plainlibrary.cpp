// A library that marks that it was loaded, and that is no component.
#include <cstdio>
#include <cstdlib>

[[gnu::constructor]] static void loaded() {
    if (const char* mark = std::getenv("ZORBET_LOADED")) std::fclose(std::fopen(mark, "w"));
}
