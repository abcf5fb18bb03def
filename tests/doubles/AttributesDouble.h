// AttributesDouble: the attributes of a host's message. A call of each can fail or give less than
// what was set.
//
//   host.failAt("message(1).getBinary");       // the attribute is missing
//   wrong answers: half the bytes or none, a number that nobody set
#pragma once

#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/vst/ivstattributes.h"
#include "tests/doubles/Counted.h"

namespace doubles {

/** Keeps the attributes in the SDK's list. Lives with its message: nobody holds a reference. */
class AttributesDouble final : public Counted<Steinberg::Vst::IAttributeList> {
public:
    AttributesDouble(HostBooks& host, const std::string& messageName);

    Steinberg::tresult PLUGIN_API setInt(AttrID id, Steinberg::int64 value) override;
    Steinberg::tresult PLUGIN_API getInt(AttrID id, Steinberg::int64& value) override;
    Steinberg::tresult PLUGIN_API setFloat(AttrID id, double value) override;
    Steinberg::tresult PLUGIN_API getFloat(AttrID id, double& value) override;
    Steinberg::tresult PLUGIN_API setString(AttrID id,
                                            const Steinberg::Vst::TChar* string) override;
    Steinberg::tresult PLUGIN_API getString(AttrID id, Steinberg::Vst::TChar* string,
                                            Steinberg::uint32 sizeInBytes) override;
    Steinberg::tresult PLUGIN_API setBinary(AttrID id, const void* data,
                                            Steinberg::uint32 sizeInBytes) override;
    Steinberg::tresult PLUGIN_API getBinary(AttrID id, const void*& data,
                                            Steinberg::uint32& sizeInBytes) override;

    /** Makes the list behind it new, for the host to fill: no calls that a test sees. */
    Steinberg::Vst::IAttributeList& renew();

private:
    bool asked(const char* operation, AttrID id);

    Steinberg::IPtr<Steinberg::Vst::IAttributeList> kept;
};

} // namespace doubles
