#include "platform/host/machine/subprocess.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kLook{5};

/// What the child does with its files before it runs, in the order of the calls.
class FileActions {
  public:
    FileActions() {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions& operator=(FileActions&&) = delete;

    void print(int to, const std::filesystem::path& file) {
        ::posix_spawn_file_actions_addopen(&actions_, to, file.c_str(),
                                           O_WRONLY | O_CREAT | O_TRUNC, 0644);
    }
    void print(int to, const Descriptor& file) {
        ::posix_spawn_file_actions_adddup2(&actions_, file.number(), to);
    }
    void enter(const std::filesystem::path& folder) {
        ::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

/// Why it did not begin; else nothing.
std::string start(const std::vector<std::string>& arguments, const FileActions& actions,
                  pid_t& child) {
    std::vector<char*> words;
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    const int error =
        ::posix_spawn(&child, words[0], actions.get(), nullptr, words.data(), environ);
    return error == 0 ? std::string()
                      : "it cannot be started: " + std::string(std::strerror(error));
}

/// Kills it.
std::string endLate(pid_t child, std::chrono::seconds mostTime) {
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    return "it did not end within " + std::to_string(mostTime.count()) + " seconds";
}

std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) return "it crashed: " + std::string(::strsignal(WTERMSIG(status)));
    if (WEXITSTATUS(status) != 0) return "it ended with " + std::to_string(WEXITSTATUS(status));
    return {};
}

} // namespace

std::string run(const Subprocess& process) {
    FileActions actions;
    actions.print(STDOUT_FILENO, process.output);
    actions.print(STDERR_FILENO, process.errors);
    actions.enter(process.folder);
    pid_t child = 0;
    if (const std::string problem = start(process.arguments, actions, child); !problem.empty())
        return problem;
    const auto end = std::chrono::steady_clock::now() + process.mostTime;
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) return endLate(child, process.mostTime);
        std::this_thread::sleep_for(kLook);
    }
    return howItEnded(status);
}

ProgramBeside::ProgramBeside(const std::vector<std::string>& arguments,
                             const std::filesystem::path& folder, std::chrono::seconds mostTime)
    : mostTime_(mostTime), lastMoment_(std::chrono::steady_clock::now() + mostTime),
      output_(::memfd_create("output", MFD_CLOEXEC)) {
    FileActions actions;
    actions.print(STDOUT_FILENO, output_);
    actions.print(STDERR_FILENO, output_);
    actions.enter(folder);
    if (std::string problem = start(arguments, actions, child_); !problem.empty()) {
        child_ = kNone;
        end_ = std::move(problem);
    }
}

ProgramBeside::~ProgramBeside() {
    if (!end_) static_cast<void>(endLate(child_, mostTime_));
}

std::optional<std::string> ProgramBeside::ended() {
    if (end_) return end_;
    int status = 0;
    if (::waitpid(child_, &status, WNOHANG) != 0)
        end_ = howItEnded(status);
    else if (std::chrono::steady_clock::now() >= lastMoment_)
        end_ = endLate(child_, mostTime_);
    return end_;
}

std::string ProgramBeside::printed() const {
    std::string text;
    char part[4096];
    for (;;) {
        const ssize_t size =
            ::pread(output_.number(), part, sizeof part, static_cast<off_t>(text.size()));
        if (size <= 0) return text;
        text.append(part, static_cast<std::size_t>(size));
    }
}

} // namespace platform
