#include "rvar.h"

#include "omdebug.h"
#include "omrandom.h"
#include "omscrptb.h"
#include "yexpression.h"
#include "yheap.h"
#include "ytexts.h"

#include <algorithm>

namespace {

constexpr char kSelector = '|';
constexpr std::int32_t kMaxCachedElement = 4096;
constexpr std::size_t kMaxName = YScratch::kSize - 1;

/// "123" but not "0123" or "-5": the text that the number itself would have.
bool isPlainNumber(std::string_view text) {
    if (text.empty() || text.size() > 9 || (text.size() > 1 && text.front() == '0')) return false;
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view quotedContent(std::string_view text) {
    const char quote = text.front();
    text.remove_prefix(1);
    if (!text.empty() && text.back() == quote) text.remove_suffix(1);
    return text;
}

} // namespace

// ---------------------------------------------------------------------------- the symbol

YVariable::YVariable(YHeap& heap, int index, std::string_view text)
    : heap_(&heap), index_(index), text_(text) {}

YVariable::~YVariable() = default;

YVariable& YVariable::target() {
    if (ownership_ != Ownership::Alias || alias_ == 0) [[likely]]
        return *this;
    // A chain of aliases cannot be longer than the table; a ring ends here.
    YVariable* variable = this;
    for (int steps = heap_->count(); steps > 0; --steps) {
        if (variable->ownership_ != Ownership::Alias || variable->alias_ == 0) return *variable;
        variable = &heap_->get(variable->alias_);
    }
    return *this;
}

void YVariable::classify() {
    const YHeap::Nesting nesting(*heap_);
    if (nesting.tooDeep()) { // a selector of selectors of selectors ...
        kind_ = Kind::Name;
        return;
    }
    if (classifySubstring()) return;
    const char first = text_.empty() ? '\0' : text_.front();
    if (ynumber::looksNumeric(first) || YVariable::isQuote(first) || first == '?') {
        classifyConstant();
        return;
    }
    if (classifyCompound()) return;
    kind_ = Kind::Name;
}

bool YVariable::classifySubstring() {
    const auto first = text_.find(kSelector);
    if (first == std::string::npos) return false;
    const auto second = text_.find(kSelector, first + 1);
    const std::string_view all = text_;
    const auto part = [&](std::string_view text) {
        return text.empty() ? kNoPart : internPart(text);
    };
    kind_ = Kind::Substring;
    parts_.push_back(part(all.substr(0, first)));
    if (second == std::string::npos) {
        parts_.push_back(part(all.substr(first + 1)));
        parts_.push_back(kNoPart);
        length_ = 2;
    } else {
        parts_.push_back(part(all.substr(first + 1, second - first - 1)));
        parts_.push_back(part(all.substr(second + 1)));
        length_ = 3;
    }
    return true;
}

bool YVariable::classifyCompound() {
    const std::string_view all = text_;
    auto dot = all.find(kSeparator);
    bool named = false; // some part is not a number
    for (auto at = dot; at != std::string_view::npos; at = all.find(kSeparator, at + 1))
        named |= at + 1 >= all.size() || !ynumber::looksNumeric(all[at + 1]);
    if (!named) return false;
    kind_ = Kind::Compound;
    while (dot != std::string_view::npos) {
        const auto next = all.find(kSeparator, dot + 1);
        const auto length = next == std::string_view::npos ? next : next - dot - 1;
        parts_.push_back(internPart(all.substr(dot + 1, length)));
        dot = next;
    }
    length_ = static_cast<std::int32_t>(parts_.size());
    return true;
}

/// Parts are operand words of their own; what is no sound expression is a name.
int YVariable::internPart(std::string_view text) {
    int error = yerror::kNone;
    const int index = heap_->internOperand(text, error);
    return error == yerror::kNone ? index : heap_->intern(text);
}

void YVariable::classifyConstant() {
    kind_ = Kind::Constant;
    if (ynumber::looksNumeric(text_))
        storeText(text_);
    else
        type_ = Type::String;
    const YTexts* const texts = isQuote(text_.front()) ? YTexts::current() : nullptr;
    const std::string* const meaning =
        texts ? texts->meaningOf(quotedContent(text_), heap_->script()) : nullptr;
    if (meaning) valueString_ = *meaning;
}

// ---------------------------------------------------------------------------- reading

std::string_view YVariable::heldString() const {
    if (length_ == kUnknownLength) {
        char buffer[ynumber::kBufferSize];
        if (type_ == Type::Integer)
            valueString_ = ynumber::format(value_.integer, buffer);
        else if (type_ == Type::Real)
            valueString_ = ynumber::format(value_.real, buffer);
        else
            valueString_.clear();
        length_ = static_cast<std::int32_t>(valueString_.size());
    }
    return valueString_;
}

std::string_view YVariable::string(YScratch& scratch) const {
    const YVariable& self = target();
    OMDebug::require(self.kind_ != Kind::Untyped, "untyped != type", "");
    switch (self.kind_) {
    case Kind::Name:
        if (self.type_ == Type::Empty) return self.text_;
        if (self.type_ == Type::Object) return kObjectText;
        return self.heldString();
    case Kind::Constant:
        if (YVariable::isQuote(self.text_.front()))
            return self.valueString_.empty() ? quotedContent(self.text_) : self.valueString_;
        if (self.text_.front() != '?') return self.text_;
        scratch.data[0] = static_cast<char>('0' + OMRandomBelow(10));
        return {scratch.data, 1};
    case Kind::Compound: {
        const YVariable& named = const_cast<YVariable&>(self).resolve();
        return named.kind_ == Kind::Compound ? named.text_ : named.string(scratch);
    }
    case Kind::Substring: return self.substring(scratch);
    case Kind::Expression: {
        YValue value;
        if (self.expression_->evaluate(*self.heap_, value) != yerror::kNone) return self.text_;
        const std::string_view text = value.text();
        // Computed texts lie in `value`; anything longer lies in a variable.
        if (text.size() >= YScratch::kSize) return text;
        return {scratch.data, text.copy(scratch.data, text.size())};
    }
    case Kind::Untyped: break;
    }
    return {};
}

std::string_view YVariable::substring(YScratch& scratch) const {
    const YHeap::Nesting nesting(*heap_);
    if (nesting.tooDeep()) return text_; // a part of a name that leads back to it
    const auto part = [&](int which) -> const YVariable* {
        const int index = parts_[static_cast<std::size_t>(which)];
        return index == kNoPart ? nullptr : &heap_->get(index);
    };
    const YVariable* source = part(0);
    const std::string_view s = source ? source->string(scratch) : std::string_view();
    const auto length = static_cast<std::int32_t>(s.size());
    const bool counted = length_ == 3;
    const std::int32_t count = counted && part(2) ? std::clamp(part(2)->integer(), 0, length)
                               : counted          ? 0
                                                  : length;
    if (counted && !part(1)) return s.substr(static_cast<std::size_t>(length - count));
    const std::int32_t from = part(1) ? std::max(part(1)->integer(), 1) : 1;
    if (from > length) return {};
    return s.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

std::string_view YVariable::compoundName(YScratch& scratch) const {
    std::size_t length = text_.copy(scratch.data, std::min(text_.find(kSeparator), kMaxName));
    const auto append = [&](std::string_view text) {
        length += text.copy(scratch.data + length, kMaxName - length);
    };
    for (const int part : parts_) {
        append({&kSeparator, 1});
        YScratch partScratch;
        append(heap_->get(part).string(partScratch));
    }
    return {scratch.data, length};
}

YVariable& YVariable::resolveSlowly() {
    YVariable& self = target();
    if (self.kind_ != Kind::Compound) return self;
    if (self.parts_.size() == 1) {
        const YVariable& part = heap_->get(self.parts_.front()).target();
        if (part.type_ == Type::Integer && part.canonical_ && part.value_.integer >= 0 &&
            part.value_.integer < kMaxCachedElement)
            return self.element(part.value_.integer).target();
    }
    // A name may lead to another compound name, and rings of them stay where they are.
    YVariable* variable = &self;
    for (int steps = YHeap::kMaxNesting; steps > 0 && variable->kind_ == Kind::Compound; --steps) {
        YVariable& next = variable->namedVariable();
        if (&next == variable) break;
        variable = &next;
    }
    return *variable;
}

YVariable& YVariable::namedVariable() {
    const YHeap::Nesting nesting(*heap_);
    if (nesting.tooDeep()) return *this;
    YScratch scratch;
    return heap_->get(heap_->intern(compoundName(scratch))).target();
}

YVariable& YVariable::element(std::int32_t number) {
    const auto slot = static_cast<std::size_t>(number);
    if (slot < elements_.size() && elements_[slot]) [[likely]]
        return *elements_[slot];
    YScratch scratch;
    YVariable& variable = heap_->get(heap_->intern(compoundName(scratch)));
    if (slot >= elements_.size()) elements_.resize(slot + 1);
    elements_[slot] = &variable;
    return variable;
}

double YVariable::number() const {
    const YVariable& self = target();
    if (self.type_ == Type::Integer) return self.value_.integer;
    if (self.type_ == Type::Real) return self.value_.real;
    if (self.kind_ == Kind::Name || self.kind_ == Kind::Constant) return 0.0;
    YScratch scratch;
    return ynumber::scan(self.string(scratch));
}

std::int32_t YVariable::integer() const {
    const YVariable& self = target();
    if (self.type_ == Type::Integer) return self.value_.integer;
    if (self.type_ == Type::Real) return ynumber::roundTieDown(self.value_.real);
    if (self.kind_ == Kind::Name || self.kind_ == Kind::Constant) return 0;
    YScratch scratch;
    return ynumber::scanInteger(self.string(scratch));
}

OMScriptableObject* YVariable::object() const {
    const YVariable& self = const_cast<YVariable*>(this)->resolve();
    return self.kind_ == Kind::Name && self.type_ == Type::Object ? self.value_.object : nullptr;
}

// ---------------------------------------------------------------------------- writing

std::unique_ptr<OMScriptableObject> YVariable::release() {
    const bool owned = type_ == Type::Object && ownership_ == Ownership::Owner;
    OMScriptableObject* object = owned ? value_.object : nullptr;
    if (type_ == Type::Object) --value_.object->holders_;
    if (ownership_ == Ownership::Reference) ownership_ = Ownership::Owner;
    type_ = Type::Empty;
    length_ = kUnknownLength;
    return std::unique_ptr<OMScriptableObject>(object);
}

void YVariable::storeText(std::string_view text) {
    canonical_ = false;
    if (!ynumber::looksNumeric(text)) {
        type_ = Type::String;
    } else if (const double value = ynumber::scan(text); ynumber::isIntegral(value, text.size())) {
        type_ = Type::Integer;
        value_.integer = static_cast<std::int32_t>(value);
        canonical_ = isPlainNumber(text);
    } else {
        type_ = Type::Real;
        value_.real = value;
    }
    valueString_.assign(text);
    length_ = static_cast<std::int32_t>(text.size());
}

void YVariable::setString(std::string_view text) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    if (self.type_ != Type::Object && self.ownership_ == Ownership::Owner) {
        self.storeText(text); // assign() copes with a text that lies in the value itself
        return;
    }
    const std::string kept(text); // may lie in what is released
    const auto before = self.release();
    self.storeText(kept);
}

void YVariable::setInteger(std::int32_t value) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    const auto before = self.release();
    self.putInteger(value);
}

void YVariable::setReal(double value) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    const auto before = self.release();
    const double kept = ynumber::throughText(value);
    if (ynumber::isIntegral(kept, 0))
        self.putInteger(static_cast<std::int32_t>(kept));
    else
        self.putReal(kept);
}

void YVariable::setNumberAsText(std::int32_t value) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    const auto before = self.release();
    self.putNumberAsText(value);
}

void YVariable::setNumberAsText(double value) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    const auto before = self.release();
    const double kept = ynumber::throughText(value);
    if (ynumber::isIntegral(kept, 0)) {
        self.putNumberAsText(static_cast<std::int32_t>(kept));
    } else if (kept - kept == 0) {
        self.putReal(kept);
    } else { // "nan" and "inf" are texts
        char buffer[ynumber::kBufferSize];
        self.storeText(ynumber::format(kept, buffer));
    }
}

void YVariable::setObject(std::unique_ptr<OMScriptableObject> object) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    const auto before = self.release();
    if (!object) return;
    self.hold(object.release());
}

void YVariable::hold(OMScriptableObject* object) {
    type_ = Type::Object;
    value_.object = object;
    ++object->holders_;
}

void YVariable::setReference(OMScriptableObject* object) {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    if (object && self.object() == object) return; // an owner stays it
    const auto before = self.release();
    if (!object) return;
    self.hold(object);
    self.ownership_ = Ownership::Reference;
}

void YVariable::makeEmpty() {
    YVariable& self = target();
    if (self.kind_ == Kind::Name) (void)self.release();
}

void YVariable::makeEmptyKeepingObject() {
    YVariable& self = target();
    if (self.kind_ != Kind::Name) return;
    if (self.type_ == Type::Object) self.ownership_ = Ownership::Reference;
    (void)self.release();
}

bool YVariable::copyFrom(YVariable& source) {
    YVariable& from = source.resolve();
    OMScriptableObject* object = from.object();
    if (!object) {
        YScratch scratch;
        setString(from.string(scratch));
        return true;
    }
    if (ownership_ == Ownership::Alias) {
        alias_ = from.index_;
        return true;
    }
    if (this == &from) return true;
    if (ownership_ != Ownership::Owner || from.ownership_ != Ownership::Owner) {
        setReference(object);
        return true;
    }
    std::unique_ptr<OMScriptableObject> copy = object->makeDuplicate();
    const bool done = OMScriptableObject::status() == OMScriptableObject::Status::Ok;
    setObject(std::move(copy));
    return done;
}
