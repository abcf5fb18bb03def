// isUtf8: whether bytes are well-formed UTF-8.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace platform {

/** Refuses what no Unicode text encodes to: stray and missing continuation bytes, longer forms than
    needed, surrogates, and values above U+10FFFF. [any thread] */
bool isUtf8(const std::string& text) noexcept;

} // namespace platform
} // namespace Vst
} // namespace Steinberg
