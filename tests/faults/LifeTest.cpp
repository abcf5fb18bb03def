// Both components from createInstance to the last release.
#include "tests/doubles/Parameters.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using doubles::HostFamily;
using testing::ElementsAre;
using testing::IsEmpty;

class Life : public Scenario {
public:
    explicit Life(Binding binding)
    : Scenario(HostFamily::cubase("7.5.1"), binding)
    {
    }

    void setUp() override {}
    void tearDown() override {}

    void act() override
    {
        world.trace.clear();
        world.library.revive();
        world.start();
        world.step("timer", [this] { world.host.runLoop.tick(); });
        world.end();
    }

    void expectEverythingDone(const std::string& ending)
    {
        EXPECT_EQ(world.initializeResult, kResultOk);
        EXPECT_EQ(world.terminateResult, kResultOk);
        EXPECT_EQ(world.trace.count("library.start()"), 1u);
        EXPECT_EQ(world.trace.count(ending), 1u);
        EXPECT_EQ(world.trace.count("library.setControllerInterface(null)"), 1u);
        EXPECT_EQ(world.trace.count("library.setEffectInterface(null)"), 1u);
        EXPECT_EQ(world.calls({"library.getVSTObserverObject"}).size(),
                  size_t{doubles::kParameters});
        EXPECT_EQ(world.calls({"library.removeObserver"}).size(), size_t{doubles::kParameters});
        EXPECT_EQ(world.library.controller, nullptr);
        EXPECT_EQ(world.library.effect, nullptr);
    }

    /** initialize fails only without a library or without memory. The library is started once, and
        at the end it has nothing of the plug-in. */
    void expectStated(const Fault& fault) override
    {
        if (!fault.isOutOfMemory()) {
            EXPECT_EQ(world.initializeResult, isGiven(fault) ? kResultOk : kResultFalse);
            EXPECT_EQ(world.terminateResult, kResultOk);
            EXPECT_EQ(starts(), isGiven(fault) ? 1u : 0u);
        }
        EXPECT_LE(starts(), 1u);
        EXPECT_EQ(world.library.controller, nullptr);
        if (!fault.hit(".destroy()")) {
            EXPECT_THAT(world.library.liveObservers(), IsEmpty());
        }
        if (!fault.hit("removeObserver")) {
            EXPECT_THAT(world.library.registered, testing::Each(nullptr));
        }
        world.library.registered.clear();
    }

    /** The plug-in uses any value, range and text of the library. */
    void expectBelieved(const Fault& fault) override { expectStated(fault); }

    virtual size_t starts() const { return world.trace.count("library.start()"); }

private:
    bool isGiven(const Fault& fault) const
    {
        return world.binding == Binding::kService || !fault.hit("getVSTEditorConnectObject");
    }
};

class LifeWithLibrary : public Life {
public:
    LifeWithLibrary()
    : Life(Binding::kLibrary)
    {
    }

    void expectDone() override { expectEverythingDone("library.destroy()"); }

    void expectStated(const Fault& fault) override
    {
        Life::expectStated(fault);
        const bool notGiven = fault.hit("getVSTEditorConnectObject");
        const size_t given = world.trace.count("library.getVSTEditorConnectObject()");
        EXPECT_EQ(world.trace.count("library.destroy()"), notGiven ? 0u : given);
    }

    void expectEnded(const Fault&) override
    {
        EXPECT_FALSE(world.file->closeAndAskWhetherStillLoaded());
        EXPECT_EQ(world.terminateResult, kResultOk);
    }
};

/** The service's library must not be ended. When the service fails, the plug-in uses the file in
    the fixed place. */
class LifeWithService : public Life {
public:
    LifeWithService()
    : Life(Binding::kService)
    {
        world.host.service.offersPluginBase = true;
        world.file.emplace(world.fileTrace);
        (*world.file)->defaultParameter = {0, 0, 0, 0, {}};
    }

    void act() override
    {
        (*world.file)->revive();
        world.fileTrace.clear();
        Life::act();
    }

    void expectDone() override
    {
        expectEverythingDone("library.detachService()");
        EXPECT_EQ(world.trace.count("library.attachService()"), 1u);
    }

    void expectStated(const Fault& fault) override
    {
        Life::expectStated(fault);
        EXPECT_EQ((*world.file)->controller, nullptr);
        EXPECT_THAT((*world.file)->liveObservers(), IsEmpty());
        if (fault.hit("unregisterPlugin"))
            world.host.service.registered.clear(); // the service failed to remove it
        EXPECT_THAT(world.host.service.registered, IsEmpty());
        isKeptOpen = fault.hit("getService");
        const size_t loaded = world.fileTrace.count("library.getVSTEditorConnectObject()");
        EXPECT_EQ(world.fileTrace.count("library.destroy()"), isKeptOpen ? 0u : loaded);
    }

    size_t starts() const override
    {
        return Life::starts() + world.fileTrace.count("library.start()");
    }

    void expectEnded(const Fault&) override
    {
        EXPECT_FALSE(world.library.isDestroyed());
        EXPECT_THAT((*world.file)->complaints(), IsEmpty());
        // A getter without a service leaves the library loaded, as if it were the service's.
        EXPECT_EQ(world.file->closeAndAskWhetherStillLoaded(), isKeptOpen);
        if (isKeptOpen)
            doubles::LoadedLibrary::closeAll();
    }

private:
    bool isKeptOpen = false;
};

class Connecting : public Scenario {
public:
    void setUp() override
    {
        world.create();
        world.initialize();
    }
    void tearDown() override
    {
        world.terminate();
        world.release();
    }

    void act() override
    {
        world.trace.clear();
        world.connect();
        world.disconnect();
    }

    void expectDone() override
    {
        EXPECT_THAT(world.calls({"library.setEffect", "library.parametersReady"}),
                    ElementsAre("library.setEffectInterface(object)",
                                "library.setEffectOption(false)", "library.parametersReady()",
                                "library.setEffectInterface(null)"));
    }

    /** The parameters are refreshed and ready even if a message was not sent. The processor gets
        the library only from a complete message. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(world.trace.count("library.parametersReady()"), 1u);
        EXPECT_EQ(world.calls({"library.getParameterValue("}).size(), size_t{doubles::kParameters});
        const size_t connections = world.trace.count("library.setEffectInterface(object)");
        if (!fault.in("controller.connect") || !isAboutAMessage(fault)) {
            EXPECT_EQ(connections, 1u);
        }
        // If the host ignores the second message's ID, it looks like the first one.
        EXPECT_LE(connections, fault.hit("setMessageID") ? 2u : 1u);
        if (!fault.in("controller.disconnect") || !isAboutAMessage(fault)) {
            EXPECT_EQ(world.trace.count("library.setEffectInterface(null)"),
                      connections > 0 ? 1u : 0u);
        }
    }

    /** The processor ignores an address that is cut. */
    void expectBelieved(const Fault& fault) override
    {
        EXPECT_EQ(world.trace.count("library.parametersReady()"), 1u);
        if (fault.hit("getBinary")) {
            EXPECT_EQ(world.trace.count("library.setEffectInterface(object)"),
                      fault.in("controller.connect") && isCut(fault) ? 0u : 1u);
        }
    }

private:
    static bool isAboutAMessage(const Fault& fault)
    {
        return fault.hit("createInstance") || fault.hit("IHostApplication)") ||
               fault.hit("message(");
    }

    static bool isCut(const Fault& fault)
    {
        return fault.is(Kind::kHostNonsense) || fault.is(Kind::kHostEmptyText) ||
               fault.is(Kind::kHostBrokenText) || fault.is(Kind::kHostEndlessText);
    }
};

TEST(Faults, InitializeToTerminateWithTheLibraryFile)
{
    injectFaults<LifeWithLibrary>("whole life, library");
}

TEST(Faults, InitializeToTerminateWithAService)
{
    injectFaults<LifeWithService>("whole life, service");
}

TEST(Faults, ConnectAndDisconnect)
{
    injectFaults<Connecting>("connection");
}

} // namespace
} // namespace faults
