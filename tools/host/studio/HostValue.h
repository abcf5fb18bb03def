// HostValue: one observable value of a device of play's host.
#pragma once

#include "pluginterfaces/base/iupdatehandler.h"
#include "tools/host/HostText.h"
#include "tools/host/studio/TreeObject.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** A number and a text. [host main thread] */
class HostValue final : public TreeObject<IValue> {
public:
    /** @param updateHandler told of changes; borrowed, outlives this object */
    HostValue(const std::string& textOfValue, int32 numberOfValue, bool isUnicode,
              IUpdateHandler& updateHandler);

    /** How often setInteger was called. */
    int64 timesSet() const { return sets; }

    int32 PLUGIN_API getInteger() override { return number; }
    void PLUGIN_API getString(char16* buffer, int32* size) override
    {
        text.copyTo(buffer, size, unicode);
    }
    void PLUGIN_API setInteger(int32 newNumber, bool notify) override;

private:
    HostText text;
    bool unicode;
    int32 number;
    int64 sets = 0;
    IUpdateHandler& updates;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
