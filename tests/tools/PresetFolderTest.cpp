#include "tools/make-presets/PresetFolder.h"

#include "tests/doubles/GoldenBytes.h"
#include "tests/doubles/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace Steinberg::Vst;

TEST(PresetFolder, IsWholeRefusesAFileThatIsCutAnywhere)
{
    const doubles::TemporaryHome home;
    const makepresets::PresetFolder folder(VstK2xPresetCreater::kUserFolder, true);
    const auto whole = doubles::goldenBytes("voice");
    for (size_t size = 0; size <= whole.size(); ++size) {
        std::ofstream(folder.staging() + "/A.vstpreset", std::ios::binary) << whole.substr(0, size);
        EXPECT_EQ(folder.isWhole("A"), size == whole.size()) << size << " bytes";
    }
}
