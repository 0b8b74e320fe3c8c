// Conversion-matrix rows shared by the image code classes.
#pragma once

#include <sstream>
#include <type_traits>

#include <tyx/TyxCast.h>
#include <tyx/TyxRational.h>
#include <tyx/TyxString.h>

namespace tyx::internal {

/// Marks a code class (TyxDataType, TyxDataLayout, TyxByteOrder): a value
/// with a nested or named Code, a constructor from it and isValid().
/// Specialised beside each class with `using Code = ...`.
template <class T>
struct TyxCodeClass : std::false_type {
};

template <class T>
concept TyxMatrixCode = TyxCodeClass<T>::value;

/// Text through the class's stream operators on a wide string stream. Reading
/// succeeds when neither the fail nor the bad bit is set: the end of the text
/// is no failure.
template <class T>
struct TyxCodeDefaultCasts {
    static bool toString(const T &value, TyxString &text)
    {
        std::wostringstream os;
        os << value;
        text = os.str();
        return true;
    }
    static bool fromString(const TyxString &text, T &value)
    {
        std::wistringstream is(text);
        is >> value;
        return !is.fail();
    }
    static void getDefault(T &value) { value = T(); }
};

/// A code to a number: the code as an int, then as that int; to bool:
/// whether the code is valid.
template <class From, class To>
requires(TyxMatrixCode<From> &&TyxMatrixNumber<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        using Code = typename TyxCodeClass<From>::Code;
        if constexpr (std::is_same_v<To, bool>)
            to = from.isValid();
        else
            to = numberCast<To>(static_cast<int>(static_cast<Code>(from)));
        return true;
    }
};

/// A code to a rational: the code as an int, over 1.
template <class From, class To>
requires(TyxMatrixCode<From> &&TyxMatrixRational<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        using Code = typename TyxCodeClass<From>::Code;
        return TyxCast<int, To>::cast(static_cast<int>(static_cast<Code>(from)), to);
    }
};

/// An integer to a code: the class made from the value as a code, without a
/// check; the class's constructor decides what an unknown code becomes.
template <class From, class To>
requires(TyxMatrixInteger<From> &&TyxMatrixCode<To>) struct TyxCast<From, To> {
    static bool cast(const From &from, To &to)
    {
        using Code = typename TyxCodeClass<To>::Code;
        to = To(static_cast<Code>(static_cast<int>(from)));
        return true;
    }
};

} // namespace tyx::internal
