#include "tools/host/EditorService.h"

#include "editorlib/EditorLibraryNames.h"
#include "editorlib/IExternalPlugin.h"

#include <algorithm>
#include <cstring>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
/** The service component's class ID, as FUID::toString writes it. */
constexpr const char* kServiceComponentID = "BBA9E2BA9E28483CAA608081B0166B85";
} // namespace

EditorService::~EditorService()
{
    for (const auto& [plugin, connection] : connections)
        connection->destroy();
}

tresult PLUGIN_API EditorService::registerPlugin(IExternalPlugin* plugin)
{
    if (!plugin)
        return kInvalidArgument;
    auto* connection = connect();
    if (!connection)
        return kResultFalse;
    connections.emplace_back(plugin, connection);
    return plugin->setPluginInfo(connection, handle);
}

tresult PLUGIN_API EditorService::unregisterPlugin(IExternalPlugin* plugin)
{
    const auto found = std::find_if(connections.begin(), connections.end(),
                                    [&](const auto& entry) { return entry.first == plugin; });
    if (found == connections.end())
        return kResultFalse;
    found->second->destroy();
    connections.erase(found);
    return kResultOk;
}

tresult PLUGIN_API EditorService::queryInterface(const TUID wanted, void** obj)
{
    QUERY_INTERFACE(wanted, obj, FUnknown::iid, IExtensionVSTService)
    *obj = nullptr;
    return kNoInterface;
}

uint32 PLUGIN_API EditorService::release()
{
    const auto left = --references;
    if (left == 0)
        delete this;
    return left;
}

FUnknown* PLUGIN_API ServiceComponentFactory::createComponent(const char* key, const char* value)
{
    if (!service || !key || !value || std::strcmp(key, kServiceKey) != 0 ||
        std::strcmp(value, kServiceComponentID) != 0)
        return nullptr;
    return new EditorServiceGetter(service);
}

void PLUGIN_API ServiceComponentFactory::destroyComponent(FUnknown* component)
{
    if (component)
        component->release();
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
