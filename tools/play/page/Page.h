// Page: what play found out, as a page for a browser.
#pragma once

#include "tools/play/output/Report.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** The page: HTML in UTF-8 that needs no other file and no network. It holds the object of jsonOf,
    what its pictures are drawn from, and the script that draws them. */
std::string pageOf(const Report& report);

/** Writes the page to report.pageFile.
    @throws Failure when it cannot be written */
void writePage(const Report& report);

} // namespace play
} // namespace Vst
} // namespace Steinberg
