// Script variables. A YVariable is a symbol and a value cell in one: every name, literal and
// expression that a script mentions is one, and statements refer to it by its index in the YHeap
// (yheap.h).
// All script data is global.
//
// A value that was computed as a number gets a text only when somebody asks for one; a value that
// was stored as a text keeps exactly that text beside its numeric reading ("007" is 7 and stays
// "007").
#pragma once

#include "ynumber.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class OMScriptableObject;
class YExpression;
class YHeap;

/// Room for a computed string form.
struct YScratch {
    static constexpr std::size_t kSize = 256;
    char data[kSize];
};

class YVariable {
  public:
    static constexpr char kSeparator = '.'; ///< between the parts of compound names
    [[nodiscard]] static constexpr bool isQuote(char c) { return c == '"' || c == '\''; }

    enum class Kind : std::uint8_t {
        Name = 0,
        Constant = 1,
        Compound = 2,  ///< dotted name
        Substring = 3, ///< selector with "|"
        Expression = 4,
        Untyped = 5, ///< not yet classified
    };
    enum class Type : std::uint8_t { Empty = 0, Object = 1, String = 2, Integer = 3, Real = 4 };
    enum class Ownership : std::int8_t {
        Alias = -1, ///< every operation goes to the variable of index `alias` instead
        Owner = 0,
        Reference = 1,
    };
    /// Length of a string form that has not been made yet.
    static constexpr std::int32_t kUnknownLength = -1;
    /// A part of a substring selector that was left out.
    static constexpr int kNoPart = -1;
    /// The string form of an object reference.
    static constexpr std::string_view kObjectText = "\xA5";

    YVariable(YHeap& heap, int index, std::string_view text);
    ~YVariable();
    YVariable& operator=(YVariable&&) = delete;

    // The symbol.
    [[nodiscard]] int index() const { return index_; }
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] const std::vector<int>& parts() const { return parts_; }
    [[nodiscard]] const YExpression* expression() const { return expression_.get(); }
    [[nodiscard]] int elementCount() const { return elementCount_; }

    // The value. All of these follow an alias first.
    [[nodiscard]] Type type() const { return target().type_; }
    [[nodiscard]] bool isDefined() const { return type() != Type::Empty; }
    [[nodiscard]] Ownership ownership() const { return ownership_; }
    /// The string form. It lies in `scratch`, in this variable or in another one, and stays valid
    /// until `scratch` or that variable changes.
    [[nodiscard]] std::string_view string(YScratch& scratch) const;
    [[nodiscard]] double number() const;
    [[nodiscard]] std::int32_t integer() const;
    [[nodiscard]] OMScriptableObject* object() const;
    /// The variable that a compound name names at this moment (made if it is missing); any other
    /// variable itself, or what it is an alias of. A compound name that leads back to itself, as
    /// `item.i` does while `i` is empty, is its own result.
    [[nodiscard]] YVariable& resolve() {
        return kind_ == Kind::Name && ownership_ != Ownership::Alias ? *this : resolveSlowly();
    }

    // Changing the value: the one place where script values are written. The old value is released;
    // an owned object is destroyed. Variables that are no plain names are left alone.
    void setString(std::string_view text);
    void setInteger(std::int32_t value);
    /// Kept to the fifteen digits of its string form.
    void setReal(double value);
    /// As the string form of that number would be stored: fifteen digits, and texts of eleven bytes
    /// and more stay real.
    void setNumberAsText(std::int32_t value);
    void setNumberAsText(double value);
    /// The variable becomes the owner; null makes it empty.
    void setObject(std::unique_ptr<OMScriptableObject> object);
    /// The variable refers to an object that somebody else owns; null makes it empty.
    void setReference(OMScriptableObject* object);
    void makeEmpty();
    /// Makes it empty and leaves an owned object to the caller.
    void makeEmptyKeepingObject();
    /// What an assignment of another variable does. False when it would have to copy an object that
    /// cannot be copied; the variable is empty then.
    bool copyFrom(YVariable& source);
    [[nodiscard]] bool ownsObject() const {
        return type_ == Type::Object && ownership_ == Ownership::Owner;
    }
    void markReference() { ownership_ = Ownership::Reference; }

    // What the interpreter's loops ask. These look at this very variable: not through an alias, and
    // not at what an expression or a compound name stands for.
    [[nodiscard]] bool holdsInteger() const { return type_ == Type::Integer; }
    [[nodiscard]] bool holdsReal() const { return type_ == Type::Real; }
    [[nodiscard]] std::int32_t heldInteger() const { return value_.integer; }
    [[nodiscard]] double heldReal() const { return value_.real; }
    /// A text that is no number.
    [[nodiscard]] bool holdsText() const { return type_ == Type::String && kind_ == Kind::Name; }
    [[nodiscard]] std::string_view heldText() const { return valueString_; }
    /// The held number has no text but its own.
    [[nodiscard]] bool isCanonical() const { return canonical_; }
    /// Bytes of the string form, or kUnknownLength when it would have to be made first.
    [[nodiscard]] std::int32_t heldLength() const {
        return type_ == Type::Empty || kind_ != Kind::Name ? kUnknownLength : length_;
    }
    /// The number of a procedure's text, "+" and an instruction; -1 for any other value.
    [[nodiscard]] std::int32_t heldProcedure() const {
        return type_ == Type::Integer && length_ > 1 && valueString_.front() == '+' ? value_.integer
                                                                                    : -1;
    }
    /// A plain name that can take a number without anything else happening.
    [[nodiscard]] bool takesNumber() const {
        return kind_ == Kind::Name && type_ != Type::Object && ownership_ == Ownership::Owner;
    }
    /// setInteger and setNumberAsText of a variable that takesNumber.
    void putInteger(std::int32_t value) {
        type_ = Type::Integer;
        canonical_ = true;
        length_ = kUnknownLength;
        value_.integer = value;
    }
    void putNumberAsText(std::int32_t value) {
        putInteger(value);
        if (!ynumber::hasShortText(value)) [[unlikely]]
            putReal(value);
    }
    /// Adds to the end of a variable that holdsText: not an empty one, which may become a number.
    void appendText(std::string_view text) {
        valueString_.append(text);
        length_ = static_cast<std::int32_t>(valueString_.size());
    }
    void putReal(double value) {
        type_ = Type::Real;
        canonical_ = true;
        length_ = kUnknownLength;
        value_.real = value;
    }

  private:
    friend class YHeap;
    friend class YStoredVariables;

    union Value {
        std::int32_t integer;
        OMScriptableObject* object;
        double real;
    };

    [[nodiscard]] YVariable& target();
    [[nodiscard]] const YVariable& target() const { return const_cast<YVariable*>(this)->target(); }
    void classify();
    bool classifySubstring();
    bool classifyCompound();
    [[nodiscard]] int internPart(std::string_view text);
    void classifyConstant();
    /// Makes it empty. What is returned is to go last, when the variable has its new value: a
    /// handler of its end may set the variable anew, and that counts then.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> release();
    /// It is empty, and refers to the object from now on.
    void hold(OMScriptableObject* object);
    void storeText(std::string_view text);
    [[nodiscard]] YVariable& resolveSlowly();
    [[nodiscard]] YVariable& namedVariable();
    [[nodiscard]] std::string_view heldString() const;
    [[nodiscard]] std::string_view substring(YScratch& scratch) const;
    [[nodiscard]] std::string_view compoundName(YScratch& scratch) const;
    [[nodiscard]] YVariable& element(std::int32_t number);

    // What the interpreter's inner loops read comes first.
    Type type_ = Type::Empty;
    Kind kind_ = Kind::Untyped;
    Ownership ownership_ = Ownership::Owner;
    bool canonical_ = false; ///< the text of a number is, or would be, the number's own
    mutable std::int32_t length_ = kUnknownLength;
    Value value_{};
    mutable std::string valueString_;

    YHeap* heap_;
    int index_;
    std::int32_t alias_ = 0;
    std::int32_t elementCount_ = 0;
    std::string text_;
    std::vector<int> parts_;
    std::unique_ptr<YExpression> expression_;
    std::vector<YVariable*> elements_; ///< compound names: resolved variables by element number
};
