#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

namespace
{
class FCapture : public FOutputDevice
{
public:
    FCapture() { GLog->AddOutputDevice(this); }
    ~FCapture() override { GLog->RemoveOutputDevice(this); }
    void Serialize(const TCHAR* Text, ELogVerbosity::Type, const FName& Category) override
    {
        Lines.Add(Category.ToString() + TEXT(": ") + Text);
    }
    TArray<FString> Lines;
};

TArray<FString> Strings(std::initializer_list<const TCHAR*> Texts)
{
    TArray<FString> Result;
    for (const TCHAR* Text : Texts)
    {
        Result.Add(Text);
    }
    return Result;
}
} // namespace

TEST(ModuleManager, LoadsStartsShutsDownAndReloadsAModule)
{
    FCapture Log;
    FModuleManager& Manager = FModuleManager::Get();
    IModuleInterface* const Module = Manager.LoadModule(TEXT("OrvaneTestModule"));
    ASSERT_NE(Module, nullptr);
    EXPECT_EQ(Manager.LoadModule(TEXT("orvanetestmodule")), Module);
    EXPECT_TRUE(Manager.IsModuleLoaded(TEXT("OrvaneTestModule")));
    EXPECT_TRUE(Module->SupportsDynamicReloading());

    EXPECT_TRUE(Manager.UnloadModule(TEXT("OrvaneTestModule")));
    EXPECT_FALSE(Manager.UnloadModule(TEXT("OrvaneTestModule")));
    EXPECT_EQ(Manager.GetModule(TEXT("OrvaneTestModule")), nullptr);
    ASSERT_NE(Manager.LoadModule(TEXT("OrvaneTestModule")), nullptr);
    EXPECT_EQ(Log.Lines,
              Strings({TEXT("LogOrvaneTestModule: started"), TEXT("LogOrvaneTestModule: unloading"),
                       TEXT("LogOrvaneTestModule: shut down"), TEXT("LogOrvaneTestModule: destroyed"),
                       TEXT("LogOrvaneTestModule: started")}));
}

TEST(ModuleManager, AMissingLibraryOrEntryPointGivesNullAndOneLogLine)
{
    for (const TCHAR* Name :
         {TEXT("OrvaneNoSuchModule"), TEXT("OrvaneTestModuleWithoutEntry"), TEXT("../OrvaneTestModule")})
    {
        FCapture Log;
        EXPECT_EQ(FModuleManager::Get().LoadModule(Name), nullptr);
        ASSERT_EQ(Log.Lines.Num(), 1);
        EXPECT_TRUE(Log.Lines[0].StartsWith(TEXT("LogModuleManager: ")));
        EXPECT_TRUE(Log.Lines[0].Contains(Name));
    }
}
