// The numbers and texts that the variables of a script held, for the same script when it has begun
// anew. What only means something while it runs, objects and procedures, is not among them.
#pragma once

#include <string>
#include <utility>
#include <vector>

class YHeap;

class YKeptVariables {
  public:
    /// Of all variables, and of elements such as "home.3".
    explicit YKeptVariables(YHeap& heap);

    /// Sets those that the heap has, too, and that hold no object or procedure there.
    void giveBack(YHeap& heap) const;

  private:
    std::vector<std::pair<std::string, std::string>> values_; ///< by name
};
