#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::ScriptedHost;
using doubles::Trace;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Listener final : public IDependent {
public:
    std::vector<int32> messages;
    std::vector<FUnknown*> objects;
    std::function<void()> inUpdate;

    void PLUGIN_API update(FUnknown* changed, int32 message) override
    {
        messages.push_back(message);
        objects.push_back(changed);
        if (inUpdate)
            inUpdate();
    }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~Listener() = default;
};

class HostUpdates : public testing::Test {
protected:
    Trace trace;
    ScriptedHost host{trace};
    doubles::HostUpdatesDouble& updates = host.updates;
    FUnknown* mixer = host.devices.mixer().unknown();
    FUnknown* selected = host.devices.mixer().value("selected").unknown();
    Listener first;
    Listener second;
};

} // namespace

TEST_F(HostUpdates, TellsEachDependentOfItsObjectOnly)
{
    updates.addDependent(mixer, &first);
    updates.addDependent(selected, &second);
    EXPECT_THAT(updates.observed(), ElementsAre("device(Mixer)", "value(Mixer.selected)"));
    updates.tell(mixer, IDependent::kChanged);
    EXPECT_THAT(first.messages, ElementsAre(IDependent::kChanged));
    EXPECT_THAT(first.objects, ElementsAre(mixer));
    EXPECT_THAT(second.messages, IsEmpty());
}

TEST_F(HostUpdates, HoldsNoReferenceToTheObject)
{
    updates.addDependent(mixer, &first);
    EXPECT_EQ(host.devices.mixer().getReferences(), 1);
}

TEST_F(HostUpdates, TellsADependentAsOftenAsItWasAdded)
{
    updates.addDependent(mixer, &first);
    updates.addDependent(mixer, &first);
    updates.tell(mixer, 1);
    EXPECT_THAT(first.messages, ElementsAre(1, 1));
}

TEST_F(HostUpdates, RemovesEveryAddingOfADependentAtOnce)
{
    updates.addDependent(mixer, &first);
    updates.addDependent(mixer, &first);
    updates.addDependent(mixer, &second);
    updates.removeDependent(mixer, &first);
    updates.tell(mixer, 1);
    EXPECT_THAT(first.messages, IsEmpty());
    EXPECT_THAT(second.messages, ElementsAre(1));
}

TEST_F(HostUpdates, ForgottenDependentsAreInTheLedger)
{
    updates.addDependent(mixer, &first);
    updates.addDependent(selected, &first);
    updates.addDependent(mixer, &second);
    EXPECT_THAT(host.ledger(),
                ElementsAre("dependents of device(Mixer): expected 0, is 2",
                            "dependents of value(Mixer.selected): expected 0, is 1"));
    updates.removeDependent(nullptr, &first);
    EXPECT_THAT(host.ledger(), ElementsAre("dependents of device(Mixer): expected 0, is 1"));
    updates.removeDependent(mixer, nullptr);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostUpdates, RefusesNullObjectsAndDependents)
{
    EXPECT_EQ(updates.addDependent(nullptr, &first), kResultFalse);
    EXPECT_EQ(updates.addDependent(mixer, nullptr), kResultFalse);
    EXPECT_EQ(updates.removeDependent(nullptr, nullptr), kResultFalse);
    EXPECT_EQ(updates.removeDependent(mixer, &first), kResultTrue) << "unknown is no error";
}

TEST_F(HostUpdates, DoesNotTellADependentThatWasRemovedDuringTheNotice)
{
    updates.addDependent(mixer, &first);
    updates.addDependent(mixer, &second);
    first.inUpdate = [&] { updates.removeDependent(mixer, &second); };
    updates.tell(mixer, 1);
    EXPECT_THAT(second.messages, IsEmpty());
}

TEST_F(HostUpdates, DoesNotTellADependentThatWasAddedDuringTheNotice)
{
    updates.addDependent(mixer, &first);
    first.inUpdate = [&] { updates.addDependent(mixer, &second); };
    updates.tell(mixer, 1);
    EXPECT_THAT(second.messages, IsEmpty());
}

TEST_F(HostUpdates, DeliversADeferredNoticeOnceHoweverOftenItWasRaised)
{
    updates.deferred = true;
    updates.addDependent(mixer, &first);
    updates.tell(mixer, 1);
    updates.tell(mixer, 1);
    updates.tell(mixer, 2);
    EXPECT_THAT(first.messages, IsEmpty());
    updates.deliver();
    EXPECT_THAT(first.messages, ElementsAre(1, 2));
    updates.deliver();
    EXPECT_THAT(first.messages, ElementsAre(1, 2));
}

TEST_F(HostUpdates, DropsADeferredNoticeWithTheLastDependent)
{
    updates.deferred = true;
    updates.addDependent(mixer, &first);
    updates.tell(mixer, 1);
    updates.removeDependent(mixer, &first);
    updates.addDependent(mixer, &second);
    updates.deliver();
    EXPECT_THAT(second.messages, IsEmpty());
}

TEST_F(HostUpdates, DefersAgainWhatIsBeingToldWhileDelivering)
{
    updates.addDependent(mixer, &first);
    updates.deferUpdates(mixer, 2);
    first.inUpdate = [&] { updates.deliver(); };
    updates.triggerUpdates(mixer, 1);
    EXPECT_THAT(first.messages, ElementsAre(1)) << "not from inside its own notice";
    updates.deliver();
    EXPECT_THAT(first.messages, ElementsAre(1, 2));
}

TEST_F(HostUpdates, SettingAValueTellsItsDependentsWhenAsked)
{
    auto& value = host.devices.mixer().value("selected");
    updates.addDependent(&value, &first);
    value.setInteger(3, false);
    EXPECT_THAT(first.messages, IsEmpty());
    value.setInteger(4, true);
    EXPECT_THAT(first.messages, ElementsAre(IDependent::kChanged));
    EXPECT_EQ(value.getInteger(), 4);
    EXPECT_THAT(trace.textsOf({"value(", "notice("}),
                ElementsAre("value(Mixer.selected).setInteger(3, false)",
                            "value(Mixer.selected).setInteger(4, true)",
                            "notice(value(Mixer.selected), 1)",
                            "value(Mixer.selected).getInteger()"));
}
