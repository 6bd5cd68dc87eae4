#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

// Growable array over std::vector with the host's int32 indices. Indexing out of
// range stops the process instead of reading past the buffer.
template <typename ElementType> class TArray
{
    using FStorage = std::vector<ElementType>;

public:
    using ElementReference = typename FStorage::reference;
    using ElementConstReference = typename FStorage::const_reference;

    TArray() = default;
    TArray(std::initializer_list<ElementType> Init) : Items(Init) {}
    TArray(const ElementType* Ptr, int32 Count) : Items(Ptr, Ptr + (Count > 0 ? Count : 0)) {}

    int32 Num() const { return static_cast<int32>(Items.size()); }
    int32 Max() const { return static_cast<int32>(Items.capacity()); }
    int32 GetSlack() const { return Max() - Num(); }
    bool IsEmpty() const { return Items.empty(); }
    bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }
    ElementType* GetData() { return Items.data(); }
    const ElementType* GetData() const { return Items.data(); }

    ElementReference operator[](int32 Index)
    {
        ORV_CHECK(IsValidIndex(Index));
        return Items[static_cast<SIZE_T>(Index)];
    }
    ElementConstReference operator[](int32 Index) const
    {
        ORV_CHECK(IsValidIndex(Index));
        return Items[static_cast<SIZE_T>(Index)];
    }
    ElementReference Last()
    {
        ORV_CHECK(!Items.empty());
        return Items.back();
    }
    ElementConstReference Last() const
    {
        ORV_CHECK(!Items.empty());
        return Items.back();
    }

    int32 Add(const ElementType& Item)
    {
        Items.push_back(Item);
        return Num() - 1;
    }
    int32 Add(ElementType&& Item)
    {
        Items.push_back(std::move(Item));
        return Num() - 1;
    }
    template <typename... ArgTypes> int32 Emplace(ArgTypes&&... Args)
    {
        Items.emplace_back(std::forward<ArgTypes>(Args)...);
        return Num() - 1;
    }
    int32 AddDefaulted(int32 Count = 1)
    {
        const int32 First = Num();
        Items.resize(Items.size() + static_cast<SIZE_T>(Count > 0 ? Count : 0));
        return First;
    }
    ElementType& AddDefaulted_GetRef() { return Items.emplace_back(); }
    void Append(const TArray& Other) { Items.insert(Items.end(), Other.Items.begin(), Other.Items.end()); }
    void Append(const ElementType* Ptr, int32 Count)
    {
        if (Count > 0)
        {
            Items.insert(Items.end(), Ptr, Ptr + Count);
        }
    }

    void SetNum(int32 NewNum) { Items.resize(static_cast<SIZE_T>(NewNum > 0 ? NewNum : 0)); }
    void Reserve(int32 Count) { Items.reserve(static_cast<SIZE_T>(Count > 0 ? Count : 0)); }
    void Empty(int32 Slack = 0)
    {
        Items.clear();
        if (Slack <= 0)
        {
            Items.shrink_to_fit();
        }
        else
        {
            Items.reserve(static_cast<SIZE_T>(Slack));
        }
    }
    void Reset() { Items.clear(); }
    void RemoveAt(int32 Index, int32 Count = 1)
    {
        ORV_CHECK(Count >= 0 && Index >= 0 && Index + Count <= Num());
        Items.erase(Items.begin() + Index, Items.begin() + Index + Count);
    }

    int32 Find(const ElementType& Item) const
    {
        const auto It = std::find(Items.begin(), Items.end(), Item);
        return It == Items.end() ? INDEX_NONE : static_cast<int32>(It - Items.begin());
    }
    bool Contains(const ElementType& Item) const { return Find(Item) != INDEX_NONE; }

    bool operator==(const TArray& Other) const = default;

    auto begin() { return Items.begin(); }
    auto end() { return Items.end(); }
    auto begin() const { return Items.begin(); }
    auto end() const { return Items.end(); }

private:
    FStorage Items;
};
