#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/smartpointer.h"
#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::HostFamily;
using doubles::ScriptedHost;
using doubles::Trace;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** As a plug-in gets it: a new reference, or null. */
template <class Interface>
Interface* getHostInterface(ScriptedHost& host)
{
    FUnknownPtr<IHostClasses> classes(&host.context);
    void* found = nullptr;
    if (!classes || classes->getHostInterface(Interface::iid, &found) != kResultOk)
        return nullptr;
    return static_cast<Interface*>(found);
}

class HostLedger : public testing::Test {
protected:
    Trace trace;
    ScriptedHost host{trace};
};

} // namespace

TEST_F(HostLedger, IsEmptyForAHostThatNobodyTouched)
{
    host.ports.audioInput("A", "Tavrin 1");
    host.devices.addMidiTrack("Piano", "Synth 1", 0);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, NamesTheInterfaceThatWasNotReleased)
{
    auto* registry = getHostInterface<IPortRegistry>(host);
    ASSERT_NE(registry, nullptr);
    EXPECT_THAT(host.ledger(), ElementsAre("portRegistry: expected 1, is 2"));
    registry->release();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, NamesTheObjectThatWasReleasedTooOften)
{
    host.devices.mixer().release();
    EXPECT_THAT(host.ledger(), ElementsAre("device(Mixer): expected 1, is 0"));
}

TEST_F(HostLedger, SeesAnOverReleaseThatALaterReferenceHides)
{
    host.devices.mixer().release();
    host.devices.mixer().addRef();
    EXPECT_THAT(host.ledger(), ElementsAre("device(Mixer): fell to 0, below the host's own 1"));
}

TEST_F(HostLedger, SeesACallOnAnObjectThatHasEnded)
{
    auto* bus = getHostInterface<IBusDescriptor>(host);
    ASSERT_NE(bus, nullptr);
    bus->release();
    bus->setArrangement(3);
    EXPECT_THAT(host.ledger(), ElementsAre("bus(1): used after its end"));
}

TEST_F(HostLedger, WantsABusDescriptorReleasedUnlessTheHostTookItOver)
{
    IBusDescriptor* buses[] = {getHostInterface<IBusDescriptor>(host),
                               getHostInterface<IBusDescriptor>(host)};
    EXPECT_THAT(host.ledger(), ElementsAre("bus(1): expected 0, is 1", "bus(2): expected 0, is 1"));

    FUnknownPtr<IComponentPortHandler> handler(&host.handler);
    handler->setAudioInputBuses(0, 0, buses, 2);
    EXPECT_THAT(host.ledger(), ElementsAre("portHandler: expected 1, is 2"));
    handler = nullptr;
    EXPECT_THAT(host.ledger(), IsEmpty());

    buses[1]->release();
    EXPECT_THAT(host.ledger(), ElementsAre("bus(2): expected 1, is 0"));
}

TEST_F(HostLedger, WantsAValueReleased)
{
    IValue* value = host.devices.mixer().getValue("selected");
    EXPECT_THAT(host.ledger(), ElementsAre("value(Mixer.selected): expected 1, is 2"));
    value->release();
    EXPECT_EQ(host.devices.mixer().getValue("unknown"), nullptr);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, LeavesAComponentToTheFactoryThatTakesItBack)
{
    int handle = 0;
    host.service.offer(nullptr, &handle);
    auto factory = owned(getHostInterface<IComponentFactory>(host));
    auto* component = factory->createComponent("UID", "BBA9E2BA9E28483CAA608081B0166B85");
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(factory->createComponent("UID", "another"), nullptr);
    factory = nullptr;
    EXPECT_THAT(host.ledger(), ElementsAre("component(1): expected 0, is 1"));
    host.service.getFactory().destroyComponent(component);
    EXPECT_THAT(host.ledger(), IsEmpty());
    component->release();
    EXPECT_THAT(host.ledger(), ElementsAre("component(1): expected 0, is -1"));
}

TEST_F(HostLedger, WantsAMessageReleased)
{
    TUID cid;
    Vst::IMessage::iid.toTUID(cid);
    void* message = nullptr;
    ASSERT_EQ(host.context.createInstance(cid, cid, &message), kResultOk);
    EXPECT_THAT(host.ledger(), ElementsAre("message(1): expected 0, is 1"));
    static_cast<Vst::IMessage*>(message)->release();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST(ScriptedHost, OffersWhatItsFamilyHas)
{
    const auto has = [](const HostFamily& family, const FUID& iid) {
        Trace trace;
        ScriptedHost host(trace, family);
        void* found = nullptr;
        host.context.queryInterface(iid, &found);
        return found != nullptr;
    };
    EXPECT_TRUE(has(HostFamily::cubase("7.5.1"), IHostApplicationW::iid));
    EXPECT_TRUE(has(HostFamily::cubase("7.5.1"), IHostClasses::iid));
    EXPECT_FALSE(has(HostFamily::cubase("7.5.1"), IHostApplicationA::iid));
    EXPECT_FALSE(has(HostFamily::applicationAOnly(), IHostApplicationW::iid));
    EXPECT_TRUE(has(HostFamily::applicationAOnly(), IHostApplicationA::iid));
    EXPECT_FALSE(has(HostFamily::plain(), IHostApplicationW::iid));
    EXPECT_FALSE(has(HostFamily::plain(), IHostClasses::iid));
    EXPECT_TRUE(has(HostFamily::plain(), Vst::IHostApplication::iid));
}

TEST_F(HostLedger, StaysBalancedWhenAnInterfaceIsHidden)
{
    host.hide(IPortRegistry::iid);
    EXPECT_EQ(getHostInterface<IPortRegistry>(host), nullptr);
    host.hide(IHostClasses::iid);
    EXPECT_EQ(getHostInterface<IUpdateHandler>(host), nullptr);
    host.show(IHostClasses::iid);
    host.show(IPortRegistry::iid);
    owned(getHostInterface<IPortRegistry>(host));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, GivesNoReferenceInACallThatFailsOrThrows)
{
    FUnknownPtr<IHostClasses> classes(&host.context);
    void* found = this;
    host.failAt("getHostInterface");
    EXPECT_NE(classes->getHostInterface(IPortRegistry::iid, &found), kResultOk);
    EXPECT_EQ(found, this) << "a failing host leaves the pointer alone";
    host.clearFaults();
    host.throwAt("hostClasses.getHostInterface(IPortRegistry)");
    EXPECT_THROW(classes->getHostInterface(IPortRegistry::iid, &found), doubles::ScriptedFailure);
    classes = nullptr;
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostLedger, OffersDevicesAndValuesUnderOneIdOnly)
{
    const auto offers = [](FUnknown& object, const FUID& iid) {
        void* found = nullptr;
        if (object.queryInterface(iid, &found) != kResultOk)
            return false;
        static_cast<FUnknown*>(found)->release();
        return true;
    };
    ScriptedHost older(trace, HostFamily::withoutUnicode("Cubase", "4.0.1"));
    const auto oldDevice = FUID::fromTUID(IDeviceNotUnicodeID);
    const auto oldValue = FUID::fromTUID(IValueNotUnicodeID);
    EXPECT_TRUE(offers(host.devices.mixer(), IDevice::iid));
    EXPECT_FALSE(offers(host.devices.mixer(), oldDevice));
    EXPECT_FALSE(offers(older.devices.mixer(), IDevice::iid));
    EXPECT_TRUE(offers(older.devices.mixer(), oldDevice));
    EXPECT_TRUE(offers(host.devices.mixer().value("selected"), IValue::iid));
    EXPECT_FALSE(offers(host.devices.mixer().value("selected"), oldValue));
    EXPECT_FALSE(offers(older.devices.mixer().value("selected"), IValue::iid));
    EXPECT_TRUE(offers(older.devices.mixer().value("selected"), oldValue));
    EXPECT_THAT(older.ledger(), IsEmpty());
}

TEST_F(HostLedger, OffersAConnectorOnlyWhereADeviceHasOne)
{
    auto& track = host.devices.addInstrumentTrack("Lead", "Synth", 0);
    auto& instrument = host.devices.addInstrument("Synth", "RDL3/RDL5 VST", &track);
    FUnknownPtr<IConnector> none(&instrument);
    EXPECT_FALSE(none);
    FUnknownPtr<IConnector> connector(instrument.getChild(0));
    ASSERT_TRUE(connector);
    EXPECT_TRUE(connector->isConnectedTo(&track));
    EXPECT_FALSE(connector->isConnectedTo(&host.devices.mixer()));
    EXPECT_THAT(host.ledger(), ElementsAre("connector(Synth out): expected 1, is 2"));
}

TEST_F(HostLedger, FindsUnpairedEdits)
{
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
    EXPECT_THAT(trace.textsOf({"host.performEdit"}),
                ElementsAre("host.performEdit(1, 0.5)", "host.performEdit(2, 0.5)"));
}
