// InProcessLibrary: a scripted library whose entry points are in the test program itself, for tests
// of the controller without a library's file.
//
//   doubles::InProcessLibrary library(trace);
//   host.service.offer(&library, library.handle());   // the controller looks its entries up there
//
// One at a time in a program.
#pragma once

#include "tests/doubles/ScriptedLibrary.h"

namespace doubles {

class InProcessLibrary final : public ScriptedLibrary {
public:
    explicit InProcessLibrary(Trace& trace);
    ~InProcessLibrary() override;

    /** A handle of dlopen, in which dlsym finds getVSTEditorConnectObject and getVSTObserverObject.
        Both give this object's. Valid as long as this object. */
    void* handle() const { return program; }

private:
    void* program;
};

} // namespace doubles
