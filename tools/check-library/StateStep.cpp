// The step that saves the library's state and restores it, as a project does.
#include "basics/CallGuard.h"
#include "editorlib/ConnectionMessages.h"
#include "processor/VstK2x.h"
#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/check-library/Tally.h"

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

using Bytes = std::vector<char>;

constexpr int kTicksToTell = 5;

/** The plug-in's own processor, which puts the library's state into projects. */
class Project {
public:
    explicit Project(VstIEditorConnect& library)
    : processor(owned(new VstK2x))
    {
        VstIEditorConnect* connection = &library;
        HostMessage message;
        message.setMessageID(kConnectMessageID);
        message.getAttributes()->setBinary(kConnectAttributeID, &connection, sizeof(void*));
        processor->notify(&message);
    }
    ~Project()
    {
        HostMessage message;
        message.setMessageID(kDisconnectMessageID);
        processor->notify(&message);
    }
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;

    Bytes save()
    {
        MemoryStream stream;
        if (processor->getState(&stream) != kResultOk)
            return {};
        return {stream.getData(), stream.getData() + stream.getSize()};
    }

    bool load(Bytes bytes)
    {
        MemoryStream stream(bytes.data(), static_cast<TSize>(bytes.size()));
        return processor->setState(&stream) == kResultOk;
    }

private:
    IPtr<VstK2x> processor;
};

/** Moves a parameter to its other end for as long as this object lives, or a state brings it
    back. */
class MovedParameter {
public:
    explicit MovedParameter(Life& newLife)
    : life(newLife)
    , id(mirroredParameters().front().id)
    , before(life.plugIn().normalized(id))
    {
        life.automate(id, before < 0.5 ? 1 : 0);
        life.tick();
    }
    ~MovedParameter() { life.automate(id, before); }
    MovedParameter(const MovedParameter&) = delete;
    MovedParameter& operator=(const MovedParameter&) = delete;

private:
    Life& life;
    const unsigned id;
    const double before;
};

int32 valueOf(Life& life, unsigned id)
{
    return guarded<int32>(0, [&] { return life.library().getParameterValue(id); });
}

/** Gives the plug-in the library's present values. */
void refresh(Life& life)
{
    for (const auto& parameter : mirroredParameters())
        life.plugIn().refresh(parameter.id, valueOf(life, parameter.id));
}

/** Says whether the plug-in has learned of every value that has changed since refresh. */
void tellWhatWasTold(Life& life, bool changed, Journal& journal)
{
    Tally untold;
    for (const auto& parameter : mirroredParameters())
        if (valueOf(life, parameter.id) != life.plugIn().mirrored(parameter.id))
            untold.add(parameter.title);
    sayIf(journal, untold, Verdict::bad, "restored-state",
          "The plug-in is not told, neither by checkChange nor by setVSTManageParameter, that a "
          "restored state changed ",
          ": the host goes on showing the old value.");
    if (untold)
        return;
    journal.say({changed ? Verdict::good : Verdict::remark,
                 "restored-state",
                 changed ? "The plug-in learns of each value that a restored state changes."
                         : "Whether a restored state is told was not tried: automation does not "
                           "change the state.",
                 "",
                 {}});
}

} // namespace

void saveState(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    life.observeAll();
    Project project(life.library());
    const auto first = project.save();
    const auto header = 2 * sizeof(int32);
    const nlohmann::ordered_json facts = {
        {"bytes", first.size() > header ? first.size() - header : 0}};
    if (first.empty())
        return journal.say(bad("state", "Its state cannot be saved: projects remember nothing."));
    if (first.size() == header)
        return journal.say(remark(
            "state", "It has no state to save: projects remember nothing of the sound.", facts));
    const MovedParameter moved(life);
    const bool changed = project.save() != first;
    refresh(life);
    if (!project.load(first))
        return journal.say(bad("state",
                               "It refuses the state that it gave: projects do not open with "
                               "their sound."));
    life.tick(kTicksToTell);
    if (project.save() != first)
        return journal.say(bad("state",
                               "Its state is another one after it was restored: projects do not "
                               "bring their sound back."));
    journal.say(good("state",
                     "Its state of " + facts["bytes"].dump() + " bytes " +
                         (changed ? "comes back as it was, after it was changed."
                                  : "is the same after it was restored."),
                     facts));
    if (options.strict)
        tellWhatWasTold(life, changed, journal);
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
