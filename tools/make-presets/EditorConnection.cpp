#include "tools/make-presets/EditorConnection.h"

#include "basics/CallGuard.h"
#include "editorlib/EditorLibraryNames.h"
#include "editorlib/EntryPoints.h"
#include "editorlib/VstIEditorConnect.h"
#include "tools/common/Failure.h"

#include <dlfcn.h>

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

constexpr int32 kAnyHost = 2;

/** The library's own words, which name the file. */
std::string loaderMessage()
{
    const char* message = dlerror();
    return message ? message : "unknown reason";
}

VstIEditorConnect* connectionOf(void* handle)
{
    const auto entry = reinterpret_cast<GetEditorConnect>(dlsym(handle, connectFuncName));
    VstIEditorConnect* connection = nullptr;
    if (entry)
        guarded([&] { entry(&connection); });
    return connection;
}

} // namespace

EditorConnection::EditorConnection(const std::string& file)
{
    // A name without a folder would be looked for where the system keeps its libraries.
    const auto path = file.find('/') == std::string::npos ? "./" + file : file;
    handle = dlopen(path.c_str(), RTLD_LAZY);
    if (!handle)
        throw tools::Failure("The editor library cannot be loaded: " + loaderMessage() + ".");
    connection = connectionOf(handle);
    if (!connection) {
        dlclose(handle);
        throw tools::Failure("'" + file + "' is no editor library: it gives no connection.");
    }
    guarded([this] { connection->setControllerInterface(&controller); });
    guarded([this] { connection->setHostType(kAnyHost); });
    guarded([this] { connection->start(); });
}

EditorConnection::~EditorConnection()
{
    guarded([this] { connection->setControllerInterface(nullptr); });
    guarded([this] { connection->destroy(); });
    dlclose(handle);
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
