// The service that lends a plug-in the host's editor library, with the simulator as that library.
#include "tools/play/host/EditorService.h"
#include "editorlib/FComponentPtr.h"
#include "editorlib/IExternalPlugin.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"
#include "tools/play/host/HostContext.h"
#include "tools/play/user/Simulator.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;

namespace {

class Plugin final : public U::Implements<U::Directly<IExternalPlugin>> {
public:
    tresult PLUGIN_API setPluginInfo(VstIEditorConnect* connect, void* libraryHandle) override
    {
        connection = connect;
        handle = libraryHandle;
        return kResultOk;
    }
    VstIEditorConnect* connection = nullptr;
    void* handle = nullptr;
};

} // namespace

TEST(EditorService, IsFoundByItsComponentsClassID)
{
    const EditorLibrary library(SIMULATOR_LIBRARY);
    auto service = owned(new EditorService(library));
    HostContext context(parseHostFamily("cubase", true), owned(new RunLoop));
    auto classes = owned(new HostClasses);
    classes->offer(IComponentFactory::iid, owned(new ServiceComponentFactory(service)));
    context.offerExtension(classes);
    {
        FComponentPtr<IExtensionVSTServiceGetter> getter;
        EXPECT_TRUE(getter.initialize(&context, "UID", "BBA9E2BA9E28483CAA608081B0166B85"));
        EXPECT_EQ(getter->getService(), service.get());
    }
    FComponentPtr<IExtensionVSTServiceGetter> other;
    EXPECT_FALSE(other.initialize(&context, "UID", "00000000000000000000000000000000"));
    EXPECT_FALSE(other.initialize(&context, "NAME", "BBA9E2BA9E28483CAA608081B0166B85"));
}

TEST(EditorService, GivesEachPluginAConnectionOfItsOwnAndEndsIt)
{
    const EditorLibrary library(SIMULATOR_LIBRARY);
    auto service = owned(new EditorService(library));
    Plugin first;
    Plugin second;
    EXPECT_EQ(service->registerPlugin(&first), kResultOk);
    EXPECT_EQ(service->registerPlugin(&second), kResultOk);
    EXPECT_NE(first.connection, nullptr);
    EXPECT_NE(second.connection, nullptr);
    EXPECT_NE(first.connection, second.connection);
    EXPECT_EQ(first.handle, library.handle());
    EXPECT_EQ(service->pluginCount(), 2U);

    EXPECT_EQ(service->unregisterPlugin(&first), kResultOk);
    EXPECT_NE(service->unregisterPlugin(&first), kResultOk);
    EXPECT_EQ(service->pluginCount(), 1U);
    EXPECT_NE(findSimulator(SIMULATOR_LIBRARY), nullptr);
    EXPECT_EQ(service->unregisterPlugin(&second), kResultOk);
    EXPECT_EQ(findSimulator(SIMULATOR_LIBRARY), nullptr);
}

TEST(EditorService, EndsTheConnectionsOfPluginsThatNeverLeft)
{
    const EditorLibrary library(SIMULATOR_LIBRARY);
    Plugin plugin;
    {
        auto service = owned(new EditorService(library));
        service->registerPlugin(&plugin);
        EXPECT_NE(findSimulator(SIMULATOR_LIBRARY), nullptr);
    }
    EXPECT_EQ(findSimulator(SIMULATOR_LIBRARY), nullptr);
}

TEST(EditorLibrary, SaysWhatIsWrongWithAFile)
{
    const doubles::ScratchFolder folder;
    const auto sentenceOf = [](const std::string& path) -> std::string {
        try {
            const EditorLibrary library(path);
            return "";
        } catch (const tools::Failure& failure) {
            return failure.what();
        }
    };
    EXPECT_THAT(sentenceOf(folder.file("none")), testing::HasSubstr("is missing."));
    EXPECT_THAT(sentenceOf(folder.write("text", "no library")),
                testing::HasSubstr("cannot be loaded."));
    EXPECT_THAT(sentenceOf("libc.so.6"), testing::HasSubstr("is missing."));
}

TEST(EditorLibrary, TellsWhetherAFileIsLoaded)
{
    EXPECT_FALSE(EditorLibrary::isLoaded(SIMULATOR_LIBRARY));
    const EditorLibrary library(SIMULATOR_LIBRARY);
    EXPECT_TRUE(EditorLibrary::isLoaded(SIMULATOR_LIBRARY));
}
