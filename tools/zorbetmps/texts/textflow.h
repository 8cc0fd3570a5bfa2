// Where the texts in quotes of a script go: what is shown to the player, and what the script works
// with. A text is shown by properties, methods and commands that are there to show texts; what is
// stored in a name, or handed to a procedure, goes where the name's value goes. As names are global
// it is not asked in which order that happens.
//
// Anything else that is done with a value, as to compare it, to cut it, or to name an object by it,
// is work.
#pragma once

#include "zorbetmps/check/namefacts.h"

#include "yexpression.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace mps {

/// Of one text, in one statement.
struct TextUse {
    YSourceLine place;
    int column = 0;                ///< of its word, from 1
    std::string text;              ///< without its quotes; Latin-1, as all here
    std::string whole;             ///< the word, when the text is joined with others
    std::set<std::string> showers; ///< what may show it: "text of sign"; empty: nothing
    std::string why;               ///< what else is done with it: "compared"; empty when nothing is

    [[nodiscard]] bool isShown() const { return !showers.empty(); }
    [[nodiscard]] bool isWorkedWith() const { return !why.empty(); }
};

class TextFlow {
  public:
    /// Whether a statement shows nothing that is for people, whatever it does.
    using IsSkipped = std::function<bool(YSourceLine)>;

    TextFlow(const ScriptModel& model, const ScriptFacts& facts, IsSkipped isSkipped);

    /// In the order of the statements; behind them, without places, texts of lists.
    [[nodiscard]] const std::vector<TextUse>& uses() const { return uses_; }

  private:
    /// Where a value goes.
    struct Goal {
        enum class Kind { Shown, Worked, Name, Ignored };
        Kind kind = Kind::Worked;
        std::string what; ///< that shows it, that is done with it, or the name's key
    };
    /// What becomes of the values of a name.
    struct Fate {
        std::set<std::string> showers;
        std::string why;
    };
    struct Found {
        TextUse use;
        Goal goal;
    };

    void look(const Statement& statement);
    void lookAtAssignment(const Statement& statement);
    void lookAtCall(const Statement& statement);
    void lookAtSet(const Statement& statement);
    void lookAtPlay(const Statement& statement);
    void lookAtAction(const Statement& statement, std::size_t end);
    void workWith(const Statement& statement, std::size_t from, std::size_t to,
                  const std::string& why);
    void lookAtTarget(const Statement& statement, const Word& target);
    void lookAtArguments(const Statement& statement, std::size_t from, std::size_t to,
                         std::string_view forms, const Goal& shown, const std::string& why);
    void send(const Statement& statement, const Word& word, const Goal& goal);
    void send(const Statement& statement, const Word& word, const YVariable& leaf,
              const Goal& goal);
    void sendParts(const Statement& statement, const Word& word, const YVariable& variable,
                   const std::string& why);
    void sendNode(const Statement& statement, const Word& word, const YExpression::Node& node,
                  const Goal& goal);
    void addLists();
    void follow();
    [[nodiscard]] bool follow(const Goal& goal, Fate& fate) const;
    [[nodiscard]] std::string nameOf(const Statement& statement, std::size_t word) const;
    [[nodiscard]] bool shows(const std::set<const OMSClass*>& classes,
                             std::string_view entry) const;
    [[nodiscard]] std::set<const OMSClass*> classesOf(const Statement& statement) const;

    const ScriptModel& model_;
    const ScriptFacts& facts_;
    IsSkipped isSkipped_;
    std::vector<Found> found_;
    std::multimap<std::string, Goal> goals_; ///< of the values of names, by their keys
    std::map<std::string, Fate> fates_;
    std::vector<TextUse> uses_;
};

} // namespace mps
