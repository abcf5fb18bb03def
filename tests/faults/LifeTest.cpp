// A whole life of both components, from the factory to the last reference.
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
        EXPECT_EQ(world.calls({"library.getVSTObserverObject"}).size(), 225u);
        EXPECT_EQ(world.calls({"library.removeObserver"}).size(), 225u);
        EXPECT_EQ(world.library.controller, nullptr);
        EXPECT_EQ(world.library.effect, nullptr);
    }

    /** Only a library that is not given, or no memory, keeps the controller from its start; it is
        started once, and nothing is bound any more. */
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

    /** Values, ranges and texts are taken as they are. */
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

/** The service's library lives on; the file in the fixed place is what is left when the service
    fails. */
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
            world.host.service.registered.clear(); // the service did not let it go
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
        // A getter without service makes the library stay as if it were a service's.
        EXPECT_EQ(world.file->closeAndAskWhetherStillLoaded(), isKeptOpen);
        if (isKeptOpen)
            doubles::LoadedLibrary::closeAll();
    }

private:
    bool isKeptOpen = false;
};

/** Connected and taken apart again. */
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

    /** The parameters are refreshed and ready whatever became of the messages. The processor gets a
        library only in a whole message. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(world.trace.count("library.parametersReady()"), 1u);
        EXPECT_EQ(world.calls({"library.getParameterValue("}).size(), 225u);
        const size_t connections = world.trace.count("library.setEffectInterface(object)");
        if (!fault.in("controller.connect") || !isAboutAMessage(fault)) {
            EXPECT_EQ(connections, 1u);
        }
        // A second message whose ID the host did not take is the first one again.
        EXPECT_LE(connections, fault.hit("setMessageID") ? 2u : 1u);
        if (!fault.in("controller.disconnect") || !isAboutAMessage(fault)) {
            EXPECT_EQ(world.trace.count("library.setEffectInterface(null)"),
                      connections > 0 ? 1u : 0u);
        }
    }

    /** Half an address is none. */
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

TEST(Faults, WholeLifeWithLibrary)
{
    injectFaults<LifeWithLibrary>("whole life, library");
}

TEST(Faults, WholeLifeWithService)
{
    injectFaults<LifeWithService>("whole life, service");
}

TEST(Faults, Connection)
{
    injectFaults<Connecting>("connection");
}

} // namespace
} // namespace faults
