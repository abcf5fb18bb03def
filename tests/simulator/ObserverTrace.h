// Callbacks of an observer that write texts into a Trace.
#pragma once

#include "tests/doubles/Trace.h"

#include <string>

namespace doubles {

/** Callbacks that write "begin ID", "value ID N" and "end ID" into a Trace, the owner. */
inline void traceBegin(void* owner, unsigned id)
{
    static_cast<Trace*>(owner)->add("begin " + std::to_string(id));
}
inline void traceValue(void* owner, unsigned id, int value)
{
    static_cast<Trace*>(owner)->add("value " + std::to_string(id) + " " + std::to_string(value));
}
inline void traceEnd(void* owner, unsigned id)
{
    static_cast<Trace*>(owner)->add("end " + std::to_string(id));
}

} // namespace doubles
