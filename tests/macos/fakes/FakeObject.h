// What all objects of the fake Core Foundation have in common.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <mutex>
#include <string>

namespace doubles {

struct FakeObject {
    FakeObject();
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;
    virtual ~FakeObject();

    CFIndex references = 1;
};

/** Guards the objects, their references and the run loops. Never held while the code under test
    is called. */
std::recursive_mutex& fakeObjectLock();

/** A constant string in a Mac's module, which is never created or deleted. */
bool isConstantString(CFTypeRef object);

std::u16string utf16From(const std::string& utf8); ///< throws std::range_error
std::string utf8From(const std::u16string& text);  ///< throws std::range_error

} // namespace doubles

struct __CFString : doubles::FakeObject {
    std::u16string text;
};
