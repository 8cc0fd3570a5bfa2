// An action that has an object of the script do something that takes its time. The object's class
// has `pause` and `resume`.
//
// The action does not own the object. One that is gone has nothing to do; one that goes meanwhile
// ends the action in the next pass.
#pragma once

#include "action.h"

template <class Object>
class ActionOf : public Action {
  public:
    ActionOf(Object& object, bool interruptible) : Action(interruptible), object_(&object) {}

  protected:
    /// Has the object begin. `done` is to be called once, at its end, and when the object goes.
    virtual void perform(Object& object, OMLink done) = 0;
    /// Ends it before its time.
    virtual void interrupt(Object& object) = 0;
    /// Called at the end if the object was paused then, and would stay so.
    virtual void letGo(Object&) {}

    void begin() final {
        if (Object* worker = object())
            perform(*worker, doneLink());
        else
            finish();
    }
    /// Letting go comes first: a handler of the object may destroy both.
    void end(End how) final {
        Object* worker = object();
        if (worker && isPaused()) letGo(*worker);
        if (worker && how == End::Halted) interrupt(*worker);
    }
    void hold() final {
        if (Object* worker = object()) worker->pause();
    }
    void goOn() final {
        if (Object* worker = object()) worker->resume();
    }
    [[nodiscard]] bool hasLostObject() const final { return !object_; }

  private:
    [[nodiscard]] Object* object() const { return static_cast<Object*>(object_.object()); }

    OMSWatch object_;
};
