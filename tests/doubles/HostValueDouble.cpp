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
    const auto bytes = (nonsense ? nonsenseText(*nonsense) : text).fieldBytes(books.unicode);
    const bool fills = !terminates || nonsense == Nonsense::kEndlessText;
    const size_t terminator = books.unicode ? sizeof(char16) : sizeof(char8);
    const size_t room = static_cast<size_t>(*size) * sizeof(char16);
    const size_t length = std::min(bytes.size(), fills ? room : room - terminator);
    auto* field = reinterpret_cast<char8*>(buffer);
    std::copy_n(bytes.begin(), length, field);
    std::fill_n(field + length, std::min(terminator, room - length), char8{0});
    const size_t units = (length + 1) / sizeof(char16);
    *size = books.script.told(static_cast<int32>(units));
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
