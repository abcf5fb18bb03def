#include "tests/doubles/HostObject.h"

#include "tests/doubles/HostBooks.h"

namespace doubles {

HostObject::HostObject(HostBooks& host, std::string givenName)
: books(host)
, objectName(std::move(givenName))
{
}

Steinberg::uint32 HostObject::countUp()
{
    const int now = ++references;
    if (now <= 1)
        usedAfterEnd = true;
    if (books.traceReferences)
        books.script.getTrace().add(callText(objectName, "addRef"));
    return static_cast<Steinberg::uint32>(now);
}

Steinberg::uint32 HostObject::countDown()
{
    const int now = --references;
    int before = lowest;
    while (now < before && !lowest.compare_exchange_weak(before, now)) {
    }
    if (books.traceReferences)
        books.script.getTrace().add(callText(objectName, "release"));
    return now > 0 ? static_cast<Steinberg::uint32>(now) : 0;
}

bool HostObject::calledAs(const std::string& text)
{
    if (references <= 0)
        usedAfterEnd = true;
    return books.script.called(text);
}

std::string HostObject::imbalance() const
{
    if (references != expected)
        return objectName + ": expected " + std::to_string(expected) + ", is " +
               std::to_string(references);
    if (lowest < expected)
        return objectName + ": fell to " + std::to_string(lowest) + ", below the host's own " +
               std::to_string(expected);
    return usedAfterEnd ? objectName + ": used after its end" : "";
}

} // namespace doubles
