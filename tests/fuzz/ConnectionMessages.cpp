// Messages to the processor in any order, also some that lack what they should carry, and its use
// in between. An input is a list of operations; a model of a few fields says what each must do.
#include "processor/VstK2x.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"

#include "pluginterfaces/vst/ivstmessage.h"

#include <cmath>
#include <deque>
#include <map>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr const char* kIDs[] = {"VST_CONNECT_MESSAGE_ID",
                                "VST_DISCONNECT_MESSAGE_ID",
                                "VST_ISUNICODE_HOST_MESSAGE_ID",
                                "VST_CONNECT_MESSAGE_I",
                                "VST_CONNECT_MESSAGE_ID ",
                                "vst_connect_message_id",
                                "TextMessage",
                                ""};
enum Known : size_t { kConnect, kDisconnect, kUnicode };

constexpr const char* kAttributes[] = {"VST_CONNECT_BINARY_ID", "VST_ISUNICODE_HOST_BINARY_ID",
                                       "VST_DISCONNECT_BINARY_ID", "other"};

/** Numbers and bytes by their name, on the stack. A name has one or the other. */
class Attributes : public doubles::StackObject<IAttributeList> {
public:
    tresult PLUGIN_API setInt(AttrID id, int64 value) override
    {
        binaries.erase(id);
        integers[id] = value;
        return kResultOk;
    }
    tresult PLUGIN_API getInt(AttrID id, int64& value) override
    {
        const auto found = integers.find(id);
        if (found == integers.end())
            return kResultFalse;
        value = found->second;
        return kResultOk;
    }
    tresult PLUGIN_API setBinary(AttrID id, const void* data, uint32 size) override
    {
        integers.erase(id);
        const auto* bytes = static_cast<const char*>(data);
        binaries[id].assign(bytes, bytes + size);
        binaries[id].shrink_to_fit(); // reading behind the end is seen
        return kResultOk;
    }
    tresult PLUGIN_API getBinary(AttrID id, const void*& data, uint32& size) override
    {
        const auto found = binaries.find(id);
        if (found == binaries.end())
            return kResultFalse;
        data = found->second.data();
        size = static_cast<uint32>(found->second.size());
        return kResultOk;
    }
    tresult PLUGIN_API setFloat(AttrID, double) override { return kNotImplemented; }
    tresult PLUGIN_API getFloat(AttrID, double&) override { return kNotImplemented; }
    tresult PLUGIN_API setString(AttrID, const TChar*) override { return kNotImplemented; }
    tresult PLUGIN_API getString(AttrID, TChar*, uint32) override { return kNotImplemented; }

private:
    std::map<std::string, int64> integers;
    std::map<std::string, std::vector<char>> binaries;
};

/** A message whose ID or attributes a host may have left out. */
class BareMessage : public doubles::StackObject<IMessage> {
public:
    BareMessage(const char* messageID, IAttributeList* attributeList)
    : id(messageID)
    , attributes(attributeList)
    {
    }
    FIDString PLUGIN_API getMessageID() override { return id; }
    void PLUGIN_API setMessageID(FIDString) override {}
    IAttributeList* PLUGIN_API getAttributes() override { return attributes; }

private:
    const char* id;
    IAttributeList* attributes;
};

struct Note {
    int16 channel;
    int16 pitch;
    float velocity;
};

class Scene {
public:
    explicit Scene(fuzz::FuzzInput& bytes)
    : input(bytes)
    {
        libraries[0].latencyMode = 0;
        libraries[1].latencyMode = 2;
    }

    void run()
    {
        constexpr void (Scene::*operations[])() = {
            &Scene::sendMessage, &Scene::sendMessage, &Scene::sendMessage,  &Scene::sendNothing,
            &Scene::writeMidi,   &Scene::activate,    &Scene::setUp,        &Scene::process,
            &Scene::askLatency,  &Scene::flood,       &Scene::changeLatency};
        for (int count = 0; count < 200 && !input.empty(); ++count) {
            (this->*input.oneOf(operations))();
            FUZZ_CHECK(libraries[0].complaints().empty() && libraries[1].complaints().empty());
        }
    }

private:
    using Texts = std::vector<std::string>;

    /** What the libraries were told since the last time. */
    Texts told()
    {
        auto texts = trace.texts();
        trace.clear();
        return texts;
    }

    void sendNothing()
    {
        FUZZ_CHECK(processor->notify(nullptr) == kResultOk);
        FUZZ_CHECK(told().empty());
    }

    void sendMessage()
    {
        const size_t id = input.below(std::size(kIDs) + 1);
        const char* name = id < std::size(kIDs) ? kIDs[id] : nullptr;
        Attributes attributes;
        VstIEditorConnect* address = nullptr;
        int64 flag = 0;
        for (size_t count = input.below(3); count > 0; --count)
            addAttribute(attributes, address, flag);
        const bool bare = input.byte() == 255;
        BareMessage message(name, bare ? nullptr : &attributes);
        FUZZ_CHECK(processor->notify(&message) == kResultOk);
        FUZZ_CHECK(message.getReferences() == 1 && attributes.getReferences() == 1);
        checkMessage(id, bare ? nullptr : address, bare ? 0 : flag);
    }

    /** Addresses are a library's or null: the processor trusts its controller's address. */
    void addAttribute(IAttributeList& attributes, VstIEditorConnect*& address, int64& flag)
    {
        const size_t name = input.below(std::size(kAttributes));
        if (input.flag()) {
            const auto value = input.number<int64>();
            attributes.setInt(kAttributes[name], value);
            if (name == 1)
                flag = value;
            if (name == 0)
                address = nullptr;
            return;
        }
        const size_t library = input.below(3);
        VstIEditorConnect* given = library < 2 ? &libraries[library] : nullptr;
        const size_t size = input.below(13);
        char binary[16] = {};
        std::memcpy(binary, &given, sizeof(given));
        attributes.setBinary(kAttributes[name], binary, static_cast<uint32>(size));
        if (name == 0)
            address = size >= sizeof(given) ? given : nullptr;
        if (name == 1)
            flag = 0;
    }

    void checkMessage(size_t id, VstIEditorConnect* address, int64 flag)
    {
        const auto texts = told();
        if (id == kConnect) {
            connected = static_cast<doubles::ScriptedLibrary*>(address);
            FUZZ_CHECK(texts == (connected ? Texts{"library.setEffectInterface(object)",
                                                   "library.setEffectOption(false)"}
                                           : Texts{}));
            FUZZ_CHECK(!connected || connected->effect == processor.get());
        } else if (id == kDisconnect) {
            FUZZ_CHECK(texts == (connected ? Texts{"library.setEffectInterface(null)"} : Texts{}));
            connected = nullptr;
        } else {
            FUZZ_CHECK(texts.empty());
            unicode = id == kUnicode ? flag != 0 : unicode;
        }
    }

    void activate()
    {
        active = input.flag();
        FUZZ_CHECK(processor->setActive(active) == kResultOk && told().empty());
    }

    void setUp()
    {
        ProcessSetup setup{kRealtime, input.flag() ? kSample32 : kSample64, 512,
                           input.flag() ? 44100.0 : input.number<double>()};
        FUZZ_CHECK(processor->setupProcessing(setup) ==
                   (setup.symbolicSampleSize == kSample32 ? kResultOk : kResultFalse));
        sampleRate = setup.sampleRate;
    }

    void changeLatency()
    {
        for (auto& library : libraries)
            library.latencyMode = input.number<int8_t>();
    }

    void askLatency()
    {
        const uint32 latency = processor->getLatencySamples();
        const bool asked = connected && unicode;
        FUZZ_CHECK(told() == (asked ? Texts{"library.getLatencyMode()"} : Texts{}));
        const int32 mode = asked ? connected->latencyMode : -1;
        const double samples = (mode == 2                ? 5.0
                                : mode == 0 || mode == 1 ? 1.0
                                                         : 0.0) *
                               sampleRate / 1000;
        // It is 0 where the number of samples does not fit in 32 bits.
        const bool fits = samples >= 0 && samples < 4294967296.0;
        FUZZ_CHECK(latency == (fits ? static_cast<uint32>(samples) : 0));
    }

    void write(const uint8_t* bytes, int length)
    {
        processor->writeMidi(bytes, length);
        if (!active || length != 3)
            return;
        if (queue.size() >= 100)
            queue.clear();
        const bool on = (bytes[0] & 0xF0) == 0x90;
        queue.push_back({static_cast<int16>(bytes[0] & 0x0F), bytes[1],
                         on ? static_cast<float>(bytes[2] / 127.0) : 0.f});
    }

    void writeMidi()
    {
        const int length = input.flag() ? 3 : input.number<int8_t>();
        uint8_t bytes[4] = {input.byte(), input.byte(), input.byte(), input.byte()};
        write(bytes, length);
        processor->writeMidi(nullptr, 3);
        FUZZ_CHECK(told().empty());
    }

    void flood()
    {
        uint8_t bytes[3] = {input.byte(), 0, 64};
        for (int count = input.byte(); count > 0; --count) {
            ++bytes[1];
            write(bytes, 3);
        }
    }

    void addEvent(doubles::EventListDouble& events, Texts& expected)
    {
        Event event = {};
        event.type = input.byte();
        const auto channel = input.number<int16>();
        const auto pitch = input.number<int16>();
        const auto velocity = input.number<float>();
        unsigned bytes[3] = {0, 0, 0};
        if (event.type == Event::kNoteOnEvent || event.type == Event::kNoteOffEvent) {
            const bool on = event.type == Event::kNoteOnEvent;
            (on ? event.noteOn.channel : event.noteOff.channel) = channel;
            (on ? event.noteOn.pitch : event.noteOff.pitch) = pitch;
            (on ? event.noteOn.velocity : event.noteOff.velocity) = velocity;
            bytes[0] = (on ? 0x90u : 0x80u) | static_cast<uint8_t>(channel);
            bytes[1] = static_cast<uint8_t>(pitch);
            bytes[2] = on && std::ceil(velocity) != 0 ? 127 : 0;
        }
        if (input.byte() == 255)
            events.unreadable.insert(static_cast<int32>(events.events.size()));
        else
            expected.push_back(midiText(bytes));
        events.add(event);
    }

    static std::string midiText(const unsigned (&bytes)[3])
    {
        char text[64];
        std::snprintf(text, sizeof(text), "library.receiveHostMidi(%02X %02X %02X)", bytes[0],
                      bytes[1], bytes[2]);
        return text;
    }

    void process()
    {
        doubles::EventListDouble in;
        doubles::EventListDouble out;
        Texts expected;
        for (size_t count = input.below(4); count > 0; --count)
            addEvent(in, expected);
        const bool takes = input.flag();
        out.limit = input.flag() ? out.limit : input.byte();
        ProcessData data;
        data.inputEvents = input.flag() ? nullptr : &in;
        data.outputEvents = takes ? &out : nullptr;
        FUZZ_CHECK(processor->process(data) == kResultOk);
        FUZZ_CHECK(told() == (connected && data.inputEvents ? expected : Texts{}));
        FUZZ_CHECK(in.getReferences() == 1 && out.getReferences() == 1);
        if (takes)
            checkDrained(out);
    }

    /** Oldest first; what the host's list refuses is lost, and the queue is empty all the same. */
    void checkDrained(const doubles::EventListDouble& out)
    {
        FUZZ_CHECK(out.events.size() == std::min(queue.size(), out.limit));
        for (size_t i = 0; i < out.events.size(); ++i) {
            const Event& event = out.events[i];
            FUZZ_CHECK(event.busIndex == 0 && event.sampleOffset == 0 && event.flags == 0);
            FUZZ_CHECK(event.type == Event::kNoteOnEvent && event.noteOn.noteId == -1);
            FUZZ_CHECK(event.noteOn.channel == queue[i].channel);
            FUZZ_CHECK(event.noteOn.pitch == queue[i].pitch);
            FUZZ_CHECK(event.noteOn.velocity == queue[i].velocity);
        }
        queue.clear();
    }

    fuzz::FuzzInput& input;
    doubles::Trace trace;
    doubles::ScriptedLibrary libraries[2] = {doubles::ScriptedLibrary(trace),
                                             doubles::ScriptedLibrary(trace)};
    IPtr<VstK2x> processor = owned(new VstK2x);

    // The model.
    doubles::ScriptedLibrary* connected = nullptr;
    bool unicode = false;
    bool active = false;
    double sampleRate = 0;
    std::deque<Note> queue;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    Scene(input).run();
    return 0;
}
