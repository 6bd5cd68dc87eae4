#pragma once

#include "CoreTypes.h"
#include "Containers/String.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

// A log category: its name, the verbosity it lets through at run time and the
// most verbose level compiled in.
class CORE_API FLogCategoryBase
{
public:
    FLogCategoryBase(const TCHAR* InName, ELogVerbosity::Type InDefault, ELogVerbosity::Type InCompileTime)
        : Name(InName), Verbosity(InDefault), CompileTimeVerbosity(InCompileTime)
    {
    }
    const FName& GetCategoryName() const { return Name; }
    ELogVerbosity::Type GetVerbosity() const { return Verbosity; }
    ELogVerbosity::Type GetCompileTimeVerbosity() const { return CompileTimeVerbosity; }
    void SetVerbosity(ELogVerbosity::Type InVerbosity) { Verbosity = InVerbosity; }
    bool IsSuppressed(ELogVerbosity::Type Level) const
    {
        return Level > Verbosity || Level > CompileTimeVerbosity;
    }

private:
    FName Name;
    ELogVerbosity::Type Verbosity;
    ELogVerbosity::Type CompileTimeVerbosity;
};

struct CORE_API FMsg
{
    // Writes "Category: Verbosity: Text" to GLog; Fatal stops the process afterwards.
    static void Log(const FName& Category, ELogVerbosity::Type Verbosity, const FString& Text);
};

#define ORV_DECLARE_LOG_CATEGORY_EXTERN(CategoryName, DefaultVerbosity, CompileTimeVerbosity)                \
    extern struct FLogCategory##CategoryName : public FLogCategoryBase                                       \
    {                                                                                                        \
        FLogCategory##CategoryName()                                                                         \
            : FLogCategoryBase(TEXT(#CategoryName), ELogVerbosity::DefaultVerbosity,                         \
                               ELogVerbosity::CompileTimeVerbosity)                                          \
        {                                                                                                    \
        }                                                                                                    \
    } CategoryName

#define ORV_DEFINE_LOG_CATEGORY(CategoryName) FLogCategory##CategoryName CategoryName

#define ORV_DEFINE_LOG_CATEGORY_STATIC(CategoryName, DefaultVerbosity, CompileTimeVerbosity)                 \
    static FLogCategoryBase CategoryName(TEXT(#CategoryName), ELogVerbosity::DefaultVerbosity,               \
                                         ELogVerbosity::CompileTimeVerbosity)

#define ORV_LOG(CategoryName, Verbosity, Format, ...)                                                        \
    do                                                                                                       \
    {                                                                                                        \
        if (!(CategoryName).IsSuppressed(ELogVerbosity::Verbosity))                                          \
        {                                                                                                    \
            FMsg::Log((CategoryName).GetCategoryName(), ELogVerbosity::Verbosity,                            \
                      FString::Printf(Format, ##__VA_ARGS__));                                               \
        }                                                                                                    \
    } while (0)
