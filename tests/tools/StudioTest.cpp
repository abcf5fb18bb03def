// The ports and devices of play's host, as a plug-in sees them.
#include "tools/play/studio/Studio.h"
#include "hostapi/IConnector.h"
#include "tools/play/host/ComponentHandler.h"

#include <cstring>
#include <gmock/gmock.h>
#include <vector>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using testing::ElementsAre;

namespace {

/** The references of an object that somebody holds. */
uint32 references(FUnknown* object)
{
    object->addRef();
    return object->release();
}

/** Counts the notices of one object. */
class Dependent final : public U::Implements<U::Directly<IDependent>> {
public:
    void PLUGIN_API update(FUnknown* object, int32 message) override
    {
        notices.push_back(message);
        lastObject = object;
    }
    std::vector<int32> notices;
    FUnknown* lastObject = nullptr;
};

template <typename Interface>
IPtr<Interface> hostInterface(HostClasses& hostClasses)
{
    Interface* object = nullptr;
    hostClasses.getHostInterface(Interface::iid, reinterpret_cast<void**>(&object));
    return owned(object);
}

/** Tracks 1 and 2 are a MIDI and an audio track; a rack entry without a plug-in feeds track 1. */
Project smallProject()
{
    Project project;
    project.tracks = {{Project::TrackType::midi, "Drums", "RDL 1 - RDL3/RDL5 VST", 9},
                      {Project::TrackType::audio, "Vocals", "Stereo Out", 0}};
    project.rack = {{"Empty", {}, {0}}, {"RDL 1", "RDL3/RDL5 VST", {}}};
    return project;
}

class StudioTest : public testing::Test {
protected:
    StudioTest() { studio.offerThrough(*hostClasses); }

    IPtr<HostClasses> hostClasses = owned(new HostClasses);
    Studio studio{smallProject(), usualPorts(), true};
};

} // namespace

TEST(PlayHostText, IsWideInAUnicodeHost)
{
    const HostText text("Fl\xC3\xB6te", true);
    EXPECT_THAT(std::vector<int>(text.get(), text.get() + 6),
                ElementsAre('F', 'l', 0xF6, 't', 'e', 0));
    StringObject object;
    text.copyTo(object);
    EXPECT_TRUE(object.isWideString());
}

TEST(PlayHostText, IsPackedWithAWholeZeroUnitBehindItInOtherHosts)
{
    for (const char* word : {"", "a", "ab", "abc"}) {
        const HostText text(word, false);
        const auto length = std::strlen(word);
        EXPECT_STREQ(reinterpret_cast<const char*>(text.get()), word);
        EXPECT_EQ(text.get()[(length + 1) / 2], 0) << word;
    }
    StringObject object;
    HostText("abc", false).copyTo(object);
    EXPECT_FALSE(object.isWideString());
}

TEST(PlayHostText, IsCutToTheRoomThatThereIs)
{
    const HostText text("abc", true);
    char16 buffer[4] = {'x', 'x', 'x', 'x'};
    int32 size = 3;
    text.copyTo(buffer, &size);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 0, 'x'));
    EXPECT_EQ(size, 2);
    size = 4;
    text.copyTo(buffer, &size);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 'c', 0));
    EXPECT_EQ(size, 3);
    size = 0;
    text.copyTo(buffer, &size);
    text.copyTo(nullptr, &size);
    text.copyTo(buffer, nullptr);
    EXPECT_EQ(size, 0);
}

TEST_F(StudioTest, GivesPortsByIndexAndIDAndNoneForOthers)
{
    const auto registry = hostInterface<IPortRegistry>(*hostClasses);
    ASSERT_TRUE(registry);
    const auto count = registry->getPortCount();
    ASSERT_EQ(count, 15);
    EXPECT_EQ(registry->getPortByIndex(-1), nullptr);
    EXPECT_EQ(registry->getPortByIndex(count), nullptr);
    EXPECT_EQ(registry->findPortById(nullptr), nullptr);
    EXPECT_EQ(registry->findPortById("nobody"), nullptr);
    auto* mic = registry->findPortById("mic");
    ASSERT_TRUE(mic);
    EXPECT_EQ(mic, registry->getPortByIndex(4));
    EXPECT_TRUE(mic->isPortType("audio"));
    EXPECT_FALSE(mic->isPortType("midi"));
    EXPECT_FALSE(mic->isPortType(nullptr));
    EXPECT_FALSE(mic->hasPortAttribute(nullptr));
    EXPECT_TRUE(registry->findPortById("loop")->hasPortAttribute("virtual"));
    mic->setDisplayed(false);
    EXPECT_FALSE(mic->isDisplayed());
}

TEST_F(StudioTest, TakesOnlyMidiInputsOutOfAllMidiInputs)
{
    const auto registry = hostInterface<IPortRegistry>(*hostClasses);
    auto* keys = registry->findPortById("keys");
    EXPECT_EQ(registry->removeFromAllMidiInputs(keys), kResultOk);
    EXPECT_EQ(registry->removeFromAllMidiInputs(keys), kResultFalse); // it is out already
    EXPECT_EQ(registry->removeFromAllMidiInputs(registry->findPortById("organ")), kResultFalse);
    EXPECT_EQ(registry->removeFromAllMidiInputs(registry->findPortById("mic")), kResultFalse);
    EXPECT_EQ(registry->removeFromAllMidiInputs(nullptr), kResultFalse);
}

TEST_F(StudioTest, MakesANewBusDescriptorForEachPlugInThatAsks)
{
    const auto first = hostInterface<IBusDescriptor>(*hostClasses);
    const auto second = hostInterface<IBusDescriptor>(*hostClasses);
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first, second);
    EXPECT_EQ(references(first), 1U);
}

TEST_F(StudioTest, TakesOverOneReferenceOfEachBusDescriptor)
{
    auto& registry = studio.ports();
    const auto left = owned(new BusDescriptor); // ours; the plug-in's goes to the host
    left->addRef();
    left->setArrangement(3);
    left->setChannelPort(0, registry.ports()[4]);
    left->setChannelPort(2, registry.ports()[0]); // no such channel
    EXPECT_EQ(left->speakers(), 3);
    IBusDescriptor* buses[] = {left, nullptr};
    EXPECT_EQ(studio.portHandler().setAudioInputBuses(0, 0, buses, 2), kResultOk);
    EXPECT_EQ(references(left), 1U);
    EXPECT_THAT(studio.portHandler().audioInputs(), ElementsAre("mic", "", "", ""));
    left->addRef();
    EXPECT_NE(studio.portHandler().setAudioInputBuses(0, 0, buses, 1), kResultOk);
    EXPECT_EQ(references(left), 1U);
}

TEST_F(StudioTest, RemembersTheMidiOutputThatWasConnectedLast)
{
    IHostPort* ports[] = {studio.ports().ports()[11]};
    EXPECT_EQ(studio.portHandler().setMidiOutputPorts(ports, 1, ports, 1), kResultOk);
    EXPECT_EQ(studio.portHandler().midiOutput(), "organ");
    EXPECT_EQ(studio.portHandler().setMidiOutputPorts(nullptr, 0, nullptr, 0), kResultOk);
    EXPECT_EQ(studio.portHandler().midiOutput(), "");
}

TEST_F(StudioTest, IsReachedThroughTheComponentHandlerWhereTheHostHasPorts)
{
    const auto without = owned(new ComponentHandler);
    EXPECT_FALSE(FUnknownPtr<IComponentPortHandler>(without));
    const auto with = owned(new ComponentHandler(&studio.portHandler()));
    EXPECT_EQ(FUnknownPtr<IComponentPortHandler>(with), &studio.portHandler());
    EXPECT_TRUE(FUnknownPtr<IComponentHandler>(with));
    EXPECT_EQ(references(with), 1U);
}

TEST_F(StudioTest, ShowsTheProjectAsDevices)
{
    const auto list = hostInterface<IDeviceList>(*hostClasses);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->findDevice(nullptr, 0), nullptr);
    EXPECT_EQ(list->findDevice("Studio", 0), nullptr);
    auto* mixer = list->findDevice("Mixer", 0);
    ASSERT_TRUE(mixer);
    ASSERT_EQ(mixer->countChildren(), 2);
    EXPECT_EQ(mixer->getChild(-1), nullptr);
    EXPECT_EQ(mixer->getChild(2), nullptr);
    auto* drums = mixer->getChild(0);
    EXPECT_STREQ(drums->getDeviceType(), "MidiChannel");
    EXPECT_EQ(owned(drums->getValue("channel"))->getInteger(), 9);
    EXPECT_EQ(drums->getValue(nullptr), nullptr);
    EXPECT_EQ(drums->getValue("volume"), nullptr);
    auto* folder = list->findDevice("VST Mixer", 0)->getChild(0);
    EXPECT_STREQ(folder->getDeviceType(), "VST Project Instruments");
    ASSERT_EQ(folder->countChildren(), 2);
    EXPECT_EQ(folder->getChild(0)->getValue("effectType"), nullptr);
    const auto effectType = owned(folder->getChild(1)->getValue("effectType"));
    ASSERT_TRUE(effectType);
    EXPECT_EQ(references(effectType), 2U);
    const FUnknownPtr<IConnector> first(folder->getChild(0)->getChild(0));
    const FUnknownPtr<IConnector> second(folder->getChild(1)->getChild(0));
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_TRUE(first->isConnectedTo(drums));
    EXPECT_FALSE(first->isConnectedTo(mixer->getChild(1)));
    EXPECT_FALSE(second->isConnectedTo(drums));
    EXPECT_FALSE(FUnknownPtr<IConnector>(drums));
}

TEST_F(StudioTest, TellsDependentsOfASelection)
{
    const auto updates = hostInterface<IUpdateHandler>(*hostClasses);
    const auto list = hostInterface<IDeviceList>(*hostClasses);
    ASSERT_TRUE(updates);
    const auto selected = owned(list->findDevice("Mixer", 0)->getValue("selected"));
    EXPECT_EQ(selected->getInteger(), -1);
    Dependent dependent;
    updates->addDependent(selected, &dependent);
    studio.tree().select(1);
    EXPECT_THAT(dependent.notices, ElementsAre(IDependent::kChanged));
    EXPECT_EQ(dependent.lastObject, FUnknownPtr<FUnknown>(selected));
    selected->setInteger(0, false);
    EXPECT_EQ(dependent.notices.size(), 1U);
    EXPECT_EQ(studio.tree().selectedTrack(), 0);
    EXPECT_EQ(studio.tree().selections(), 2);
    updates->removeDependent(selected, &dependent);
    studio.tree().select(1);
    EXPECT_EQ(dependent.notices.size(), 1U);
}

TEST(StudioFlavours, OfferDevicesAndValuesUnderOneIDOnly)
{
    for (const bool unicode : {true, false}) {
        Studio studio(smallProject(), usualPorts(), unicode);
        auto* mixer = studio.tree().findDevice("Mixer", 0);
        const auto value = owned(mixer->getValue("selected"));
        const auto before = references(value);
        const auto answers = [](FUnknown* object, const TUID wanted) {
            void* found = nullptr;
            const bool result = object->queryInterface(wanted, &found) == kResultOk;
            const auto last = owned(static_cast<FUnknown*>(found));
            EXPECT_EQ(result, found != nullptr);
            return result;
        };
        EXPECT_EQ(answers(mixer, IDevice::iid), unicode);
        EXPECT_EQ(answers(mixer, IDeviceNotUnicodeID), !unicode);
        EXPECT_EQ(answers(value, IValue::iid), unicode);
        EXPECT_EQ(answers(value, IValueNotUnicodeID), !unicode);
        EXPECT_TRUE(answers(value, FUnknown::iid));
        EXPECT_EQ(value->queryInterface(FUnknown::iid, nullptr), kInvalidArgument);
        EXPECT_EQ(references(value), before);
    }
}
