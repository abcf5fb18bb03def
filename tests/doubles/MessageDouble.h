// MessageDouble: a message that the host made for the plug-in, which must release it.
#pragma once

#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "tests/doubles/Counted.h"

namespace doubles {

/** Its attributes are the SDK's list, which does what any host's does; the message may fail to give
    it. */
class MessageDouble final : public Counted<Steinberg::Vst::IMessage> {
public:
    MessageDouble(HostBooks& host, const std::string& name);

    const char* PLUGIN_API getMessageID() override { return id.c_str(); }
    void PLUGIN_API setMessageID(const char* newId) override { id = newId ? newId : ""; }
    Steinberg::Vst::IAttributeList* PLUGIN_API getAttributes() override;

private:
    std::string id;
    const Steinberg::IPtr<Steinberg::Vst::IAttributeList> attributes;
};

} // namespace doubles
