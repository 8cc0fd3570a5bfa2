// The loop over instructions, and control flow.
#include "rthread.h"

#include "yengine.h"
#include "yexpression.h"
#include "ynumber.h"
#include "ystatement.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

/// Whether the string form of a real begins with the character "0".
bool beginsWithZero(double value) {
    if (!(value >= 0 && value <= 1)) return false;
    if (value == 0 || value == 1) return value == 0;
    char buffer[ynumber::kBufferSize];
    return ynumber::format(value, buffer).starts_with('0');
}

constexpr auto kLimit = static_cast<std::int64_t>(ynumber::kIntegerLimit);

/// What a step's variable holds, when that is such a number.
inline bool load(YVariable* variable, std::int64_t& value) {
    if (!variable->holdsInteger()) [[unlikely]] {
        variable = &variable->resolve();
        if (!variable->holdsInteger()) return false;
    }
    value = variable->heldInteger();
    return true;
}

inline bool load(YVariable* variable, double& value) {
    if (!variable->holdsInteger() && !variable->holdsReal()) variable = &variable->resolve();
    if (variable->holdsInteger())
        value = variable->heldInteger();
    else if (variable->holdsReal())
        value = variable->heldReal();
    else
        return false;
    return true;
}

/// The length of a text that is there already.
template <class Number>
bool loadLength(YVariable& variable, Number& value) {
    const std::int32_t length = variable.resolve().heldLength();
    value = length;
    return length != YVariable::kUnknownLength;
}

inline bool fits(std::int64_t value) { return value >= -kLimit && value <= kLimit; }

/// False when the result is no integer that is kept as one.
bool combine(YProgram::Do operation, std::int64_t& value, std::int64_t right) {
    using Do = YProgram::Do;
    switch (operation) {
    case Do::Add: return fits(value += right);
    case Do::Subtract: return fits(value -= right);
    case Do::Multiply: return fits(value *= right);
    case Do::Equal: value = value == right; return true;
    case Do::Unequal: value = value != right; return true;
    case Do::Less: value = value < right; return true;
    case Do::Greater: value = value > right; return true;
    default: break;
    }
    if (right == 0 || right == -1) return false;
    const auto left = static_cast<std::int32_t>(value);
    const auto divisor = static_cast<std::int32_t>(right);
    if (operation == Do::Divide && left % divisor != 0) return false;
    value = operation == Do::Remainder ? left % divisor : left / divisor;
    return true;
}

/// By a multiplication (Lemire, Kaser and Kurz, "Faster remainder by direct computation").
inline std::int64_t remainder(std::int64_t value, const YProgram::Step& by) {
    __extension__ using Wide = unsigned __int128;
    const auto size = static_cast<std::uint32_t>(value < 0 ? -value : value);
    const auto quotient = static_cast<std::uint32_t>(Wide{by.reciprocal} * size >> 64);
    const std::int64_t rest = size - quotient * static_cast<std::uint32_t>(by.number);
    return value < 0 ? -rest : rest;
}

inline bool operate(int operation, double& value, double right) {
    switch (operation) {
    case '+': value += right; return true;
    case '-': value -= right; return true;
    case '*': value *= right; return true;
    case '/':
        if (right * right < YExpression::kSmallestDivisorSquared) return false;
        value /= right;
        return true;
    default:
        return YExpression::applyReals(static_cast<char>(operation), value, right, value) ==
               yerror::kNone;
    }
}

/// `x=y` where y is no expression. False when that takes more.
bool assignValue(const YProgram::Instruction& code) {
    YVariable& target = code.operands[0]->resolve();
    YVariable& word = *code.operands[1];
    YVariable& value = word.resolve();
    if (target.takesNumber() && value.holdsInteger() && value.isCanonical()) {
        target.putNumberAsText(value.heldInteger());
    } else if (target.takesNumber() && word.kind() == YVariable::Kind::Substring) {
        YScratch scratch;
        target.setString(word.string(scratch));
    } else {
        return false;
    }
    return true;
}

/// What the expression in an instruction gives, or, when it cannot be evaluated, how it is written.
/// The next values are likely to be as this one.
std::string_view evaluate(YProgram& program, int instruction, int operand, YValue& value) {
    YVariable& word = *program.at(instruction).operands[operand];
    if (word.expression()->evaluate(YHeap::current(), value) != yerror::kNone) return word.text();
    using Values = YProgram::Values;
    if (value.isNumber())
        program.expect(instruction, value.isInteger() ? Values::Integers : Values::Reals);
    return value.text();
}

/// `x=y` where y is an expression of any values. False when that takes more.
bool assignAny(YProgram& program, int instruction) {
    YVariable& target = program.at(instruction).operands[0]->resolve();
    if (!target.takesNumber()) return false;
    YValue value;
    target.setString(evaluate(program, instruction, 1, value));
    return true;
}

} // namespace

/// Runs until the thread is blocked, its pace says to give way, or the turn's budget is used up.
void YThread::runInstructions() {
    while (!halted_ && engine_.hasBudget()) {
        if (isCareful()) {
            runOne();
            engine_.spendOne();
        } else {
            runSteps();
        }
    }
}

/// The same without a trace, until something wants care.
void YThread::runSteps() {
    using Do = YProgram::Do;
    using Values = YProgram::Values;
    int budget = engine_.budget(); // in a register, unless others spend of it too
    const YProgram::Step* const* entries = program_->entries();
    const YProgram::Step* step = entries[flow_.pc];
    std::int64_t value = 0; // the accumulators
    double real = 0;
    std::int64_t right = 0;
    double rightReal = 0;
    std::array<std::int64_t, YProgram::kStack> integers; // put aside
    std::array<double, YProgram::kStack> reals;

    // The step that follows in its row, or, when the row must give up, the first one of a more
    // general row.
    const auto after = [this](const YProgramStep* done, bool worked) {
        if (worked) [[likely]]
            return done + 1;
        return program_->expect(done->instruction,
                                done->what < Do::LoadReal ? Values::Reals : Values::Any);
    };
    for (;;) {
        const auto loads = [step](auto& number) { return load(step->variable, number); };
        const auto decide = [this, step](bool result) { // with the jump that follows
            flow_.decide(result, step->instruction + 2, step->number);
        };
        switch (step->what) { // and goes on with the next step, or breaks at the instruction's end
        case Do::Clear:
            value = 0;
            real = 0;
            ++step;
            continue;
        case Do::LoadInteger: step = after(step, loads(value)); continue;
        case Do::LengthInteger: step = after(step, loadLength(*step->variable, value)); continue;
        case Do::PushInteger:
            integers[step->slot] = value;
            ++step;
            continue;
        case Do::Add: step = after(step, loads(right) && fits(value += right)); continue;
        case Do::Subtract: step = after(step, loads(right) && fits(value -= right)); continue;
        case Do::Multiply: step = after(step, loads(right) && fits(value *= right)); continue;
        case Do::Less: step = after(step, loads(right) && (value = value < right, true)); continue;
        case Do::Greater:
            step = after(step, loads(right) && (value = value > right, true));
            continue;
        case Do::Equal:
            step = after(step, loads(right) && (value = value == right, true));
            continue;
        case Do::Unequal:
        case Do::Divide:
        case Do::Quotient:
        case Do::Remainder:
            step = after(step, loads(right) && combine(step->what, value, right));
            continue;
        case Do::RemainderBy:
            value = remainder(value, *step);
            ++step;
            continue;
        case Do::CombineInteger:
            right = std::exchange(value, integers[step->slot]);
            step = after(step, combine(static_cast<Do>(step->number), value, right));
            continue;
        case Do::StoreInteger: {
            YVariable& target = step->variable->resolve();
            if (!target.takesNumber()) {
                step = program_->expect(step->instruction, Values::Any);
                continue;
            }
            target.putNumberAsText(static_cast<std::int32_t>(value));
            flow_.pc = step->instruction + 1;
            break;
        }
        case Do::TestInteger: decide(value != 0); break;

        case Do::LoadReal: step = after(step, loads(real)); continue;
        case Do::LengthReal: step = after(step, loadLength(*step->variable, real)); continue;
        case Do::PushReal:
            reals[step->slot] = real;
            ++step;
            continue;
        case Do::AddReal:
            step = after(step, loads(rightReal) && (real += rightReal, true));
            continue;
        case Do::SubtractReal:
            step = after(step, loads(rightReal) && (real -= rightReal, true));
            continue;
        case Do::MultiplyReal:
            step = after(step, loads(rightReal) && (real *= rightReal, true));
            continue;
        case Do::OperateReal:
            step = after(step, loads(rightReal) && operate(step->number, real, rightReal));
            continue;
        case Do::CombineReal:
            rightReal = std::exchange(real, reals[step->slot]);
            step = after(step, operate(step->number, real, rightReal));
            continue;
        case Do::StoreReal: {
            YVariable& target = step->variable->resolve();
            if (!target.takesNumber()) {
                step = program_->expect(step->instruction, Values::Any);
                continue;
            }
            const double kept = ynumber::throughText(real);
            if (ynumber::isIntegral(kept, 0)) {
                target.putNumberAsText(static_cast<std::int32_t>(kept));
                program_->expect(step->instruction, Values::Integers);
            } else if (std::isfinite(kept)) [[likely]] {
                target.putReal(kept);
            } else {
                target.setNumberAsText(kept);
            }
            flow_.pc = step->instruction + 1;
            break;
        }
        case Do::TestReal: decide(!beginsWithZero(real)); break;

        case Do::Jump: flow_.jump(step->number); break;
        case Do::CountRound:
            if (flow_.inLoop() && step->variable->takesNumber()) [[likely]] {
                const bool more = flow_.nextRound();
                step->variable->putInteger(flow_.loop().value);
                decide(more);
                break;
            }
            [[fallthrough]];
        default:
            engine_.setBudget(budget);
            carryOut(*step);
            budget = engine_.budget();
            if (halted_ || isCareful()) {
                engine_.setBudget(budget - 1);
                return;
            }
            entries = program_->entries();
        }
        if (--budget <= 0) break;
        step = entries[flow_.pc];
    }
    engine_.setBudget(budget);
}

/// What calls out of the loop.
void YThread::carryOut(const YProgramStep& step) {
    using Do = YProgram::Do;
    flow_.pc = step.instruction + 1;
    const Instruction& code = program_->at(step.instruction);
    switch (step.what) {
    case Do::AssignValue:
        if (!assignValue(code)) statement(code).assign();
        return;
    case Do::AssignAny:
        if (!assignAny(*program_, step.instruction)) statement(code).assign();
        return;
    case Do::TestAny: {
        YValue value;
        const bool no = evaluate(*program_, step.instruction, 0, value).starts_with('0');
        flow_.decide(!no, step.instruction + 2, step.number);
        return;
    }
    case Do::CountRound: nextRound(code); return;
    case Do::Call: call(code); return;
    case Do::EnterProcedure: enterProcedure(code); return;
    case Do::Return: returnFromProcedure(); return;
    default: --flow_.pc; runOne();
    }
}

/// One instruction, with all that can be said of it.
void YThread::runOne() {
    const Instruction& code = program_->at(flow_.pc++);
    if (code.opcode != endFiredBy_) endPending_ = true;
    trace_.begin();
    const int load = loads_;
    execute(code);
    // What the instruction called may have taken the script away.
    if (!trace_.isOn() || !isLoaded() || load != loads_) return;
    const Instruction& next = program_->at(flow_.pc);
    // A thread comes by the end of its script in every turn and stays there.
    if (status_ == Status::Blocked && &code == &next) return;
    trace_.show(code, next, flow_, status_ == Status::InterruptEnded);
}

// ---------------------------------------------------------------------------- control flow

void YThread::call(const Instruction& code) {
    if (const std::int32_t header = code.operands[0]->heldProcedure(); header >= 0) {
        callProcedure(code, header);
        return;
    }
    YHeap& heap = YHeap::current();
    YVariable* last = code.operands[0];
    YScratch scratches[2];
    int used = 0;
    std::string_view target = last->string(scratches[0]);
    // A name may hold another name; a procedure's text leads nowhere else. Rings end in the end.
    for (int steps = heap.count(); steps > 0 && !target.starts_with('+'); --steps) {
        const int index = heap.lookup(target);
        if (index < 0 || &heap.get(index) == last) break;
        last = &heap.get(index);
        used = 1 - used;
        target = last->string(scratches[used]);
    }
    if (target.starts_with('+')) {
        callProcedure(code, ynumber::scanInteger(target));
        return;
    }
    trace_.detail("script %s", std::string(target).c_str());
    engine_.pushScript(scriptName_);
    requestSwitch(last);
}

void YThread::callProcedure(const Instruction& code, std::int32_t header) {
    trace_.detail("procedure %s=%d", code.operands[0]->text().c_str(), header);
    if (!program_->isHeader(header))
        reportAndStop("call of a procedure that does not exist");
    else if (!flow_.call(header))
        reportAndStop("sp < (YTSTACK-1)");
}

void YThread::enterProcedure(const Instruction& code) {
    const int caller = flow_.caller();
    if (caller < 0) { // reached in sequence
        while (program_->at(flow_.pc).opcode != YOpcode::Return &&
               program_->at(flow_.pc).opcode != YOpcode::End)
            ++flow_.pc;
        if (program_->at(flow_.pc).opcode == YOpcode::Return) ++flow_.pc;
        return;
    }
    const Instruction& from = program_->at(caller);
    trace_.detail("Args: ");
    for (int i = 1; i < code.count && i < from.count; ++i) {
        YVariable& parameter = code.operands[i]->resolve();
        YVariable& argument = *from.operands[i];
        if (argument.holdsInteger() && argument.isCanonical() && parameter.takesNumber()) {
            parameter.putNumberAsText(argument.heldInteger());
        } else {
            YScratch scratch;
            parameter.setString(argument.string(scratch));
        }
        if (trace_.isOn())
            trace_.detail("%s <- %s [%s] ", parameter.text().c_str(), argument.text().c_str(),
                          textOf(parameter).c_str());
    }
}

void YThread::returnFromProcedure() {
    if (flow_.isHandlerItself()) {
        flow_.endInterrupt();
        endPause();
        setStatus(Status::InterruptEnded);
    } else if (flow_.returnToCaller()) {
        trace_.detail("at pc = %d", flow_.pc);
    } else {
        reportAndStop("sp");
    }
}

void YThread::setUpLoop(const Instruction& code) {
    if (code.count == 0) return;
    const char* counter = code.operands[0]->text().c_str();
    if (code.count == 1) {
        trace_.detail("loop while [%s] is true", counter);
        return;
    }
    const auto number = [&](int operand, int otherwise) {
        return static_cast<std::int16_t>(operand < code.count ? code.operands[operand]->integer()
                                                              : otherwise);
    };
    YFlow::CountedLoop loop{};
    loop.value = number(1, 0);
    loop.target = number(2, 0);
    loop.step = number(3, code.count > 2 ? 1 : -1);
    // The test that follows in two instructions knows where the loop ends.
    loop.exit = program_->at(flow_.pc + 1).target;
    if (flow_.beginLoop(loop))
        trace_.detail("counter %s: from %d to %d by %d", counter, loop.value, loop.target,
                      loop.step);
    else
        reportAndStop("counted loops are nested too deep");
}

void YThread::nextRound(const Instruction& code) {
    if (code.count < 2 || !flow_.inLoop()) {
        flow_.condition = statement(code).isTrue();
        return;
    }
    flow_.condition = flow_.nextRound();
    const YFlow::CountedLoop& loop = flow_.loop();
    code.operands[0]->resolve().setInteger(loop.value);
    trace_.detail("counter %s=%d target=%d", code.operands[0]->text().c_str(), loop.value,
                  loop.target);
}
