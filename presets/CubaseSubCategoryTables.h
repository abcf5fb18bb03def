// For each synth category, the media browser's records by the synth's sub-category.
#pragma once

#include "presets/CubaseCategory.h"

namespace Steinberg {
namespace Vst {
namespace Cubase {
namespace SubCategory {

using List = const SubCategoryCharacter*;

namespace Piano {
extern const List Piano_SubCategoryArray[kSubCategoryCount];
}
namespace Keyboard {
extern const List Keyboard_SubCategoryArray[kSubCategoryCount];
}
namespace Organ {
extern const List Organ_SubCategoryArray[kSubCategoryCount];
}
namespace GuitarPlucked {
extern const List GuitarPlucked_SubCategoryArray[kSubCategoryCount];
}
namespace Bass {
extern const List Bass_SubCategoryArray[kSubCategoryCount];
}
namespace Strings {
extern const List Strings_SubCategoryArray[kSubCategoryCount];
}
namespace Brass {
extern const List Brass_SubCategoryArray[kSubCategoryCount];
}
namespace Woodwinds {
extern const List Woodwinds_SubCategoryArray[kSubCategoryCount];
}
namespace SynthLead {
extern const List SynthLead_SubCategoryArray[kSubCategoryCount];
}
namespace SynthPad {
extern const List SynthPad_SubCategoryArray[kSubCategoryCount];
}
namespace SynthComp {
extern const List SynthComp_SubCategoryArray[kSubCategoryCount];
}
namespace ChromaticPerc {
extern const List ChromaticPerc_SubCategoryArray[kSubCategoryCount];
}
namespace DrumPerc {
extern const List DrumPerc_SubCategoryArray[kSubCategoryCount];
}
namespace SoundFX {
extern const List SoundFX_SubCategoryArray[kSubCategoryCount];
}
namespace MusicalFX {
extern const List MusicalFX_SubCategoryArray[kSubCategoryCount];
}
namespace Ethnic {
extern const List Ethnic_SubCategoryArray[kSubCategoryCount];
}
namespace Vocoder {
extern const List Vocoder_SubCategoryArray[kSubCategoryCount];
}
namespace Other {
extern const List Other_SubCategoryArray[kSubCategoryCount];
}

} // namespace SubCategory
} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
