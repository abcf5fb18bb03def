// HostPortDouble: one port of the host's registry. Made by HostPortsDouble.
//
//   auto& port = host.ports.audioInput("id-1", "Tavrin 1");
//   port.displayed = false;                 port.attributes = {"virtual"};
//   port.idReadable = false;                port.systemName = "Tavrin RDL3/RDL5 Port4";
//   trace: "port(id-1).isPortType(audio)", "port(id-1).setDisplayed(false)"
#pragma once

#include "hostapi/IHostPort.h"
#include "tests/doubles/Counted.h"

namespace doubles {

class HostPortDouble final : public Counted<Steinberg::IHostPort> {
public:
    HostPortDouble(HostBooks& host, const HostText& portId);

    const HostText id;
    HostText systemName;
    HostText displayName;
    std::string type = "audio";
    std::set<std::string> attributes;
    bool input = true;
    bool displayed = true;
    bool idReadable = true;    ///< getPortId answers true; otherwise it leaves its object alone
    bool idAsEightBit = false; ///< a Unicode host that sets 8-bit text all the same

    bool PLUGIN_API getPortId(Steinberg::StringObject& out) override;
    bool PLUGIN_API isPortType(const char* asked) override;
    bool PLUGIN_API hasPortAttribute(const char* attribute) override;
    bool PLUGIN_API isInputPort() override;
    const Steinberg::char16* PLUGIN_API getSystemName() override;
    const Steinberg::char16* PLUGIN_API getDisplayName() override;
    bool PLUGIN_API isDisplayed() override;
    void PLUGIN_API setDisplayed(bool state) override;

private:
    void tellNonsense(Steinberg::StringObject& out, Nonsense what) const;
};

} // namespace doubles
