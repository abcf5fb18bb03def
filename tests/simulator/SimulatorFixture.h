// SimulatorTest: a test of the built library, loaded as the plug-in loads it, with one editor.
#pragma once

#include "tests/simulator/Listeners.h"
#include "tests/simulator/LoadedSimulator.h"
#include "tests/simulator/ObserverTrace.h"

#include <gtest/gtest.h>
#include <vector>

namespace doubles {

/** One editor of the built library; the destructor destroys it unless the test has done so. */
class SimulatorTest : public testing::Test {
protected:
    static constexpr uint32 volume1 = 37012000;
    static constexpr uint32 pan1 = 37013000;
    static constexpr uint32 editFlag = 201005000;

    SimulatorTest()
    {
        library.connect(&editor);
        user = library.control(-1);
    }
    ~SimulatorTest() override
    {
        if (editor)
            editor->destroy();
    }

    VstIObserver* observe(uint32 id, void* owner)
    {
        VstIObserver* observer = nullptr;
        library.observe(&observer, owner, static_cast<int>(id), 0, 0, 0, traceValue,
                        VstIObserver::ParamModePart, traceBegin, traceEnd);
        return observer;
    }

    void watch(Trace& trace, const std::vector<uint32>& ids)
    {
        for (const uint32 id : ids) {
            observers.push_back(observe(id, &trace));
            ASSERT_EQ(0, editor->addObserver(observers.back()));
        }
    }
    void tick()
    {
        for (auto* observer : observers)
            observer->checkChange();
    }
    void stopWatching()
    {
        for (auto* observer : observers) {
            editor->removeObserver(observer);
            observer->destroy();
        }
        observers.clear();
    }

    LoadedSimulator library;
    VstIEditorConnect* editor = nullptr;
    SimulatorControl* user = nullptr;
    std::vector<VstIObserver*> observers;
};

} // namespace doubles
