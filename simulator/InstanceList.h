// InstanceList: the instruments that live in this process.
#pragma once

#include "simulator/EditorLibrary.h"
#include "simulator/SimulatedUser.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** [any thread] */
class InstanceList {
public:
    static InstanceList& get();

    /** A new instrument's face for the plug-in, which ends it with destroy. */
    VstIEditorConnect* create();
    /** @param index 0 is the oldest, -1 the newest @return null when there is none */
    SimulatorControl* control(int index);

private:
    struct Instance;

    InstanceList();
    ~InstanceList();
    void end(const Instance* ended);

    std::mutex mutex;
    int created = 0;                                  ///< instruments so far
    std::vector<std::unique_ptr<Instance>> instances; ///< newest last
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
