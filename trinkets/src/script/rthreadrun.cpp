// The loop over instructions, and control flow.
#include "rthread.h"

#include "omdebug.h"
#include "omunderway.h"
#include "rthreaddetail.h"
#include "yengine.h"
#include "yexpression.h"
#include "ynumber.h"

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

} // namespace

// ---------------------------------------------------------------------------- the loop

/// Runs until the thread is blocked, its pace says to give way, or the turn's budget is used up.
void YThread::runInstructions() {
    while (!(attention_ & kHalted) && engine_.hasBudget()) {
        if (attention_ & kCareful) {
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
            if (attention_ != 0) {
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
    case Do::AssignValue: assignValue(code); return;
    case Do::AssignAny: assignAny(step.instruction); return;
    case Do::TestAny:
        flow_.decide(testAny(step.instruction), step.instruction + 2, step.number);
        return;
    case Do::CountRound: nextRound(code); return;
    case Do::Call: call(code); return;
    case Do::EnterProcedure: enterProcedure(code); return;
    case Do::Return: returnFromProcedure(); return;
    default: --flow_.pc; runOne();
    }
}

/// An assignment of an expression, whatever its values are.
void YThread::assignAny(int instruction) {
    const Instruction& code = program_->at(instruction);
    YVariable& target = code.operands[0]->resolve();
    if (!target.takesNumber()) {
        assign(code);
        return;
    }
    YVariable& word = *code.operands[1];
    YValue value;
    const bool failed = word.expression()->evaluate(YHeap::current(), value) != yerror::kNone;
    target.setString(failed ? std::string_view(word.text()) : value.text());
    if (!failed) expectLike(instruction, value);
}

bool YThread::testAny(int instruction) {
    YVariable& word = *program_->at(instruction).operands[0];
    YValue value;
    const bool failed = word.expression()->evaluate(YHeap::current(), value) != yerror::kNone;
    if (!failed) expectLike(instruction, value);
    return !(failed ? std::string_view(word.text()) : value.text()).starts_with('0');
}

/// The next values of an expression are likely to be as this one.
void YThread::expectLike(int instruction, const YValue& value) {
    if (value.isNumber())
        program_->expect(instruction,
                         value.isInteger() ? YProgram::Values::Integers : YProgram::Values::Reals);
}

/// One instruction, with all that can be said of it.
void YThread::runOne() {
    const Instruction& code = program_->at(flow_.pc++);
    if (attention_ & kCareful) noteOpcode(code.opcode);
    const int load = loads_;
    execute(code);
    // What the instruction called may have taken the script away.
    if (tracing_ && isLoaded() && load == loads_) trace(code);
}

void YThread::execute(const Instruction& code) {
    const OMUnderWay underWay;
    switch (code.opcode) {
    case YOpcode::Call: call(code); return;
    case YOpcode::Procedure: enterProcedure(code); return;
    case YOpcode::ForSetUp: setUpLoop(code); return;
    case YOpcode::ForNext: nextRound(code); return;
    case YOpcode::JumpIfFalse:
        if (!flow_.condition) jump(code.target);
        return;
    case YOpcode::Jump: jump(code.target); return;
    case YOpcode::Test: flow_.condition = isTrue(code); return;
    case YOpcode::Nothing: return;
    case YOpcode::Say: say(code); return;
    case YOpcode::Return: returnFromProcedure(); return;
    case YOpcode::Assign: assign(code); return;
    case YOpcode::Drop: drop(code); return;
    case YOpcode::Command: runCommand(code); return;
    case YOpcode::Wait:
        flow_.waiting = true;
        halt();
        fireEndReached(code.opcode);
        return;
    case YOpcode::Idle: setTimer(idle_, code, "%s (pc=%ld) on %s [%.1lf] idle seconds"); return;
    case YOpcode::Schedule: setTimer(schedule_, code, "%s (pc=%ld) in %s [%.1lf] seconds"); return;
    case YOpcode::Exit: requestSwitch(nullptr); return;
    case YOpcode::Suspend:
        eventsEnabled_ = false;
        detail("suspended");
        return;
    case YOpcode::Resume:
        eventsEnabled_ = true;
        detail("resumed");
        return;
    case YOpcode::Pause: pause(code); return;
    case YOpcode::Debug: setDebug(code); return;
    case YOpcode::Set: set(code); return;
    case YOpcode::Get: get(code); return;
    case YOpcode::Yield: setYield(code); return;
    case YOpcode::Play: play(code); return;
    case YOpcode::Relay: requestSwitch(code.operands[0]); return;
    case YOpcode::Quit:
        flow_.forgetInterrupt(); // a handler that quits ends here, and is in nobody's way
        engine_.quit();
        requestSwitch(code.count > 0 ? code.operands[0] : nullptr);
        return;
    case YOpcode::End:
    case YOpcode::ReturnFromInterrupt:
    case YOpcode::Else: break;
    }
    --flow_.pc; // stays here
    setStatus(Status::Blocked);
    fireEndReached(code.opcode);
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
    detail("script %s", std::string(target).c_str());
    engine_.pushScript(scriptName_);
    requestSwitch(last);
}

bool YThread::isHeader(std::int32_t instruction) const {
    return instruction >= 0 && instruction < program_->size() - 1;
}

void YThread::callProcedure(const Instruction& code, std::int32_t header) {
    detail("procedure %s=%d", code.operands[0]->text().c_str(), header);
    if (!isHeader(header)) {
        reportAndStop("call of a procedure that does not exist");
        return;
    }
    if (!flow_.call(header)) reportAndStop("sp < (YTSTACK-1)");
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
    detail("Args: ");
    for (int i = 1; i < code.count && i < from.count; ++i) {
        YVariable& parameter = code.operands[i]->resolve();
        YVariable& argument = *from.operands[i];
        if (argument.holdsInteger() && argument.isCanonical() && parameter.takesNumber()) {
            parameter.putNumberAsText(argument.heldInteger());
        } else {
            YScratch scratch;
            parameter.setString(argument.string(scratch));
        }
        if (tracing_) {
            YScratch scratch;
            detail("%s <- %s [%s] ", parameter.text().c_str(), argument.text().c_str(),
                   std::string(parameter.string(scratch)).c_str());
        }
    }
}

void YThread::returnFromProcedure() {
    switch (flow_.returnFromProcedure()) {
    case YFlow::Return::ToCaller: detail("at pc = %d", flow_.pc); return;
    case YFlow::Return::Nowhere: reportAndStop("sp"); return;
    case YFlow::Return::FromInterrupt: endPause(); setStatus(Status::InterruptEnded);
    }
}

void YThread::setUpLoop(const Instruction& code) {
    if (code.count == 0) return;
    if (code.count == 1) {
        detail("loop while [%s] is true", code.operands[0]->text().c_str());
        return;
    }
    const auto number = [&](int operand, int otherwise) {
        return static_cast<std::int16_t>(operand < code.count ? code.operands[operand]->integer()
                                                              : otherwise);
    };
    const std::int16_t from = number(1, 0);
    const std::int16_t to = number(2, 0);
    const std::int16_t step = number(3, code.count > 2 ? 1 : -1);
    // The test that follows in two instructions knows where the loop ends.
    if (flow_.beginLoop(from, to, step, program_->at(flow_.pc + 1).target))
        detail("counter %s: from %d to %d by %d", code.operands[0]->text().c_str(), from, to, step);
    else
        reportAndStop("counted loops are nested too deep");
}

void YThread::nextRound(const Instruction& code) {
    if (code.count < 2 || !flow_.inLoop()) {
        flow_.condition = isTrue(code);
        return;
    }
    flow_.condition = flow_.nextRound();
    const YFlow::CountedLoop& loop = flow_.loop();
    code.operands[0]->resolve().setInteger(loop.value);
    detail("counter %s=%d target=%d", code.operands[0]->text().c_str(), loop.value, loop.target);
}

void YThread::jump(int target) {
    if (flow_.jump(target)) detail("leaving a loop nested %d jumping ", flow_.loopDepth + 1);
}

bool YThread::isTrue(const Instruction& code) {
    if (code.count == 0) {
        detail("eternal loop");
        return true;
    }
    YVariable& operand = *code.operands[0];
    YScratch scratch;
    const bool result = !operand.string(scratch).starts_with('0');
    detail("condition [%s] is %s", operand.text().c_str(), result ? "true" : "false");
    return result;
}
