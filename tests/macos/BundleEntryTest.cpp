#include "module/mac/BundleEntry.h"

#include "module/ModuleInit.h"
#include "tests/macos/fakes/FakeCoreFoundation.h"

#include <gtest/gtest.h>

#include <cstring>

extern "C" {
bool bundleEntry(CFBundleRef ref);
bool bundleExit();
}

using doubles::FakeCoreFoundation;

namespace {

constexpr const char* kPath = "/Library/Audio/Plug-Ins/VST3/RDL3_RDL5 VST.vst3";

class BundleEntryTest : public testing::Test {
protected:
    BundleEntryTest()
    {
        FakeCoreFoundation::reset();
        ghInst = nullptr;
        moduleHandle = nullptr;
        gPath[0] = 0;
    }
    ~BundleEntryTest() override
    {
        EXPECT_EQ(FakeCoreFoundation::misuses(), 0u);
        FakeCoreFoundation::reset();
    }
};

TEST_F(BundleEntryTest, BundleEntryStoresNothingForNullAndSucceeds)
{
    EXPECT_TRUE(bundleEntry(nullptr));
    EXPECT_EQ(ghInst, nullptr);
    EXPECT_EQ(moduleHandle, nullptr);
    EXPECT_STREQ(gPath, "");
    EXPECT_TRUE(bundleExit());
}

TEST_F(BundleEntryTest, BundleEntryKeepsTheReferenceAndThePath)
{
    const CFBundleRef bundle = FakeCoreFoundation::makeBundle(kPath);
    EXPECT_TRUE(bundleEntry(bundle));
    EXPECT_TRUE(bundleEntry(nullptr)) << "which changes nothing";
    EXPECT_EQ(ghInst, bundle);
    EXPECT_EQ(moduleHandle, bundle);
    EXPECT_STREQ(gPath, kPath);
    EXPECT_EQ(FakeCoreFoundation::references(bundle), 2);
    EXPECT_TRUE(FakeCoreFoundation::resolvedAgainstBase);
    EXPECT_EQ(FakeCoreFoundation::pathBufferSize, 2048);
    // Only the bundle is left: its URL was released.
    EXPECT_EQ(FakeCoreFoundation::liveObjects(), 1u);

    EXPECT_TRUE(bundleExit());
    EXPECT_EQ(FakeCoreFoundation::references(bundle), 1);
    CFRelease(bundle);
}

TEST_F(BundleEntryTest, BundleEntryKeepsOnlyAPathThatFits)
{
    const std::string longest(2047, 'a');
    for (const std::optional<std::string>& path :
         {std::optional<std::string>(), {longest}, {longest + "a"}, {longest + "aa"}}) {
        const CFBundleRef bundle = FakeCoreFoundation::makeBundle(path);
        EXPECT_TRUE(bundleEntry(bundle));
        EXPECT_EQ(ghInst, bundle);
        EXPECT_EQ(gPath, path == longest ? longest : "");
        EXPECT_TRUE(bundleExit());
        CFRelease(bundle);
        EXPECT_EQ(FakeCoreFoundation::liveObjects(), 0u);
    }
}

TEST_F(BundleEntryTest, BundleExitReleasesOneReferenceEachTime)
{
    const CFBundleRef bundle = FakeCoreFoundation::makeBundle(kPath);
    for (CFIndex entries = 1; entries <= 3; ++entries) {
        EXPECT_TRUE(bundleEntry(bundle));
        EXPECT_EQ(FakeCoreFoundation::references(bundle), 1 + entries);
    }
    for (CFIndex left = 2; left >= 0; --left) {
        EXPECT_TRUE(bundleExit());
        EXPECT_EQ(FakeCoreFoundation::references(bundle), 1 + left);
    }
    EXPECT_EQ(FakeCoreFoundation::liveObjects(), 1u);
    CFRelease(bundle);
}

TEST_F(BundleEntryTest, BundleExitReleasesNothingWhenCalledTooOften)
{
    EXPECT_TRUE(bundleExit());
    const CFBundleRef bundle = FakeCoreFoundation::makeBundle(kPath);
    EXPECT_TRUE(bundleEntry(bundle));
    EXPECT_TRUE(bundleExit());
    EXPECT_TRUE(bundleExit());
    EXPECT_EQ(FakeCoreFoundation::references(bundle), 1);
    CFRelease(bundle);
}

TEST_F(BundleEntryTest, BundleEntryReplacesTheFirstBundle)
{
    const CFBundleRef first = FakeCoreFoundation::makeBundle("/first");
    const CFBundleRef second = FakeCoreFoundation::makeBundle("/second");
    EXPECT_TRUE(bundleEntry(first));
    EXPECT_TRUE(bundleEntry(second));
    EXPECT_EQ(ghInst, second);
    EXPECT_EQ(moduleHandle, second);
    EXPECT_STREQ(gPath, "/second");
    EXPECT_TRUE(bundleExit());
    EXPECT_TRUE(bundleExit());
    EXPECT_EQ(FakeCoreFoundation::references(first), 1);
    EXPECT_EQ(FakeCoreFoundation::references(second), 1);
    CFRelease(first);
    CFRelease(second);
}

} // namespace
