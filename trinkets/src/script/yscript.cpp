#include "yscript.h"

std::string_view YTraceName(YOpcode opcode) {
    switch (opcode) {
    case YOpcode::End: return "";
    case YOpcode::Call: return "call";
    case YOpcode::Procedure: return "procedure header";
    case YOpcode::ForSetUp: return "for";
    case YOpcode::ForNext: return "loop iteration";
    case YOpcode::JumpIfFalse: return "";
    case YOpcode::Jump: return "jumping";
    case YOpcode::Test: return "check condition";
    case YOpcode::Nothing: return "";
    case YOpcode::Say: return "say";
    case YOpcode::Return: return "return from procedure";
    case YOpcode::ReturnFromInterrupt: return "return from interrupt";
    case YOpcode::Else: return "else";
    case YOpcode::Assign: return "assignment";
    case YOpcode::Drop: return "drop";
    case YOpcode::Command: return "run-time call";
    case YOpcode::Wait: return "wait";
    case YOpcode::Idle: return "idle";
    case YOpcode::Schedule: return "schedule";
    case YOpcode::Exit: return "exit";
    case YOpcode::Suspend: return "suspend";
    case YOpcode::Resume: return "resume";
    case YOpcode::Pause: return "pause";
    case YOpcode::Debug: return "debug";
    case YOpcode::Set: return "set";
    case YOpcode::Get: return "get";
    case YOpcode::Yield: return "yield";
    case YOpcode::Play: return "play";
    case YOpcode::Relay: return "relay";
    case YOpcode::Quit: return "quit";
    }
    return "";
}

bool YHasOperands(YOpcode opcode) {
    switch (opcode) {
    case YOpcode::Call:
    case YOpcode::Procedure:
    case YOpcode::ForSetUp:
    case YOpcode::ForNext:
    case YOpcode::Test:
    case YOpcode::Say:
    case YOpcode::Assign:
    case YOpcode::Drop:
    case YOpcode::Command:
    case YOpcode::Wait:
    case YOpcode::Idle:
    case YOpcode::Schedule:
    case YOpcode::Exit:
    case YOpcode::Suspend:
    case YOpcode::Resume:
    case YOpcode::Pause:
    case YOpcode::Debug:
    case YOpcode::Set:
    case YOpcode::Get:
    case YOpcode::Yield:
    case YOpcode::Play:
    case YOpcode::Relay:
    case YOpcode::Quit: return true;
    default: return false;
    }
}

int YMinOperands(YOpcode opcode) {
    switch (opcode) {
    case YOpcode::Call:
    case YOpcode::Procedure:
    case YOpcode::Assign:
    case YOpcode::Command:
    case YOpcode::Pause:
    case YOpcode::Debug:
    case YOpcode::Yield:
    case YOpcode::Play:
    case YOpcode::Relay: return 1;
    case YOpcode::Idle:
    case YOpcode::Schedule:
    case YOpcode::Set: return 2;
    case YOpcode::Get: return 3;
    default: return 0;
    }
}
