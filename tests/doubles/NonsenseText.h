// NonsenseText: the wrong texts that a host or library can give.
//
//   told(script, "Tavrin 1")                   // an 8-bit text, or the wrong one of the test
//   told(script, port.displayName).get(true)   // a host's text likewise
#pragma once

#include "tests/doubles/CallScript.h"
#include "tools/host/HostText.h"

namespace doubles {

using Steinberg::Vst::play::HostText;

/** Longer than any buffer between plug-in, host and library. */
constexpr size_t kEndlessText = 5000;

/** @param endless the length of an endless text, in bytes */
inline std::string nonsenseBytes(Nonsense what, size_t endless = kEndlessText)
{
    switch (what) {
    case Nonsense::kBrokenText:
        return "\xC3(\xFF\xED\xA0\x80 \xF0\x9F"; // cut, never used, a surrogate, cut again
    case Nonsense::kEndlessText:
        return std::string(endless, 'x');
    default:
        return {};
    }
}

inline std::string told(CallScript& script, const std::string& own, size_t endless = kEndlessText)
{
    const auto nonsense = script.toldText();
    return nonsense ? nonsenseBytes(*nonsense, endless) : own;
}

/** The same units in either character set. The text lives as long as the program. */
inline const HostText& nonsenseText(Nonsense what)
{
    static const HostText empty("");
    static const HostText broken = HostText::raw(u"\xDC00 \xD800");
    static const HostText endless(nonsenseBytes(Nonsense::kEndlessText));
    if (what == Nonsense::kBrokenText)
        return broken;
    return what == Nonsense::kEndlessText ? endless : empty;
}

inline const HostText& told(CallScript& script, const HostText& own)
{
    const auto nonsense = script.toldText();
    return nonsense ? nonsenseText(*nonsense) : own;
}

} // namespace doubles
