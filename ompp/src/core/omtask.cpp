#include "omtask.h"

#include "omapp.h"
#include "omdebug.h"
#include "omunderway.h"

OMTask::OMTask(OMLink link, std::uint32_t priority) : link_(std::move(link)), priority_(priority) {
    OMDebug::requireApp("OMTask");
    OMApp::getApp()->tasks().insert(*this);
}

OMTask::~OMTask() {
    if (OMApp* app = OMApp::getApp()) app->tasks().remove(*this);
}

void OMTask::setPriority(std::uint32_t priority) {
    priority_ = priority;
    OMApp* app = OMApp::getApp();
    if (!app) return;
    app->tasks().remove(*this);
    app->tasks().insert(*this);
}

void OMTaskList::insert(OMTask& task) {
    tasks_.insertInOrder(
        &task, [&](const OMTask& listed) { return listed.priority() <= task.priority(); });
}

void OMTaskList::remove(OMTask& task) { tasks_.remove(&task); }

void OMTaskList::runAll() {
    tasks_.apply([](OMTask& task) {
        if (task.suspended_) return;
        // The task may destroy itself in its own link.
        const OMLink link = task.link_;
        const OMUnderWay underWay;
        link();
    });
}
