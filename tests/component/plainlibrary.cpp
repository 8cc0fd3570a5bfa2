// A library for the tests of loading: it counts its calls in the environment of the process, where
// the test can see them.
#include <cstdlib>

extern "C" void plainLibraryCalled() { ::setenv("ZORBET_PLAIN_LIBRARY", "called", 1); }
