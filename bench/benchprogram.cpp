#include "benchprogram.h"

#include <cstdio>
#include <exception>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

} // namespace

BenchProgram::BenchProgram(const std::string& purpose, const std::string& name)
    : app_(purpose, name) {
    app_.add_option("--repetitions", repetitions_, "Measurements of each thing")
        ->check(CLI::Range(1, 1000));
}

int BenchProgram::run(int argc, char** argv, const std::function<void(int)>& measure) {
    try {
        app_.parse(argc, argv);
        measure(repetitions_);
    } catch (const CLI::Success& wish) { // help
        return app_.exit(wish);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "%s\n\n%s", error.what(), app_.help().c_str());
        return kWrongCommandLine;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return kFailed;
    }
    return 0;
}
