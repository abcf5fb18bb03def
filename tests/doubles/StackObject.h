// StackObject: a host's object with one interface, on the test's stack.
//
//   class Stream final : public StackObject<IBStream> { ... };
//   EXPECT_EQ(stream.getReferences(), 1);
#pragma once

#include "pluginterfaces/base/funknown.h"

#include <atomic>

namespace doubles {

/** Starts with one reference, which is the test's; release deletes nothing. [any thread] */
template <class Interface>
class StackObject : public Interface {
public:
    StackObject() = default;
    StackObject(const StackObject&) = delete;
    StackObject& operator=(const StackObject&) = delete;
    virtual ~StackObject() = default;

    int getReferences() const { return references; }

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried, void** obj) override
    {
        using Steinberg::FUnknownPrivate::iidEqual;
        const bool known =
            iidEqual(queried, Steinberg::FUnknown::iid) || iidEqual(queried, Interface::iid);
        *obj = known ? static_cast<Interface*>(this) : nullptr;
        references += known ? 1 : 0;
        return known ? Steinberg::kResultOk : Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return static_cast<unsigned>(++references); }
    Steinberg::uint32 PLUGIN_API release() override { return static_cast<unsigned>(--references); }

private:
    std::atomic<int> references{1};
};

} // namespace doubles
