#include "ykeptvariables.h"

#include "yheap.h"
#include "ystatement.h"

namespace {

/// A name of the script's own, which is neither an alias nor holds an object or a procedure.
bool isPlain(const YVariable& variable) {
    return variable.index() >= YHeap::kPredefined && variable.kind() == YVariable::Kind::Name &&
           variable.ownership() == YVariable::Ownership::Owner &&
           variable.type() != YVariable::Type::Object && variable.heldProcedure() < 0;
}

} // namespace

YKeptVariables::YKeptVariables(YHeap& heap) {
    for (int index = 0; index < heap.count(); ++index) {
        YVariable& variable = heap.get(index);
        if (isPlain(variable) && variable.isDefined())
            values_.emplace_back(variable.text(), textOf(variable));
    }
}

void YKeptVariables::giveBack(YHeap& heap) const {
    for (const auto& [name, value] : values_) {
        const int index = heap.lookup(name);
        if (index >= 0 && isPlain(heap.get(index))) heap.get(index).setString(value);
    }
}
