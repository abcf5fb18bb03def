// HostCallsScene: a host with up to two instances of the plug-in. It creates, connects, uses and
// ends them in any order. Each operation reads what it needs from the input, and checks what a host
// may rely on. close() gives everything back, and no reference may be missing or left.
#pragma once

#include "controller/VstK2xController.h"
#include "processor/VstK2x.h"
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/fuzz/EditorLibraryFile.h"
#include "tests/fuzz/FuzzInput.h"

#include "public.sdk/source/main/pluginfactory.h"

#include <deque>

namespace fuzz {

class HostCallsScene {
public:
    /** Reads from the input which host it is and where the editor library is. */
    explicit HostCallsScene(FuzzInput& bytes);
    HostCallsScene(const HostCallsScene&) = delete;
    HostCallsScene& operator=(const HostCallsScene&) = delete;

    /** One operation. */
    void step();

    /** What a host does at its end, whatever was left open. */
    void close();

private:
    using VstK2xController = Steinberg::Vst::VstK2xController;
    using VstK2x = Steinberg::Vst::VstK2x;
    using IConnectionPoint = Steinberg::Vst::IConnectionPoint;

    static constexpr size_t kInstances = 2;
    static constexpr size_t kViews = 3;

    struct Controller {
        Steinberg::IPtr<VstK2xController> object;
        bool initialized = false; ///< initialize was called since the last terminate
        bool bound = false;       ///< ... and gave success
    };
    struct Processor {
        Steinberg::IPtr<VstK2x> object;
        bool initialized = false;
    };
    struct View {
        Steinberg::IPtr<Steinberg::IPlugView> object;
        bool attached = false;
    };

    // HostCallsScene.cpp: the host, the library, the end.
    void setUpTracks();
    void setUpPorts();
    Steinberg::Vst::VstIEditorConnect* newLibrary();
    doubles::ScriptedLibrary& anyLibrary();
    void checkAfterStep() const;
    void checkAtEnd() const;

    // HostCallsLife.cpp: creation, connection, end.
    void createController();
    void releaseController();
    void initializeController();
    void terminateController();
    void terminate(Controller& controller);
    void createProcessor();
    void releaseProcessor();
    void initializeProcessor();
    void terminateProcessor();
    void connectController() { join(controller(), &IConnectionPoint::connect, true); }
    void disconnectController() { join(controller(), &IConnectionPoint::disconnect, true); }
    void connectProcessor() { join(processor(), &IConnectionPoint::connect, false); }
    void disconnectProcessor() { join(processor(), &IConnectionPoint::disconnect, false); }
    template <class End>
    void join(End& end, Steinberg::tresult (IConnectionPoint::*operation)(IConnectionPoint*),
              bool isController)
    {
        auto* peer = anyPeer(isController);
        if (end.object)
            (end.object->*operation)(peer);
    }
    void setHandler();
    void createView();
    void releaseView();
    void useView();

    // HostCallsUse.cpp: what goes on in between.
    void activate();
    void process();
    void moveProcessorState();
    void setControllerState();
    void useParameters();
    void useUnits();
    void useExtension();
    void tick();
    void turnKnob();
    void callController();
    void callPorts(Steinberg::Vst::VstIControllerInterface& controller, const char** ids);
    void callProcessor();
    void moveTracks();
    void changeAnswers();
    void changeService();
    void fail();
    void nest();

    Controller& controller() { return controllers[input.below(kInstances)]; }
    Processor& processor() { return processors[input.below(kInstances)]; }
    View& view() { return views[input.below(kViews)]; }
    IConnectionPoint* anyPeer(bool ofController);
    unsigned anyParameter();
    bool isAlive(const Steinberg::Vst::VstIEffectInterface* effect) const;
    bool isAlive(const Steinberg::Vst::VstIControllerInterface* face) const;

    FuzzInput& input;
    doubles::Trace trace;
    doubles::ScriptedHost host;
    doubles::InProcessLibrary serviceLibrary{trace};
    std::deque<doubles::ScriptedLibrary> fileLibraries; ///< one for each time the file was opened
    EditorLibraryFile file;
    Steinberg::CPluginFactory factory{Steinberg::PFactoryInfo()};
    Controller controllers[kInstances];
    Processor processors[kInstances];
    View views[kViews];
    bool everOffered = false; ///< a service: then not every library is the plug-in's to close
    bool faulty = false;      ///< a call failed that clean-up rests on
    bool nested = false;      ///< a call came from inside another
    bool inNested = false;
};

} // namespace fuzz
