#include "tools/play/plugin/PresetLoader.h"

#include "public.sdk/source/vst/vstpresetfile.h"
#include "tools/common/Failure.h"

#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace play {

void loadPreset(const std::string& path, const tools::PlugIn& plugIn, tools::Instance& instance)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw tools::Failure("There is no preset file \"" + path + "\".");
    const auto stream = owned(FileStream::open(path.c_str(), "rb"));
    if (!stream)
        throw tools::Failure("The preset \"" + path + "\" cannot be read.");
    PresetFile file(stream);
    if (!file.readChunkList())
        throw tools::Failure("\"" + path + "\" is not a VST 3 preset.");
    const auto classID = FUID::fromTUID(plugIn.instrument().ID().data());
    if (file.getClassID() != classID)
        throw tools::Failure("\"" + path + "\" is a preset of another plug-in.");
    stream->seek(0, IBStream::kIBSeekSet, nullptr);
    if (!PresetFile::loadPreset(stream, classID, &instance.component(), &instance.controller()))
        throw tools::Failure("The plug-in refuses the preset \"" + path + "\".");
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
