#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/SharedPointer.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

template <typename FuncType> class TDelegate;

// Single-cast delegate over std::function. Bindings through shared or weak
// references do not keep their object alive: once it is gone the delegate counts as
// unbound. Copies keep the binding.
template <typename RetType, typename... ParamTypes> class TDelegate<RetType(ParamTypes...)>
{
public:
    template <typename FunctorType> static TDelegate CreateLambda(FunctorType&& Functor)
    {
        TDelegate Result;
        Result.BindLambda(std::forward<FunctorType>(Functor));
        return Result;
    }
    template <typename UserClass, typename MethodType, typename... VarTypes>
    static TDelegate CreateRaw(UserClass* Object, MethodType Method, VarTypes... Vars)
    {
        TDelegate Result;
        Result.BindRaw(Object, Method, std::move(Vars)...);
        return Result;
    }
    template <typename UserClass, typename MethodType, typename... VarTypes>
    static TDelegate CreateSP(const TSharedRef<UserClass>& Object, MethodType Method, VarTypes... Vars)
    {
        TDelegate Result;
        Result.BindSP(Object, Method, std::move(Vars)...);
        return Result;
    }

    template <typename FunctorType> void BindLambda(FunctorType&& Functor)
    {
        Callable = std::forward<FunctorType>(Functor);
        Liveness = nullptr;
    }

    template <typename UserClass, typename MethodType, typename... VarTypes>
    void BindRaw(UserClass* Object, MethodType Method, VarTypes... Vars)
    {
        Callable = [Object, Method, Vars...](ParamTypes... Params) -> RetType
        { return (Object->*Method)(std::forward<ParamTypes>(Params)..., Vars...); };
        Liveness = nullptr;
    }

    template <typename UserClass, typename MethodType, typename... VarTypes>
    void BindSP(const TSharedRef<UserClass>& Object, MethodType Method, VarTypes... Vars)
    {
        BindWeak(std::weak_ptr<UserClass>(Object.GetStd()), Method, std::move(Vars)...);
    }
    template <typename UserClass, typename MethodType, typename... VarTypes>
    void BindSP(const TSharedPtr<UserClass>& Object, MethodType Method, VarTypes... Vars)
    {
        BindWeak(std::weak_ptr<UserClass>(Object.GetStd()), Method, std::move(Vars)...);
    }
    // An object that derives from TSharedFromThis and is already shared.
    template <typename UserClass, typename MethodType, typename... VarTypes>
    void BindSP(UserClass* Object, MethodType Method, VarTypes... Vars)
    {
        BindWeak(std::weak_ptr<UserClass>(std::static_pointer_cast<UserClass>(Object->AsShared().GetStd())),
                 Method, std::move(Vars)...);
    }

    // Calls the lambda only while Owner is alive.
    template <typename OwnerType, typename FunctorType>
    void BindWeakLambda(const TWeakPtr<OwnerType>& Owner, FunctorType&& Functor)
    {
        std::weak_ptr<OwnerType> Weak = Owner.GetStd();
        Callable = std::forward<FunctorType>(Functor);
        Liveness = [Weak]() { return !Weak.expired(); };
    }
    template <typename OwnerType, typename FunctorType>
    void BindWeakLambda(const TSharedPtr<OwnerType>& Owner, FunctorType&& Functor)
    {
        BindWeakLambda(TWeakPtr<OwnerType>(Owner), std::forward<FunctorType>(Functor));
    }
    template <typename OwnerType, typename FunctorType>
    void BindWeakLambda(const TSharedRef<OwnerType>& Owner, FunctorType&& Functor)
    {
        BindWeakLambda(TWeakPtr<OwnerType>(Owner), std::forward<FunctorType>(Functor));
    }

    void Unbind()
    {
        Callable = nullptr;
        Liveness = nullptr;
    }
    bool IsBound() const { return Callable && (!Liveness || Liveness()); }

    RetType Execute(ParamTypes... Params) const
    {
        ORV_CHECK(IsBound());
        return Callable(std::forward<ParamTypes>(Params)...);
    }

    // For delegates that return nothing: calls when bound, says whether it did.
    bool ExecuteIfBound(ParamTypes... Params) const requires std::is_void_v<RetType>
    {
        if (!IsBound())
        {
            return false;
        }
        Callable(std::forward<ParamTypes>(Params)...);
        return true;
    }

private:
    template <typename UserClass, typename MethodType, typename... VarTypes>
    void BindWeak(std::weak_ptr<UserClass> Weak, MethodType Method, VarTypes... Vars)
    {
        Callable = [Weak, Method, Vars...](ParamTypes... Params) -> RetType
        {
            // Pinned for the call so the object cannot die under it.
            const std::shared_ptr<UserClass> Pinned = Weak.lock();
            if (!Pinned)
            {
                if constexpr (std::is_void_v<RetType>)
                {
                    return;
                }
                else
                {
                    return RetType();
                }
            }
            return (Pinned.get()->*Method)(std::forward<ParamTypes>(Params)..., Vars...);
        };
        Liveness = [Weak]() { return !Weak.expired(); };
    }

    std::function<RetType(ParamTypes...)> Callable;
    std::function<bool()> Liveness;
};

// Declares a delegate type by signature, as the host's modules spell them.
#define ORV_DECLARE_DELEGATE(Name, ...) using Name = TDelegate<void(__VA_ARGS__)>
#define ORV_DECLARE_DELEGATE_RetVal(RetType, Name, ...) using Name = TDelegate<RetType(__VA_ARGS__)>
