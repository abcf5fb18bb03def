// EditorConnection: the editor library, loaded for as long as this object lives.
#pragma once

#include "tools/common/LibraryHandle.h"
#include "tools/common/SilentController.h"

#include <string>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

namespace makepresets {

/** Loads the library and starts it as the plug-in does in a host of no special family. */
class EditorConnection {
public:
    /** @throws Failure when there is no such library or it gives no connection */
    explicit EditorConnection(const std::string& file);
    ~EditorConnection();
    EditorConnection(const EditorConnection&) = delete;
    EditorConnection& operator=(const EditorConnection&) = delete;

    VstIEditorConnect& get() const { return *connection; }

private:
    tools::SilentController controller;
    tools::LibraryHandle library;
    VstIEditorConnect* connection = nullptr;
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
