// OwnCode: tells by an address whether it is in the plug-in's code or in other code of the process.
#pragma once

#include <cstdint>

namespace faults {

/** Remembers the addresses of a loaded file of the plug-in, three files at most, and of the C++
    runtime. Call it again for each file, once it is loaded. */
void learnOwnCode(const char* moduleFile);

/** Whether an address is an instruction of the plug-in. */
bool isOwnCode(std::uintptr_t address);

/** Whether the plug-in made the call that returns to the address, directly or through the C++
    runtime. Reads the calling thread's stack; takes no memory. */
bool isCalledByOwnCode(std::uintptr_t returnAddress);

} // namespace faults
