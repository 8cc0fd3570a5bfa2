// What the files that implement YThread share.
#pragma once

#include "omformat.h"
#include "rthread.h"
#include "yprogram.h"

/// The string form.
inline std::string textOf(YVariable& variable) {
    YScratch scratch;
    return std::string(variable.string(scratch));
}

/// Adds to what the trace shows of the instruction being executed; costs nothing without a trace.
template <class... Arguments>
void YThread::detail(const char* format, Arguments... arguments) {
    if (!tracing_) [[likely]]
        return;
    if constexpr (sizeof...(arguments) == 0)
        detail_ += format;
    else
        detail_ += OMFormat(format, arguments...);
}
