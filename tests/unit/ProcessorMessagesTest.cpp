#include "tests/unit/ProcessorFixture.h"

#include "tests/doubles/CallText.h"

#include <cstring>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::ScriptedLibrary;
using testing::ElementsAre;
using testing::IsEmpty;

/** A message without an ID or without attributes. */
class SparseMessage : public IMessage {
public:
    const char* id = nullptr;
    IAttributeList* attributes = nullptr;

    const char* PLUGIN_API getMessageID() override { return id; }
    void PLUGIN_API setMessageID(const char* newId) override { id = newId; }
    IAttributeList* PLUGIN_API getAttributes() override { return attributes; }
    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~SparseMessage() = default;
};

class ProcessorNotify : public unit::ProcessorFixture {
protected:
    /** Sends a connect message whose attribute has these bytes. */
    tresult sendConnection(const void* bytes, size_t size)
    {
        const auto message = unit::makeMessage("VST_CONNECT_MESSAGE_ID");
        message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", bytes,
                                            static_cast<uint32>(size));
        return processor->notify(message);
    }

    /** Whether notes of the host reach the library. */
    bool isConnected()
    {
        trace.clear();
        unit::Block block;
        block.in.add(doubles::noteOn(0, 60, 1));
        processor->process(block.data);
        return trace.count("library.receiveHostMidi(90 3C 7F)") == 1;
    }

    /** Whether the Unicode flag is set: then there is a latency, 48 samples. */
    bool isUnicode()
    {
        setUp(48000);
        return processor->getLatencySamples() == 48;
    }
};

TEST_F(ProcessorNotify, ConnectHandsTheLibraryTheProcessorAndTheEffectOption)
{
    VstIEditorConnect* editor = &library;
    EXPECT_EQ(sendConnection(&editor, sizeof(editor)), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.setEffectInterface(object)",
                                           "library.setEffectOption(false)"));
    EXPECT_EQ(library.effect, static_cast<VstIEffectInterface*>(processor.get()));
    EXPECT_TRUE(isConnected());
}

TEST_F(ProcessorNotify, ConnectTakesTheFirstEightBytesOfALongerAttribute)
{
    VstIEditorConnect* editor = &library;
    unsigned char bytes[16];
    std::memset(bytes, 0xAA, sizeof(bytes));
    std::memcpy(bytes, &editor, sizeof(editor));
    EXPECT_EQ(sendConnection(bytes, sizeof(bytes)), kResultOk);
    EXPECT_EQ(library.effect, static_cast<VstIEffectInterface*>(processor.get()));
}

TEST_F(ProcessorNotify, ConnectWithANullAddressForgetsTheLibraryAndCallsNobody)
{
    VstIEditorConnect* editor = nullptr;
    EXPECT_EQ(sendConnection(&editor, sizeof(editor)), kResultOk);
    EXPECT_FALSE(isConnected());
    connect();
    sendConnection(&editor, sizeof(editor));
    EXPECT_THAT(trace.texts(), IsEmpty());
    EXPECT_FALSE(isConnected());
}

TEST_F(ProcessorNotify, ConnectTakesAShortAttributeForANullAddress)
{
    VstIEditorConnect* editor = &library;
    // Not with 0 bytes, of which the SDK's attribute list leaks the memory.
    for (size_t size = 1; size < sizeof(editor); ++size) {
        EXPECT_EQ(sendConnection(&editor, size), kResultOk) << size;
        EXPECT_THAT(trace.texts(), IsEmpty()) << size;
        EXPECT_FALSE(isConnected()) << size;
        trace.clear();
    }
}

TEST_F(ProcessorNotify, ConnectTakesTheAddressFromItsOwnAttributeOnly)
{
    const auto message = unit::makeMessage("VST_CONNECT_MESSAGE_ID");
    EXPECT_EQ(processor->notify(message), kResultOk);
    EXPECT_FALSE(isConnected());
    VstIEditorConnect* editor = &library;
    message->getAttributes()->setBinary("VST_DISCONNECT_BINARY_ID", &editor, sizeof(editor));
    EXPECT_EQ(processor->notify(message), kResultOk);
    EXPECT_FALSE(isConnected());
}

TEST_F(ProcessorNotify, ConnectASecondTimeReplacesTheLibrary)
{
    connect();
    doubles::Trace otherTrace;
    ScriptedLibrary other(otherTrace);
    VstIEditorConnect* editor = &other;
    sendConnection(&editor, sizeof(editor));
    EXPECT_THAT(trace.texts(), IsEmpty()); // the former library is not told
    EXPECT_FALSE(isConnected());
    EXPECT_EQ(otherTrace.count("library.receiveHostMidi(90 3C 7F)"), 1u);
}

TEST_F(ProcessorNotify, ConnectSurvivesALibraryThatThrowsAtEitherCall)
{
    VstIEditorConnect* editor = &library;
    library.throwAt("setEffectInterface");
    library.throwAt("setEffectOption");
    EXPECT_EQ(sendConnection(&editor, sizeof(editor)), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.setEffectInterface(object)",
                                           "library.setEffectOption(false)"));
    library.clearFaults();
    EXPECT_TRUE(isConnected());
}

TEST_F(ProcessorNotify, DisconnectTakesTheProcessorBackAndForgetsTheLibrary)
{
    connect();
    disconnect();
    EXPECT_THAT(trace.texts(), ElementsAre("library.setEffectInterface(null)"));
    EXPECT_EQ(library.effect, nullptr);
    EXPECT_FALSE(isConnected());
}

TEST_F(ProcessorNotify, DisconnectDoesNotReadItsAttribute)
{
    connect();
    doubles::Trace otherTrace;
    ScriptedLibrary other(otherTrace);
    VstIEditorConnect* wrong = &other;
    const auto message = unit::makeMessage("VST_DISCONNECT_MESSAGE_ID");
    message->getAttributes()->setBinary("VST_DISCONNECT_BINARY_ID", &wrong, sizeof(wrong));
    EXPECT_EQ(processor->notify(message), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.setEffectInterface(null)"));
    EXPECT_THAT(otherTrace.texts(), IsEmpty());
}

TEST_F(ProcessorNotify, DisconnectWithoutALibraryCallsNothing)
{
    disconnect();
    connect();
    disconnect();
    trace.clear();
    disconnect();
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ProcessorNotify, DisconnectForgetsALibraryThatThrows)
{
    connect();
    library.throwAt("setEffectInterface");
    const auto message = unit::makeMessage("VST_DISCONNECT_MESSAGE_ID");
    EXPECT_EQ(processor->notify(message), kResultOk);
    library.clearFaults();
    EXPECT_FALSE(isConnected());
}

TEST_F(ProcessorNotify, LeavesItsEffectsInPlaceAfterTerminate)
{
    connectAndActivate();
    sayUnicode(1);
    processor->initialize(nullptr);
    EXPECT_EQ(processor->terminate(), kResultOk);
    EXPECT_THAT(trace.texts(), IsEmpty());
    EXPECT_TRUE(isUnicode());
    EXPECT_TRUE(isConnected());
    writeMidi(0x90, 60, 127);
    EXPECT_EQ(drained().size(), 1u); // still active, too
}

TEST_F(ProcessorNotify, UnicodeFlagIsWhetherTheIntegerIsNotZero)
{
    connect();
    EXPECT_FALSE(isUnicode());
    for (const int64 flag : {int64(1), int64(2), int64(-1), int64(1) << 32}) {
        sayUnicode(0);
        EXPECT_FALSE(isUnicode());
        sayUnicode(flag);
        EXPECT_TRUE(isUnicode()) << flag;
    }
}

TEST_F(ProcessorNotify, UnicodeFlagIsClearedWhenTheIntegerIsMissing)
{
    connect();
    sayUnicode(1);
    EXPECT_EQ(processor->notify(unit::makeMessage("VST_ISUNICODE_HOST_MESSAGE_ID")), kResultOk);
    EXPECT_FALSE(isUnicode());
}

TEST_F(ProcessorNotify, UnicodeFlagOutlivesTheConnection)
{
    sayUnicode(1);
    connect();
    disconnect();
    connect();
    EXPECT_TRUE(isUnicode());
}

TEST_F(ProcessorNotify, IgnoresOtherMessages)
{
    connect();
    for (const char* id : {"", "TextMessage", "vst_connect_message_id", "VST_CONNECT_MESSAGE_ID ",
                           "VST_CONNECT_MESSAGE", "VST_DISCONNECT_MESSAGE_IDX"}) {
        const auto message = unit::makeMessage(id);
        VstIEditorConnect* editor = nullptr;
        message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
        message->getAttributes()->setString("Text", STR16("text"));
        EXPECT_EQ(processor->notify(message), kResultOk) << id;
        EXPECT_THAT(trace.texts(), IsEmpty()) << id;
    }
    EXPECT_EQ(processor->notify(nullptr), kResultOk);
    SparseMessage withoutID;
    EXPECT_EQ(processor->notify(&withoutID), kResultOk);
    EXPECT_TRUE(isConnected());
}

TEST_F(ProcessorNotify, TakesAMessageWithoutAttributeListForOneWithoutValues)
{
    connect();
    sayUnicode(1);
    SparseMessage message;
    message.id = "VST_ISUNICODE_HOST_MESSAGE_ID";
    EXPECT_EQ(processor->notify(&message), kResultOk);
    EXPECT_FALSE(isUnicode());
    message.id = "VST_CONNECT_MESSAGE_ID";
    EXPECT_EQ(processor->notify(&message), kResultOk);
    EXPECT_FALSE(isConnected());
    message.id = "VST_DISCONNECT_MESSAGE_ID";
    EXPECT_EQ(processor->notify(&message), kResultOk);
}

/** Has every attribute, and gives a null pointer with a size for its bytes. */
class HollowAttributes : public IAttributeList {
public:
    virtual ~HollowAttributes() = default;

    tresult PLUGIN_API setInt(AttrID, int64) override { return kResultOk; }
    tresult PLUGIN_API getInt(AttrID, int64&) override { return kResultOk; }
    tresult PLUGIN_API setFloat(AttrID, double) override { return kResultOk; }
    tresult PLUGIN_API getFloat(AttrID, double&) override { return kResultOk; }
    tresult PLUGIN_API setString(AttrID, const TChar*) override { return kResultOk; }
    tresult PLUGIN_API getString(AttrID, TChar*, uint32) override { return kResultOk; }
    tresult PLUGIN_API setBinary(AttrID, const void*, uint32) override { return kResultOk; }
    tresult PLUGIN_API getBinary(AttrID, const void*& data, uint32& size) override
    {
        data = nullptr;
        size = sizeof(void*);
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

TEST_F(ProcessorNotify, ConnectTakesAnAttributeWithoutBytesForANullAddress)
{
    connect();
    HollowAttributes attributes;
    SparseMessage message;
    message.id = "VST_CONNECT_MESSAGE_ID";
    message.attributes = &attributes;
    EXPECT_EQ(processor->notify(&message), kResultOk);
    EXPECT_FALSE(isConnected());
}

TEST_F(ProcessorNotify, HoldsNoReferenceToAMessage)
{
    const auto message = unit::makeMessage("VST_CONNECT_MESSAGE_ID");
    VstIEditorConnect* editor = &library;
    message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
    processor->notify(message);
    message->addRef();
    EXPECT_EQ(message->release(), 1u);
}

} // namespace
