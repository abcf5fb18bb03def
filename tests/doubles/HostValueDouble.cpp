#include "tests/doubles/HostValueDouble.h"

#include "tests/doubles/NonsenseText.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;

HostValueDouble::HostValueDouble(HostBooks& host, const std::string& name,
                                 HostUpdatesDouble& notices)
: Counted(host, "value(" + name + ")")
, updates(notices)
{
}

/** A host offers its values under one ID or the other, never under both. */
void* HostValueDouble::face(const TUID queried)
{
    const bool matches = books.unicode ? FUnknownPrivate::iidEqual(queried, IValue::iid)
                                       : FUnknownPrivate::iidEqual(queried, IValueNotUnicodeID);
    return matches || isFUnknown(queried) ? newReference<IValue>(this) : nullptr;
}

int32 HostValueDouble::getInteger()
{
    return called("getInteger") ? books.script.told(integer) : 0;
}

void HostValueDouble::getString(char16* buffer, int32* size)
{
    if (!called("getString", size ? *size : -1) || !buffer || !size || *size <= 0)
        return;
    const auto nonsense = books.script.toldText();
    const auto units = (nonsense ? nonsenseText(*nonsense) : text).units(books.unicode);
    const bool fills = !terminates || nonsense == Nonsense::kEndlessText;
    const auto room = static_cast<size_t>(*size);
    const auto length = std::min(units.size(), fills ? room : room - 1);
    std::copy_n(units.begin(), length, buffer);
    if (length < room)
        buffer[length] = 0;
    *size = books.script.told(static_cast<int32>(length));
}

void HostValueDouble::setInteger(int32 value, bool notify)
{
    if (!called("setInteger", value, notify))
        return;
    integer = value;
    if (notify)
        updates.tell(this, IDependent::kChanged);
}

} // namespace doubles
