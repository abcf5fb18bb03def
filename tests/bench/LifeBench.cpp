// A whole life of an instance.
#include "basics/Utf.h"
#include "editorlib/EntryPoints.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"
#include "tests/doubles/Parameters.h"

#include "base/thread/include/flock.h"
#include "public.sdk/source/vst/vstparameters.h"

#include <dlfcn.h>
#include <malloc.h>
#include <map>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kAskedForStepCount = 2 * doubles::kParts + 1; ///< two a part, and the edit flag
constexpr auto kTitle = "Assignable Function 16-1";

/** The SDK's parameter, with the lock and the texts of an editor's parameter. */
class BareParameter final : public Parameter {
public:
    explicit BareParameter(ParamID id)
    {
        utf8ToString128(kTitle, info.title);
        info.id = id;
    }

    Base::Thread::FLock lock;
    std::vector<std::string> texts;
};

/** The calls of a life into the library, in their order, and what it must keep of the answers. */
class BareLife {
public:
    explicit BareLife(LeanLibrary& lean)
    : library(opaque(lean))
    {
        library.attachService();
        library.setControllerInterface(nullptr);
        library.setHostType(2);
        library.start();
        for (uint32 id = 0; id < doubles::kParameters; ++id)
            addParameter(id);
        library.setEffectInterface(nullptr);
        library.setEffectOption(false);
        for (auto& [id, parameter] : parametersByID)
            askValue(*parameter);
        library.parametersReady();
    }
    ~BareLife()
    {
        library.setEffectInterface(nullptr);
        library.setControllerInterface(nullptr);
        library.detachService();
        for (VstIObserver* observer : observers) {
            library.removeObserver(observer);
            observer->destroy();
        }
    }
    BareLife(const BareLife&) = delete;
    BareLife& operator=(const BareLife&) = delete;

private:
    void addParameter(uint32 id)
    {
        addObserver(id);
        auto* parameter = new BareParameter(id);
        parameters.addParameter(parameter);
        parametersByID[id] = parameter;
        if (id < kAskedForStepCount)
            parameter->getInfo().stepCount = library.getParameterStepCount(id);
        const int32 highest = library.getParameterMax(id);
        const int32 lowest = library.getParameterMin(id);
        askValue(*parameter);
        parameter->texts.resize(static_cast<size_t>(highest - lowest) + 1);
        for (int32 value = lowest; value <= highest; ++value)
            library.getParameterValueString(id, value,
                                            parameter->texts[static_cast<size_t>(value - lowest)]);
    }

    /** The entry point is looked up for each, which is the library's contract. */
    void addObserver(uint32 id)
    {
        const auto makeObserver =
            reinterpret_cast<GetObserver>(dlsym(libraryHandle(), "getVSTObserverObject"));
        VstIObserver* observer = nullptr;
        makeObserver(&observer, this, static_cast<int>(id), 37, 12, 0, nullptr,
                     VstIObserver::ParamModePart, nullptr, nullptr);
        library.addObserver(observer);
        observers.push_back(observer);
    }

    void askValue(BareParameter& parameter)
    {
        const Base::Thread::FGuard guard(parameter.lock);
        parameter.setNormalized(library.getParameterValue(parameter.getInfo().id) / 127.0);
    }

    VstIEditorConnect& library;
    ParameterContainer parameters;
    std::map<ParamID, BareParameter*> parametersByID;
    std::vector<VstIObserver*> observers;
};

/** As in a host that has just started: the heap has no free memory, so that every page comes from
    the system. */
void releaseFreeMemory()
{
    malloc_trim(0);
}

void wholeLife(benchmark::State& state, void (*prepare)())
{
    LeanLibrary library;
    BenchHost host(library, false);
    compare(state, 1, {[&] { const LinkedInstance instance(host); }, prepare},
            {[&] { const BareLife bare(library); }, prepare});
}

} // namespace

void addLifeLines()
{
    addLine({"create, initialize ... terminate, destroy", "library calls, what is kept of them",
             Unit::seconds, 1.3},
            [](benchmark::State& state) { wholeLife(state, [] {}); });
    addLine({"the same, in fresh memory", "the same, in fresh memory", Unit::seconds, 1.3},
            [](benchmark::State& state) { wholeLife(state, releaseFreeMemory); });
}

} // namespace bench
