#include "platform/sdl/filechooser.h"

#include "platform/host/descriptor.h"
#include "platform/host/latin1.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int kPollMs = 50;
constexpr std::size_t kLongestAnswer = 65536;

/// Starts a program found on the PATH with its standard output going to `output`; none when it
/// cannot be started.
std::optional<pid_t> spawn(std::vector<std::string> words, int output) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    if (::posix_spawn_file_actions_init(&actions) != 0) return std::nullopt;
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t child = 0;
    const int error =
        ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(child) : std::nullopt;
}

/// Reads until the helper closes its output.
std::string readAnswer(int input, pid_t child, const std::function<bool()>& stillWaiting) {
    std::string answer;
    std::array<char, 512> buffer{};
    bool ended = false;
    while (answer.size() < kLongestAnswer) {
        if (!ended && !stillWaiting()) {
            ended = true;
            ::kill(child, SIGTERM);
        }
        pollfd state{.fd = input, .events = POLLIN, .revents = 0};
        if (::poll(&state, 1, kPollMs) <= 0) continue;
        const ssize_t count = ::read(input, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        answer.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return answer;
}

bool succeeded(pid_t child) {
    int status = 0;
    pid_t result = 0;
    do {
        result = ::waitpid(child, &status, 0);
    } while (result < 0 && errno == EINTR);
    return result == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// What the helper wrote, empty when it failed or was cancelled; none when it is not installed.
std::optional<std::string> ask(std::vector<std::string> words,
                               const std::function<bool()>& stillWaiting) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    const Descriptor input(ends[0]);
    Descriptor output(ends[1]);
    const auto child = spawn(std::move(words), output.number());
    output.close();
    if (!child) return std::nullopt;
    std::string answer = readAnswer(input.number(), *child, stillWaiting);
    if (!succeeded(*child)) return "";
    if (answer.ends_with('\n')) answer.pop_back();
    return answer;
}

/// The pattern as written and in both cases: the helpers tell cases apart.
std::string patternsOf(const std::string& pattern) {
    std::string upper;
    std::string lower;
    for (const char c : pattern) {
        const bool letter = upperLatin1(c) >= 'A' && upperLatin1(c) <= 'Z';
        upper += letter ? static_cast<char>(upperLatin1(c)) : c;
        lower += letter ? static_cast<char>(upperLatin1(c) | 0x20) : c;
    }
    std::string all = pattern;
    for (const std::string& other : {lower, upper}) {
        if (other != pattern) all += ' ' + other;
    }
    return all;
}

} // namespace

std::variant<std::string, NoFileChooser> chooseFile(const FileQuestion& question,
                                                    const std::function<bool()>& stillWaiting) {
    const std::string patterns = patternsOf(question.pattern);
    const std::string start = question.folder + "/";
    const std::array<std::vector<std::string>, 2> helpers{{
        {"zenity", "--file-selection", "--title=" + question.title, "--filename=" + start,
         "--file-filter=" + patterns},
        {"kdialog", "--title", question.title, "--getopenfilename", start, patterns},
    }};
    for (const std::vector<std::string>& helper : helpers) {
        if (auto answer = ask(helper, stillWaiting)) return *std::move(answer);
    }
    return NoFileChooser{};
}

} // namespace platform
