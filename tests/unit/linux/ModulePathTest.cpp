// Where the module says that it is, by its entry point for Linux hosts.
#include "module/ModuleInit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

/** A folder that goes with the test. */
class ModulePath : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "module-path-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = fs::canonical(name);
    }
    void TearDown() override
    {
        fs::current_path(before);
        fs::remove_all(folder);
    }

    static fs::path fileIn(const fs::path& bundle)
    {
        return bundle / "Contents" / "x86_64-linux" / "Plug-in.so";
    }

    static void install(const fs::path& bundle)
    {
        fs::create_directories(fileIn(bundle).parent_path());
        fs::copy_file(MODULE_ENTRY_FILE, fileIn(bundle));
    }

    /** A path in the folder of exactly this length. */
    fs::path bundleOfLength(size_t length) const
    {
        std::string path = folder.string();
        while (length - path.size() > 250)
            path += "/" + std::string(200, 'd');
        path += "/" + std::string(length - path.size() - 1, 'b');
        return path;
    }

    const fs::path before = fs::current_path();
    fs::path folder;
};

/** The module, loaded and ended as a host does. */
class Module {
public:
    explicit Module(const fs::path& file)
    : handle(dlopen(file.c_str(), RTLD_LAZY))
    {
        EXPECT_NE(handle, nullptr) << dlerror();
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module()
    {
        if (!handle)
            return;
        EXPECT_TRUE(find<bool()>("ModuleExit")());
        dlclose(handle);
    }

    bool enter(void* given) const { return find<bool(void*)>("ModuleEntry")(given); }
    bool enter() const { return enter(handle); }
    std::string path() const { return find<char>("gPath"); }
    void* kept() const { return *find<void*>("moduleHandle"); }

    void* const handle;

private:
    template <typename Symbol>
    Symbol* find(const char* name) const
    {
        return reinterpret_cast<Symbol*>(dlsym(handle, name));
    }
};

TEST_F(ModulePath, IsTheBundlesOwn)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    const Module module(fileIn(bundle));
    EXPECT_TRUE(module.enter());
    EXPECT_EQ(module.path(), bundle.string());
    EXPECT_EQ(module.kept(), module.handle);
}

TEST_F(ModulePath, IsWholeInAHostThatLoadsFromItsOwnFolder)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    fs::current_path(bundle / "Contents" / "x86_64-linux");
    const Module module("./Plug-in.so");
    EXPECT_TRUE(module.enter());
    EXPECT_EQ(module.path(), bundle.string());
}

TEST_F(ModulePath, IsWrittenWithoutDetours)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    fs::create_directories(bundle / "Contents" / "MacOS");
    fs::create_directories(folder / "host" / "bin");
    fs::current_path(folder / "host" / "bin");
    const std::string name = bundle.filename().string();
    for (const std::string& file :
         {"../.././" + name + "//Contents/./x86_64-linux/Plug-in.so",
          "../../" + name + "/Contents/MacOS/../x86_64-linux/../x86_64-linux/Plug-in.so",
          "/../../.." + bundle.string() + "/Contents/x86_64-linux///././Plug-in.so"}) {
        const Module module(file);
        EXPECT_TRUE(module.enter());
        EXPECT_EQ(module.path(), bundle.string()) << file;
    }
}

TEST_F(ModulePath, IsWholeInAHostThatRunsInTheRootFolder)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    fs::current_path("/");
    const Module module(bundle.string().substr(1) + "/Contents/x86_64-linux/Plug-in.so");
    EXPECT_TRUE(module.enter());
    EXPECT_EQ(module.path(), bundle.string());
}

TEST_F(ModulePath, IsTheLinksWhereTheBundleIsLinked)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(folder / "store" / "bundle");
    fs::create_directory_symlink(folder / "store" / "bundle", bundle);
    const Module module(fileIn(bundle));
    EXPECT_TRUE(module.enter());
    EXPECT_EQ(module.path(), bundle.string());
}

TEST_F(ModulePath, IsNotKnownAfterANullHandle)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    const Module module(fileIn(bundle));
    EXPECT_TRUE(module.enter(nullptr));
    EXPECT_EQ(module.path(), "");
    EXPECT_EQ(module.kept(), nullptr);
    EXPECT_TRUE(module.enter());
    EXPECT_TRUE(module.enter(nullptr));
    EXPECT_EQ(module.path(), bundle.string());
    EXPECT_EQ(module.kept(), module.handle);
}

TEST_F(ModulePath, IsLeftOutInAHostWhoseFolderIsGone)
{
    const auto bundle = folder / "RDL3_RDL5 VST.vst3";
    install(bundle);
    fs::current_path(bundle / "Contents" / "x86_64-linux");
    const Module module("./Plug-in.so");
    fs::remove_all(bundle);
    EXPECT_TRUE(module.enter());
    EXPECT_EQ(module.path(), "");
}

TEST_F(ModulePath, IsLeftOutWhereItDoesNotFitAndTheModuleWorksAllTheSame)
{
    for (const size_t length : {kMaxModulePath - 1, kMaxModulePath, kMaxModulePath + 100}) {
        const auto bundle = bundleOfLength(length);
        ASSERT_EQ(bundle.string().size(), length);
        install(bundle);
        const Module module(fileIn(bundle));
        EXPECT_TRUE(module.enter());
        EXPECT_EQ(module.path(), length < kMaxModulePath ? bundle.string() : "");
        EXPECT_EQ(module.kept(), module.handle);
    }
}

} // namespace
