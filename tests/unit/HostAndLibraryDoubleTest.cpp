#include "tests/doubles/HostAndLibraryDouble.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::HostAndLibraryDouble;
using doubles::HostFamily;
using doubles::ScriptedHost;
using doubles::Trace;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(HostAndLibrary, KnowsWhatItsHostIs)
{
    struct Row {
        HostFamily family;
        bool unicode;
        int32 type;
    };
    const Row rows[] = {{HostFamily::cubase("7.5.1"), true, 0},
                        {HostFamily::nuendo("6.5.0"), true, 0},
                        {HostFamily::cubaseLE("5.0.0"), true, 0},
                        {HostFamily::withoutUnicode("Cubase", "4.0.1"), false, 0},
                        {HostFamily::applicationAOnly(), false, 0},
                        {HostFamily::standalone(), true, 1},
                        {HostFamily::named("Another", "1.0.0"), true, 2},
                        {HostFamily::plain(), false, 2}};
    for (const auto& row : rows) {
        Trace trace;
        ScriptedHost host(trace, row.family);
        HostAndLibraryDouble context(host, nullptr);
        EXPECT_EQ(context.isUnicodeHost(), row.unicode) << row.family.name.utf8();
        EXPECT_EQ(context.getHostKind(), row.type) << row.family.name.utf8();
    }
}

TEST(HostAndLibraryDouble, PassesNoticesOnAndRecordsThem)
{
    Trace trace;
    ScriptedHost host(trace);
    doubles::ScriptedLibrary library(trace);
    std::vector<FUnknown*> changed;
    {
        HostAndLibraryDouble context(host, &library);
        EXPECT_EQ(context.library.getConnection(), &library);
        context.onUpdate = [&](FUnknown* object, int32) { changed.push_back(object); };
        host.updates.addDependent(&host.devices.mixer(), &context.dependent);
        host.devices.tellTracksChanged();
    }
    EXPECT_THAT(changed, ElementsAre(&host.devices.mixer()));
    EXPECT_THAT(trace.texts(),
                ElementsAre("updateHandler.addDependent(device(Mixer))", "notice(device(Mixer), 1)",
                            "controller.update(device(Mixer), 1)"));
    EXPECT_THAT(host.ledger(), ElementsAre("dependents of device(Mixer): expected 0, is 1"));
}

TEST(PeerDouble, KeepsWhatTheMessagesCarry)
{
    Trace trace;
    ScriptedHost host(trace);
    TUID cid;
    Vst::IMessage::iid.toTUID(cid);
    void* made = nullptr;
    ASSERT_EQ(host.context.createInstance(cid, cid, &made), kResultOk);
    auto message = owned(static_cast<Vst::IMessage*>(made));
    void* address = &trace;
    message->setMessageID("VST_CONNECT_MESSAGE_ID");
    message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &address, sizeof(address));
    host.peer.notifyResults = {kResultFalse};
    EXPECT_EQ(host.peer.notify(message), kResultFalse);
    message->setMessageID("VST_ISUNICODE_HOST_MESSAGE_ID");
    message->getAttributes()->setInt("VST_ISUNICODE_HOST_BINARY_ID", 1);
    EXPECT_EQ(host.peer.notify(message), kResultOk);

    ASSERT_EQ(host.peer.received.size(), 2u);
    EXPECT_EQ(host.peer.received[0].id, "VST_CONNECT_MESSAGE_ID");
    EXPECT_EQ(host.peer.received[0].address, address);
    EXPECT_FALSE(host.peer.received[0].integer);
    EXPECT_FALSE(host.peer.received[1].address);
    EXPECT_EQ(host.peer.received[1].integer, 1);
    message = nullptr;
    EXPECT_THAT(host.ledger(), IsEmpty());
}
