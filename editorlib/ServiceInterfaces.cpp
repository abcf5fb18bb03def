#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"

namespace Steinberg {

DEF_CLASS_IID(IExtensionVSTServiceGetter)
DEF_CLASS_IID(IExternalPlugin)

} // namespace Steinberg
