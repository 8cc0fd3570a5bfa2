// The script classes of the game: registered while this object lives.
#pragma once

class RScriptClasses {
  public:
    RScriptClasses();
    ~RScriptClasses();
    RScriptClasses(const RScriptClasses&) = delete;
    RScriptClasses& operator=(const RScriptClasses&) = delete;
};
