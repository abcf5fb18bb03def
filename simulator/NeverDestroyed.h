// neverDestroyed: a single object of a type that is not destroyed at exit.
#pragma once

#include <new>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The object of this type, made at the first call. It is never destroyed, because a host may end
    its plug-ins in a static destructor that runs after those of this library. While it is empty it
    must own no memory, which would leak when the library is unloaded. [any thread] */
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
