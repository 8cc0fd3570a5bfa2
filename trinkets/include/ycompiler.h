// The compiler: turns a script's text into instructions in one pass, statement by statement.
//
// Lines end with CR; every other byte outside "!" to "~" is a blank. A text without any CR is taken
// to end its lines with LF. Errors are records; the first one ends the compilation, unless the
// compiler is asked to go on and collect them all.
#pragma once

#include "omlink.h"
#include "yheap.h"
#include "yscript.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct YCompileError {
    enum class Kind {
        Expression,     ///< `code` is one of yerror
        MissingOperand, ///< a statement without a word that it needs
        OpenBlock,      ///< "[" without "]" at the end, or a statement without its body
        StrayBracket,   ///< "]" without "["
        StrayElse,      ///< "else" that follows no "if" body
        OutsideLoop,    ///< "break" or "continue"
        ProcedureName,  ///< of a procedure, which is no plain name
        TooManyInstructions,
        TooManyOperands,
        TooManyNames,
        NestedTooDeep,     ///< blocks, or includes
        UndefinedCommand,  ///< a warning: the statement is compiled all the same
        IncludeUnreadable, ///< ends the program; `text` is the whole message
    };
    Kind kind = Kind::Expression;
    int code = 0;
    std::string file;
    int line = 0;          ///< from 1
    int column = 0;        ///< from 1
    std::string text;      ///< the script at the place of the error, or the word or message
    std::string statement; ///< how the statement with an unclosed quote begins

    [[nodiscard]] bool isWarning() const { return kind == Kind::UndefinedCommand; }
    /// For people who write scripts: what is wrong, in words.
    [[nodiscard]] std::string description() const;
};

class YCompiler {
  public:
    /// The text of an included file, or the message with which the program ends.
    struct Source {
        std::optional<std::string> text;
        std::string message;
    };
    using Reader = OMLinkTo<Source(const std::string& name)>;
    enum class OnError {
        Stop,
        Collect, ///< all of them, and the column of each operand
    };

    static constexpr std::size_t kMaxTextSize = 65535;

    YCompiler(YHeap& heap, Reader reader, OnError onError = OnError::Stop);

    /// Null when there were errors. Names that the text mentions are interned in any case.
    [[nodiscard]] std::unique_ptr<YScript> compile(const std::string& name, std::string text);
    /// In the order in which they were found, warnings included.
    [[nodiscard]] const std::vector<YCompileError>& errors() const { return errors_; }
    /// "LINE: " and the script from the place of the error on, as the program shows it.
    [[nodiscard]] static std::string message(const YCompileError& error);

    /// Whether a statement begins with that word, whatever commands there are.
    [[nodiscard]] static bool isKeyword(std::string_view word);
    /// All these words, in no order.
    [[nodiscard]] static std::vector<std::string_view> keywords();

    /// For who reads an include: the file and the line that ask for it.
    [[nodiscard]] std::pair<std::string, int> includer();

    /// Is told of each warning as soon as it is found.
    void setWarningLink(OMLinkTo<void(const YCompileError&)> link) { warn_ = std::move(link); }

  private:
    enum class Outcome { Statement, Included, EndOfText, Closed, Failed };
    struct Text {
        std::string text; ///< ends with CR
        std::size_t at = 0;
        std::uint16_t file = 0;
        std::size_t countedTo = 0; ///< `line` is that of this place
        int line = 1;
    };
    struct Word {
        std::string_view text;
        std::size_t at;
        bool closed; ///< its last quote
    };
    struct Operand {
        int index; ///< of the heap
        std::size_t at;
    };
    struct Loop {
        int next;                ///< the instruction to continue with
        std::vector<int> breaks; ///< jumps to the end
    };

    Outcome compileStatement();
    Outcome compileBody(std::size_t at);
    Outcome compileBlock();
    Outcome compileFirstWord();
    Outcome compileNextStatement();
    Outcome include();
    void openText(const std::string& name, std::string text);
    bool leaveInclude();

    // One function a form.
    Outcome compileAssignment(const Word& name);
    void compileList(YVariable& name);
    Outcome compileKeyword(YOpcode opcode, const Word& keyword);
    Outcome compileCommand(const Word& word);
    Outcome compileIf(const Word& keyword);
    Outcome compileFor(const Word& keyword);
    Outcome compileProcedure(const Word& keyword);
    Outcome compileLoopJump(YOpcode which, const Word& keyword);

    // Words.
    bool skipToStatement();
    void skipBlanks();
    void skipLine();
    [[nodiscard]] bool atLineEnd() const;
    std::optional<Word> nextWord(bool stopAtEquals);
    std::optional<int> internWord(const Word& word);
    std::optional<std::size_t> takeElse();

    // Instructions.
    bool readOperands(std::vector<Operand>& words);
    std::optional<int> emitList(const std::vector<Operand>& words, std::size_t at);
    /// Both, for statements with a body. None after an error.
    std::optional<int> emitOperands(std::size_t at);
    int emit(YOpcode opcode, int operand, YSourceLine place);
    [[nodiscard]] YSourceLine placeOf(std::size_t at);
    void patch(int instruction, int target);
    [[nodiscard]] int here() const { return static_cast<int>(script_->instructions.size()); }

    Outcome fail(YCompileError::Kind kind, std::size_t at, int code = 0);
    void record(YCompileError::Kind kind, std::size_t at, int code, std::string text);
    int lineAt(std::size_t at);
    [[nodiscard]] int columnAt(std::size_t at) const;
    [[nodiscard]] Text& text() { return texts_.back(); }
    [[nodiscard]] const Text& text() const { return texts_.back(); }

    YHeap& heap_;
    Reader reader_;
    OnError onError_;
    OMLinkTo<void(const YCompileError&)> warn_;
    std::unique_ptr<YScript> script_;
    std::vector<Text> texts_; ///< the include stack, the file being read last
    std::vector<Loop> loops_;
    std::vector<YCompileError> errors_;
    std::size_t statementAt_ = 0;
    int depth_ = 0;       ///< statements inside statements
    bool failed_ = false; ///< there was an error
    bool gaveUp_ = false; ///< and nothing more is compiled
};
