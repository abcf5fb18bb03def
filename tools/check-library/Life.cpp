#include "tools/check-library/Life.h"

#include "basics/CallGuard.h"
#include "editorlib/EditorLibraryNames.h"
#include "tools/common/Failure.h"

#include <array>
#include <thread>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr int32 kAnyHost = 2;
constexpr std::chrono::milliseconds kTimerPeriod{5}; // shorter than the plug-in's, to save time

std::string nameOf(const char* operation, unsigned id)
{
    return std::string(operation) + " of the observer of " + std::to_string(id);
}

} // namespace

WatchedFile::WatchedFile(const std::string& path, Journal& newJournal, int mode)
: journal(newJournal)
{
    const Entered entered(journal, "the file's own start (dlopen)");
    file.emplace(path, mode);
}

WatchedFile::~WatchedFile()
{
    if (!*file)
        return;
    const Entered entered(journal, "the file's own end (dlclose)");
    file->close();
}

Life::Life(const std::string& file, Journal& newJournal)
: journal(newJournal)
, handle(file, journal, RTLD_LAZY)
{
    const auto connect = handle->connectEntry();
    if (!connect)
        throw tools::Failure("It cannot be loaded: " + handle->refusal() + ".");
    VstIEditorConnect* connection = nullptr;
    {
        const Entered entered(journal, connectFuncName);
        try {
            connect(&connection);
        } catch (const std::exception& error) {
            throw tools::Failure(std::string(connectFuncName) +
                                 " throws an exception: " + error.what() + ".");
        } catch (...) {
            throw tools::Failure(std::string(connectFuncName) + " throws an exception.");
        }
    }
    if (!connection)
        throw tools::Failure(std::string(connectFuncName) + " gives no connection.");
    watched.emplace(*connection, journal);
    guarded([this] { watched->setControllerInterface(&standIn); });
    guarded([this] { watched->setHostType(kAnyHost); });
    guarded([this] { watched->start(); });
}

Life::~Life()
{
    takeBack();
    destroy();
}

bool Life::observe(const MirroredParameter& parameter)
{
    const auto entry = handle->observerEntry();
    if (!entry)
        return false;
    VstIObserver* observer = nullptr;
    {
        const Entered entered(journal, std::string(observerFuncName) + " for " +
                                           std::to_string(parameter.id));
        guarded([&] {
            entry(&observer, &standIn, static_cast<int>(parameter.id), parameter.block,
                  parameter.number, parameter.part, StandIn::valueChanged, parameter.mode,
                  StandIn::beginEdit, StandIn::endEdit);
        });
    }
    guarded([&] { watched->addObserver(observer); });
    observers.emplace_back(parameter.id, observer);
    return observer != nullptr;
}

void Life::observeAll()
{
    for (const auto& parameter : mirroredParameters()) {
        observe(parameter);
        const auto ask = [&](int32 (VstIEditorConnect::*operation)(uint32)) {
            return guarded<int32>(0, [&] { return (*watched.*operation)(parameter.id); });
        };
        const auto maximum = ask(&VstIEditorConnect::getParameterMax);
        const auto minimum = ask(&VstIEditorConnect::getParameterMin);
        standIn.mirror(parameter.id, minimum, maximum, ask(&VstIEditorConnect::getParameterValue));
    }
    guarded([this] { watched->parametersReady(); });
}

void Life::tick(int times)
{
    for (int round = 0; round < times; ++round) {
        for (const auto& [id, observer] : observers) {
            if (!observer)
                continue;
            const Entered entered(journal, nameOf("checkChange", id));
            guarded([seen = observer] { seen->checkChange(); });
        }
        std::this_thread::sleep_for(kTimerPeriod);
    }
}

template <typename Call>
void Life::onAudioThread(Call&& call)
{
    std::thread audio([&] {
        const AudioThreadMark mark;
        guarded(std::forward<Call>(call));
    });
    audio.join();
}

void Life::automate(unsigned id, double value)
{
    onAudioThread([&] { watched->hostParameterChanged(id, value); });
}

void Life::playNote(uint8 pitch)
{
    onAudioThread([&] {
        const std::array<uint8, 3> on = {0x90, pitch, 127};
        const std::array<uint8, 3> off = {0x80, pitch, 0};
        guarded([&] { watched->receiveHostMidi(on.data(), static_cast<int32>(on.size())); });
        watched->receiveHostMidi(off.data(), static_cast<int32>(off.size()));
    });
}

void Life::giveEffect()
{
    hasEffect = true;
    guarded([this] { watched->setEffectInterface(&standIn); });
    guarded([this] { watched->setEffectOption(false); });
}

void Life::takeBack()
{
    if (std::exchange(isTakenBack, true))
        return;
    if (hasEffect) {
        guarded([this] { watched->setEffectInterface(nullptr); });
        standIn.takeBackEffect();
    }
    guarded([this] { watched->setControllerInterface(nullptr); });
    standIn.takeBackController();
    for (const auto& [id, observer] : observers) {
        if (!observer)
            continue;
        guarded([this, taken = observer] { watched->removeObserver(taken); });
        const Entered entered(journal, nameOf("destroy", id));
        guarded([taken = observer] { taken->destroy(); });
    }
    observers.clear();
    standIn.takeBackObservers();
}

void Life::destroy()
{
    if (!watched)
        return;
    guarded([this] { watched->destroy(); });
    watched.reset();
}

void Life::leaveToOther()
{
    isTakenBack = true;
    watched.reset();
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
