#include "platform/sdl/filechooser.h"

#include "formats/base/latin1.h"
#include "platform/host/files/descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int kPollMs = 50;
constexpr int kNotInstalled = 127; // as shells have it
constexpr int kKilled = -1;
constexpr std::size_t kLongestAnswer = 65536;

/// Starts a program found on the PATH with its standard output going to `output`; none when there
/// is no process for it. It goes when this program does, however that ends, and ends with
/// kNotInstalled when there is no such program.
std::optional<pid_t> spawn(std::vector<std::string> words, int output) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child != 0) return child > 0 ? std::optional(child) : std::nullopt;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() == parent && ::dup2(output, STDOUT_FILENO) >= 0)
        ::execvp(arguments[0], arguments.data());
    ::_exit(kNotInstalled);
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

/// The exit code; kKilled of one that had none.
int exitCodeOf(pid_t child) {
    int status = 0;
    pid_t result = 0;
    do {
        result = ::waitpid(child, &status, 0);
    } while (result < 0 && errno == EINTR);
    return result == child && WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
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
    const int code = exitCodeOf(*child);
    if (code == kNotInstalled) return std::nullopt;
    if (code != 0) return "";
    if (answer.ends_with('\n')) answer.pop_back();
    return answer;
}

/// The pattern as written and in both cases: the helpers tell cases apart.
std::string patternsOf(const std::string& pattern) {
    std::string all = pattern;
    for (const std::string& other : {formats::lowerAscii(pattern), formats::upperAscii(pattern)})
        if (other != pattern) all += ' ' + other;
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
