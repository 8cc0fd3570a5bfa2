// What the statements of a script, taken together and in any order, do with each name: whether
// something is stored there and read, and of which classes the objects are that it may hold.
// Everything that cannot be followed makes a name "unknown", and nothing is said of it.
#pragma once

#include "zorbetmps/check/scriptmodel.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

struct OMSClass;

namespace mps {

struct NameFacts {
    std::vector<const Statement*> stores; ///< in the order of the text
    int reads = 0;
    bool isList = false;      ///< filled while the script is read
    bool isMentioned = false; ///< in a text, by which an object's method may find it
    bool isUnknown = false;
    bool holdsValue = false;           ///< a text or a number
    std::set<const OMSClass*> classes; ///< of objects that it may hold
    std::set<int> procedures;          ///< that it may hold, of ScriptModel::procedures

    [[nodiscard]] bool isSet() const {
        return !stores.empty() || isList || isUnknown || !procedures.empty();
    }
    /// Whether it holds objects and nothing else.
    [[nodiscard]] bool isObject() const {
        return !isUnknown && !holdsValue && procedures.empty() && !classes.empty();
    }
};

/// What a word may stand for.
struct WordFacts {
    bool isUnknown = false;
    bool isUnset = false; ///< a name that nothing is stored in, which reads as itself
    bool holdsValue = false;
    std::set<const OMSClass*> classes;
    std::set<int> procedures;
};

class ScriptFacts {
  public:
    /// Null for a word that is no class, or one that may be brought by a component.
    using ClassNamed = std::function<const OMSClass*(std::string_view)>;
    using IsComponent = std::function<bool(std::string_view)>;

    ScriptFacts(const ScriptModel& model, ClassNamed classNamed, IsComponent isComponent);

    /// What all members of a family share, for one of them.
    [[nodiscard]] const NameFacts& of(const YVariable& name) const;
    /// In a statement, which decides what RECEIVER is.
    [[nodiscard]] WordFacts of(const Word& word, const Statement& statement) const;
    [[nodiscard]] const std::map<std::string, NameFacts, std::less<>>& all() const {
        return names_;
    }
    /// Whether the name is stored to nowhere, and so reads as itself.
    [[nodiscard]] bool isUnset(const YVariable& name) const;
    /// Whether a text of the script has the name in it.
    [[nodiscard]] bool isMentioned(std::string_view name) const;
    /// The class that an assignment makes an object of; null when it makes none.
    [[nodiscard]] const OMSClass* constructed(const Statement& assignment) const;
    [[nodiscard]] bool constructsUnknown(const Statement& assignment) const;
    /// Names are read that cannot be known: with "$" or "drop var".
    [[nodiscard]] bool readsByText() const { return readsByText_; }
    /// Of ScriptModel::procedures: those that a statement calls, attaches or stores.
    [[nodiscard]] bool isUsed(int procedure) const;
    /// Of these: those that an event or a timer calls.
    [[nodiscard]] bool isHandler(int procedure) const;

    /// Under which members of a family count as one; other names are their own.
    [[nodiscard]] static std::string keyOf(std::string_view name);

  private:
    struct Receiver {
        bool isUnknown = false;
        std::set<const OMSClass*> classes;
    };

    void look(const Statement& statement);
    void lookAtAssignment(const Statement& statement);
    void read(const Word& word);
    void store(const Word& word, const Statement& statement);
    NameFacts& facts(const YVariable& name);
    void mention(std::string_view text);
    bool follow(const Statement& statement);
    bool followHandler(const Statement& statement);
    bool followCall(const Statement& statement);
    bool receive(const std::set<int>& procedures, const std::set<const OMSClass*>& classes,
                 bool isUnknown);

    const ScriptModel& model_;
    ClassNamed classNamed_;
    IsComponent isComponent_;
    std::map<std::string, NameFacts, std::less<>> names_;
    std::vector<Receiver> receivers_; ///< one a procedure
    std::set<int> used_;
    std::set<int> handlers_;
    bool readsByText_ = false;
};

} // namespace mps
