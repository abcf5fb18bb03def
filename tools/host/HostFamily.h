// HostFamily: which host a ScriptedHost, or play, is.
//
//   ScriptedHost host(trace, HostFamily::cubase("7.5.1"));
//   ScriptedHost host(trace, HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
//   auto family = HostFamily::nuendo("6.5.0");    family.versionText = "6.5";
//   ScriptedHost host(trace, family);
#pragma once

#include "tools/host/HostText.h"

namespace Steinberg::Vst::play {

/** What the plug-in can learn of its host. */
struct HostFamily {
    HostText name;        ///< IHostApplicationW's answer, and IHostApplication's
    HostText versionText; ///< IHostApplicationW's answer: "Version 7.5.1", or empty
    bool unicode = true;  ///< character set of all texts, and flavour of devices and values

    // What the host has at the start; ScriptedHost::hide and show change single interfaces later.
    bool hasApplicationW = true;
    bool hasApplicationA = false;
    bool hasExtensions = true; ///< IHostClasses and IComponentPortHandler

    /** "Version 7.5.1" and so on. */
    static HostFamily cubase(const std::string& version) { return named("Cubase", version); }
    static HostFamily nuendo(const std::string& version) { return named("Nuendo", version); }
    static HostFamily cubaseLE(const std::string& version) { return named("Cubase LE", version); }
    static HostFamily standalone() { return named("Standalone", "1.0.0"); }
    static HostFamily named(const std::string& name, const std::string& version)
    {
        HostFamily result;
        result.name = name;
        result.versionText = "Version " + version;
        return result;
    }

    /** An older host whose texts are 8-bit ones, packed into 16-bit units. */
    static HostFamily withoutUnicode(const std::string& name, const std::string& version)
    {
        auto result = named(name, version);
        result.unicode = false;
        return result;
    }

    /** A still older one, of which only IHostApplicationA tells that it is of the family. */
    static HostFamily applicationAOnly()
    {
        auto result = withoutUnicode("Cubase", "3.0.0");
        result.hasApplicationW = false;
        result.hasApplicationA = true;
        return result;
    }

    /** A host that knows VST 3 and nothing else. */
    static HostFamily plain()
    {
        auto result = named("Plain Host", "1.0.0");
        result.hasApplicationW = false;
        result.hasExtensions = false;
        return result;
    }

    /** "Cubase, Version 7.5.1, Unicode" */
    std::string description() const;
};

/** Reads a family from the command line: "cubase:7.5.1", "standalone", ...
    @param unicode whether a host that gives its names gives them in Unicode
    @throws Failure for an unknown family or a version that begins with no digit */
HostFamily parseHostFamily(const std::string& text, bool unicode);

/** Every word that parseHostFamily takes before the colon, separated by commas. */
std::string hostFamilyWords();

} // namespace Steinberg::Vst::play
