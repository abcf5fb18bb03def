// LoneObject: an object of the host, on the stack, that has one interface and nothing else to
// offer.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace fuzz {

/** Starts with one reference, which is the target's own; the last release deletes nothing. */
template <class Interface>
class LoneObject : public Interface {
public:
    virtual ~LoneObject() = default;
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID, void** obj) override
    {
        *obj = nullptr;
        return Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return ++references; }
    Steinberg::uint32 PLUGIN_API release() override { return --references; }

    Steinberg::uint32 references = 1;
};

} // namespace fuzz
