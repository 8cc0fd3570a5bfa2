// A periodic callback: run once in every pass of the main loop, in descending order of priority.
#pragma once

#include "ominstalled.h"
#include "omlink.h"
#include "omlist.h"

#include <cstdint>

class OMTask;

/// The tasks of an application in the order in which they run.
class OMTaskList : public OMInstalled<OMTaskList> {
  public:
    /// Calls the link of every task that is not suspended. A task may remove itself or others.
    void runAll();
    [[nodiscard]] std::size_t count() const { return tasks_.count(); }

  private:
    friend class OMTask;
    void insert(OMTask& task);
    void remove(OMTask& task);

    OMList<OMTask> tasks_;
};

class OMTask {
  public:
    /// The lowest priority, that of the scripts. A task that is made while they run has its turn
    /// before theirs.
    static constexpr std::uint32_t kWithScripts = 0;

    /// Enters the application's task list. Among equal priorities the task made last runs first.
    /// Fatal without an application object.
    OMTask(OMLink link, std::uint32_t priority);
    ~OMTask();
    OMTask& operator=(OMTask&&) = delete;

    [[nodiscard]] std::uint32_t priority() const { return priority_; }

    void setPriority(std::uint32_t priority);
    void setLink(OMLink link) { link_ = std::move(link); }
    void suspend() { suspended_ = true; }
    void resume() { suspended_ = false; }

  private:
    friend class OMTaskList;

    OMLink link_;
    std::uint32_t priority_;
    bool suspended_ = false;
};
