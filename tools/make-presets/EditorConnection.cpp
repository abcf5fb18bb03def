#include "tools/make-presets/EditorConnection.h"

#include "basics/CallGuard.h"
#include "editorlib/VstIEditorConnect.h"
#include "tools/common/Failure.h"

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

constexpr int32 kAnyHost = 2;

} // namespace

EditorConnection::EditorConnection(const std::string& file)
: library(file)
{
    if (!library)
        throw tools::Failure("The editor library cannot be loaded: " + library.refusal() + ".");
    if (const auto entry = library.connectEntry())
        guarded([&] { entry(&connection); });
    if (!connection)
        throw tools::Failure("'" + file + "' is no editor library: it gives no connection.");
    guarded([this] { connection->setControllerInterface(&controller); });
    guarded([this] { connection->setHostType(kAnyHost); });
    guarded([this] { connection->start(); });
}

EditorConnection::~EditorConnection()
{
    guarded([this] { connection->setControllerInterface(nullptr); });
    guarded([this] { connection->destroy(); });
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
