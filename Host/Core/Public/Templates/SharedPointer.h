#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"

#include <memory>
#include <type_traits>
#include <utility>

// Thread-safe shared, weak and self references over std::shared_ptr and friends.

template <typename ObjectType> class TSharedRef;
template <typename ObjectType> class TWeakPtr;

template <typename ObjectType> class TSharedPtr
{
public:
    TSharedPtr() = default;
    TSharedPtr(std::nullptr_t) {}
    explicit TSharedPtr(std::shared_ptr<ObjectType> InPtr) : Ptr(std::move(InPtr)) {}
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TSharedPtr(const TSharedPtr<OtherType>& Other) : Ptr(Other.GetStd())
    {
    }
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TSharedPtr(const TSharedRef<OtherType>& Other) : Ptr(Other.GetStd())
    {
    }

    bool IsValid() const { return Ptr != nullptr; }
    explicit operator bool() const { return IsValid(); }
    ObjectType* Get() const { return Ptr.get(); }
    ObjectType* operator->() const
    {
        ORV_CHECK(IsValid());
        return Ptr.get();
    }
    ObjectType& operator*() const
    {
        ORV_CHECK(IsValid());
        return *Ptr;
    }
    void Reset() { Ptr.reset(); }
    TSharedRef<ObjectType> ToSharedRef() const
    {
        ORV_CHECK(IsValid());
        return TSharedRef<ObjectType>(Ptr);
    }
    int32 GetSharedReferenceCount() const { return static_cast<int32>(Ptr.use_count()); }
    const std::shared_ptr<ObjectType>& GetStd() const { return Ptr; }

    template <typename OtherType> bool operator==(const TSharedPtr<OtherType>& Other) const
    {
        return Ptr == Other.GetStd();
    }
    bool operator==(std::nullptr_t) const { return Ptr == nullptr; }

private:
    std::shared_ptr<ObjectType> Ptr;
};

// A shared reference that is never null.
template <typename ObjectType> class TSharedRef
{
public:
    explicit TSharedRef(std::shared_ptr<ObjectType> InPtr) : Ptr(std::move(InPtr))
    {
        ORV_CHECK(Ptr != nullptr);
    }
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TSharedRef(const TSharedRef<OtherType>& Other) : Ptr(Other.GetStd())
    {
    }

    bool IsValid() const { return true; }
    ObjectType* operator->() const { return Ptr.get(); }
    ObjectType& operator*() const { return *Ptr; }
    ObjectType& Get() const { return *Ptr; }
    TSharedPtr<ObjectType> ToSharedPtr() const { return TSharedPtr<ObjectType>(Ptr); }
    int32 GetSharedReferenceCount() const { return static_cast<int32>(Ptr.use_count()); }
    const std::shared_ptr<ObjectType>& GetStd() const { return Ptr; }

    template <typename OtherType> bool operator==(const TSharedRef<OtherType>& Other) const
    {
        return Ptr == Other.GetStd();
    }

private:
    std::shared_ptr<ObjectType> Ptr;
};

template <typename ObjectType> class TWeakPtr
{
public:
    TWeakPtr() = default;
    TWeakPtr(std::nullptr_t) {}
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TWeakPtr(const TSharedPtr<OtherType>& Shared) : Ptr(Shared.GetStd())
    {
    }
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TWeakPtr(const TSharedRef<OtherType>& Shared) : Ptr(Shared.GetStd())
    {
    }
    template <typename OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
    TWeakPtr(const TWeakPtr<OtherType>& Other) : Ptr(Other.GetStd())
    {
    }

    TSharedPtr<ObjectType> Pin() const { return TSharedPtr<ObjectType>(Ptr.lock()); }
    bool IsValid() const { return !Ptr.expired(); }
    void Reset() { Ptr.reset(); }
    const std::weak_ptr<ObjectType>& GetStd() const { return Ptr; }

private:
    std::weak_ptr<ObjectType> Ptr;
};

// Base for objects that hand out shared references to themselves; valid only once
// the object is owned by a TSharedPtr or TSharedRef.
template <typename ObjectType> class TSharedFromThis : public std::enable_shared_from_this<ObjectType>
{
public:
    TSharedRef<ObjectType> AsShared() { return TSharedRef<ObjectType>(this->shared_from_this()); }
    TSharedRef<const ObjectType> AsShared() const
    {
        return TSharedRef<const ObjectType>(this->shared_from_this());
    }
    TWeakPtr<ObjectType> AsWeak()
    {
        return TWeakPtr<ObjectType>(TSharedPtr<ObjectType>(this->weak_from_this().lock()));
    }
    bool DoesSharedInstanceExist() const { return !this->weak_from_this().expired(); }

protected:
    TSharedFromThis() = default;
    TSharedFromThis(const TSharedFromThis&) : std::enable_shared_from_this<ObjectType>() {}
    TSharedFromThis& operator=(const TSharedFromThis&) { return *this; }
};

template <typename ObjectType, typename... ArgTypes> TSharedRef<ObjectType> MakeShared(ArgTypes&&... Args)
{
    return TSharedRef<ObjectType>(std::make_shared<ObjectType>(std::forward<ArgTypes>(Args)...));
}

// Takes ownership of a raw pointer; converts to either shared pointer kind.
template <typename ObjectType> struct TRawPtrProxy
{
    ObjectType* Object;
    template <typename TargetType> operator TSharedPtr<TargetType>() const
    {
        return TSharedPtr<TargetType>(std::shared_ptr<TargetType>(Object));
    }
    template <typename TargetType> operator TSharedRef<TargetType>() const
    {
        return TSharedRef<TargetType>(std::shared_ptr<TargetType>(Object));
    }
};

template <typename ObjectType> TRawPtrProxy<ObjectType> MakeShareable(ObjectType* Object)
{
    return TRawPtrProxy<ObjectType>{Object};
}

template <typename ToType, typename FromType>
TSharedPtr<ToType> StaticCastSharedPtr(const TSharedPtr<FromType>& From)
{
    return TSharedPtr<ToType>(std::static_pointer_cast<ToType>(From.GetStd()));
}

template <typename ToType, typename FromType>
TSharedRef<ToType> StaticCastSharedRef(const TSharedRef<FromType>& From)
{
    return TSharedRef<ToType>(std::static_pointer_cast<ToType>(From.GetStd()));
}
