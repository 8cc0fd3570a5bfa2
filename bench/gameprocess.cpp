#include "gameprocess.h"

#include "platform/host/machine/installation.h"

#include <array>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

constexpr double kNano = 1e9;
constexpr double kNanoPerMicro = 1e3;

double nanoseconds(const std::timespec& time) {
    return static_cast<double>(time.tv_sec) * kNano + static_cast<double>(time.tv_nsec);
}

double now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return nanoseconds(time);
}

double nanoseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * kNano +
           static_cast<double>(time.tv_usec) * kNanoPerMicro;
}

std::string textOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Plays the game once.
void play(const std::string& program, const std::string& game, ProcessTimes& times) {
    std::array<std::string, 6> words{program, "--headless", "--content", game, "--home", game};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string report = game + "/report.txt";
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, report.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const double start = now();
    pid_t child = 0;
    const int failed =
        posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) throw std::runtime_error(program + " cannot be started");
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(program + " did not end well");
    const double end = now();
    if (textOf(report).find("\tbox\t") != std::string::npos)
        throw std::runtime_error(program + " showed a box");
    times.clock.add(end - start);
    times.processor.add(nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime));
}

} // namespace

ProcessTimes playGame(const std::string& folder, int repetitions) {
    const std::string program = platform::programNamed("zorbet").string();
    ProcessTimes times;
    for (int i = 0; i < repetitions; ++i) play(program, folder, times);
    return times;
}
