// LeanHost: host objects that do as little as one can, for both sides of a comparison.
#pragma once

#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"
#include "hostapi/IComponentFactory.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "tests/bench/LeanLibrary.h"

#include "base/source/fstring.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivsthostapplication.h"

#include <vector>

namespace bench {

using Steinberg::FUnknown;
using Steinberg::tresult;
using Steinberg::TUID;
using Steinberg::Vst::ParamID;
using Steinberg::Vst::ParamValue;

/** FUnknown of an object that outlives every use of it and answers for one interface. */
template <class Interface>
class Lean : public Interface {
public:
    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override
    {
        if (!Steinberg::FUnknownPrivate::iidEqual(wanted, Interface::iid)) {
            *obj = nullptr;
            return Steinberg::kNoInterface;
        }
        addRef();
        *obj = static_cast<Interface*>(this);
        return Steinberg::kResultOk;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return ++references; }
    Steinberg::uint32 PLUGIN_API release() override { return --references; }

protected:
    ~Lean() = default;

private:
    Steinberg::uint32 references = 1;
};

class LeanHandler final : public Lean<Steinberg::Vst::IComponentHandler> {
public:
    tresult PLUGIN_API beginEdit(ParamID) override { return Steinberg::kResultOk; }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        lastId = id;
        sum += value;
        return Steinberg::kResultOk;
    }
    tresult PLUGIN_API endEdit(ParamID) override { return Steinberg::kResultOk; }
    tresult PLUGIN_API restartComponent(int32) override { return Steinberg::kResultOk; }

    ParamID lastId = 0;
    double sum = 0;
};

/** The host's name, version and character set. */
class LeanApplication final : public Lean<Steinberg::IHostApplicationW> {
public:
    const char16* PLUGIN_API getApplicationName() override { return STR16("Cubase"); }
    const char16* PLUGIN_API getVersionString() override { return version; }
    tresult PLUGIN_API getCharacterSet() override { return Steinberg::kResultOk; }

    const char16* version = STR16("Version 7.0.0");
};

/** Hands a library over instead of having it loaded from its file. */
class LeanService final : public Lean<Steinberg::IExtensionVSTService> {
public:
    tresult PLUGIN_API registerPlugin(Steinberg::IExternalPlugin* plugin) override
    {
        return plugin->setPluginInfo(library, libraryHandle());
    }
    tresult PLUGIN_API unregisterPlugin(Steinberg::IExternalPlugin*) override
    {
        return Steinberg::kResultOk;
    }

    LeanLibrary* library = nullptr;
};

class LeanServiceGetter final : public Lean<Steinberg::IExtensionVSTServiceGetter> {
public:
    FUnknown* PLUGIN_API getService() override { return &service; }

    LeanService service;
};

class LeanComponents final : public Lean<Steinberg::IComponentFactory> {
public:
    FUnknown* PLUGIN_API createComponent(const char*, const char*) override { return &getter; }
    void PLUGIN_API destroyComponent(FUnknown*) override {}

    LeanServiceGetter getter;
};

/** The host context: the host's messages, a service with the library, and the interfaces that a
    benchmark adds. */
class LeanHost final : public Steinberg::Vst::IHostApplication, public Steinberg::IHostClasses {
public:
    /** @param unicode whether the host is one with Unicode, which tells its name */
    LeanHost(LeanLibrary& library, bool unicode);
    /** A host with Unicode and without the service: the library is loaded from its file. */
    LeanHost() = default;
    virtual ~LeanHost() = default;

    /** @param version zero-terminated, borrowed; before the plug-in is initialized */
    void setVersion(const char16* version) { application.version = version; }

    /** From now on getHostInterface gives this object, which is borrowed. */
    void add(const Steinberg::FUID& id, FUnknown* object) { objects.push_back({id, object}); }

    FUnknown* context() { return static_cast<Steinberg::Vst::IHostApplication*>(this); }

    tresult PLUGIN_API queryInterface(const TUID iid, void** obj) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }
    tresult PLUGIN_API getName(Steinberg::Vst::String128 name) override;
    tresult PLUGIN_API createInstance(TUID cid, TUID wanted, void** obj) override;
    tresult PLUGIN_API getHostInterface(const TUID wanted, void** obj) override;

private:
    struct Object {
        Steinberg::FUID id;
        FUnknown* object;
    };

    LeanComponents components;
    LeanApplication application;
    std::vector<Object> objects;
    bool isUnicode = true;
};

} // namespace bench
