// What is wrong with a script that can be read: goes through its statements once and tells what it
// finds. Nothing is told of what cannot be known without running the script.
#pragma once

#include "zorbetmps/check/finding.h"
#include "zorbetmps/check/namefacts.h"
#include "zorbetmps/check/vocabulary.h"

#include "yexpression.h"

#include <functional>
#include <optional>

namespace mps {

class GameResources;

/// What the rules ask of the game that a script belongs to.
struct GameFacts {
    /// Whether a script of that name can be started or read.
    std::function<bool(std::string_view)> hasScript;
    /// How the file's name is spelled; empty when there is none, or when it is spelled so.
    std::function<std::string(std::string_view)> otherSpelling;
    std::function<bool(std::string_view)> isComponent;
    /// "; did you mean NAME?", or nothing.
    std::function<std::string(std::string_view)> nearScript;
    const GameResources& resources;
};

class ScriptRules {
  public:
    using Tell = std::function<void(Rule, YSourceLine, int column, const std::string& text)>;

    ScriptRules(const ScriptModel& model, const ScriptFacts& facts, const Vocabulary& vocabulary,
                const GameFacts& game, Tell tell)
        : model_(model), facts_(facts), vocabulary_(vocabulary), game_(game),
          tell_(std::move(tell)) {}

    void run();

  private:
    using Node = YExpression::Node;

    void check(const Statement& statement);

    // Values and names.
    void checkSay(const Statement& statement);
    void checkPause(const Statement& statement);
    void checkDropped(const Statement& statement);
    void checkAssignment(const Statement& statement);
    void checkWord(const Statement& statement, const Word& word);
    void checkExpression(const Statement& statement, const Word& word);
    void checkOperands(const Statement& statement, const Word& word, const Node& node);
    void checkNoObject(const Statement& statement, const Word& word, const YVariable& leaf);
    void checkIsSet(const Statement& statement, const Word& word, const YVariable& leaf);
    void checkIsNumber(const Statement& statement, const Word& word, YVariable& leaf);
    void checkPrecedence(const Statement& statement, const Word& word, const Node& node);
    void checkText(const Statement& statement, const Word& word);
    void checkStored(const Statement& statement, const Word& target);
    void checkNames();
    void checkName(const std::string& name, const NameFacts& known);

    // Objects.
    void checkConstruction(const Statement& statement, const OMSClass& made);
    void checkSet(const Statement& statement);
    void checkGet(const Statement& statement);
    void checkPlay(const Statement& statement);
    void checkAction(const Statement& statement, std::size_t end);
    void checkCommand(const Statement& statement);
    void checkArguments(const Statement& statement, std::size_t from, std::size_t to,
                        const std::string& what, std::string_view forms);
    void checkNotObjects(const Statement& statement, std::size_t from, std::size_t to);
    /// The classes that the first word's object may have; none when that is not evident, or after a
    /// finding that it holds none.
    [[nodiscard]] std::optional<Vocabulary::Classes> objectOf(const Statement& statement,
                                                              bool mayBeClass);
    /// The property, method or event that a word names; none when that is not evident.
    [[nodiscard]] std::optional<std::string> entryNamed(const Statement& statement,
                                                        const Vocabulary::Classes& classes);
    void tellUnknown(const Statement& statement, const Vocabulary::Classes& classes,
                     Vocabulary::Kind kind, const std::string& name);

    // Resources.
    void checkResource(const Statement& statement, const Word& word, std::string_view kind,
                       bool mayBeNone);
    void checkResources(const Statement& statement, std::size_t from, std::size_t to,
                        std::string_view forms);
    /// `rows` are those of the property that the statement writes.
    void checkResourceProperty(const Statement& statement,
                               const std::vector<const OMSEntry*>& rows);
    void checkFrame(const Statement& statement, const OMSEntry& row);
    [[nodiscard]] std::optional<int> onlyNumber(const Word& word) const;
    [[nodiscard]] std::optional<int> animationMade(const Statement& assignment) const;
    [[nodiscard]] std::optional<int> onlyAnimation(const Word& word) const;

    // The flow.
    void checkCondition(const Statement& statement);
    void checkLoop(const Statement& statement);
    void checkCall(const Statement& statement);
    void checkTimer(const Statement& statement);
    void checkScriptName(const Statement& statement, const Word& word);
    void checkReached();
    void checkProcedures();
    void checkDrops();
    void checkOrder();
    void checkTimers();
    [[nodiscard]] bool givesWay(int from, int to, int depth) const;
    [[nodiscard]] bool mayChange(const Word& condition, const Statement& loop) const;
    [[nodiscard]] bool isLeft(const Statement& loop) const;

    void tell(Rule rule, const Statement& statement, const Word& word, const std::string& text) {
        tell_(rule, statement.place, word.column, text);
    }
    /// The words from there on have no effect.
    void tellLost(const Statement& statement, std::size_t from, const std::string& why);
    /// Of the names that something is stored in; empty when none is near.
    [[nodiscard]] std::string_view nearestName(std::string_view word) const;
    /// "; did you mean NAME?", or nothing.
    [[nodiscard]] std::string nearName(std::string_view word) const;

    const ScriptModel& model_;
    const ScriptFacts& facts_;
    const Vocabulary& vocabulary_;
    const GameFacts& game_;
    Tell tell_;
};

} // namespace mps
