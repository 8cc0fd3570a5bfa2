#include "yheap.h"

#include "omscrptb.h"
#include "omsexception.h"
#include "yexpression.h"

#include <algorithm>
#include <limits>

namespace {

std::unique_ptr<YHeap>& currentHeap() {
    static std::unique_ptr<YHeap> heap;
    return heap;
}

} // namespace

YHeap& YHeap::current() {
    auto& heap = currentHeap();
    if (!heap) [[unlikely]]
        heap = std::make_unique<YHeap>();
    return *heap;
}

void YHeap::recreate() {
    // Objects look at the current heap while they go, so the old one stays in place until it is
    // empty.
    current().emptyOwners();
    currentHeap() = std::make_unique<YHeap>();
}

YHeap::YHeap() {
    variables_.reserve(128);
    intern("SYSTEM");
    intern("RECEIVER");
    intern("RESULT");
    get(kSystem).setString("WIN");
}

YHeap::~YHeap() { emptyOwners(); }

YVariable& YHeap::create(std::string_view text) {
    const int index = count();
    variables_.push_back(std::make_unique<YVariable>(*this, index, text));
    YVariable& variable = *variables_.back();
    indices_.emplace(variable.text_, index);
    return variable;
}

int YHeap::lookup(std::string_view text) const {
    const auto found = indices_.find(text);
    return found == indices_.end() ? -1 : found->second;
}

int YHeap::intern(std::string_view text) {
    if (const int index = lookup(text); index >= 0) return index;
    if (count() >= kMaxVariables) return count() - 1;
    YVariable& variable = create(text);
    variable.classify();
    if (variable.kind_ == YVariable::Kind::Name) noteFamily(variable);
    return variable.index_;
}

/// Dotted names stay: elements of the same name are found through them.
void YHeap::dropWordsFrom(int first) {
    const auto isIdle = [](const YVariable& word) {
        if (word.kind_ != YVariable::Kind::Name) return true;
        return word.type_ == YVariable::Type::Empty &&
               word.ownership_ == YVariable::Ownership::Owner && word.alias_ == 0 &&
               word.elementCount_ == 0 && word.text_.find(YVariable::kSeparator) == word.text_.npos;
    };
    int end = count();
    while (end > first && isIdle(get(end - 1))) --end;
    for (int index = first; index < end; ++index)
        for (const int part : get(index).parts_) end = std::max(end, part + 1);
    while (count() > end) {
        indices_.erase(variables_.back()->text_);
        variables_.pop_back();
    }
}

int YHeap::internOperand(std::string_view text, int& error) {
    if (const int index = lookup(text); index >= 0) return index;
    const Nesting nesting(*this);
    if (nesting.tooDeep()) {
        error = yerror::kTooDeep;
        return kResult;
    }
    if (!YExpression::mayContainOperator(text)) return intern(text);
    const YExpression::Compiled compiled = YExpression::compile(*this, text);
    if (compiled.error != yerror::kNone) {
        error = compiled.error;
        return kResult;
    }
    if (compiled.isLeaf()) return compiled.leaves.front(); // "(a)" is a
    if (count() >= kMaxVariables) return count() - 1;
    YVariable& variable = create(text);
    variable.kind_ = YVariable::Kind::Expression;
    variable.parts_ = compiled.leaves;
    variable.length_ = static_cast<std::int32_t>(compiled.leaves.size());
    variable.expression_ = YExpression::build(*this, compiled.shape, compiled.leaves);
    return variable.index_;
}

// A name and the variables "name.1", "name.2", ... may come in any order.
void YHeap::noteFamily(const YVariable& member) {
    const std::string_view text = member.text_;
    const auto own = families_.find(text);
    if (own != families_.end() && member.ownership_ != YVariable::Ownership::Alias) {
        YVariable& name = get(member.index_);
        name.alias_ = own->second.first;
        name.elementCount_ = std::max(name.elementCount_, own->second.last);
    }
    const auto dot = text.rfind(YVariable::kSeparator);
    if (dot == std::string_view::npos || dot + 1 == text.size()) return;
    const std::string_view number = text.substr(dot + 1);
    if (!std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return;
    Family& family = families_[text.substr(0, dot)];
    if (family.first == 0) family.first = member.index_;
    family.last = std::max(family.last, ynumber::scanInteger(number));
}

void YHeap::appendElement(YVariable& name, std::string_view value) {
    if (name.elementCount_ < std::numeric_limits<std::int32_t>::max()) ++name.elementCount_;
    const int index =
        intern(name.text_ + YVariable::kSeparator + std::to_string(name.elementCount_));
    if (name.alias_ == 0 && name.ownership_ != YVariable::Ownership::Alias) name.alias_ = index;
    get(index).setString(value);
}

void YHeap::emptyFamily(std::string_view name) {
    for (int index = 0; index < count(); ++index) {
        YVariable& variable = get(index);
        const std::string_view text = variable.text_;
        if (text.size() <= name.size() + 1 || !text.starts_with(name) ||
            text[name.size()] != YVariable::kSeparator)
            continue;
        if (text.find(YVariable::kSeparator, name.size() + 1) == std::string_view::npos)
            variable.makeEmpty();
    }
}

void YHeap::emptyOwners() {
    for (int index = 0; index < count(); ++index) {
        YVariable& variable = get(index);
        if (variable.type_ == YVariable::Type::Object &&
            variable.ownership_ == YVariable::Ownership::Owner)
            variable.makeEmpty();
    }
}

bool YHeap::forget(OMScriptableObject* object, bool destroy) {
    if (!object) return false;
    bool first = true;
    bool firstIsAlias = false;
    for (int index = 0; index < count() && object->holders_ > 0; ++index) {
        YVariable& variable = get(index);
        if (variable.target().type_ != YVariable::Type::Object ||
            variable.target().value_.object != object)
            continue;
        if (first) firstIsAlias = variable.ownership_ == YVariable::Ownership::Alias;
        first = false;
        variable.makeEmptyKeepingObject();
    }
    if (destroy && !firstIsAlias) delete object;
    return !first && !firstIsAlias;
}

const YVariable* YHeap::holderOf(const OMScriptableObject* object) const {
    const YVariable* holder = nullptr;
    for (const auto& variable : variables_) {
        if (variable->type_ != YVariable::Type::Object || variable->value_.object != object ||
            variable->ownership_ != YVariable::Ownership::Owner)
            continue;
        if (holder)
            OMSobExceptionWarning("Variables " + holder->text_ + " and " + variable->text_ +
                                  " hold the same trinket pointer")
                .report();
        else
            holder = variable.get();
    }
    return holder;
}
