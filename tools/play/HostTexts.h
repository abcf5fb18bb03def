// HostTexts: IHostApplicationW for the host that play pretends to be.
#pragma once

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "tools/play/HostFamily.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

class HostTexts final : public U::Implements<U::Directly<IHostApplicationW>> {
public:
    explicit HostTexts(const HostFamily& family);

    const char16* PLUGIN_API getApplicationName() override { return name.data(); }
    const char16* PLUGIN_API getVersionString() override { return version.data(); }
    tresult PLUGIN_API getCharacterSet() override { return isUnicode ? kResultOk : kResultFalse; }

private:
    using Buffer = std::vector<char16>;
    Buffer bufferOf(const std::string& asciiText) const;

    bool isUnicode;
    Buffer name;
    Buffer version;
};

/** What an older host offers instead: only that it is there. */
class OlderHostMark final : public U::Implements<U::Directly<IHostApplicationA>> {};

} // namespace play
} // namespace Vst
} // namespace Steinberg
