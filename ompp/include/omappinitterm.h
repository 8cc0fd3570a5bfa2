// What a part of the program, or a component of it, does before the main procedure and after it. An
// object of static storage registers itself; either function may be null.
#pragma once

class OMAppInitTerm {
  public:
    OMAppInitTerm(void (*initialize)(), void (*terminate)());
    ~OMAppInitTerm();
    OMAppInitTerm& operator=(OMAppInitTerm&&) = delete;

    /// Of all that are registered, in the order of their making.
    static void initializeAll();
    /// In the reverse order.
    static void terminateAll();

  private:
    void (*initialize_)();
    void (*terminate_)();
};
