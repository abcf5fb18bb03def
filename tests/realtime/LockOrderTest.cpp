// The plug-in's threads take its locks in one order, so that they cannot wait for each other.
#include "processor/VstK2x.h"
#include "tests/realtime/CallRecord.h"
#include "tests/unit/BoundController.h"
#include "tests/unit/ProcessorFixture.h"

#include "public.sdk/source/common/memorystream.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;

namespace {

/** For each lock the locks that were taken while it was held. */
using Order = std::map<const void*, std::set<const void*>>;

/** Adds what a thread did. Leaves out a lock that its holder takes again, and one that is only
    tried, because no thread waits for them. */
void addOrder(const CallRecord& record, Order& order)
{
    std::vector<const void*> held;
    for (const auto& entry : record) {
        if (entry.kind == CallRecord::kLock || entry.kind == CallRecord::kTryLock) {
            for (const void* outer : held)
                if (outer != entry.object && entry.kind == CallRecord::kLock)
                    order[outer].insert(entry.object);
            held.push_back(entry.object);
        } else if (entry.kind == CallRecord::kUnlock) {
            const auto last = std::find(held.rbegin(), held.rend(), entry.object);
            if (last != held.rend())
                held.erase(std::next(last).base());
        }
    }
}

/** Whether to was taken while from was held, directly or by way of other locks. */
bool leadsTo(const Order& order, const void* from, const void* to, std::set<const void*>& seen)
{
    const auto next = order.find(from);
    if (next == order.end() || !seen.insert(from).second)
        return false;
    for (const void* lock : next->second)
        if (lock == to || leadsTo(order, lock, to, seen))
            return true;
    return false;
}

bool hasCircle(const Order& order)
{
    for (const auto& [lock, inner] : order) {
        std::set<const void*> seen;
        if (leadsTo(order, lock, lock, seen))
            return true;
    }
    return false;
}

class LockOrder : public testing::TestWithParam<bool> {
protected:
    LockOrder()
    {
        bound.initialize();
        processor = owned(new VstK2x);
        processor->initialize(&bound.host.context);
        processor->connect(bound.controller);
        bound.controller->connect(processor);
        processor->setActive(true);
    }
    ~LockOrder() override
    {
        bound.host.onCall = nullptr;
        bound.controller->disconnect(processor);
        processor->disconnect(bound.controller);
        processor->terminate();
        bound.end();
    }

    template <typename Procedure>
    void record(const Procedure& procedure)
    {
        one->clear();
        {
            const Recording recording(*one);
            procedure();
        }
        EXPECT_EQ(one->getHeld(), 0u);
        addOrder(*one, order);
    }

    BoundController bound{GetParam() ? HostFamily::cubase("7.5.1")
                                     : BoundController::withoutUnicode()};
    IPtr<VstK2x> processor;
    std::unique_ptr<CallRecord> one = std::make_unique<CallRecord>();
    Order order;
};

INSTANTIATE_TEST_SUITE_P(DirectAndQueued, LockOrder, testing::Bool(), [](const auto& tested) {
    return tested.param ? "InAUnicodeHost" : "InAnyOtherHost";
});

TEST_P(LockOrder, TheCallsOfAllThreadsTakeLocksInOneOrder)
{
    auto& controller = *bound.controller;
    auto& toController = *bound.library.controller;
    // A host that reads and writes parameters while the plug-in tells it of an edit.
    bound.host.onCall = [&](const std::string& text) {
        int value = 0;
        if (text.rfind("host.performEdit", 0) == 0)
            toController.isSetVSTValue(kVolume1, 0.25, value);
        if (text.rfind("host.endEdit", 0) == 0)
            controller.setParamNormalized(kVolume1, 0.5);
    };
    bound.library.observer(kVolume1)->atCheck = [&] {
        editorBeginEditCallBack(&controller, kVolume1);
        editorValueChange(&controller, kVolume1, 4);
        editorEndEditCallBack(&controller, kVolume1);
    };
    const uint8 note[] = {0x90, 60, 127};
    bound.library.onCall = [&](const std::string& text) {
        if (text.rfind("library.receiveHostMidi", 0) == 0)
            bound.library.effect->writeMidi(note, sizeof(note));
    };
    record([&] { editorValueChange(&controller, kVolume1, 1); });
    record([&] { toController.setVSTManageParameter(kVolume1, 3); });
    record([&] { editorEditFlagChange(&controller, kEditFlag, 1); });
    record([&] { bound.tick(); });
    record([&] { bound.library.effect->writeMidi(note, sizeof(note)); });
    record([&] {
        unit::Block block;
        block.in.add(noteOn(0, 60, 1));
        processor->process(block.data);
        EXPECT_EQ(block.out.events.size(), 2u);
    });
    record([&] { processor->getLatencySamples(); });
    record([&] { toController.changeLatencyTrigger(); });
    record([&] {
        MemoryStream state;
        processor->getState(&state);
    });
    record([&] { controller.disconnect(processor); });
    record([&] { controller.connect(processor); });
    bound.library.observer(kVolume1)->atCheck = nullptr;
    bound.library.onCall = nullptr;
    EXPECT_FALSE(order.empty());
    EXPECT_FALSE(hasCircle(order));
}

/** drainQueue takes "ParameterFlag" while it holds "GuiEventLocker". */
TEST_P(LockOrder, EditorValueChangeReleasesParameterFlagBeforeItTakesGuiEventLocker)
{
    if (GetParam())
        return; // A Unicode host has no queue.
    CallRecord queue;
    {
        const Recording recording(queue);
        bound.controller->editorBeginEdit(1);
    }
    // Other locks are taken first, to ask what the host is. The queue's lock is the last one.
    const void* guiEventLock = nullptr;
    for (const auto& entry : queue)
        if (entry.kind == CallRecord::kLock)
            guiEventLock = entry.object;
    record([&] { editorValueChange(bound.controller, kVolume1, 4); });
    bool taken = false;
    size_t held = 0;
    for (const auto& entry : *one) {
        if (entry.kind == CallRecord::kLock && entry.object == guiEventLock) {
            taken = true;
            EXPECT_EQ(held, 0u);
        }
        held += entry.kind == CallRecord::kLock ? 1 : 0;
        held -= entry.kind == CallRecord::kUnlock ? 1 : 0;
    }
    EXPECT_TRUE(taken);
}

TEST(LockOrderTest, HasCircleFindsTwoOppositeOrders)
{
    std::mutex first;
    std::mutex second;
    const auto record = [](std::mutex& outer, std::mutex& inner, Order& order) {
        const auto one = std::make_unique<CallRecord>();
        {
            const Recording recording(*one);
            const std::lock_guard<std::mutex> outerGuard(outer);
            const std::lock_guard<std::mutex> innerGuard(inner);
        }
        addOrder(*one, order);
    };
    Order order;
    record(first, second, order);
    EXPECT_FALSE(hasCircle(order));
    record(second, first, order);
    EXPECT_TRUE(hasCircle(order));
}

} // namespace
