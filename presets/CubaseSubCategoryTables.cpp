#include "presets/CubaseSubCategoryTables.h"

// A record is sub-category, character, search words. Each list is named after its records and
// begins with its default. The arrays are in the order of the synth's sub-categories. The search
// words are spelled as in the instrument's voice names, in which they are looked for.

namespace Steinberg {
namespace Vst {
namespace Cubase {
namespace SubCategory {
namespace {

constexpr SubCategoryCharacter End = {nullptr, nullptr, nullptr};

constexpr SubCategoryCharacter JustOther[] = {{"Other", "", nullptr}, End};
constexpr SubCategoryCharacter Analog[] = {{"Analog", "", nullptr}, End};
constexpr SubCategoryCharacter Digital[] = {{"Digital", "", nullptr}, End};
constexpr SubCategoryCharacter Section[] = {{"Section", "", nullptr}, End};
constexpr SubCategoryCharacter Synth[] = {{"Synth", "", nullptr}, End};

} // namespace

// clang-format off
namespace Piano {
namespace {
constexpr const char* searchWordsAPiano[] = {"CP", nullptr};

constexpr SubCategoryCharacter APiano[] = {{"A. Piano", "Acoustic", nullptr}, End};
constexpr SubCategoryCharacter OtherLayer[] = {{"Other", "Layer", nullptr}, End};
constexpr SubCategoryCharacter EGrandAPiano[] = {
    {"E. Grand", "", nullptr},
    {"A. Piano", "Acoustic", searchWordsAPiano},
    End};
} // namespace

constexpr List Piano_SubCategoryArray[kSubCategoryCount] = {
    APiano,       // Acoustic
    OtherLayer,   // Layer
    JustOther,    // Modern
    EGrandAPiano, // Vintage
    JustOther,    // Arpeggio
    JustOther,    // No Assign
};
} // namespace Piano

namespace Keyboard {
namespace {
constexpr const char* searchWordsHarpsichord[] = {"psicohord", nullptr};

constexpr SubCategoryCharacter EPiano[] = {{"E. Piano", "Electric", nullptr}, End};
constexpr SubCategoryCharacter ClaviHarpsichord[] = {
    {"Clavi", "", nullptr},
    {"Harpsichord", "", searchWordsHarpsichord},
    End};
} // namespace

constexpr List Keyboard_SubCategoryArray[kSubCategoryCount] = {
    EPiano,           // Electric Piano
    EPiano,           // FM Piano
    ClaviHarpsichord, // Clavi
    JustOther,        // Synth
    JustOther,        // Arpeggio
    JustOther,        // No Assign
};
} // namespace Keyboard

namespace Organ {
namespace {
constexpr const char* searchWordsAccordion[] = {"Accordion", nullptr};

constexpr SubCategoryCharacter Electric[] = {{"Electric", "", nullptr}, End};
constexpr SubCategoryCharacter PipeAccordion[] = {
    {"Pipe", "", nullptr},
    {"Accordion", "", searchWordsAccordion},
    End};
} // namespace

constexpr List Organ_SubCategoryArray[kSubCategoryCount] = {
    Electric,      // Tone Wheel
    Electric,      // Combo
    PipeAccordion, // Pipe
    JustOther,     // Synth
    JustOther,     // Arpeggio
    nullptr,       // No Assign
};
} // namespace Organ

namespace GuitarPlucked {
namespace {
constexpr SubCategoryCharacter AGuitar[] = {{"A. Guitar", "Acoustic", nullptr}, End};
constexpr SubCategoryCharacter EGuitarClean[] = {{"E. Guitar", "Electric|Clean", nullptr}, End};
constexpr SubCategoryCharacter EGuitarDistorted[] = {
    {"E. Guitar", "Electric|Distorted", nullptr},
    End};
} // namespace

constexpr List GuitarPlucked_SubCategoryArray[kSubCategoryCount] = {
    AGuitar,          // Acoustic
    EGuitarClean,     // Electric Clean
    EGuitarDistorted, // Electric Distortion
    JustOther,        // Synth
    JustOther,        // Arpeggio
    JustOther,        // No Assign
};
} // namespace GuitarPlucked

namespace Bass {
namespace {
constexpr SubCategoryCharacter ABass[] = {{"A. Bass", "Acoustic", nullptr}, End};
constexpr SubCategoryCharacter EBass[] = {{"E. Bass", "Electric", nullptr}, End};
constexpr SubCategoryCharacter SynthBass[] = {{"Synth Bass", "", nullptr}, End};
} // namespace

constexpr List Bass_SubCategoryArray[kSubCategoryCount] = {
    ABass,     // Acoustic
    EBass,     // Electric
    SynthBass, // Synth
    JustOther, // Arpeggio
    JustOther, // No Assign
    nullptr,
};
} // namespace Bass

namespace Strings {
namespace {
constexpr const char* searchWordsCello[] = {"Cello", nullptr};
constexpr const char* searchWordsViola[] = {"Viola", nullptr};
constexpr const char* searchWordsViolin[] = {"Violin", nullptr};
constexpr const char* searchWordsBass[] = {"Bass", nullptr};
constexpr const char* searchWordsHarp[] = {"Harp", nullptr};

constexpr SubCategoryCharacter OtherCelloViolaViolinBass[] = {
    {"Other", "Acoustic", nullptr},
    {"Cello", "Acoustic", searchWordsCello},
    {"Viola", "Acoustic", searchWordsViola},
    {"Violin", "Acoustic", searchWordsViolin},
    {"Bass", "Acoustic", searchWordsBass},
    End};
constexpr SubCategoryCharacter OtherHarp[] = {
    {"Other", "", nullptr},
    {"Harp", "", searchWordsHarp},
    End};
} // namespace

constexpr List Strings_SubCategoryArray[kSubCategoryCount] = {
    OtherCelloViolaViolinBass, // Solo
    Section,                   // Ensemble
    OtherHarp,                 // Pizzicato
    Synth,                     // Synth
    JustOther,                 // Arpeggio
    nullptr,                   // No Assign
};
} // namespace Strings

namespace Brass {
namespace {
constexpr const char* searchWordsFrenchHorn[] = {"Horn", nullptr};
constexpr const char* searchWordsTrombone[] = {"Tb", "Trombone", nullptr};
constexpr const char* searchWordsTrumpet[] = {"Tp", "Trumpet", nullptr};
constexpr const char* searchWordsTuba[] = {"Tuba", nullptr};

constexpr SubCategoryCharacter OtherHornTromboneTrumpetTuba[] = {
    {"Other", "", nullptr},
    {"French Horn", "", searchWordsFrenchHorn},
    {"Trombone", "", searchWordsTrombone},
    {"Trumpet", "", searchWordsTrumpet},
    {"Tuba", "", searchWordsTuba},
    End};
} // namespace

constexpr List Brass_SubCategoryArray[kSubCategoryCount] = {
    OtherHornTromboneTrumpetTuba, // Solo
    Section,                      // Brass Ensemble
    Section,                      // Orchestra
    Synth,                        // Synth
    JustOther,                    // Arpeggio
    JustOther,                    // No Assign
};
} // namespace Brass

namespace Woodwinds {
namespace {
constexpr const char* searchWordsOboe[] = {"Oboe", nullptr};
constexpr const char* searchWordsBassoon[] = {"Bassoon", "Fagotto", nullptr};
constexpr const char* searchWordsClarinet[] = {"Clarinet", nullptr};
constexpr const char* searchWordsEnglishHorn[] = {"English Horn", nullptr};
constexpr const char* searchWordsHarmonica[] = {"Harmonica", nullptr};

constexpr SubCategoryCharacter Saxophone[] = {{"Saxophone", "", nullptr}, End};
constexpr SubCategoryCharacter Flute[] = {{"Flute", "", nullptr}, End};
constexpr SubCategoryCharacter OtherOboeBassoonClarinetEnglHorn[] = {
    {"Other", "", nullptr},
    {"Oboe", "", searchWordsOboe},
    {"Bassoon", "", searchWordsBassoon},
    {"Clarinet", "", searchWordsClarinet},
    {"Engl. Horn", "", searchWordsEnglishHorn},
    End};
constexpr SubCategoryCharacter OtherOboeBassoonClarinetEnglHornHarmonica[] = {
    {"Other", "", nullptr},
    {"Oboe", "", searchWordsOboe},
    {"Bassoon", "", searchWordsBassoon},
    {"Clarinet", "", searchWordsClarinet},
    {"Engl. Horn", "", searchWordsEnglishHorn},
    {"Harmonica", "", searchWordsHarmonica},
    End};
} // namespace

constexpr List Woodwinds_SubCategoryArray[kSubCategoryCount] = {
    Saxophone,                                 // Saxophone
    Flute,                                     // Flute
    OtherOboeBassoonClarinetEnglHorn,          // Woodwind
    OtherOboeBassoonClarinetEnglHornHarmonica, // Reed / Pipe
    JustOther,                                 // Arpeggio
    JustOther,                                 // No Assign
};
} // namespace Woodwinds

namespace SynthLead {
namespace {
constexpr SubCategoryCharacter Arpeggio[] = {{"Arpeggio", "", nullptr}, End};
} // namespace

constexpr List SynthLead_SubCategoryArray[kSubCategoryCount] = {
    Analog,    // Analog
    Digital,   // Digital
    JustOther, // Hip Hop
    Arpeggio,  // Dance
    JustOther, // Arpeggio
    nullptr,   // No Assign
};
} // namespace SynthLead

namespace SynthPad {
namespace {
constexpr SubCategoryCharacter OtherBright[] = {{"Other", "Bright", nullptr}, End};
constexpr SubCategoryCharacter SynthChoir[] = {{"Synth Choir", "", nullptr}, End};
} // namespace

constexpr List SynthPad_SubCategoryArray[kSubCategoryCount] = {
    Analog,      // Analog
    JustOther,   // Warm
    OtherBright, // Bright
    SynthChoir,  // Choir
    JustOther,   // Arpeggio
    JustOther,   // No Assign
};
} // namespace SynthPad

namespace SynthComp {
constexpr List SynthComp_SubCategoryArray[kSubCategoryCount] = {
    Analog,    // Analog
    Digital,   // Digital
    JustOther, // Fade
    JustOther, // Hook
    JustOther, // Arpeggio
    JustOther, // No Assign
};
} // namespace SynthComp

namespace ChromaticPerc {
namespace {
constexpr const char* searchWordsTimpani[] = {"Timpani", nullptr};

constexpr SubCategoryCharacter Mallet[] = {{"Mallet", "", nullptr}, End};
constexpr SubCategoryCharacter Bell[] = {{"Bell", "", nullptr}, End};
constexpr SubCategoryCharacter OtherTimpani[] = {
    {"Other", "", nullptr},
    {"Timpani", "", searchWordsTimpani},
    End};
} // namespace

constexpr List ChromaticPerc_SubCategoryArray[kSubCategoryCount] = {
    Mallet,       // Mallet Percussion
    Bell,         // Bell
    Bell,         // Synth Bell
    OtherTimpani, // Pitched Drum
    JustOther,    // Arpeggio
    JustOther,    // No Assign
};
} // namespace ChromaticPerc

namespace DrumPerc {
namespace {
constexpr const char* searchWordsGMDrum[] = {"GM", nullptr};
constexpr const char* searchWordsDrumset[] = {"Kit", nullptr};
constexpr const char* searchWordsSnareDrum[] = {"Snare", nullptr};
constexpr const char* searchWordsToms[] = {"Tom", nullptr};

constexpr SubCategoryCharacter OtherGMDrumsetSnareToms[] = {
    {"Other", "", nullptr},
    {"GM Drum", "", searchWordsGMDrum},
    {"Drumset", "", searchWordsDrumset},
    {"Snare Drum", "", searchWordsSnareDrum},
    {"Toms", "", searchWordsToms},
    End};
constexpr SubCategoryCharacter Percussion[] = {{"Percussion", "", nullptr}, End};
constexpr SubCategoryCharacter OtherElectric[] = {{"Other", "Electric", nullptr}, End};
} // namespace

constexpr List DrumPerc_SubCategoryArray[kSubCategoryCount] = {
    OtherGMDrumsetSnareToms, // Drums
    Percussion,              // Percussion
    OtherElectric,           // Synth
    JustOther,               // Arpeggio
    JustOther,               // No Assign
    nullptr,
};
} // namespace DrumPerc

namespace SoundFX {
namespace {
constexpr SubCategoryCharacter Nature[] = {{"Nature", "", nullptr}, End};
} // namespace

constexpr List SoundFX_SubCategoryArray[kSubCategoryCount] = {
    JustOther, // Moving
    JustOther, // Ambient
    Nature,    // Nature
    JustOther, // Sci-Fi
    JustOther, // Arpeggio
    JustOther, // No Assign
};
} // namespace SoundFX

namespace MusicalFX {
namespace {
constexpr SubCategoryCharacter Motion[] = {{"Motion", "", nullptr}, End};
constexpr SubCategoryCharacter Sweeps[] = {{"Sweeps", "", nullptr}, End};
constexpr SubCategoryCharacter HitsStabs[] = {{"Hits&amp;Stabs", "", nullptr}, End};
} // namespace

constexpr List MusicalFX_SubCategoryArray[kSubCategoryCount] = {
    Motion,    // Moving
    JustOther, // Ambient
    Sweeps,    // Sweep
    HitsStabs, // Hit
    JustOther, // Arpeggio
    JustOther, // No Assign
};
} // namespace MusicalFX

namespace Ethnic {
namespace {
constexpr const char* searchWordsEuropeanBowed[] = {"Fiddle", nullptr};
constexpr const char* searchWordsAsianBowed[] = {
    "Kemence", "Kemen Wet", "Yayli", "Kawala", nullptr};
constexpr const char* searchWordsEuropeanPlucked[] = {"Baglama", "Bouzuki", "Banjo", nullptr};
constexpr const char* searchWordsAsianPlucked[] = {
    "Kotoun", "Kanun", "Oud Tremolo Vel", "SazFeeze", "Sakura", "Nomad", "Tambura",
    "Sitar MW", "Sitar", "Shamisen", "Koto", nullptr};
constexpr const char* searchWordsAfricanPlucked[] = {"Mbira", nullptr};
constexpr const char* searchWordsAsianStruck[] = {
    "Santur", "Tabla Zone", "Dhol", "Khol", nullptr};
constexpr const char* searchWordsAfricanStruck[] = {"Udu", "Djembe", nullptr};
constexpr const char* searchWordsAsianBlown[] = {
    "Ney", "Zurna", "Pungi", "Shehnai 1", "Snake Charmer", nullptr};

constexpr SubCategoryCharacter OtherEuropeanAsianBowed[] = {
    {"Other", "", nullptr},
    {"European", "", searchWordsEuropeanBowed},
    {"Asian", "", searchWordsAsianBowed},
    End};
constexpr SubCategoryCharacter OtherEuropeanAsianAfricanPlucked[] = {
    {"Other", "", nullptr},
    {"European", "", searchWordsEuropeanPlucked},
    {"Asian", "", searchWordsAsianPlucked},
    {"African", "", searchWordsAfricanPlucked},
    End};
constexpr SubCategoryCharacter OtherAsianAfricanStruck[] = {
    {"Other", "", nullptr},
    {"Asian", "", searchWordsAsianStruck},
    {"African", "", searchWordsAfricanStruck},
    End};
constexpr SubCategoryCharacter OtherAsianBlown[] = {
    {"Other", "", nullptr},
    {"Asian", "", searchWordsAsianBlown},
    End};
} // namespace

constexpr List Ethnic_SubCategoryArray[kSubCategoryCount] = {
    OtherEuropeanAsianBowed,          // Bowed
    OtherEuropeanAsianAfricanPlucked, // Plucked
    OtherAsianAfricanStruck,          // Struck
    OtherAsianBlown,                  // Blown
    JustOther,                        // Arpeggio
    JustOther,                        // No Assign
};
} // namespace Ethnic

namespace Vocoder {
constexpr List Vocoder_SubCategoryArray[kSubCategoryCount] = {
    JustOther, // No Assign
    nullptr, nullptr, nullptr, nullptr, nullptr,
};
} // namespace Vocoder

namespace Other {
constexpr List Other_SubCategoryArray[kSubCategoryCount] = {
    JustOther, // No Assign
    nullptr, nullptr, nullptr, nullptr, nullptr,
};
} // namespace Other
// clang-format on

} // namespace SubCategory
} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
