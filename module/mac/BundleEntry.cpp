// The entry points that a macOS host calls after loading and before unloading the bundle.
#include "module/mac/BundleEntry.h"

#include "module/ModuleInit.h"
#include "pluginterfaces/base/fplatform.h"

CFBundleRef ghInst = nullptr;
char gPath[kMaxModulePath] = {};

extern "C" {

/** @param ref the bundle; may be null. Hosts may call this several times, each with its own
    bundleExit. [host main thread] */
SMTG_EXPORT_SYMBOL bool bundleEntry(CFBundleRef ref);
SMTG_EXPORT_SYMBOL bool bundleExit();
}

namespace {

/** How many references to ghInst are held; 0 exactly while it is null. */
unsigned retained = 0;

void releaseAll()
{
    for (; retained > 0; --retained)
        CFRelease(ghInst);
}

void readBundlePath()
{
    CFURLRef url = CFBundleCopyBundleURL(ghInst);
    if (!url)
        return;
    if (!CFURLGetFileSystemRepresentation(url, true, reinterpret_cast<UInt8*>(gPath),
                                          kMaxModulePath))
        gPath[0] = 0;
    CFRelease(url);
}

} // namespace

bool bundleEntry(CFBundleRef ref)
{
    if (ref) {
        // A module belongs to one bundle. If a host gives another one all the same, the references
        // to the first are released and not counted for the second.
        if (ref != ghInst)
            releaseAll();
        ghInst = ref;
        moduleHandle = ref;
        CFRetain(ref);
        ++retained;
        readBundlePath();
    }
    return InitModule();
}

bool bundleExit()
{
    if (ghInst) {
        CFRelease(ghInst);
        if (--retained == 0) {
            ghInst = nullptr;
            moduleHandle = nullptr;
        }
    }
    return DeinitModule();
}
