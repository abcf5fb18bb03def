// TreeObject: what the devices and values of play's host have in common.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/funknownimpl.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

/** Offers its interface under the one ID that the host uses for it: hosts with Unicode texts and
    hosts without have different ones, and no host has both. */
template <typename Interface>
class TreeObject : public U::Implements<U::Directly<ReservedSlots<Interface>>> {
public:
    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override
    {
        if (!obj)
            return kInvalidArgument;
        *obj = nullptr;
        if (!FUnknownPrivate::iidEqual(wanted, ownID) &&
            !FUnknownPrivate::iidEqual(wanted, FUnknown::iid))
            return kNoInterface;
        this->addRef();
        *obj = static_cast<Interface*>(this);
        return kResultOk;
    }

protected:
    explicit TreeObject(const TUID interfaceID) { std::copy_n(interfaceID, sizeof(TUID), ownID); }

private:
    TUID ownID{};
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
