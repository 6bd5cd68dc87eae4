#include "CoreMinimal.h"

#include <gtest/gtest.h>

namespace
{
struct FCounter : public TSharedFromThis<FCounter>
{
    int32 Calls = 0;
    void Bump(int32 By) { Calls += By; }
};
} // namespace

TEST(Delegate, SharedBindingsDoNotOutliveTheirObject)
{
    TDelegate<void(int32)> BySP;
    TDelegate<void(int32)> ByWeakLambda;
    {
        const TSharedRef<FCounter> Counter = MakeShared<FCounter>();
        BySP.BindSP(Counter, &FCounter::Bump);
        ByWeakLambda.BindWeakLambda(Counter, [Raw = &Counter.Get()](int32 By) { Raw->Bump(By * 10); });
        BySP.Execute(2);
        ByWeakLambda.Execute(1);
        EXPECT_EQ(Counter->Calls, 12);
        EXPECT_EQ(Counter->AsShared().GetSharedReferenceCount(), 2);
    }
    EXPECT_FALSE(BySP.IsBound());
    EXPECT_FALSE(BySP.ExecuteIfBound(1));
    EXPECT_FALSE(ByWeakLambda.ExecuteIfBound(1));
}
