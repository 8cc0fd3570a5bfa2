// The trace: what a script's author sees of each instruction while debugging is on.
#include "omformat.h"
#include "rthread.h"
#include "rthreaddetail.h"
#include "yengine.h"

#include <utility>

namespace {

/// What the instruction turned out to do.
YOpcode doneBy(YOpcode opcode, bool condition, YThread::Status status) {
    if (opcode == YOpcode::JumpIfFalse && !condition) return YOpcode::Jump;
    if (opcode == YOpcode::Return && status == YThread::Status::InterruptEnded)
        return YOpcode::ReturnFromInterrupt;
    return opcode;
}

} // namespace

void YThread::trace(const Instruction& code) {
    // A thread comes by the end of its script in every turn and stays there.
    if (status_ == Status::Blocked && &code == &program_->at(flow_.pc)) return;
    const YOpcode done = doneBy(code.opcode, flow_.condition, status_);
    std::string message(YTraceName(done));
    message += '\n';
    if (done == YOpcode::Jump) {
        const Instruction& next = program_->at(flow_.pc);
        detail("to %s ", std::string(YTraceName(next.opcode)).c_str());
        for (int i = 0; i < next.count; ++i) {
            if (i > 0) detail_ += ' ';
            detail_ += next.operands[i]->text();
        }
    }
    message += std::exchange(detail_, {});
    if (flow_.inInterrupt()) message += "\n\n[interrupt]";
    if (engine_.showTrace(message)) return;
    tracing_ = false;
    updateCare();
}
