// A host that runs its event loop inside a call about a port, where the library asks about ports
// again. Each call works on a copy of the list of taken ports; the copy that is stored last stays.
#include "tests/unit/PortScene.h"

using namespace Steinberg;
using testing::ElementsAre;

namespace {

struct NestedPorts : testing::Test {
    NestedPorts()
    {
        for (const char* id : {"A", "B", "C", "D"})
            scene.host.ports.audioInput(id, id);
    }

    /** Runs act inside the host's first call with this text. */
    template <class Act>
    void inside(const std::string& call, const Act& act)
    {
        scene.trace.clear();
        scene.host.onCall = [this, call, act](const std::string& text) {
            if (text == call && scene.trace.count(call) == 1)
                act();
        };
    }

    std::vector<std::string> displayed() const
    {
        std::vector<std::string> result;
        for (const auto& call : scene.trace.texts())
            if (call.find(".setDisplayed(") != std::string::npos)
                result.push_back(call);
        return result;
    }

    PortScene scene;
};

TEST_F(NestedPorts, SetAudioPortListShowsThePortsOfTheListWithWhichItBegan)
{
    scene.setAudio("A", "B", "C", nullptr);
    inside("port(A).setDisplayed(true)",
           [this] { scene.setAudio("D", nullptr, nullptr, nullptr); });
    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    EXPECT_THAT(displayed(),
                ElementsAre("port(A).setDisplayed(true)", "port(D).setDisplayed(false)",
                            "port(A).setDisplayed(true)", "port(B).setDisplayed(true)",
                            "port(C).setDisplayed(true)", "port(B).setDisplayed(true)",
                            "port(C).setDisplayed(true)"));
    EXPECT_FALSE(scene.ports.isConnectAudioPort()) << "the outer list was stored last";
}

TEST_F(NestedPorts, SetAudioPortListTakesPortsByTheListWithWhichItBegan)
{
    scene.setAudio("A", nullptr, nullptr, nullptr);
    inside("port(B).setDisplayed(false)", [this] {
        scene.setAudio(nullptr, nullptr, nullptr, nullptr);
        scene.host.ports.list[0]->displayed = false; // as if the user hid A now
    });
    scene.setAudio("B", "A", nullptr, nullptr);
    EXPECT_EQ(scene.host.ports.inputBuses[0], "3: port(B) port(A)");
    EXPECT_THAT(scene.audioList(), ElementsAre("A=A", "B=B", "C=C", "D=D"));
}

TEST_F(NestedPorts, ReleasePortsShowsThePortsOfTheListWithWhichItBegan)
{
    scene.setAudio("A", "B", "C", nullptr);
    inside("port(A).setDisplayed(true)", [this] {
        EXPECT_TRUE(scene.ports.isConnectAudioPort());
        scene.setAudio("D", nullptr, nullptr, nullptr);
    });
    scene.ports.releasePorts(&scene.host.ports.getRegistry());
    EXPECT_THAT(displayed(),
                ElementsAre("port(A).setDisplayed(true)", "port(D).setDisplayed(false)",
                            "port(A).setDisplayed(true)", "port(B).setDisplayed(true)",
                            "port(C).setDisplayed(true)", "port(B).setDisplayed(true)",
                            "port(C).setDisplayed(true)"));
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST_F(NestedPorts, GetAudioPortListListsEachPortOnceInEachOfTwoCalls)
{
    std::vector<std::string> nested;
    inside("port(C).getDisplayName()", [&] { nested = scene.audioList(); });
    EXPECT_THAT(scene.audioList(), ElementsAre("A=A", "B=B", "C=C", "D=D"));
    EXPECT_THAT(nested, ElementsAre("A=A", "B=B", "C=C", "D=D"));
}

TEST_F(NestedPorts, GetMidiOutPortListListsEachPortOnceInEachOfTwoCalls)
{
    for (const char* id : {"M", "N"})
        scene.host.ports.midiOutput(id, id);
    std::vector<std::string> nested;
    inside("port(N).getDisplayName()", [&] { nested = scene.midiList(); });
    EXPECT_THAT(scene.midiList(), ElementsAre("M=M", "N=N"));
    EXPECT_THAT(nested, ElementsAre("M=M", "N=N"));
}

} // namespace
