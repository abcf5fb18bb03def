// PlugIn: the loaded bundle.
#pragma once

#include "public.sdk/source/vst/hosting/module.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** Loads a bundle's module and finds its one instrument. Outlives every instance of it. */
class PlugIn {
public:
    /** @param hostContext borrowed; outlives this object
        @throws Failure when there is no bundle, it cannot be loaded or has no audio class */
    PlugIn(const std::string& bundlePath, FUnknown& hostContext);
    ~PlugIn();
    PlugIn(const PlugIn&) = delete;
    PlugIn& operator=(const PlugIn&) = delete;

    const VST3::Hosting::PluginFactory& factory() const { return module->getFactory(); }
    const VST3::Hosting::ClassInfo& instrument() const { return audioClass; }

    /** The class's own vendor, else the factory's. */
    std::string vendor() const;

private:
    VST3::Hosting::Module::Ptr module;
    VST3::Hosting::ClassInfo audioClass;
};

} // namespace tools
} // namespace Vst
} // namespace Steinberg
