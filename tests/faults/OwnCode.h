// OwnCode: tells the plug-in's code from everybody else's in this process by its address.
#pragma once

#include <cstdint>

namespace faults {

/** Learns where a loaded file of the plug-in's code and the C++ runtime stand. A file that is
    loaded later than this counts as somebody else's. */
void learnOwnCode(const char* moduleFile);

/** Whether an address is an instruction of the plug-in. */
bool isOwnCode(std::uintptr_t address);

/** Whether the call that returns to the address was made by the plug-in, be it through the C++
    runtime. Looks at the calling thread's stack; takes no memory. */
bool isCalledByOwnCode(std::uintptr_t returnAddress);

} // namespace faults
