// MacsImage: the bundle's machine code, which make-image made a part of this module. The addresses
// are labels in the assembly that it wrote.
#pragma once

namespace macho {

#pragma GCC visibility push(hidden)
extern "C" {
extern char imageBegin[] __asm__("image__TEXT");
extern char imageConstants[] __asm__("image__DATA_CONST");
extern char imageData[] __asm__("image__DATA");
extern char imageEnd[] __asm__("image_end");

using Initialiser = void (*)(int count, const char** arguments, const char** environment,
                             const char** apple);
extern const Initialiser imageInitialisers[] __asm__("image__mod_init_func");
extern const Initialiser imageInitialisersEnd[] __asm__("image__mod_init_func_end");
extern const char imageTexts[] __asm__("image__cfstring");
extern const char imageTextsEnd[] __asm__("image__cfstring_end");
}
#pragma GCC visibility pop

/** Makes code and constant data read-only, as macOS's loader does, and runs the initialisers. The
    destructor runs what the image registered for its end. Until then a write to constant data ends
    the program with a message that says so. */
class MacsImage {
public:
    MacsImage();
    ~MacsImage();
    MacsImage(const MacsImage&) = delete;
    MacsImage& operator=(const MacsImage&) = delete;
};

} // namespace macho
