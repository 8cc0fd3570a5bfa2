#include "ytrace.h"

#include "yengine.h"
#include "yflow.h"
#include "yprogram.h"

#include <utility>

void YTrace::show(const YProgramInstruction& code, const YProgramInstruction& next,
                  const YFlow& flow, bool interruptEnded) {
    YOpcode done = code.opcode; // what it turned out to be
    if (done == YOpcode::JumpIfFalse && !flow.condition) done = YOpcode::Jump;
    if (done == YOpcode::Return && interruptEnded) done = YOpcode::ReturnFromInterrupt;
    std::string message(YTraceName(done));
    message += '\n';
    if (done == YOpcode::Jump) {
        detail("to %s ", std::string(YTraceName(next.opcode)).c_str());
        for (int i = 0; i < next.count; ++i) {
            if (i > 0) detail_ += ' ';
            detail_ += next.operands[i]->text();
        }
    }
    message += std::exchange(detail_, {});
    if (flow.inInterrupt()) message += "\n\n[interrupt]";
    on_ = engine_.showTrace(message);
}
