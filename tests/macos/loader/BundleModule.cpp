// The Linux module's entry points, which call those of the Mac's bundle in it.
#include "tests/macos/loader/BundleModule.h"

#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeMessages.h"
#include "tests/macos/loader/DarwinCall.h"
#include "tests/macos/loader/MacsImage.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

// The bundle's entry points, and a constructor of the C++ library as the image calls it.
#pragma GCC visibility push(hidden)
extern "C" {
bool bundleEntry(CFBundleRef bundle) __asm__("mac_bundleEntry");
bool bundleExit() __asm__("mac_bundleExit");
void* factory() __asm__("mac_GetPluginFactory");
#if defined(__aarch64__)
void* copyText(void* made, const void* original) __asm__(
    "this__ZNSt3__112basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEEC1ERKS5_");
#else
constexpr MachoSystem::CopyText* copyText = nullptr;
#endif
}
#pragma GCC visibility pop

namespace {

using doubles::FakeCoreFoundation;

/** One reference to the bundle, as a Mac's host holds. */
CFBundleRef reference = nullptr;
const macho::MacsImage* image = nullptr;

size_t objectsOfThePlugIn()
{
    return FakeCoreFoundation::liveObjects() - 1;
}

const MachoSystem machoSystem = {&FakeCoreFoundation::fireTimers,
                                 &FakeCoreFoundation::timers,
                                 [] { return FakeCoreFoundation::lastDelay; },
                                 [] { return FakeCoreFoundation::lastInterval; },
                                 [] { return FakeCoreFoundation::lastTolerance; },
                                 &objectsOfThePlugIn,
                                 &FakeCoreFoundation::misuses,
                                 &macho::handleEventWithoutReference,
                                 &macho::handleEventOfKind,
                                 copyText};

// Runs after all other constructors of the module, since this object is linked last.
__attribute__((constructor)) void load()
{
    reference = FakeCoreFoundation::makeBundle(MACHO_BUNDLE);
    FakeCoreFoundation::constantsBegin = macho::imageTexts;
    FakeCoreFoundation::constantsEnd = macho::imageTextsEnd;
    image = new macho::MacsImage;
}

__attribute__((destructor)) void unload()
{
    delete image;
    CFRelease(reference);
    if (FakeCoreFoundation::misuses() > 0)
        macho::endProgram("something was retained or released that is no Core Foundation object",
                          nullptr);
}

} // namespace

/** A Linux host passes the module's handle; bundleEntry gets the bundle instead. */
EXPORTED bool ModuleEntry(void* handle)
{
    return bundleEntry(handle ? reference : nullptr);
}

EXPORTED bool ModuleExit()
{
    return bundleExit();
}

EXPORTED void* GetPluginFactory()
{
    return factory();
}

EXPORTED const MachoSystem* getMachoSystem()
{
    return &machoSystem;
}
