// Counted: a HostObject with its interfaces. Facet: an interface of a larger object. It has a
// reference count of its own, so that the ledger names the interface that was not released.
//
//   class Registry final : public Counted<IPortRegistry> { using Counted::Counted; ... };
#pragma once

#include "editorlib/ReservedSlots.h"
#include "tests/doubles/HostBooks.h"

#include <tuple>

namespace doubles {

template <class... Interfaces>
class Counted : public HostObject, public Steinberg::ReservedSlots<Interfaces>... {
public:
    using HostObject::HostObject;

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried, void** obj) override
    {
        *obj = nullptr;
        if (!books.isOffered(getName(), queried))
            return Steinberg::kNoInterface;
        if (books.script.toldWithoutObject())
            return Steinberg::kResultOk;
        *obj = face(queried);
        return *obj ? Steinberg::kResultOk : Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return countUp(); }
    Steinberg::uint32 PLUGIN_API release() override { return countDown(); }

    Steinberg::FUnknown* unknown() override
    {
        return static_cast<std::tuple_element_t<0, std::tuple<Interfaces...>>*>(this);
    }

protected:
    /** The interface as a new reference, or null. */
    virtual void* face(const Steinberg::TUID queried)
    {
        void* result = isFUnknown(queried) ? unknown() : nullptr;
        ((result = !result && Steinberg::FUnknownPrivate::iidEqual(queried, Interfaces::iid)
                       ? static_cast<Interfaces*>(this)
                       : result),
         ...);
        if (result)
            addRef();
        return result;
    }

    void reserved(int slot) final { called(("reserved" + std::to_string(slot)).c_str()); }

    static bool isFUnknown(const Steinberg::TUID queried)
    {
        return Steinberg::FUnknownPrivate::iidEqual(queried, Steinberg::FUnknown::iid);
    }
};

/** Asked for another interface, it asks the larger object. */
template <class Interface>
class Facet : public Counted<Interface> {
public:
    Facet(HostBooks& host, const std::string& facetName, HostObject& object)
    : Counted<Interface>(host, facetName)
    , whole(object)
    {
    }
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried, void** obj) override
    {
        return whole.unknown()->queryInterface(queried, obj);
    }

private:
    HostObject& whole;
};

/** A new reference to an object's interface, for face() and getHostInterface. */
template <class Interface>
Interface* newReference(Interface* object)
{
    object->addRef();
    return object;
}

} // namespace doubles
