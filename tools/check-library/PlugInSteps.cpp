// The steps with the plug-in's bundle: alone, and with the installed library.
#include "pluginterfaces/base/funknownimpl.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "tools/check-library/Steps.h"
#include "tools/common/Failure.h"
#include "tools/common/Instance.h"
#include "tools/common/PlugIn.h"
#include "tools/common/PlugInPlaces.h"

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr int32 kSampleRate = 44100;
constexpr int32 kBlock = 512;

/** A host that takes every edit. */
class SilentHandler final : public U::Implements<U::Directly<IComponentHandler>> {
public:
    tresult PLUGIN_API beginEdit(ParamID /*id*/) override { return kResultOk; }
    tresult PLUGIN_API performEdit(ParamID /*id*/, ParamValue /*value*/) override
    {
        return kResultOk;
    }
    tresult PLUGIN_API endEdit(ParamID /*id*/) override { return kResultOk; }
    tresult PLUGIN_API restartComponent(int32 /*flags*/) override { return kResultOk; }
};

} // namespace

void loadBundle(const Options& options, Journal& journal)
{
    HostApplication host;
    const Entered entered(journal, "the bundle's own start");
    try {
        const tools::PlugIn plugIn(options.plugIn, host);
        const auto version = plugIn.instrument().version();
        journal.say(good("plug-in-bundle",
                         "\"" + options.plugIn + "\" is " + plugIn.instrument().name() + " " +
                             version + ".",
                         {{"path", options.plugIn}, {"version", version}}));
    } catch (const tools::Failure& failure) {
        journal.say(bad("plug-in-bundle", failure.what(), kInstallPlugIn));
    }
    const auto installed = tools::installedPlugIns();
    if (installed.size() < 2)
        return;
    std::string list;
    for (const auto& path : installed)
        list += (list.empty() ? "\"" : ", \"") + path + "\"";
    journal.say({Verdict::remark, "plug-in-copies",
                 "Several copies are installed, and hosts take any of them: " + list + ".",
                 "Keep the newest one and remove the others.", installed});
}

void usePlugIn(const Options& options, Journal& journal)
{
    HostApplication host;
    SilentHandler handler;
    const tools::PlugIn plugIn(options.plugIn, host);
    const auto step = [&](const char* name, auto&& call) {
        const Entered entered(journal, name);
        call();
    };
    std::unique_ptr<tools::Instance> instance;
    size_t bytes = 0;
    step("the start of an instance",
         [&] { instance = std::make_unique<tools::Instance>(plugIn, host, handler); });
    const auto parameters = instance->controller().getParameterCount();
    step("processing", [&] {
        instance->start(kSampleRate, kBlock);
        instance->processData().numSamples = kBlock;
        instance->processor().process(instance->processData());
        instance->stop();
    });
    step("saving a project", [&] { bytes = instance->state().size(); });
    step("the end of an instance", [&] { instance.reset(); });
    journal.say(good("plug-in",
                     "An instance of the plug-in starts with it, shows the host " +
                         std::to_string(parameters) + " parameters, plays and saves.",
                     {{"parameters", parameters}, {"projectBytes", bytes}}));
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
