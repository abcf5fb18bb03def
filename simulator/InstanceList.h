// InstanceList: the instruments that live in this process.
#pragma once

#include "simulator/SimulatedLibrary.h"
#include "simulator/SimulatedUser.h"

#include <list>
#include <mutex>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** One for the process. [any thread] */
class InstanceList {
public:
    static InstanceList& get();

    /** Makes an instrument. @return its object for the plug-in, which calls destroy at the end */
    VstIEditorConnect* create();
    /** @param index 0 is the oldest, -1 the newest @return null when there is none */
    SimulatorControl* control(int index);

    /** Deletes the instruments that no plug-in has destroyed. Called at the end of the process,
        when nobody uses them any more. */
    void drop();

private:
    struct Instance;

    void end(const Instance* ended);

    std::mutex mutex;
    int created = 0;               ///< how many instruments were made so far
    std::list<Instance> instances; ///< newest last; as a list it owns no memory when empty
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
