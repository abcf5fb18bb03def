// neverDestroyed: the one object of a type, for what a host uses until the very end.
#pragma once

#include <new>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The one object of the type, made at the first call. A host may end its plug-ins in a static
    destructor of its own, when exit has destroyed this library's statics, so this one is left
    alone. It has to own no memory while nothing is in it, or that stays behind when the library is
    unloaded. [any thread] */
template <class Type>
Type& neverDestroyed()
{
    alignas(Type) static unsigned char memory[sizeof(Type)];
    static Type& object = *new (memory) Type;
    return object;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
