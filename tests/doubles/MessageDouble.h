// MessageDouble: a message that the host made for the plug-in, which must release it.
#pragma once

#include "tests/doubles/AttributesDouble.h"

#include "pluginterfaces/vst/ivstmessage.h"

namespace doubles {

/** A test can let every call fail, also those of its attributes. */
class MessageDouble final : public Counted<Steinberg::Vst::IMessage> {
public:
    MessageDouble(HostBooks& host, const std::string& name);

    const char* PLUGIN_API getMessageID() override;
    void PLUGIN_API setMessageID(const char* newId) override;
    Steinberg::Vst::IAttributeList* PLUGIN_API getAttributes() override;

    /** Fills a message of the host's own: no calls that a test sees. */
    void makeUp(const char* newId, const char* attribute, const void* data,
                Steinberg::uint32 sizeInBytes);
    void makeUp(const char* newId, const char* attribute, Steinberg::int64 value);

private:
    std::string id;
    std::string toldId; ///< by the last getMessageID; lives until the next
    AttributesDouble& attributes;
};

} // namespace doubles
