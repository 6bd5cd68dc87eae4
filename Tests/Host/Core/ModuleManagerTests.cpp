#include "CoreMinimal.h"
#include "LogCapture.h"
#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

TEST(ModuleManager, LoadsStartsShutsDownAndReloadsAModule)
{
    FLogCapture Log;
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
    EXPECT_EQ(Log.Lines, (TArray<FString>{TEXT("started"), TEXT("unloading"), TEXT("shut down"),
                                          TEXT("destroyed"), TEXT("started")}));
    for (const FString& Category : Log.Categories)
    {
        EXPECT_EQ(Category.GetStd(), u"LogOrvaneTestModule");
    }
}

TEST(ModuleManager, AMissingLibraryOrEntryPointGivesNullAndOneLogLine)
{
    for (const TCHAR* Name :
         {TEXT("OrvaneNoSuchModule"), TEXT("OrvaneTestModuleWithoutEntry"), TEXT("../OrvaneTestModule")})
    {
        FLogCapture Log;
        EXPECT_EQ(FModuleManager::Get().LoadModule(Name), nullptr);
        ASSERT_EQ(Log.Lines.Num(), 1);
        EXPECT_EQ(Log.Categories[0].GetStd(), u"LogModuleManager");
        EXPECT_TRUE(Log.Lines[0].Contains(Name));
    }
}
