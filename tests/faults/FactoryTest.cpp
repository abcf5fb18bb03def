// The class factory, which a host gets when it loads the plug-in.
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Loading : public Scenario {
public:
    void setUp() override {}
    void tearDown() override {}

    void act() override
    {
        classes.clear();
        const VST3::Hosting::PluginFactory* factory = nullptr;
        world.step("load", [&] { factory = World::loadAgain(); });
        isThere = factory != nullptr;
        if (!factory)
            return;
        world.step("setHostContext", [&] { factory->setHostContext(&world.host.context); });
        world.step("classInfos", [&] {
            for (const auto& info : factory->classInfos())
                classes.push_back(info.name());
        });
        world.step("setHostContext", [&] { factory->setHostContext(nullptr); });
    }

    void expectDone() override
    {
        EXPECT_TRUE(isThere);
        EXPECT_THAT(classes, ElementsAre("RDL3/RDL5 VST", "RDL3/RDL5 VST Controller"));
    }

    /** The factory has both classes. Only without memory there is no factory. */
    void expectStated(const Fault& fault) override
    {
        if (isThere) {
            expectDone();
            return;
        }
        EXPECT_TRUE(fault.isOutOfMemory());
        EXPECT_THAT(classes, IsEmpty());
    }

    void expectBelieved(const Fault&) override { expectDone(); }

private:
    bool isThere = false;
    std::vector<std::string> classes;
};

TEST(Faults, GetPluginFactory)
{
    injectFaults<Loading>("factory");
}

} // namespace
} // namespace faults
