// HostFamily: which host a ScriptedHost plays.
//
//   ScriptedHost host(trace, HostFamily::cubase("7.5.1"));
//   ScriptedHost host(trace, HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
//   auto family = HostFamily::nuendo("6.5.0");    family.versionText = "6.5";
//   ScriptedHost host(trace, family);
#pragma once

#include "tests/doubles/HostText.h"

namespace doubles {

struct HostFamily {
    HostText name;        ///< IHostApplicationW's answer, and IHostApplication's
    HostText versionText; ///< IHostApplicationW's answer
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
};

} // namespace doubles
