// What the doubles must notice or must not make easier: broken there, no other test would fail.
#include "tests/doubles/LoadedLibrary.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/doubles/StreamDouble.h"

#include "hostapi/IHostClasses.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace doubles;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

class HostLedger : public testing::Test {
protected:
    /** As a plug-in gets it: a new reference, or null. */
    template <class Interface>
    Interface* getHostInterface()
    {
        FUnknownPtr<IHostClasses> classes(&host.context);
        void* found = nullptr;
        if (!classes || classes->getHostInterface(Interface::iid, &found) != kResultOk)
            return nullptr;
        return static_cast<Interface*>(found);
    }

    Trace trace;
    ScriptedHost host{trace};
};

/** A dependent that counts nothing: only its address matters. */
class Listener final : public IDependent {
public:
    void PLUGIN_API update(FUnknown*, int32) override {}
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~Listener() = default;
};

TEST_F(HostLedger, NamesTheInterfaceThatWasNotReleased)
{
    auto* registry = getHostInterface<IPortRegistry>();
    ASSERT_NE(registry, nullptr);
    EXPECT_THAT(host.ledger(), ElementsAre("portRegistry: expected 1, is 2"));
    registry->release();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, NamesTheObjectThatWasReleasedTooOftenEvenIfItWasReferencedAgain)
{
    host.devices.mixer().release();
    EXPECT_THAT(host.ledger(), ElementsAre("device(Mixer): expected 1, is 0"));
    host.devices.mixer().addRef();
    EXPECT_THAT(host.ledger(), ElementsAre("device(Mixer): fell to 0, below the host's own 1"));
}

TEST_F(HostLedger, NamesTheObjectThatWasCalledAfterItsEnd)
{
    auto* bus = getHostInterface<IBusDescriptor>();
    ASSERT_NE(bus, nullptr);
    bus->release();
    bus->setArrangement(3);
    EXPECT_THAT(host.ledger(), ElementsAre("bus(1): used after its end"));
}

TEST_F(HostLedger, ExpectsABusDescriptorReleasedUnlessTheHostTookItOver)
{
    IBusDescriptor* buses[] = {getHostInterface<IBusDescriptor>(),
                               getHostInterface<IBusDescriptor>()};
    EXPECT_THAT(host.ledger(), ElementsAre("bus(1): expected 0, is 1", "bus(2): expected 0, is 1"));
    owned(FUnknownPtr<IComponentPortHandler>(&host.handler).take())
        ->setAudioInputBuses(0, 0, buses, 2);
    EXPECT_THAT(host.ledger(), IsEmpty());
    buses[1]->release();
    EXPECT_THAT(host.ledger(), ElementsAre("bus(2): expected 1, is 0"));
}

TEST_F(HostLedger, ExpectsAComponentBackInItsFactoryAndNotReleased)
{
    int handle = 0;
    host.service.offer(nullptr, &handle);
    const auto factory = owned(getHostInterface<IComponentFactory>());
    auto* component = factory->createComponent("UID", "BBA9E2BA9E28483CAA608081B0166B85");
    ASSERT_NE(component, nullptr);
    EXPECT_THAT(host.ledger(), testing::Contains("component(1): expected 0, is 1"));
    factory->destroyComponent(component);
    component->release();
    EXPECT_THAT(host.ledger(), testing::Contains("component(1): expected 0, is -1"));
}

TEST_F(HostLedger, CountsADependentAsOftenAsItWasAdded)
{
    Listener first;
    Listener second;
    auto& mixer = host.devices.mixer();
    host.updates.addDependent(&mixer, &first);
    host.updates.addDependent(&mixer, &first);
    host.updates.addDependent(&mixer.value("selected"), &second);
    EXPECT_THAT(host.ledger(),
                ElementsAre("dependents of device(Mixer): expected 0, is 2",
                            "dependents of value(Mixer.selected): expected 0, is 1"));
    host.updates.removeDependent(&mixer, &first);
    host.updates.removeDependent(nullptr, &second);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST(HostHandlerDouble, UnpairedEditsNamesWhatLacksItsBeginOrEnd)
{
    Trace trace;
    ScriptedHost host(trace);
    host.handler.beginEdit(1);
    host.handler.performEdit(1, 0.5);
    host.handler.endEdit(1);
    EXPECT_THAT(host.handler.unpairedEdits(), IsEmpty());
    host.handler.performEdit(2, 0.5);
    host.handler.endEdit(3);
    host.handler.beginEdit(4);
    EXPECT_THAT(
        host.handler.unpairedEdits(),
        ElementsAre("2: perform without begin", "3: end without begin", "4: begin without end"));
}

TEST_F(HostLedger, GetHostInterfaceThatFailsLeavesThePointerAlone)
{
    FUnknownPtr<IHostClasses> classes(&host.context);
    void* found = this;
    host.failAt("getHostInterface");
    EXPECT_NE(classes->getHostInterface(IPortRegistry::iid, &found), kResultOk);
    EXPECT_EQ(found, this);
}

TEST(HostDeviceDouble, QueryInterfaceKnowsTheIdOfItsOwnHostsCharacterSetOnly)
{
    Trace trace;
    for (const bool unicode : {true, false}) {
        ScriptedHost host(trace, unicode ? HostFamily::cubase("7.5.1")
                                         : HostFamily::withoutUnicode("Cubase", "4.0.1"));
        const auto offers = [](FUnknown& object, const FUID& iid) {
            void* found = nullptr;
            return object.queryInterface(iid, &found) == kResultOk;
        };
        auto& mixer = host.devices.mixer();
        auto& value = mixer.value("selected");
        EXPECT_EQ(offers(mixer, IDevice::iid), unicode);
        EXPECT_EQ(offers(mixer, FUID::fromTUID(IDeviceNotUnicodeID)), !unicode);
        EXPECT_EQ(offers(value, IValue::iid), unicode);
        EXPECT_EQ(offers(value, FUID::fromTUID(IValueNotUnicodeID)), !unicode);
        StringObject id;
        ASSERT_TRUE(host.ports.audioInput("id-1", "Tavrin 1").getPortId(id));
        EXPECT_EQ(id.isWideString(), unicode);
    }
}

TEST(HostText, GetKeepsWhatStandsBehindTheTerminator)
{
    const HostText text(std::string("Nu\0Cub", 6));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(text.get(false)), 7),
              std::string("Nu\0Cub\0", 7));
    EXPECT_EQ(std::u16string(text.get(true), 4), std::u16string(u"Nu\0C", 4));
}

TEST(StreamDouble, CountsItsReferences)
{
    StreamDouble stream;
    void* found = nullptr;
    EXPECT_EQ(stream.queryInterface(IBStream::iid, &found), kResultOk);
    EXPECT_EQ(stream.getReferences(), 2);
}

TEST(ParameterChangesDouble, CountsReferencesThatWereNotReleased)
{
    ParameterChangesDouble changes;
    changes.add(37012000, {{0, 0.25}});
    EXPECT_EQ(changes.foreignReferences(), 0);
    changes.getParameterData(0)->addRef();
    EXPECT_EQ(changes.foreignReferences(), 1);
}

TEST(CallScript, FailsOrThrowsAtTheCallThatWasCountedAndAtNoOther)
{
    Trace trace;
    CallScript script(trace);
    script.called("host.before()");
    script.failAtCall(2);
    EXPECT_TRUE(script.called("host.a()"));
    EXPECT_FALSE(script.called("host.b()"));
    EXPECT_TRUE(script.called("host.c()"));
    EXPECT_EQ(script.callCount(), 3u);
    script.throwAtCall(1);
    EXPECT_THROW(script.called("host.d()"), ScriptedFailure);
    EXPECT_TRUE(script.called("host.d()"));
}

TEST(CallScript, AnswersTheNonsenseThatWasAskedForAndNoOther)
{
    Trace trace;
    CallScript script(trace);
    const auto answers = [&](size_t n, Nonsense what) {
        script.talkNonsenseAtCall(n, what);
        script.called("host.a()");
        return std::make_tuple(script.told(5, 100), script.toldFlag(true), script.toldFlag(false),
                               script.toldWithoutObject(), script.toldText());
    };
    const auto none = std::optional<Nonsense>();
    EXPECT_EQ(answers(1, Nonsense::kWrong),
              std::make_tuple(CallScript::kNonsense, false, true, true, none));
    EXPECT_EQ(answers(1, Nonsense::kHuge), std::make_tuple(100, true, false, false, none));
    EXPECT_EQ(answers(1, Nonsense::kBrokenText),
              std::make_tuple(5, true, false, false, std::optional(Nonsense::kBrokenText)));
    EXPECT_TRUE(script.nonsenseTold());
    EXPECT_EQ(answers(2, Nonsense::kHuge), std::make_tuple(5, true, false, false, none));
    EXPECT_FALSE(script.nonsenseTold());
}

TEST(CallScript, HadAnswerTellsWhichCallsCouldHaveAnsweredWithNonsense)
{
    Trace trace;
    CallScript script(trace);
    script.watchAnswers();
    script.called("host.number()");
    EXPECT_EQ(script.told(5), 5);
    script.called("host.nothing()");
    script.called("host.text()");
    EXPECT_EQ(script.toldText(), std::nullopt);
    EXPECT_TRUE(script.hadAnswer(1, Nonsense::kWrong));
    EXPECT_TRUE(script.hadAnswer(1, Nonsense::kHuge));
    EXPECT_FALSE(script.hadAnswer(1, Nonsense::kEmptyText));
    EXPECT_FALSE(script.hadAnswer(2, Nonsense::kWrong));
    EXPECT_TRUE(script.hadAnswer(3, Nonsense::kEndlessText));
    EXPECT_FALSE(script.hadAnswer(3, Nonsense::kHuge));
    EXPECT_FALSE(script.hadAnswer(4, Nonsense::kWrong));
}

TEST(ScriptedLibrary, FillsThirtyBytesWithoutATerminatorOnlyWithAFullText)
{
    Trace trace;
    ScriptedLibrary library(trace);
    std::vector<char> buffer(31, '#');
    library.voiceData = [](int32, int32 number) {
        return BufferAnswer{std::string(number == 0 ? 30 : 2, 'x')};
    };
    library.getVoiceDataString(0, 0, buffer.data());
    EXPECT_THAT(buffer, ElementsAreArray(std::string(30, 'x') + "#"));
    library.getVoiceDataString(0, 1, buffer.data());
    EXPECT_THAT(buffer, ElementsAreArray("xx" + std::string(1, '\0') + std::string(27, 'x') + "#"));
}

TEST(ScriptedLibrary, ComplaintsNameUseAfterTheEndAndObserversDestroyedWhileRegistered)
{
    Trace trace;
    ScriptedLibrary library(trace);
    const auto makeObserver = [&](int id) {
        Vst::VstIObserver* result = nullptr;
        library.makeObserver(&result, {&library, id, 37, 12, 0, nullptr,
                                       Vst::VstIObserver::ParamModePartVoice, nullptr, nullptr});
        library.addObserver(result);
        return result;
    };
    auto* observer = makeObserver(1);
    library.removeObserver(observer);
    observer->destroy();
    EXPECT_THAT(library.complaints(), IsEmpty());
    observer->checkChange();
    observer->destroy();
    makeObserver(2)->destroy();
    library.destroy();
    library.start();
    EXPECT_THAT(library.complaints(), ElementsAre("observer(1).checkChange() after destroy",
                                                  "observer(1).destroy() after destroy",
                                                  "observer(2) destroyed while registered",
                                                  "library.start() after destroy"));
}

TEST(LoadedLibrary, CloseTellsWhetherSomebodyElseStillHoldsTheFile)
{
    Trace trace;
    LoadedLibrary loaded(trace, VSTK2X_SCRIPTED_LIBRARY);
    ASSERT_TRUE(loaded);
    void* other = dlopen(VSTK2X_SCRIPTED_LIBRARY, RTLD_LAZY);
    ASSERT_NE(other, nullptr);
    EXPECT_TRUE(loaded.closeAndAskWhetherStillLoaded());
    dlclose(other);
}

} // namespace
