// The steps that load and start the library, as the plug-in's controller does first.
#include "editorlib/EditorLibraryNames.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/common/Failure.h"

#include <dlfcn.h>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** The loader's words without the file's own name, which they begin with. */
std::string shortened(const std::string& words, const std::string& file)
{
    return words.compare(0, file.size() + 2, file + ": ") == 0 ? words.substr(file.size() + 2)
                                                               : words;
}

/** Loads the file so that every function that it calls is looked up at once, and says which one is
    missing. */
void loadCompletely(const Options& options, Journal& journal)
{
    const WatchedFile whole(options.library, journal, RTLD_NOW);
    if (*whole)
        return;
    journal.say(bad("complete", "The editor library calls a function that is nowhere (" +
                                    shortened(whole->refusal(), options.library) +
                                    "): the host ends when it comes to that call."));
}

void sayEntries(const tools::LibraryHandle& library, Journal& journal)
{
    if (!library.connectEntry())
        return journal.say(bad("library-entries",
                               std::string("It has no \"") + connectFuncName +
                                   "\": it is no editor library, or one of another generation.",
                               kInstallEditor, {{"missing", connectFuncName}}));
    if (!library.observerEntry())
        return journal.say(bad("observers",
                               std::string("It has no \"") + observerFuncName +
                                   "\": what is turned in its editor would not reach the host.",
                               kInstallEditor, {{"missing", observerFuncName}}));
    journal.say(good("library-entries", "It has both of its entry points."));
}

} // namespace

void loadFile(const Options& options, Journal& journal)
{
    if (options.strict)
        loadCompletely(options, journal);
    const WatchedFile library(options.library, journal, RTLD_LAZY);
    if (!*library)
        return journal.say(bad(
            "library-load",
            "The system does not load it: " + shortened(library->refusal(), options.library) + ".",
            std::string(kInstallEditor) +
                " If it names another file that it does not find, install that.",
            {{"refusal", library->refusal()}}));
    journal.say(good("library-load", "The system loads it."));
    sayEntries(*library, journal);
}

void startLibrary(const Options& options, Journal& journal)
{
    try {
        const Life life(options.library, journal);
    } catch (const tools::Failure& failure) {
        return journal.say(bad("library-connection",
                               std::string("The library does not connect: ") + failure.what(),
                               "Switch the instrument on, connect it, end every other program that "
                               "uses it, and try again. If that does not help: " +
                                   std::string(kInstallEditor)));
    }
    journal.say(good("library-connection", "It connects, starts and ends."));
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
