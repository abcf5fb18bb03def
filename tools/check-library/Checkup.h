// Checkup: everything that check-library looks at, in the order in which the plug-in needs it.
#pragma once

#include "tools/check-library/Finding.h"
#include "tools/check-library/Options.h"

#include <functional>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** @param progress told the name of each step before it is taken
    @throws Failure when no other process can be started */
Findings checkAll(const Options& options,
                  const std::function<void(const std::string& step)>& progress);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
