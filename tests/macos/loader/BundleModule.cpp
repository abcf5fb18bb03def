// A Linux module that is the Mac's bundle: a Linux host loads it, calls a Linux module's entries,
// and runs the machine code of the bundle MACHO_BUNDLE. A bundle that cannot be loaded ends the
// program.
#include "tests/macos/loader/BundleModule.h"

#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/loader/AppKitMessages.h"
#include "tests/macos/loader/ConstantData.h"
#include "tests/macos/loader/DarwinCall.h"
#include "tests/macos/loader/MachoImage.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

using doubles::FakeCoreFoundation;
using macho::MachoFile;
using macho::MachoImage;

struct Import {
    const char* symbol;
    void* address;
};
// kImports: every import that tests/macos/imports.txt names, each with what is offered here.
#include "Imports.inc"

void* resolve(const std::string& symbol)
{
    for (const auto& import : kImports)
        if (symbol == import.symbol)
            return import.address;
    return nullptr;
}

MachoFile fileOf(const std::string& bundle)
{
    const auto path = bundle + "/Contents/MacOS/RDL3_RDL5 VST";
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw macho::LoadError("cannot open " + path);
    const MachoFile::Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    return MachoFile(MachoFile::sliceOf(bytes, macho::kThisProcessor));
}

/** The loaded bundle and its host's reference to it. */
class Bundle {
public:
    explicit Bundle(const std::string& path)
    : Bundle(path, fileOf(path))
    {
    }
    ~Bundle() { CFRelease(reference); }
    Bundle(const Bundle&) = delete;
    Bundle& operator=(const Bundle&) = delete;

    CFBundleRef getReference() const { return reference; }
    const MachoSystem& getSystem() const { return system; }

    template <typename Function>
    Function* function(const char* symbol) const
    {
        return image.function<Function>(symbol);
    }

private:
    Bundle(const std::string& path, const MachoFile& file)
    : reference(FakeCoreFoundation::makeBundle(path))
    , image(file, resolve)
    , constants(image.begin(), image.size())
    {
        if (const auto* texts = file.section("__cfstring")) {
            const auto* begin = reinterpret_cast<const char*>(image.begin()) + texts->address;
            FakeCoreFoundation::constantsBegin = begin;
            FakeCoreFoundation::constantsEnd = begin + texts->size;
        }
        system.codeBegin = reinterpret_cast<uintptr_t>(image.begin());
        system.codeEnd = system.codeBegin + image.size();
    }

    const CFBundleRef reference;
    const MachoImage image;
    const macho::ConstantData constants;
    MachoSystem system = {&FakeCoreFoundation::fireTimers,
                          &FakeCoreFoundation::timers,
                          [] { return FakeCoreFoundation::lastInterval; },
                          [] { return FakeCoreFoundation::lastTolerance; },
                          [] { return FakeCoreFoundation::liveObjects() - 1; },
                          &FakeCoreFoundation::misuses,
                          &macho::setCurrentEvent,
                          [](const char* symbol) { return resolve(symbol); },
                          0,
                          0};
};

const Bundle* bundle = nullptr;

// As late as a module can do something when it is loaded: all that the image's initialisers may ask
// for is there.
__attribute__((constructor(65535))) void load()
{
    try {
        bundle = new Bundle(MACHO_BUNDLE);
    } catch (const std::exception& error) {
        macho::endProgram(error.what(), nullptr);
    }
}

__attribute__((destructor)) void unload()
{
    delete bundle;
    if (FakeCoreFoundation::misuses() > 0)
        macho::endProgram("a reference to what was no object of Core Foundation", nullptr);
}

} // namespace

/** A Mac's host hands over the bundle where a Linux host hands over its handle. */
EXPORTED bool ModuleEntry(void* handle)
{
    return bundle->function<bool(CFBundleRef)>("_bundleEntry")(handle ? bundle->getReference()
                                                                      : nullptr);
}

EXPORTED bool ModuleExit()
{
    return bundle->function<bool()>("_bundleExit")();
}

EXPORTED void* GetPluginFactory()
{
    return bundle->function<void*()>("_GetPluginFactory")();
}

EXPORTED const MachoSystem* getMachoSystem()
{
    return &bundle->getSystem();
}
