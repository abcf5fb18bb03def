#include "tools/host/studio/HostValue.h"

namespace Steinberg {
namespace Vst {
namespace play {

HostValue::HostValue(const std::string& textOfValue, int32 numberOfValue, bool isUnicode,
                     IUpdateHandler& updateHandler)
: TreeObject(isUnicode ? IValue::iid.toTUID() : IValueNotUnicodeID)
, text(textOfValue)
, unicode(isUnicode)
, number(numberOfValue)
, updates(updateHandler)
{
}

void PLUGIN_API HostValue::setInteger(int32 newNumber, bool notify)
{
    ++sets;
    number = newNumber;
    if (notify)
        updates.triggerUpdates(unknownCast(), IDependent::kChanged);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
