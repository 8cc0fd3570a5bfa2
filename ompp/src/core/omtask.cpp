#include "omtask.h"

#include "omdebug.h"
#include "omunderway.h"

OMTask::OMTask(OMLink link, std::uint32_t priority) : link_(std::move(link)), priority_(priority) {
    OMDebug::requireApp("OMTask");
    OMTaskList::current()->insert(*this);
}

OMTask::~OMTask() {
    if (OMTaskList* list = OMTaskList::current()) list->remove(*this);
}

void OMTask::setPriority(std::uint32_t priority) {
    priority_ = priority;
    OMTaskList* list = OMTaskList::current();
    if (!list) return;
    list->remove(*this);
    list->insert(*this);
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
