// The table's lines by subject, in the order in which they are printed.
#pragma once

namespace bench {

void addModuleLines();
void addLifeLines();
void addMemoryLines();
void addProcessLines();
void addMidiOutLines();
void addStressLines();
void addTickLines();
void addTextLines();
void addStudioLines();
void addPresetLibraryLines();
void addInstancesLines();

} // namespace bench
