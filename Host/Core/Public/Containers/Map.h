#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

template <typename KeyType, typename ValueType> struct TPair
{
    KeyType Key;
    ValueType Value;
};

// Hashes with the host's GetTypeHash where a type has one (FString, FName fold case
// that way), else with std::hash.
template <typename KeyType> struct TDefaultMapHash
{
    SIZE_T operator()(const KeyType& Key) const
    {
        if constexpr (requires { GetTypeHash(Key); })
        {
            return static_cast<SIZE_T>(GetTypeHash(Key));
        }
        else
        {
            return std::hash<KeyType>{}(Key);
        }
    }
};

// Key-value map that iterates in insertion order. Adding an existing key replaces
// its value in place, so the key keeps its original position.
template <typename KeyType, typename ValueType> class TMap
{
public:
    using ElementType = TPair<KeyType, ValueType>;

    int32 Num() const { return static_cast<int32>(Pairs.size()); }
    bool IsEmpty() const { return Pairs.empty(); }
    void Empty()
    {
        Pairs.clear();
        Index.clear();
    }
    void Reserve(int32 Count)
    {
        Pairs.reserve(static_cast<SIZE_T>(Count > 0 ? Count : 0));
        Index.reserve(static_cast<SIZE_T>(Count > 0 ? Count : 0));
    }

    ValueType& Add(const KeyType& Key, ValueType Value) { return AddImpl(KeyType(Key), std::move(Value)); }
    ValueType& Add(KeyType&& Key, ValueType Value) { return AddImpl(std::move(Key), std::move(Value)); }
    ValueType& FindOrAdd(const KeyType& Key)
    {
        ValueType* Existing = Find(Key);
        return Existing ? *Existing : Add(Key, ValueType());
    }

    ValueType* Find(const KeyType& Key)
    {
        const auto It = Index.find(Key);
        return It == Index.end() ? nullptr : &Pairs[It->second].Value;
    }
    const ValueType* Find(const KeyType& Key) const
    {
        const auto It = Index.find(Key);
        return It == Index.end() ? nullptr : &Pairs[It->second].Value;
    }
    bool Contains(const KeyType& Key) const { return Index.find(Key) != Index.end(); }
    ValueType& FindChecked(const KeyType& Key)
    {
        ValueType* Found = Find(Key);
        ORV_CHECK(Found != nullptr);
        return *Found;
    }
    const ValueType& FindChecked(const KeyType& Key) const
    {
        const ValueType* Found = Find(Key);
        ORV_CHECK(Found != nullptr);
        return *Found;
    }
    ValueType& operator[](const KeyType& Key) { return FindChecked(Key); }
    const ValueType& operator[](const KeyType& Key) const { return FindChecked(Key); }

    // Removes the key; later entries keep their relative order.
    int32 Remove(const KeyType& Key)
    {
        const auto It = Index.find(Key);
        if (It == Index.end())
        {
            return 0;
        }
        const SIZE_T Position = It->second;
        Index.erase(It);
        Pairs.erase(Pairs.begin() + static_cast<std::ptrdiff_t>(Position));
        for (auto& Entry : Index)
        {
            if (Entry.second > Position)
            {
                --Entry.second;
            }
        }
        return 1;
    }

    auto begin() { return Pairs.begin(); }
    auto end() { return Pairs.end(); }
    auto begin() const { return Pairs.begin(); }
    auto end() const { return Pairs.end(); }

private:
    ValueType& AddImpl(KeyType&& Key, ValueType&& Value)
    {
        const auto It = Index.find(Key);
        if (It != Index.end())
        {
            Pairs[It->second].Value = std::move(Value);
            return Pairs[It->second].Value;
        }
        Index.emplace(Key, Pairs.size());
        Pairs.push_back(ElementType{std::move(Key), std::move(Value)});
        return Pairs.back().Value;
    }

    std::vector<ElementType> Pairs;
    std::unordered_map<KeyType, SIZE_T, TDefaultMapHash<KeyType>> Index;
};
