// A host-side service that lacks something, while other calls fail too: the plug-in uses the
// library in the fixed place.
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using doubles::HostFamily;
using doubles::HostServiceDouble;
using testing::AnyOf;
using testing::IsEmpty;

/** What a service lacks, and whether the library then stays loaded as if it were the service's. */
struct Lack {
    const char* name;
    void (*apply)(HostServiceDouble&);
    bool keepsLibrary;
};

constexpr Lack kLacks[] = {
    {"service refuses", [](HostServiceDouble& s) { s.registerResult = kResultFalse; }, false},
    {"service without connection", [](HostServiceDouble& s) { s.connection = nullptr; }, false},
    {"component does not start",
     [](HostServiceDouble& s) {
         s.offersPluginBase = true;
         s.initializeResult = kResultFalse;
     },
     false},
    {"component without getter", [](HostServiceDouble& s) { s.offersGetter = false; }, false},
    {"getter without service", [](HostServiceDouble& s) { s.givesService = false; }, true},
    {"service without handle", [](HostServiceDouble& s) { s.libraryHandle = nullptr; }, true},
};

class LackingService : public Scenario {
public:
    explicit LackingService(const Lack& what)
    : Scenario(HostFamily::cubase("7.5.1"), Binding::kLibrary)
    , lack(what)
    {
        world.host.service.offer(&offered, world.file->handle());
        lack.apply(world.host.service);
    }

    void setUp() override {}
    void tearDown() override {}

    void act() override
    {
        world.trace.clear();
        offeredTrace.clear();
        world.library.revive();
        world.create();
        world.initialize();
        world.terminate();
        world.release();
    }

    void expectDone() override
    {
        EXPECT_EQ(world.initializeResult, kResultOk);
        EXPECT_EQ(world.terminateResult, kResultOk);
        EXPECT_EQ(world.trace.count("library.start()"), 1u);
        EXPECT_EQ(world.trace.count("library.destroy()"), lack.keepsLibrary ? 0u : 1u);
        EXPECT_EQ(world.trace.count("library.detachService()"), lack.keepsLibrary ? 1u : 0u);
        EXPECT_EQ(world.trace.count("service.unregisterPlugin(object)"),
                  offeredTrace.count("library.attachService()"));
        expectNothingElse();
    }

    /** After a fault of the host another side may end the library, but it always works. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(world.initializeResult, kResultOk);
        EXPECT_EQ(world.terminateResult, kResultOk);
        if (fault.hit("IPluginBase") && !fault.is(Kind::kHostThrows)) {
            // A component that does not offer IPluginBase is used without being started.
            EXPECT_EQ(world.trace.count("library.start()") + offeredTrace.count("library.start()"),
                      1u);
            world.host.service.registered.clear();
            return;
        }
        EXPECT_EQ(world.trace.count("library.start()"), 1u);
        EXPECT_EQ(world.library.controller, nullptr);
        EXPECT_THAT(world.library.liveObservers(), IsEmpty());
        const auto ended = world.trace.count("library.destroy()");
        EXPECT_EQ(ended + world.trace.count("library.detachService()"), 1u);
        if (!lack.keepsLibrary && !world.trace.count("component(1).getService()")) {
            EXPECT_EQ(ended, 1u);
        }
        expectNothingElse();
    }

    void expectBelieved(const Fault& fault) override { expectStated(fault); }

    void expectEnded(const Fault&) override
    {
        const bool isKept = world.file->closeAndAskWhetherStillLoaded();
        EXPECT_TRUE(isKept || !lack.keepsLibrary);
        doubles::LoadedLibrary::closeAll();
    }

private:
    /** The connection that the service offered was not used. */
    void expectNothingElse()
    {
        EXPECT_THAT(offeredTrace.texts(),
                    AnyOf(IsEmpty(), testing::ElementsAre("library.attachService()")));
        world.host.service.registered.clear();
    }

    const Lack& lack;
    doubles::Trace offeredTrace;
    doubles::ScriptedLibrary offered{offeredTrace};
};

TEST(Faults, InitializeWithAServiceThatLacksSomething)
{
    for (const Lack& lack : kLacks)
        injectFaults(lack.name, [&] { return std::make_unique<LackingService>(lack); },
                     {Kind::kHostAnswers, Kind::kHostThrows});
}

} // namespace
} // namespace faults
