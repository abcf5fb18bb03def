#include "tests/macos/fakes/FakeCoreFoundation.h"

#include "tests/macos/fakes/FakeObject.h"

#include <cstring>
#include <set>

struct __CFURL : doubles::FakeObject {
    std::string path;
};

struct __CFBundle : doubles::FakeObject {
    std::optional<std::string> path;
};

namespace doubles {

namespace {

// Never destroyed: a module that is still loaded at exit uses them after the destructors of
// statics.
std::set<FakeObject*>& objects = *new std::set<FakeObject*>;
size_t misuseCount = 0;

/** Null when there is no such object, which counts as a misuse. */
FakeObject* liveObject(CFTypeRef reference)
{
    auto* object = static_cast<FakeObject*>(const_cast<void*>(reference));
    if (objects.count(object) != 0)
        return object;
    ++misuseCount;
    return nullptr;
}

} // namespace

std::recursive_mutex& fakeObjectLock()
{
    static auto& lock = *new std::recursive_mutex;
    return lock;
}

FakeObject::FakeObject()
{
    const std::lock_guard guard(fakeObjectLock());
    objects.insert(this);
}

FakeObject::~FakeObject()
{
    const std::lock_guard guard(fakeObjectLock());
    objects.erase(this);
}

void FakeCoreFoundation::reset()
{
    const std::lock_guard guard(fakeObjectLock());
    while (!objects.empty())
        delete *objects.begin();
    misuseCount = 0;
    failConversions = false;
}

size_t FakeCoreFoundation::liveObjects()
{
    const std::lock_guard guard(fakeObjectLock());
    return objects.size();
}

size_t FakeCoreFoundation::misuses()
{
    const std::lock_guard guard(fakeObjectLock());
    return misuseCount;
}

CFIndex FakeCoreFoundation::references(CFTypeRef object)
{
    const std::lock_guard guard(fakeObjectLock());
    auto* known = static_cast<FakeObject*>(const_cast<void*>(object));
    return objects.count(known) != 0 ? known->references : 0;
}

CFBundleRef FakeCoreFoundation::makeBundle(std::optional<std::string> path)
{
    auto* bundle = new __CFBundle;
    bundle->path = std::move(path);
    return bundle;
}

} // namespace doubles

using namespace doubles;

CFTypeRef CFRetain(CFTypeRef object)
{
    const std::lock_guard guard(fakeObjectLock());
    if (isConstantString(object))
        return object;
    if (auto* known = liveObject(object))
        ++known->references;
    return object;
}

void CFRelease(CFTypeRef object)
{
    const std::lock_guard guard(fakeObjectLock());
    if (isConstantString(object))
        return;
    auto* known = liveObject(object);
    if (known && --known->references == 0)
        delete known;
}

CFURLRef CFBundleCopyBundleURL(CFBundleRef bundle)
{
    if (!bundle->path)
        return nullptr;
    auto* url = new __CFURL;
    url->path = *bundle->path;
    return url;
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolve, UInt8* buffer, CFIndex size)
{
    FakeCoreFoundation::resolvedAgainstBase = resolve != 0;
    FakeCoreFoundation::pathBufferSize = size;
    const auto needed = url->path.size() + 1;
    // After a failure the buffer may hold anything.
    if (needed > static_cast<size_t>(size)) {
        std::memset(buffer, 'x', static_cast<size_t>(size));
        return false;
    }
    std::memcpy(buffer, url->path.c_str(), needed);
    return true;
}
