// A library for the tests of loading: it counts its calls in the environment of the process, where
// the test can see them, and marks that it was loaded.
#include <cstdio>
#include <cstdlib>

[[gnu::constructor]] static void loaded() {
    if (const char* mark = std::getenv("ZORBET_LOADED")) std::fclose(std::fopen(mark, "w"));
}

extern "C" void plainLibraryCalled() { ::setenv("ZORBET_PLAIN_LIBRARY", "called", 1); }
