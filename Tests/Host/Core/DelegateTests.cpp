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

TEST(Delegate, CopiesKeepTheBinding)
{
    int32 Seen = 0;
    TDelegate<void(int32)> Original;
    EXPECT_FALSE(Original.ExecuteIfBound(1));
    Original.BindLambda([&Seen](int32 Value) { Seen += Value; });
    const TDelegate<void(int32)> Copy = Original;
    Original.Execute(1);
    EXPECT_TRUE(Copy.ExecuteIfBound(10));
    EXPECT_EQ(Seen, 11);
    Original.Unbind();
    EXPECT_FALSE(Original.IsBound());
    EXPECT_TRUE(Copy.IsBound());
}

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

TEST(SharedPointer, WeakPinAndExplicitBool)
{
    TWeakPtr<FCounter> Weak;
    {
        TSharedPtr<FCounter> Shared = MakeShareable(new FCounter());
        Weak = Shared;
        EXPECT_TRUE(static_cast<bool>(Weak.Pin()));
    }
    EXPECT_FALSE(Weak.Pin().IsValid());
    EXPECT_FALSE(TSharedPtr<FCounter>());
}
