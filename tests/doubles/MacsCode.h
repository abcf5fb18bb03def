// MacsCode: whether the plug-in that a program tries is the Mac's machine code on a fake Mac, and
// that Mac. Such programs are compiled with VSTK2X_MACHO, which names the module's file. What tests
// expect otherwise there is named in docs/macos.md.
#pragma once

#include "tests/macos/loader/BundleModule.h"

namespace doubles {

#ifdef VSTK2X_MACHO
constexpr bool kIsMacsCode = true;
#else
constexpr bool kIsMacsCode = false;
#endif

/** Null where the plug-in is no Mac's or is not loaded. Valid while it is loaded. */
const MachoSystem* macSystem();

} // namespace doubles
