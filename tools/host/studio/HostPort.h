// HostPort: one audio or MIDI port of the machine, as play's host has it.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "tools/host/HostText.h"

#include <set>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** What a port is before any plug-in changes it. */
struct PortDescription {
    enum class Type { audio, midi };

    std::string id;
    std::string name; ///< to the user and to the driver
    Type type;
    bool isInput; ///< brings signal into the computer
    bool isDisplayed = true;
    std::set<std::string> attributes = {}; ///< "virtual", "proxy"
};

/** [host main thread] */
class HostPort final : public U::Implements<U::Directly<ReservedSlots<IHostPort>>> {
public:
    /** @param isUnicode whether the host's texts are */
    HostPort(const PortDescription& description, bool isUnicode);

    const PortDescription& about() const { return port; }

    bool PLUGIN_API getPortId(StringObject& out) override;
    bool PLUGIN_API isPortType(const char* asked) override;
    bool PLUGIN_API hasPortAttribute(const char* attribute) override;
    bool PLUGIN_API isInputPort() override { return port.isInput; }
    const char16* PLUGIN_API getSystemName() override { return name.get(unicode); }
    const char16* PLUGIN_API getDisplayName() override { return name.get(unicode); }
    bool PLUGIN_API isDisplayed() override { return displayed; }
    void PLUGIN_API setDisplayed(bool state) override { displayed = state; }

private:
    PortDescription port;
    bool unicode;
    HostText id;
    HostText name;
    bool displayed;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
