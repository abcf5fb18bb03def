// The simulator with one fault, named by the variable BROKEN, for check-library to find.
#include "editorlib/EntryPoints.h"
#include "editorlib/VstIControllerInterface.h"
#include "editorlib/VstIEffectInterface.h"
#include "tools/check-library/WatchedLibrary.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <stdexcept>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace std::chrono_literals;

constexpr uint32 kVolume = 37012000; ///< of part 1
constexpr uint32 kLastVolume = kVolume + 15;
constexpr uint32 kPan = 37013000;

bool is(const char* fault)
{
    const char* broken = std::getenv("BROKEN");
    return broken && std::strcmp(broken, fault) == 0;
}

[[noreturn]] void hang()
{
    for (;;)
        std::this_thread::sleep_for(1h);
}

/** Crashes, hangs, throws or ends the program if the fault is "crash-PLACE", "hang-PLACE",
    "throw-PLACE" or "exit-PLACE". */
void happen(const std::string& place)
{
    if (is(("crash-" + place).c_str()))
        std::abort();
    if (is(("hang-" + place).c_str()))
        hang();
    if (is(("throw-" + place).c_str()))
        throw std::runtime_error("broken on purpose");
    if (is(("exit-" + place).c_str()))
        std::exit(0);
}

/** The simulator's file, for as long as this one is loaded. */
class Simulator {
public:
    Simulator() { happen("load"); }
    ~Simulator()
    {
        happen("unload");
        dlclose(handle);
    }
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    template <typename Function>
    Function find(const char* name) const
    {
        return reinterpret_cast<Function>(dlsym(handle, name));
    }

private:
    void* const handle = dlopen(SIMULATOR_LIBRARY, RTLD_LAZY);
};

const Simulator simulator;

/** Those of the volume's observer, to be called when they should not be. */
struct Callbacks {
    void* owner;
    ValueChangedCallback valueChanged;
    EditCallback beginEdit;
    EditCallback endEdit;
} callbacks;

std::atomic<int> notesUnderWay{0};

/** Takes one note at a time: of two at once the second crashes or hangs it. */
void takeNoteAlone(const char* crash, const char* deadlock)
{
    if (!is(crash) && !is(deadlock))
        return;
    if (++notesUnderWay > 1) {
        if (is(deadlock))
            hang();
        std::abort();
    }
    std::this_thread::sleep_for(20us);
    --notesUnderWay;
}

checklibrary::Journal noJournal(-1);

class BrokenLibrary final : public checklibrary::WatchedLibrary {
public:
    explicit BrokenLibrary(VstIEditorConnect& real)
    : WatchedLibrary(real, noJournal)
    {
    }

    void start() override
    {
        happen("start");
        if (is("leak-memory"))
            static_cast<char*>(std::malloc(10000))[0] = 1;
        if (is("leak-files"))
            static_cast<void>(open("/dev/null", O_RDONLY | O_CLOEXEC));
        if (is("leak-threads"))
            std::thread([] { pause(); }).detach();
        WatchedLibrary::start();
    }
    void destroy() override
    {
        happen("destroy");
        if (is("calls-back-late"))
            callbacks.valueChanged(callbacks.owner, kVolume, 1);
        if (is("uses-controller-late") && controller)
            controller->isConnectAudioPort();
        if (is("uses-effect-late") && effect)
            effect->writeMidi("\x90\x3C\x7F", 3);
        WatchedLibrary::destroy();
        if (!is("one-connection"))
            delete this;
    }
    void setControllerInterface(VstIControllerInterface* given) override
    {
        if (given)
            controller = given;
        WatchedLibrary::setControllerInterface(is("tells-nothing") ? nullptr : given);
    }
    void setEffectInterface(VstIEffectInterface* given) override
    {
        if (given)
            effect = given;
        WatchedLibrary::setEffectInterface(given);
    }
    void parametersReady() override
    {
        if (is("crash-on-own-thread"))
            std::thread([] { std::abort(); }).detach();
        WatchedLibrary::parametersReady();
    }

    int32 getParameterStepCount(uint32 id) override
    {
        return is("odd-steps") ? 1000 : WatchedLibrary::getParameterStepCount(id);
    }
    int32 getParameterMin(uint32 id) override
    {
        happen("range");
        if (isRangeless(id))
            return getParameterValue(id);
        return is("reversed-range") && id == kVolume ? 200 : WatchedLibrary::getParameterMin(id);
    }
    int32 getParameterMax(uint32 id) override
    {
        if (isRangeless(id))
            return getParameterValue(id);
        return is("huge-range") && id == kVolume ? 1 << 20 : WatchedLibrary::getParameterMax(id);
    }
    int32 getParameterValue(uint32 id) override
    {
        return is("value-outside") && id == kVolume ? 128 : WatchedLibrary::getParameterValue(id);
    }
    int32 getParameterValueString(uint32 id, int32 value, std::string& text) override
    {
        const auto result = WatchedLibrary::getParameterValueString(id, value, text);
        if (id != kPan || value != 5)
            return result;
        happen("text");
        if (is("text-not-utf8"))
            text = "\xFF";
        if (is("text-too-long"))
            text.assign(128, 'x');
        if (is("text-with-zero"))
            text = std::string("L\0R", 3);
        if (is("text-empty"))
            text.clear();
        return result;
    }

    int32 getVoiceDataString(int32 bank, int32 number, char* buffer) override
    {
        if (is("endless-bank") && bank == 3)
            return WatchedLibrary::getVoiceDataString(3, 0, buffer);
        const auto result = WatchedLibrary::getVoiceDataString(bank, number, buffer);
        if (result != 0 || bank != 2 || number != 1)
            return result;
        happen("voice");
        if (is("overrun"))
            std::memcpy(buffer, "0:A name longer than thirty bytes", 34);
        if (is("full-buffer"))
            std::memcpy(buffer, "0:Just as long as the buffer:A", 30);
        if (is("name-cut"))
            std::memcpy(buffer, "0:A:Twenty-eight characters.\xC3", 30);
        if (is("unknown-category"))
            std::memcpy(buffer, "4096:A:Odd", 11);
        return result;
    }
    std::vector<char> getUserBankData(int32 bank, int32 number) override
    {
        auto data = WatchedLibrary::getUserBankData(bank, number);
        if (is("hollow-bank") && bank == 9 && number == 1)
            data.clear();
        if (is("changing-bank") && bank == 9 && number == 1)
            data.back() = static_cast<char>(++banksAsked);
        return data;
    }

    int32 getLatencyMode() override
    {
        return is("no-latency") ? 7 : WatchedLibrary::getLatencyMode();
    }
    int32 getEditorRect(ViewRect* rect) override
    {
        if (is("no-editor"))
            return 1;
        const auto result = WatchedLibrary::getEditorRect(rect);
        if (is("flat-editor"))
            rect->bottom = rect->top;
        return result;
    }
    bool matchRegularExpression(const char* pattern, const char* text) override
    {
        if (is("takes-every-port"))
            return true;
        return !is("knows-no-port") && WatchedLibrary::matchRegularExpression(pattern, text);
    }

    std::vector<char> getStateChunk() override
    {
        happen("state");
        if (is("no-state"))
            return {};
        auto state = WatchedLibrary::getStateChunk();
        if (is("changing-state"))
            state.push_back(static_cast<char>(++statesAsked));
        return state;
    }
    void setStateChunk(const void* data, int32 size) override
    {
        happen("restore");
        if (!is("forgets-state"))
            WatchedLibrary::setStateChunk(data, size);
    }
    int32 getStateFormat() override
    {
        return is("refuses-text") ? 1 : WatchedLibrary::getStateFormat();
    }

    void receiveHostMidi(const uint8* data, int32 length) override
    {
        takeNoteAlone("crash-two-notes", "hang-two-notes");
        misuseCallbacks();
        if (is("long-message") && effect)
            effect->writeMidi("\xF0\x01\x02\xF7", 4);
        if (is("edits-on-audio-thread"))
            callbacks.valueChanged(callbacks.owner, kVolume, 1);
        if (is("stores-on-audio-thread") && controller)
            controller->storeUserBank(VoiceBank::kUser1, 0);
        WatchedLibrary::receiveHostMidi(data, length);
    }

private:
    static bool isRangeless(uint32 id)
    {
        return is("no-ranges") || (is("one-without-range") && id == kVolume);
    }

    /** Calls back in a wrong way, on a thread of its own, which the contract allows. */
    void misuseCallbacks()
    {
        const char* broken = std::getenv("BROKEN");
        if (!broken || std::strncmp(broken, "callback-", 9) != 0)
            return;
        std::thread([this] {
            if (is("callback-foreign-context"))
                callbacks.valueChanged(this, kVolume, 1);
            if (is("callback-unknown-parameter"))
                callbacks.valueChanged(callbacks.owner, 1, 1);
            if (is("callback-tells-value-outside"))
                callbacks.valueChanged(callbacks.owner, kVolume, 128);
            if (is("callback-never-ends-edit") && !std::exchange(begun, true))
                callbacks.beginEdit(callbacks.owner, kLastVolume);
            if (is("callback-ends-unbegun-edit"))
                callbacks.endEdit(callbacks.owner, kVolume);
            if (is("callback-begins-twice")) {
                callbacks.beginEdit(callbacks.owner, kVolume);
                callbacks.beginEdit(callbacks.owner, kVolume);
                callbacks.endEdit(callbacks.owner, kVolume);
            }
            if (is("callback-own-thread"))
                callbacks.valueChanged(callbacks.owner, kVolume, 1);
        }).join();
    }

    VstIControllerInterface* controller = nullptr;
    VstIEffectInterface* effect = nullptr;
    int banksAsked = 0;
    int statesAsked = 0;
    bool begun = false;
};

} // namespace

#define VSTK2X_TEST_EXPORT extern "C" __attribute__((visibility("default")))

VSTK2X_TEST_EXPORT void getVSTEditorConnectObject(VstIEditorConnect** out)
{
    happen("connection");
    static BrokenLibrary* only = nullptr;
    if (is("no-connection") || (only && is("one-instance")))
        return;
    if (only && is("one-connection")) {
        *out = only;
        return;
    }
    VstIEditorConnect* real = nullptr;
    simulator.find<GetEditorConnect>("getVSTEditorConnectObject")(&real);
    *out = only = new BrokenLibrary(*real);
}

VSTK2X_TEST_EXPORT void getVSTObserverObject(VstIObserver** out, void* owner, int vstParamId, int a,
                                             int b, int c, ValueChangedCallback valueChanged,
                                             VstIObserver::ParamModeType mode,
                                             EditCallback beginEdit, EditCallback endEdit)
{
    if (vstParamId == static_cast<int>(kVolume))
        callbacks = {owner, valueChanged, beginEdit, endEdit};
    if (is("no-observers"))
        return;
    simulator.find<GetObserver>("getVSTObserverObject")(out, owner, vstParamId, a, b, c,
                                                        valueChanged, mode, beginEdit, endEdit);
}
