#include "platform/host/machine/subprocess.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kLook{5};

/// What the child does with its files before it runs.
class FileActions {
  public:
    explicit FileActions(const Subprocess& process) {
        constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, process.output.c_str(), kNew,
                                           0644);
        ::posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, process.errors.c_str(), kNew,
                                           0644);
        ::posix_spawn_file_actions_addchdir_np(&actions_, process.folder.c_str());
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions& operator=(FileActions&&) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) return "it crashed: " + std::string(::strsignal(WTERMSIG(status)));
    if (WEXITSTATUS(status) != 0) return "it ended with " + std::to_string(WEXITSTATUS(status));
    return {};
}

} // namespace

std::string run(const Subprocess& process) {
    std::vector<char*> arguments;
    for (const std::string& argument : process.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t child = 0;
    const FileActions actions(process);
    if (const int error =
            ::posix_spawn(&child, arguments[0], actions.get(), nullptr, arguments.data(), environ);
        error != 0)
        return "it cannot be started: " + std::string(std::strerror(error));
    const auto end = std::chrono::steady_clock::now() + process.mostTime;
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
            return "it did not end within " + std::to_string(process.mostTime.count()) + " seconds";
        }
        std::this_thread::sleep_for(kLook);
    }
    return howItEnded(status);
}

} // namespace platform
