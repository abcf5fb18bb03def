#include "tests/doubles/HostValueDouble.h"

#include "tests/doubles/NonsenseText.h"

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
    const auto& own = nonsense ? nonsenseText(*nonsense) : text;
    own.copyTo(buffer, size, books.unicode, terminates && nonsense != Nonsense::kEndlessText);
    *size = books.script.told(*size);
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
