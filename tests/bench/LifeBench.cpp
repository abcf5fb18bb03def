// A whole life of an instance.
#include "editorlib/EntryPoints.h"
#include "tests/bench/Instance.h"
#include "tests/bench/Lines.h"
#include "tests/bench/Table.h"

#include <dlfcn.h>

namespace bench {

namespace {

using namespace Steinberg::Vst;

constexpr int kParameters = 225;
constexpr int kAskedForStepCount = 33; ///< two a part, and the edit flag

/** The calls into the library that a life makes, in a life's order. */
class BareLife {
public:
    explicit BareLife(LeanLibrary& lean)
    : library(opaque(lean))
    , makeObserver(reinterpret_cast<GetObserver>(dlsym(libraryHandle(), "getVSTObserverObject")))
    {
    }

    void live()
    {
        library.attachService();
        library.setControllerInterface(nullptr);
        library.setHostType(2);
        library.start();
        for (uint32 id = 0; id < kParameters; ++id)
            askForParameter(id);
        library.setEffectInterface(nullptr);
        library.setEffectOption(false);
        for (uint32 id = 0; id < kParameters; ++id)
            values += library.getParameterValue(id);
        library.parametersReady();
        library.setEffectInterface(nullptr);
        library.setControllerInterface(nullptr);
        library.detachService();
        for (VstIObserver* observer : observers) {
            library.removeObserver(observer);
            observer->destroy();
        }
    }

    int32 values = 0;

private:
    void askForParameter(uint32 id)
    {
        makeObserver(&observers[id], this, static_cast<int>(id), 37, 12, 0, nullptr,
                     VstIObserver::ParamModePart, nullptr, nullptr);
        library.addObserver(observers[id]);
        if (id < kAskedForStepCount)
            values += library.getParameterStepCount(id);
        const int32 highest = library.getParameterMax(id);
        const int32 lowest = library.getParameterMin(id);
        values += library.getParameterValue(id);
        for (int32 value = lowest; value <= highest; ++value)
            library.getParameterValueString(id, value, text);
    }

    VstIEditorConnect& library;
    GetObserver makeObserver;
    std::array<VstIObserver*, kParameters> observers = {};
    std::string text;
};

void wholeLife(benchmark::State& state)
{
    LeanLibrary library;
    LeanHost host(library, false);
    BareLife bare(library);
    compare(state, 1, {[&] { const Instance instance(host); }}, {[&] { bare.live(); }});
}

} // namespace

void addLifeLines()
{
    addLine(
        {"create, initialize ... terminate, destroy", "the same library calls", Unit::seconds, 1.3},
        wholeLife);
}

} // namespace bench
