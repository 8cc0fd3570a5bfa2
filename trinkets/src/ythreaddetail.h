// The trace's detail text, shared by the files that implement YThread.
#pragma once

#include "omformat.h"
#include "rthread.h"

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
