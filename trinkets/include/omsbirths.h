// The births of objects that the program makes itself: the buttons of a dialog, the pictures of a
// game. Handlers of their classes hear of them as of objects of scripts.
//
// A handler may do anything, also destroy what the object is a part of. So a function that makes
// such objects begins with
//
//     OMSBirths births;
//
// and those that were added are announced when the outermost of these goes, by when all is in
// order; the function must not be called in the middle of what a handler could spoil.
#pragma once

class OMScriptableObject;
struct OMSClass;

class OMSBirths {
  public:
    OMSBirths() { ++depth_; }
    ~OMSBirths();
    OMSBirths& operator=(OMSBirths&&) = delete;

    /// The object belongs to the program from now on: scripts cannot destroy it. One that goes
    /// before it was announced is not announced.
    void add(OMScriptableObject& object, const OMSClass& scriptClass);

  private:
    static inline int depth_ = 0;
};
