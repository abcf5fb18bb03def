// BankStore: a simulated user who has the plug-in store user banks as preset files.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/play/output/Report.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** A user bank and which of its contents. */
struct BankPlace {
    int32 bank;
    int32 number;
};

/** Reads "BANK:NUMBER". Whether the bank exists is left to the plug-in.
    @throws Failure for another text */
BankPlace bankPlaceOf(const std::string& words);

/** Has the user store the bank and finds the file that the plug-in wrote for it in the preset
    folder below HOME. [host main thread]
    @throws Failure when no file was written there, since the plug-in itself stays silent */
Report::StoredBank storeBank(SimulatorControl& simulator, BankPlace place);

} // namespace play
} // namespace Vst
} // namespace Steinberg
