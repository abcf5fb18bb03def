// BoundController: a controller in a scripted host, bound to a scripted library in this program
// through the host's service. Ends with every reference of the host back where it was.
//
//   BoundController bound(HostFamily::nuendo("6.5.0"));
//   bound.library.setParameter(37012000, {2, 0, 4});     // before initialize
//   bound.initialize();
//   bound.library.turn(37012000, 1);                     // value 1 of 0 to 4 is 0.25
#pragma once

#include "controller/VstK2xController.h"
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/Parameters.h"
#include "tests/doubles/ScriptedHost.h"

#include "public.sdk/source/main/pluginfactory.h"

#include <gmock/gmock.h>

namespace doubles {

class BoundController {
public:
    explicit BoundController(const HostFamily& family = HostFamily::cubase("7.5.1"))
    : host(trace, family)
    , library(trace)
    , controller(Steinberg::owned(new Steinberg::Vst::VstK2xController))
    {
        // Most tests look at no texts; a range of one value has none to fetch.
        library.defaultParameter = {0, 0, 0, 0, {}};
        host.service.offer(&library, library.handle());
    }
    BoundController(const BoundController&) = delete;
    BoundController& operator=(const BoundController&) = delete;
    ~BoundController() { end(); }

    /** A host that packs 8-bit texts, and one that knows the extensions but has no name. In both,
        changes wait for the timer. */
    static HostFamily withoutUnicode() { return HostFamily::withoutUnicode("Cubase", "5.0.0"); }
    static HostFamily nameless()
    {
        auto family = HostFamily::cubase("7.5.1");
        family.hasApplicationW = false;
        return family;
    }

    /** As a host does: run loop to the factory, initialize, component handler. Volume 1 ranges
        from 0 to 4 unless a test set it. */
    void initialize()
    {
        if (library.getParameter(kVolume1).maximum == 0)
            library.setParameter(kVolume1, {2, 0, 4, 0, {}});
        factory.setHostContext(&host.context);
        ASSERT_EQ(controller->initialize(&host.context), Steinberg::kResultOk);
        controller->setComponentHandler(&host.handler);
        trace.clear();
    }

    void end()
    {
        if (!controller)
            return;
        host.onCall = nullptr;
        library.onCall = nullptr;
        controller->terminate();
        controller = nullptr;
        factory.setHostContext(nullptr);
        EXPECT_THAT(host.ledger(), testing::IsEmpty());
        EXPECT_THAT(library.complaints(), testing::IsEmpty());
    }

    /** One tick of the host's run loop. */
    void tick() { host.runLoop.tick(); }

    /** What the host saw of edits. */
    std::vector<std::string> edits() const { return trace.textsOf({"host."}); }

    Steinberg::Vst::EditorParameter* parameter(unsigned id) const
    {
        return Steinberg::FCast<Steinberg::Vst::EditorParameter>(controller->getParameter(id));
    }

    Trace trace;
    ScriptedHost host;
    InProcessLibrary library;
    Steinberg::IPtr<Steinberg::Vst::VstK2xController> controller;

private:
    // On the stack: nobody keeps a reference to it.
    Steinberg::CPluginFactory factory{Steinberg::PFactoryInfo()};
};

} // namespace doubles
