// PeerDouble: the other component's connection point, as the host hands it to connect().
//
//   controller.connect(&host.peer);
//   host.peer.received[0] == {"VST_CONNECT_MESSAGE_ID", library address, nullopt}
//   host.peer.notifyResults = {kResultFalse};      // of the first message; later ones succeed
//   host.peer.forwardTo = processor;               // its answer is the peer's
//   trace: "peer.notify(VST_CONNECT_MESSAGE_ID)"
#pragma once

#include "pluginterfaces/vst/ivstmessage.h"
#include "tests/doubles/Counted.h"

#include <optional>

namespace doubles {

class PeerDouble final : public Counted<Steinberg::Vst::IConnectionPoint> {
public:
    explicit PeerDouble(HostBooks& host)
    : Counted(host, "peer")
    {
    }

    struct Received {
        std::string id;
        std::optional<void*> address;            ///< of the plug-in's binary attribute
        std::optional<Steinberg::int64> integer; ///< of its integer attribute
    };
    std::vector<Received> received;

    std::vector<Steinberg::tresult> notifyResults;
    Steinberg::Vst::IConnectionPoint* forwardTo = nullptr; ///< borrowed

    Steinberg::tresult PLUGIN_API connect(Steinberg::Vst::IConnectionPoint* other) override;
    Steinberg::tresult PLUGIN_API disconnect(Steinberg::Vst::IConnectionPoint* other) override;
    Steinberg::tresult PLUGIN_API notify(Steinberg::Vst::IMessage* message) override;
};

} // namespace doubles
