// The fake Core Foundation's UUIDs are random. Apple's reference of CFUUID says that they are
// unique; that they are RFC 4122's version 4 is a belief.
#include "tests/macos/fakes/FakeObject.h"

#include <random>

struct __CFUUID : doubles::FakeObject {
    CFUUIDBytes bytes = {};
};

CFUUIDRef CFUUIDCreate(CFAllocatorRef)
{
    thread_local std::mt19937 random{std::random_device()()};
    auto* made = new __CFUUID;
    for (auto& byte : made->bytes.bytes)
        byte = static_cast<UInt8>(random());
    made->bytes.bytes[6] = static_cast<UInt8>((made->bytes.bytes[6] & 0x0F) | 0x40); // version 4
    made->bytes.bytes[8] = static_cast<UInt8>((made->bytes.bytes[8] & 0x3F) | 0x80); // RFC 4122
    return made;
}

CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid)
{
    return uuid->bytes;
}
