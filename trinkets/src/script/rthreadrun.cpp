// The loop over instructions, and control flow.
#include "rthread.h"

#include "yengine.h"
#include "yexpression.h"
#include "ynumber.h"
#include "yprofile.h"
#include "ystatement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
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

[[gnu::cold]] const YVariable* resolvedNumber(YVariable& variable) {
    const YVariable& held = variable.resolve();
    return held.holdsInteger() || held.holdsReal() ? &held : nullptr;
}

/// Where a real or an integer is; null when it is none.
inline const YVariable* numberIn(YVariable* variable) {
    if (variable->holdsReal() || variable->holdsInteger()) [[likely]]
        return variable;
    return resolvedNumber(*variable);
}

/// The length of a text that is there already.
bool loadLength(YVariable& variable, std::int64_t& value) {
    value = variable.resolve().heldLength();
    return value != YVariable::kUnknownLength;
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
    __extension__ using Product = unsigned __int128;
    const auto size = static_cast<std::uint32_t>(value < 0 ? -value : value);
    const auto quotient = static_cast<std::uint32_t>(Product{by.reciprocal} * size >> 64);
    const std::int64_t rest = size - quotient * static_cast<std::uint32_t>(by.number);
    return value < 0 ? -rest : rest;
}

struct RealResult {
    YProgramStep* end; ///< the row's last step; null when the row gives up
    double value;      ///< to be stored or tested
};

/// A row of reals, but for what it ends with. For itself, and with no reference to its value, so
/// that this stays in a register.
[[gnu::noinline]] RealResult runReals(YProgramStep* step) {
    using Do = YProgram::Do;
    double value = 0; // the accumulator
    std::array<double, YProgram::kStack> aside;
    for (;; ++step) {
        const auto with = [step](auto&& doIt) { // what the variable holds
            const YVariable* const held = numberIn(step->variable);
            if (held) [[likely]]
                doIt(held->holdsReal() ? held->heldReal() : held->heldInteger());
            return held != nullptr;
        };
        const auto operate = [&](double left, double right) {
            double result = 0;
            const bool worked = YExpression::applyReals(static_cast<char>(step->number), left,
                                                        right, result) == yerror::kNone;
            value = result;
            return worked;
        };
        const auto testWith = [&](auto comparison) -> RealResult {
            const bool worked =
                with([&](double operand) { value = comparison(value, operand) ? 1 : 0; });
            return {worked ? step : nullptr, value};
        };
        bool worked = true;
        switch (step->what) {
        case Do::ClearReal: value = 0; break;
        case Do::LoadReal: worked = with([&](double operand) { value = operand; }); break;
        case Do::LoadSumReal:
            worked = with([&](double operand) { value = operand + step->number; });
            break;
        case Do::LengthReal: {
            std::int64_t length = 0;
            worked = loadLength(*step->variable, length);
            value = static_cast<double>(length);
            break;
        }
        case Do::PushReal: aside[step->slot] = value; break;
        case Do::PushLoadReal:
            aside[static_cast<std::size_t>(step->number)] = value;
            worked = with([&](double operand) { value = operand; });
            break;
        case Do::AddReal: worked = with([&](double operand) { value += operand; }); break;
        case Do::AddNumberReal: value += step->number; break;
        case Do::SubtractReal: worked = with([&](double operand) { value -= operand; }); break;
        case Do::MultiplyReal: worked = with([&](double operand) { value *= operand; }); break;
        case Do::DivideReal:
            worked = with([&](double operand) {
                         worked = operand * operand >= YExpression::kSmallestDivisorSquared;
                         value /= operand;
                     }) &&
                     worked;
            break;
        case Do::OperateReal:
            worked = with([&](double operand) { worked = operate(value, operand); }) && worked;
            break;
        case Do::CombineReal:
            if (step->number == '+')
                value = aside[step->slot] + value;
            else
                worked = operate(aside[step->slot], value);
            break;
        case Do::TestEqualReal: return testWith(std::equal_to());
        case Do::TestUnequalReal: return testWith(std::not_equal_to());
        case Do::TestLessReal: return testWith(std::less());
        case Do::TestGreaterReal: return testWith(std::greater());
        default: return {step, value};
        }
        if (!worked) [[unlikely]]
            return {nullptr, 0};
    }
}

/// `x=y` where y is no expression, but a number. False when that takes more.
inline bool assignNumber(const YProgram::Instruction& code) {
    YVariable& target = code.operands[0]->resolve();
    const YVariable& value = code.operands[1]->resolve();
    if (!target.takesNumber() || !value.holdsInteger() || !value.isCanonical()) return false;
    target.putNumberAsText(value.heldInteger());
    return true;
}

/// The same where y is a text or a part of one.
bool assignText(const YProgram::Instruction& code) {
    YVariable& target = code.operands[0]->resolve();
    const YVariable& word = *code.operands[1];
    if (!target.takesNumber()) return false;
    if (!word.holdsText() && word.kind() != YVariable::Kind::Substring) return false;
    YScratch scratch;
    target.setString(word.string(scratch));
    return true;
}

/// Gives a procedure's parameters the arguments of a call, if they are all numbers. False, with
/// nothing changed, when that takes more.
inline bool passNumbers(const YProgram::Instruction& from, const YProgram::Instruction& to) {
    const int count = std::min(from.count, to.count);
    for (int i = 1; i < count; ++i) {
        const YVariable& argument = *from.operands[i];
        if (!argument.holdsInteger() || !argument.isCanonical() ||
            !ynumber::hasShortText(argument.heldInteger()) || !to.operands[i]->takesNumber())
            return false;
    }
    for (int i = 1; i < count; ++i) to.operands[i]->putInteger(from.operands[i]->heldInteger());
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

/// `x=x+y` where x is a text already. False when that takes more.
bool append(YVariable& target, const YExpression& expression) {
    const YExpression::Node& sum = expression.root();
    if (sum.operation != '+' || sum.left->leaf != &target || !sum.right->leaf) return false;
    if (!target.holdsText() || target.heldText().empty()) return false;
    YScratch scratch;
    const std::string_view text = sum.right->leaf->string(scratch);
    if (target.heldText().size() + text.size() >= YExpression::kMaxConcatenation) return false;
    target.appendText(text);
    return true;
}

/// `x=y` where y is an expression of any values. False when that takes more.
bool assignAny(YProgram& program, int instruction) {
    const YProgram::Instruction& code = program.at(instruction);
    YVariable& target = code.operands[0]->resolve();
    if (!target.takesNumber()) return false;
    if (append(target, *code.operands[1]->expression())) return true;
    YValue value;
    target.setString(evaluate(program, instruction, 1, value));
    return true;
}

} // namespace

std::string YThread::stackOf(const Instruction& code) const {
    std::string calls;
    flow_.eachCaller([&](int call) {
        const Instruction& from = program_->at(call);
        if (from.count > 0) calls.insert(0, from.operands[0]->text() + ';');
    });
    std::string stack;
    if (flow_.inInterrupt()) stack = program_->at(flow_.handler() - 1).operands[0]->text() + ';';
    return stack + calls + program_->place(code);
}

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
    YProgramStep* step = program_->start(flow_.pc);
    std::int64_t value = 0; // the accumulator
    std::int64_t right = 0;
    std::array<std::int64_t, YProgram::kStack> aside;

    for (;;) {
        const auto loads = [&](std::int64_t& number) { return load(step->variable, number); };
        // On to the next step of the row, or, when the row must give up, to the first one of a more
        // general row.
        const auto after = [&](bool worked) {
            if (worked) [[likely]]
                ++step;
            else
                step = program_->expect(step->instruction, Values::Reals);
        };
        const auto jump = [&](int target) {
            flow_.jump(target);
            step = program_->start(target);
        };
        const auto decide = [&](bool result) { // with the jump that follows
            flow_.condition = result;
            if (result)
                step += 2;
            else
                jump(step->number);
        };
        const auto compares = [&](auto comparison) {
            const bool worked = loads(right);
            if (worked) [[likely]]
                decide(comparison(value, right));
            else
                after(false);
            return worked;
        };
        const auto callsOut = [&] { // false when the loop has to be left
            engine_.setBudget(budget);
            step = carryOut(*step);
            budget = engine_.budget();
            return step != nullptr;
        };
        switch (step->what) { // and goes on with the next step, or breaks at the instruction's end
        case Do::Clear:
            value = 0;
            ++step;
            continue;
        case Do::LoadInteger: after(loads(value)); continue;
        case Do::LoadSum: after(loads(value) && fits(value += step->number)); continue;
        case Do::LengthInteger: after(loadLength(*step->variable, value)); continue;
        case Do::PushInteger:
            aside[step->slot] = value;
            ++step;
            continue;
        case Do::PushLoadInteger:
            aside[static_cast<std::size_t>(step->number)] = value;
            after(loads(value));
            continue;
        case Do::Add: after(loads(right) && fits(value += right)); continue;
        case Do::AddNumber: after(fits(value += step->number)); continue;
        case Do::Subtract: after(loads(right) && fits(value -= right)); continue;
        case Do::Multiply: after(loads(right) && fits(value *= right)); continue;
        case Do::Equal:
        case Do::Unequal:
        case Do::Less:
        case Do::Greater:
        case Do::Divide:
        case Do::Quotient:
        case Do::Remainder: after(loads(right) && combine(step->what, value, right)); continue;
        case Do::RemainderBy:
            value = remainder(value, *step);
            ++step;
            continue;
        case Do::CombineInteger:
            right = std::exchange(value, aside[step->slot]);
            after(combine(static_cast<Do>(step->number), value, right));
            continue;
        case Do::StoreInteger: {
            YVariable& target = step->variable->resolve();
            if (!target.takesNumber()) {
                step = program_->expect(step->instruction, Values::Any);
                continue;
            }
            target.putNumberAsText(static_cast<std::int32_t>(value));
            ++step;
            break;
        }
        case Do::TestInteger: decide(value != 0); break;
        case Do::TestEqual:
            if (compares(std::equal_to())) break;
            continue;
        case Do::TestUnequal:
            if (compares(std::not_equal_to())) break;
            continue;
        case Do::TestLess:
            if (compares(std::less())) break;
            continue;
        case Do::TestGreater:
            if (compares(std::greater())) break;
            continue;

        case Do::ClearReal:
        case Do::LoadReal:
        case Do::LoadSumReal:
        case Do::LengthReal: {
            const RealResult result = runReals(step);
            if (!result.end) {
                step = program_->expect(step->instruction, Values::Any);
                continue;
            }
            step = result.end;
            if (step->what != Do::StoreReal) {
                decide(step->what == Do::TestReal ? !beginsWithZero(result.value)
                                                  : result.value != 0);
                break;
            }
            YVariable& target = step->variable->resolve();
            if (!target.takesNumber()) {
                step = program_->expect(step->instruction, Values::Any);
                continue;
            }
            const double kept = ynumber::throughText(result.value, step->number);
            if (ynumber::isIntegral(kept, 0)) {
                target.putNumberAsText(static_cast<std::int32_t>(kept));
                program_->expect(step->instruction, Values::Integers);
            } else if (std::isfinite(kept)) [[likely]] {
                target.putReal(kept);
            } else {
                target.setNumberAsText(kept);
            }
            ++step;
            break;
        }
        case Do::Jump: jump(step->number); break;
        case Do::CountRound:
            if (flow_.inLoop() && step->variable->takesNumber()) [[likely]] {
                const bool more = flow_.nextRound();
                step->variable->putInteger(flow_.loop().value);
                decide(more);
            } else if (!callsOut()) {
                return;
            }
            break;
        case Do::Call:
            flow_.pc = step->instruction + 1;
            if (const std::int32_t header = step->variable->heldProcedure();
                program_->isHeader(header) && flow_.call(header)) [[likely]]
                step = program_->start(header);
            else if (!callsOut())
                return;
            break;
        case Do::EnterProcedure:
            if (const int caller = flow_.caller();
                caller >= 0 && passNumbers(program_->at(caller), program_->at(step->instruction)))
                ++step;
            else if (!callsOut())
                return;
            break;
        case Do::Return:
            if (!flow_.isHandlerItself() && flow_.returnToCaller()) [[likely]]
                step = program_->start(flow_.pc);
            else if (!callsOut())
                return;
            break;
        case Do::AssignValue:
            if (assignNumber(program_->at(step->instruction)))
                ++step;
            else if (!callsOut())
                return;
            break;
        default:
            if (!callsOut()) return;
        }
        if (--budget <= 0) break;
    }
    flow_.pc = step->instruction;
    engine_.setBudget(budget);
}

/// What calls out of the loop. Gives the step that comes next; null when the loop has to be left,
/// with all that it spent. The step may be another one by then in its place.
YProgramStep* YThread::carryOut(const YProgramStep step) {
    using Do = YProgram::Do;
    flow_.pc = step.instruction + 1;
    const Instruction& code = program_->at(step.instruction);
    switch (step.what) {
    case Do::AssignValue:
        if (!assignText(code)) statement(code).assign();
        break;
    case Do::AssignAny:
        if (!assignAny(*program_, step.instruction)) statement(code).assign();
        break;
    case Do::TestAny: {
        YValue value;
        const bool no = evaluate(*program_, step.instruction, 0, value).starts_with('0');
        flow_.decide(!no, step.instruction + 2, step.number);
        break;
    }
    case Do::CountRound: nextRound(code); break;
    case Do::Call: call(code); break;
    case Do::EnterProcedure: enterProcedure(code); break;
    case Do::Return: returnFromProcedure(); break;
    default: --flow_.pc; runOne();
    }
    if (!halted_ && !isCareful()) return program_->start(flow_.pc);
    engine_.spendOne();
    return nullptr;
}

/// One instruction, with all that can be said of it.
void YThread::runOne() {
    const Instruction& code = program_->at(flow_.pc++);
    if (code.opcode != endFiredBy_) endPending_ = true;
    trace_.begin();
    const int load = loads_;
    {
        std::optional<YProfile::Statement> measured;
        if (YProfile* const profile = engine_.profile(); profile && code.opcode != YOpcode::End)
            measured.emplace(*profile, stackOf(code));
        execute(code);
    }
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
