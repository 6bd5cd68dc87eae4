#include "CoreMinimal.h"
#include "LogCapture.h"

#include <gtest/gtest.h>

namespace
{
ORV_DEFINE_LOG_CATEGORY_STATIC(LogDiagnosticsTest, Log, All);
} // namespace

TEST(Log, LinesReachOutputDevicesAndRespectVerbosity)
{
    FLogCapture Capture;
    ORV_LOG(LogDiagnosticsTest, Log, TEXT("Delay=%f"), 0.5);
    ORV_LOG(LogDiagnosticsTest, Verbose, TEXT("hidden"));
    ASSERT_EQ(Capture.Lines.Num(), 1);
    EXPECT_EQ(Capture.Lines[0].GetStd(), u"Delay=0.500000");
    EXPECT_EQ(Capture.Categories[0].GetStd(), u"LogDiagnosticsTest");
    EXPECT_EQ(Capture.Verbosities[0], ELogVerbosity::Log);
}

// Setting the culture is seen through the request's meta, in the module's record tests.
TEST(Culture, NameComesFromTheLocale)
{
    const std::pair<const char*, std::u16string> Cases[] = {
        {"en_US.UTF-8", u"en-US"}, {"de_DE@euro", u"de-DE"}, {"C", u""}, {"POSIX", u""}, {"", u""}};
    for (const auto& [Locale, Culture] : Cases)
    {
        EXPECT_EQ(FInternationalization::CultureNameFromLocale(Locale).GetStd(), Culture) << Locale;
    }
}
