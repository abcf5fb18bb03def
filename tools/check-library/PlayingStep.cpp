// The step that plays a note and asks for the latency, the editor's size and the ports.
#include "basics/CallGuard.h"
#include "controller/PortNames.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"

#include <algorithm>
#include <array>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr int kTicksToAnswer = 10;
constexpr uint8 kMiddleC = 60;

void tellNotes(Life& life, Journal& journal)
{
    life.giveEffect();
    life.playNote(kMiddleC);
    const auto volume = mirroredParameters().front().id;
    life.automate(volume, life.plugIn().normalized(volume)); // stays where it is
    life.tick(kTicksToAnswer);
    const auto back = life.plugIn().midiMessages();
    journal.say(good("notes",
                     "A note on part 1 reached it; " + std::to_string(back) +
                         (back == 1 ? " message came" : " messages came") +
                         " back for \"Midi Out\".",
                     {{"midiOut", back}}));
    if (const auto dropped = life.plugIn().droppedMessages())
        journal.say(
            remark("notes",
                   "Messages of another length than three bytes do not get through: it sent " +
                       std::to_string(dropped) + ".",
                   {{"dropped", dropped}}));
}

void tellLatency(VstIEditorConnect& library, Journal& journal)
{
    const auto mode = guarded<int32>(-1, [&] { return library.getLatencyMode(); });
    std::string text = "Its latency mode is " + std::to_string(mode) + ": ";
    if (mode == 0 || mode == 1)
        text += "1 ms in hosts of the Cubase family, none in others.";
    else if (mode == 2)
        text += "5 ms in hosts of the Cubase family, none in others.";
    else
        text += "no latency is reported.";
    journal.say(good("latency", text, {{"mode", mode}}));
}

void tellEditor(VstIEditorConnect& library, Journal& journal)
{
    ViewRect rect;
    const auto answer = guarded<int32>(1, [&] { return library.getEditorRect(&rect); });
    const auto width = static_cast<int64>(rect.right) - rect.left;
    const auto height = static_cast<int64>(rect.bottom) - rect.top;
    const auto size = std::to_string(width) + " x " + std::to_string(height);
    if (answer != 0)
        return journal.say(
            remark("editor", "It has no editor to show: the plug-in's window stays empty."));
    if (width <= 0 || height <= 0)
        return journal.say(bad("editor",
                               "Its editor has no size (" + size + "): nobody can see it.",
                               kTellMaker, {{"width", width}, {"height", height}}));
    journal.say(good("editor", "Its editor is " + size + " pixels; it was not opened here.",
                     {{"width", width}, {"height", height}}));
}

bool isTakenForOwn(VstIEditorConnect& library, const char* port)
{
    return std::any_of(kBasicPortNameRE.begin(), kBasicPortNameRE.end(), [&](const char* pattern) {
        return guarded(false, [&] { return library.matchRegularExpression(pattern, port); });
    });
}

void tellPorts(VstIEditorConnect& library, bool isStrict, Journal& journal)
{
    guarded([&] { library.getFirstStartState(); });
    guarded([&] { library.isDisplayAudioPort("Tavrin RDL3/RDL5 1"); });
    guarded([&] { library.onHostPortsReady(true); });
    guarded([&] { library.onInitialStartFileLoad(false); });
    const auto takes = [&](const char* port) { return isTakenForOwn(library, port); };
    constexpr std::array own = {"Tavrin RDL3/RDL5 Port4", "Tavrin RDL3/RDL5 2 Port1",
                                "Tavrin RDL3/RDL5 Tavrin RDL3/RDL5 3 Port4"};
    constexpr std::array others = {"Port4", "Tavrin RDL3/RDL5 Port6", "Another Port4"};
    for (const auto* port : others)
        if (takes(port))
            return journal.say({isStrict ? Verdict::bad : Verdict::remark,
                                "ports",
                                std::string("It takes a port for the instrument's own that is not: "
                                            "\"") +
                                    port + "\".",
                                isStrict ? kTellMaker : "",
                                {}});
    const auto known = std::count_if(own.begin(), own.end(), takes);
    if (known == static_cast<std::ptrdiff_t>(own.size()))
        return journal.say(good("ports", "It knows the instrument's MIDI ports by name."));
    journal.say(remark(
        "ports", "It does not know the instrument's MIDI ports by name: in hosts of the Cubase "
                 "family the fourth one stays among \"All MIDI Inputs\"."));
}

} // namespace

void playNote(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    life.observeAll();
    tellNotes(life, journal);
    tellLatency(life.library(), journal);
    tellEditor(life.library(), journal);
    tellPorts(life.library(), options.strict, journal);
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
