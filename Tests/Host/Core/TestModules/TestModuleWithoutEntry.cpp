// A library that is no module: it exports no InitializeModule.

#include "CoreTypes.h"

extern "C" ORV_EXPORT int OrvaneTestModuleWithoutEntry()
{
    return 0;
}
