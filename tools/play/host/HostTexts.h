// HostTexts: IHostApplicationW for the host that play pretends to be.
#pragma once

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "tools/play/host/HostFamily.h"
#include "tools/play/host/HostText.h"

namespace Steinberg {
namespace Vst {
namespace play {

class HostTexts final : public U::Implements<U::Directly<IHostApplicationW>> {
public:
    explicit HostTexts(const HostFamily& family)
    : isUnicode(family.isUnicode)
    , name(family.name, isUnicode)
    , version(family.version, isUnicode)
    {
    }

    const char16* PLUGIN_API getApplicationName() override { return name.get(); }
    const char16* PLUGIN_API getVersionString() override { return version.get(); }
    tresult PLUGIN_API getCharacterSet() override { return isUnicode ? kResultOk : kResultFalse; }

private:
    bool isUnicode;
    HostText name;
    HostText version;
};

/** What an older host offers instead: only that it is there. */
class OlderHostMark final : public U::Implements<U::Directly<IHostApplicationA>> {};

} // namespace play
} // namespace Vst
} // namespace Steinberg
