#include "HttpModule.h"

FHttpModule& FHttpModule::Get()
{
    static FHttpModule Instance;
    return Instance;
}
