// The module's class factory and moduleinfo.json.
#include "tests/doubles/MacsCode.h"
#include "tests/plugin/PlugInFixture.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

struct ClassRow;

class Factory : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(module) << module.refusal();
        ASSERT_TRUE(entry && leave && get);
        ASSERT_TRUE(entry(module.get()));
        factory = owned(get());
        ASSERT_TRUE(factory);
    }

    void TearDown() override
    {
        factory = nullptr;
        EXPECT_TRUE(!leave || leave());
    }

    static std::string hex(const TUID id) { return VST3::UID::fromTUID(id).toString(); }

    void expectClass(int32 index, const ClassRow& row) const;

    tools::LibraryHandle module{MODULE_FILE};
    bool (*entry)(void*) = module.find<bool (*)(void*)>("ModuleEntry");
    bool (*leave)() = module.find<bool (*)()>("ModuleExit");
    IPluginFactory* (*get)() = module.find<IPluginFactory* (*)()>("GetPluginFactory");
    IPtr<IPluginFactory> factory;
};

class ModuleEntry : public Factory {};

/** A host's context whose queryInterface throws. */
class ThrowingContext final : public FUnknown {
public:
    tresult PLUGIN_API queryInterface(const TUID, void**) override { throw 1; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

/** The text in a field of fixed size, whose other bytes must be zeros. */
template <size_t size>
std::string field(const char (&bytes)[size])
{
    std::string text(bytes, size);
    const auto end = text.find('\0');
    if (end == std::string::npos)
        return text + " without terminator";
    if (text.find_first_not_of('\0', end) != std::string::npos)
        return text + " with bytes behind its end";
    return text.substr(0, end);
}

/** What differs between the two classes. */
struct ClassRow {
    const char* id;
    const char* category;
    const char* name;
    uint32 flags;
    const char* subCategories;
};

void Factory::expectClass(int32 index, const ClassRow& row) const
{
    const FUnknownPtr<IPluginFactory2> factory2(factory);
    ASSERT_TRUE(factory2);
    PClassInfo2 info;
    std::memset(static_cast<void*>(&info), 0x55, sizeof(info));
    ASSERT_EQ(factory2->getClassInfo2(index, &info), kResultOk);
    EXPECT_EQ(hex(info.cid), row.id);
    EXPECT_EQ(info.cardinality, 2147483647);
    EXPECT_EQ(field(info.category), row.category);
    EXPECT_EQ(field(info.name), row.name);
    EXPECT_EQ(info.classFlags, row.flags);
    EXPECT_EQ(field(info.subCategories), row.subCategories);
    EXPECT_EQ(field(info.vendor), "");
    EXPECT_EQ(field(info.version), "1.6.6");
    EXPECT_EQ(field(info.sdkVersion), "VST 3.5.0");
}

TEST_F(Factory, GetFactoryInfoNamesTheMaker)
{
    PFactoryInfo info;
    std::memset(static_cast<void*>(&info), 0x55, sizeof(info));
    ASSERT_EQ(factory->getFactoryInfo(&info), kResultOk);
    EXPECT_EQ(field(info.vendor), "Tavrin Corporation");
    EXPECT_EQ(field(info.url), "");
    EXPECT_EQ(field(info.email), "");
    EXPECT_EQ(info.flags, 16);
}

TEST_F(Factory, GetClassInfoDescribesTheProcessorAndThenTheController)
{
    ASSERT_EQ(factory->countClasses(), 2);
    const ClassRow rows[] = {{"13EEE3484D664261B90352CE35DD18B4", "Audio Module Class",
                              "RDL3/RDL5 VST", 2, "Instrument|External|OnlyRT|DSPBased"},
                             {"31DFD31BDBB84D128E0ABBC94E1BB134", "Component Controller Class",
                              "RDL3/RDL5 VST Controller", 0, ""}};
    for (const int32 index : {0, 1}) {
        PClassInfo info;
        ASSERT_EQ(factory->getClassInfo(index, &info), kResultOk);
        EXPECT_EQ(field(info.category), rows[index].category);
        expectClass(index, rows[index]);
    }
    PClassInfo none;
    EXPECT_NE(factory->getClassInfo(2, &none), kResultOk);
    EXPECT_NE(factory->getClassInfo(-1, &none), kResultOk);
}

TEST_F(Factory, GetClassInfoUnicodeSaysTheSame)
{
    const FUnknownPtr<IPluginFactory3> factory3(factory);
    ASSERT_TRUE(factory3);
    const char* names[] = {"RDL3/RDL5 VST", "RDL3/RDL5 VST Controller"};
    for (int32 index = 0; index < 2; ++index) {
        PClassInfoW info{};
        ASSERT_EQ(factory3->getClassInfoUnicode(index, &info), kResultOk);
        EXPECT_EQ(VST3::StringConvert::convert(info.name, 64), names[index]);
        EXPECT_EQ(VST3::StringConvert::convert(info.version, 64), "1.6.6");
        EXPECT_EQ(info.vendor[0], 0);
    }
}

TEST_F(Factory, GetPluginFactoryHandsOutOneObject)
{
    IPluginFactory* second = get();
    EXPECT_EQ(second, factory.get());
    second->addRef();
    EXPECT_EQ(second->release(), 2u);
    EXPECT_EQ(second->countClasses(), 2);
    EXPECT_EQ(second->release(), 1u);
}

TEST_F(Factory, GetPluginFactoryMakesAnotherAfterTheLastRelease)
{
    EXPECT_EQ(factory.take()->release(), 0u);
    factory = owned(get());
    ASSERT_TRUE(factory);
    EXPECT_EQ(factory->countClasses(), 2);
    factory->addRef();
    EXPECT_EQ(factory->release(), 1u);
}

TEST_F(Factory, CreateInstanceGivesTheCallersReferenceOnly)
{
    struct Row {
        VST3::UID id;
        const TUID& face;
    };
    const Row table[] = {{plugin::processorID(), IAudioProcessor::iid},
                         {plugin::processorID(), IComponent::iid},
                         {plugin::processorID(), FUnknown::iid},
                         {plugin::controllerID(), IEditController::iid}};
    for (const auto& row : table) {
        FUnknown* created = nullptr;
        ASSERT_EQ(
            factory->createInstance(row.id.data(), row.face, reinterpret_cast<void**>(&created)),
            kResultOk);
        ASSERT_NE(created, nullptr);
        EXPECT_EQ(created->release(), 0u);
    }
}

TEST_F(Factory, CreateInstanceRefusesOtherClassesAndInterfaces)
{
    FUnknown* created = reinterpret_cast<FUnknown*>(this);
    const auto none = plugin::classID("00000000000000000000000000000001");
    EXPECT_NE(
        factory->createInstance(none.data(), FUnknown::iid, reinterpret_cast<void**>(&created)),
        kResultOk);
    EXPECT_EQ(created, nullptr);
    EXPECT_NE(factory->createInstance(plugin::processorID().data(), IEditController::iid,
                                      reinterpret_cast<void**>(&created)),
              kResultOk);
    EXPECT_EQ(created, nullptr);
}

TEST_F(Factory, SetHostContextLetsNoExceptionOfTheContextOut)
{
    const FUnknownPtr<IPluginFactory3> third(factory);
    ASSERT_TRUE(third);
    ThrowingContext context;
    // Only on Linux the SDK asks the host's context, for a run loop.
    const auto expected = doubles::kIsMacsCode ? kNotImplemented : kResultFalse;
    EXPECT_NO_THROW(EXPECT_EQ(third->setHostContext(&context), expected));
    EXPECT_NO_THROW(third->setHostContext(nullptr));
}

TEST_F(ModuleEntry, AndExitTakeANullHandleAndAnyNumberOfCalls)
{
    EXPECT_TRUE(entry(nullptr));
    for (int call = 0; call < 4; ++call)
        EXPECT_TRUE(leave()); // two more exits than entries
    EXPECT_TRUE(entry(module.get()));
    EXPECT_TRUE(entry(module.get()));
    EXPECT_EQ(factory->countClasses(), 2);
}

TEST_F(ModuleEntry, AndExitLeaveTheModuleToBeUnloaded)
{
    EXPECT_TRUE(entry(module.get()));
    factory = nullptr;
    EXPECT_TRUE(leave());
    EXPECT_TRUE(leave());
    module.close();
    leave = nullptr;
    EXPECT_FALSE(tools::LibraryHandle::isLoaded(MODULE_FILE));
}

class ModuleInfo : public Factory {
protected:
    void SetUp() override
    {
        Factory::SetUp();
        std::ifstream file(BUNDLE_FOLDER "/Contents/Resources/moduleinfo.json");
        ASSERT_TRUE(file) << "the bundle has no moduleinfo.json";
        // The SDK's tool writes a comma behind the last element, which strict readers refuse.
        std::string text((std::istreambuf_iterator<char>(file)), {});
        for (size_t comma = text.find(','); comma != std::string::npos;) {
            const auto next = text.find_first_not_of(" \t\r\n", comma + 1);
            if (next != std::string::npos && (text[next] == ']' || text[next] == '}'))
                text[comma] = ' ';
            comma = text.find(',', comma + 1);
        }
        json = nlohmann::json::parse(text, nullptr, false);
        ASSERT_FALSE(json.is_discarded()) << text;
    }

    nlohmann::json json;
};

TEST_F(ModuleInfo, NamesTheSameMakerAsTheFactory)
{
    PFactoryInfo info;
    factory->getFactoryInfo(&info);
    const auto& written = json["Factory Info"];
    EXPECT_EQ(written["Vendor"], info.vendor);
    EXPECT_EQ(written["URL"], info.url);
    EXPECT_EQ(written["E-Mail"], info.email);
    EXPECT_EQ(written["Flags"]["Unicode"], true);
    EXPECT_EQ(json["Version"], "1.6.6");
}

TEST_F(ModuleInfo, ListsTheSameClassesAsTheFactory)
{
    const auto& classes = json["Classes"];
    ASSERT_EQ(classes.size(), static_cast<size_t>(factory->countClasses()));
    const FUnknownPtr<IPluginFactory2> factory2(factory);
    for (int32 index = 0; index < 2; ++index) {
        PClassInfo2 info;
        factory2->getClassInfo2(index, &info);
        const auto& written = classes[static_cast<size_t>(index)];
        EXPECT_EQ(written.at("CID"), hex(info.cid));
        EXPECT_EQ(written.at("Category"), info.category);
        EXPECT_EQ(written.at("Name"), info.name);
        EXPECT_EQ(written.at("Version"), info.version);
        EXPECT_EQ(written.at("SDKVersion"), info.sdkVersion);
        EXPECT_EQ(written.at("Class Flags"), info.classFlags);
        EXPECT_EQ(written.at("Cardinality"), info.cardinality);
        std::string categories;
        for (const auto& category : written.value("Sub Categories", nlohmann::json::array()))
            categories += (categories.empty() ? "" : "|") + category.get<std::string>();
        EXPECT_EQ(categories, info.subCategories);
    }
}

} // namespace
