// TrackScene: a host with tracks, the editor library, and the controller's TrackRouting.
#pragma once

#include "controller/TrackRouting.h"
#include "hostapi/IHostClasses.h"
#include "tests/doubles/HostAndLibraryDouble.h"

#include <gmock/gmock.h>

#include <string>

inline const std::string kPlugIn = "RDL3/RDL5 VST";
constexpr auto kRoutedHere = "Synth 1 - RDL3/RDL5 VST";
constexpr auto kRoutedElsewhere = "Synth 2 - Other VST";

/** Ends the observation and checks that the host has every reference and dependent back. */
struct TrackScene {
    explicit TrackScene(const doubles::HostFamily& family)
    : host(trace, family)
    , library(trace)
    , context(host, &library)
    , routing(context, context.dependent)
    {
        context.onUpdate = [this](Steinberg::FUnknown* object, Steinberg::int32 message) {
            routing.update(object, message);
        };
    }
    TrackScene(const TrackScene&) = delete;
    TrackScene& operator=(const TrackScene&) = delete;
    ~TrackScene()
    {
        host.onCall = nullptr;
        host.clearFaults();
        routing.stopObserving(&host.updates);
        context.release();
        EXPECT_THAT(host.ledger(), testing::IsEmpty());
        EXPECT_THAT(library.complaints(), testing::IsEmpty());
    }

    /** Does what initialize does, and clears the trace. */
    void start()
    {
        routing.readHostVersion();
        routing.startObserving();
        trace.clear();
    }

    Steinberg::IPtr<Steinberg::IHostClasses> hostClasses()
    {
        return Steinberg::FUnknownPtr<Steinberg::IHostClasses>(&host.context);
    }

    std::vector<std::string> calls(const std::vector<std::string>& prefixes) const
    {
        return trace.textsOf(prefixes);
    }
    std::vector<std::string> synced() const { return calls({"library.sync"}); }

    doubles::Trace trace;
    doubles::ScriptedHost host;
    doubles::ScriptedLibrary library;
    doubles::HostAndLibraryDouble context;
    Steinberg::Vst::TrackRouting routing;
};

/** Here the text of a track's output says what the track plays. */
inline doubles::HostFamily olderHost()
{
    return doubles::HostFamily::cubase("7.4.0");
}

/** Here the instrument rack says what a track plays. */
inline doubles::HostFamily newerHost()
{
    return doubles::HostFamily::cubase("7.5.1");
}
