// PortScene: a host with ports, the editor library, and the controller's PortManager.
#pragma once

#include "controller/PortManager.h"
#include "hostapi/IHostClasses.h"
#include "tests/doubles/HostAndLibraryDouble.h"

#include <gmock/gmock.h>

/** Checks at its end that the host has every reference back. */
struct PortScene {
    explicit PortScene(const doubles::HostFamily& family = doubles::HostFamily::cubase("7.5.1"))
    : host(trace, family)
    , library(trace)
    , context(host, &library)
    , ports(context)
    {
    }
    PortScene(const PortScene&) = delete;
    PortScene& operator=(const PortScene&) = delete;
    ~PortScene()
    {
        context.release();
        EXPECT_THAT(host.ledger(), testing::IsEmpty());
        EXPECT_THAT(library.complaints(), testing::IsEmpty());
    }

    /** "ID=name" of each listed port. */
    std::vector<std::string> audioList() { return textsOf(*ports.getAudioPortList()); }
    std::vector<std::string> midiList() { return textsOf(*ports.getMidiOutPortList()); }

    void setAudio(const char* first, const char* second, const char* third, const char* fourth)
    {
        const char* ids[] = {first, second, third, fourth};
        ports.setAudioPortList(ids);
    }

    /** Runs act without IPortRegistry, without IHostClasses and without a host context. */
    template <class Act>
    void withoutPorts(const Act& act)
    {
        without(Steinberg::IPortRegistry::iid, act);
        without(Steinberg::IHostClasses::iid, act);
        context.hostContext.set(nullptr);
        act();
        context.hostContext.set(&host.context);
    }
    /** Runs act without IComponentPortHandler and without a component handler. */
    template <class Act>
    void withoutPortHandler(const Act& act)
    {
        without(Steinberg::IComponentPortHandler::iid, act);
        context.componentHandler.set(nullptr);
        act();
        context.componentHandler.set(&host.handler);
    }

    std::vector<std::string> calls(const std::vector<std::string>& prefixes) const
    {
        return trace.textsOf(prefixes);
    }

    doubles::Trace trace;
    doubles::ScriptedHost host;
    doubles::ScriptedLibrary library;
    doubles::HostAndLibraryDouble context;
    Steinberg::Vst::PortManager ports;

private:
    template <class Act>
    void without(const Steinberg::FUID& iid, const Act& act)
    {
        host.hide(iid);
        act();
        host.show(iid);
    }

    template <class Info>
    static std::vector<std::string> textsOf(const std::vector<Info>& list)
    {
        std::vector<std::string> result;
        for (const Info& info : list)
            result.push_back(info.portId + "=" + info.portName);
        return result;
    }
};
