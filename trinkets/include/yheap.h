// The table of script variables. A variable's index never changes.
#pragma once

#include "rvar.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

class YHeap {
  public:
    static constexpr int kSystem = 0;
    static constexpr int kReceiver = 1;
    static constexpr int kResult = 2;
    static constexpr int kPredefined = 3;
    /// Indices that fit the operand words of compiled scripts.
    static constexpr int kMaxOperand = 32767;
    /// Names beyond this number share one variable, so that a script cannot eat all memory.
    static constexpr int kMaxVariables = 1 << 20;

    YHeap();
    ~YHeap();
    YHeap& operator=(YHeap&&) = delete;

    /// The heap that scripts use now. Unloading a script replaces it.
    [[nodiscard]] static YHeap& current();
    /// Destroys every variable and the objects they own, and starts anew.
    static void recreate();

    /// The script whose words these are, for who knows what its texts mean.
    void setScript(std::string name) { script_ = std::move(name); }
    [[nodiscard]] const std::string& script() const { return script_; }

    [[nodiscard]] int count() const { return static_cast<int>(variables_.size()); }
    [[nodiscard]] YVariable& get(int index) { return *variables_[static_cast<std::size_t>(index)]; }

    /// Index of the variable with exactly that text; made and classified if missing.
    int intern(std::string_view text);
    /// As intern for a word of a statement: a word with an operator becomes an expression. `error`
    /// gets an expression error code, or 0.
    int internOperand(std::string_view text, int& error);
    /// -1 when no variable has that text.
    [[nodiscard]] int lookup(std::string_view text) const;

    /// Takes those words from the end of the table, down to the index `first`, that hold nothing
    /// and that no other word is made of. Nobody else may know them.
    void dropWordsFrom(int first);

    /// Adds the next element to the family of `name` and gives it that string form.
    void appendElement(YVariable& name, std::string_view value);
    /// Empties every variable whose name is `name`, "." and a suffix without a further ".".
    void emptyFamily(std::string_view name);
    /// Empties every variable that owns an object.
    void emptyOwners();

    /// Empties every variable that refers to `object`; with `destroy` the object is destroyed then,
    /// unless its first holder is an alias. True when the first holder was not an alias.
    bool forget(OMScriptableObject* object, bool destroy);
    /// The first owning variable that refers to the object, or null; a second one is reported.
    [[nodiscard]] const YVariable* holderOf(const OMScriptableObject* object) const;

    /// Whether nested names or expressions have become too deep to go on; a guard object holds one
    /// level.
    class Nesting {
      public:
        explicit Nesting(YHeap& heap) : heap_(heap) { ++heap_.nesting_; }
        ~Nesting() { --heap_.nesting_; }
        Nesting& operator=(Nesting&&) = delete;
        [[nodiscard]] bool tooDeep() const { return heap_.nesting_ > kMaxNesting; }

      private:
        YHeap& heap_;
    };

  private:
    friend class YVariable;
    friend class YStoredVariables;
    static constexpr int kMaxNesting = 100;

    /// Variables named after this one, a dot and a number.
    struct Family {
        int first = 0; ///< index of the first member
        int last = 0;  ///< largest number
    };

    YVariable& create(std::string_view text);
    void noteFamily(const YVariable& member);

    std::string script_;
    std::vector<std::unique_ptr<YVariable>> variables_;
    std::unordered_map<std::string_view, int> indices_; ///< keys lie in the variables
    std::unordered_map<std::string_view, Family> families_;
    int nesting_ = 0;
};
