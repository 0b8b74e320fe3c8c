// Traits that tie a C++ type to its variant code and implementation class,
// and the conversion and stream helpers the variant templates call.
#pragma once

#include <complex>
#include <concepts>
#include <iosfwd>
#include <map>
#include <utility>
#include <vector>

#include <tyx/TyxCast.h>
#include <tyx/TyxVariantIF.h>

namespace tyx {

template <class T>
class TyxVariantImpl;
class TyxInvalidVariant;
class TyxBoolVariant;
class TyxFloatVariant;
class TyxDoubleVariant;
class TyxStringVariant;

namespace internal {

/// Ties a type a variant can hold to its code (type()), its implementation
/// class (Impl) and its class name (className()). Specialised once per held
/// type, in the header that declares the type, by deriving from one of the
/// two bases below.
template <class T>
struct TyxVariantTraits;

/// Base of the traits of a type with a built-in code 0 to 33.
template <class T, TyxMetaType::Code C, class I = TyxVariantImpl<T>>
struct TyxBuiltinVariantTraits {
    using Impl = I;
    static constexpr bool isBuiltin = true;
    static constexpr TyxMetaType::Code code = C;
    static const TyxMetaType &type() noexcept
    {
        static constexpr TyxMetaType code(C);
        return code;
    }
    static const TyxString &className() { return builtinClassName(C); }
};

/// The code of \p className, registering the name with TyxMetaType when it
/// is new (codes from 1024).
TYX_EXPORT TyxMetaType registeredType(const TyxString &className);

/// Base of the traits of a type given its code at run time. The derived
/// traits add `static TyxString className()`, the registered name.
template <class T, class I = TyxVariantImpl<T>>
struct TyxRegisteredVariantTraits {
    using Impl = I;
    static constexpr bool isBuiltin = false;
    static const TyxMetaType &type()
    {
        static const TyxMetaType code = registeredType(TyxVariantTraits<T>::className());
        return code;
    }
};

/// Holds for the types a variant can hold.
template <class T>
concept TyxVariantHeld = requires
{
    typename TyxVariantTraits<T>::Impl;
};

/// The value of the invalid variant.
struct TyxNoValue {
    bool operator==(const TyxNoValue &) const { return true; }
};

template <>
struct TyxVariantTraits<TyxNoValue>
    : TyxBuiltinVariantTraits<TyxNoValue, TyxMetaType::Invalid, TyxInvalidVariant> {
};
template <>
struct TyxVariantTraits<bool> : TyxBuiltinVariantTraits<bool, TyxMetaType::Bool, TyxBoolVariant> {
};
template <>
struct TyxVariantTraits<signed char> : TyxBuiltinVariantTraits<signed char, TyxMetaType::Int8> {
};
template <>
struct TyxVariantTraits<unsigned char> : TyxBuiltinVariantTraits<unsigned char, TyxMetaType::UInt8> {
};
template <>
struct TyxVariantTraits<short> : TyxBuiltinVariantTraits<short, TyxMetaType::Int16> {
};
template <>
struct TyxVariantTraits<unsigned short> : TyxBuiltinVariantTraits<unsigned short, TyxMetaType::UInt16> {
};
template <>
struct TyxVariantTraits<int> : TyxBuiltinVariantTraits<int, TyxMetaType::Int> {
};
template <>
struct TyxVariantTraits<unsigned int> : TyxBuiltinVariantTraits<unsigned int, TyxMetaType::UInt> {
};
template <>
struct TyxVariantTraits<int64_t> : TyxBuiltinVariantTraits<int64_t, TyxMetaType::Int64> {
};
template <>
struct TyxVariantTraits<uint64_t> : TyxBuiltinVariantTraits<uint64_t, TyxMetaType::UInt64> {
};
template <>
struct TyxVariantTraits<float> : TyxBuiltinVariantTraits<float, TyxMetaType::Float, TyxFloatVariant> {
};
template <>
struct TyxVariantTraits<double> : TyxBuiltinVariantTraits<double, TyxMetaType::Double, TyxDoubleVariant> {
};
template <>
struct TyxVariantTraits<std::complex<double>>
    : TyxBuiltinVariantTraits<std::complex<double>, TyxMetaType::ComplexDouble> {
};
template <>
struct TyxVariantTraits<wchar_t> : TyxBuiltinVariantTraits<wchar_t, TyxMetaType::Char> {
};
template <>
struct TyxVariantTraits<TyxString>
    : TyxBuiltinVariantTraits<TyxString, TyxMetaType::String, TyxStringVariant> {
};
template <>
struct TyxVariantTraits<TyxStrList> : TyxBuiltinVariantTraits<TyxStrList, TyxMetaType::StrList> {
};
template <>
struct TyxVariantTraits<TyxVariantPair> : TyxBuiltinVariantTraits<TyxVariantPair, TyxMetaType::KeyValuePair> {
};
template <>
struct TyxVariantTraits<TyxVariantList> : TyxBuiltinVariantTraits<TyxVariantList, TyxMetaType::VariantList> {
};
template <>
struct TyxVariantTraits<TyxVariantMap> : TyxBuiltinVariantTraits<TyxVariantMap, TyxMetaType::VariantMap> {
};

/// The conversion behind TyxVariantIF::value for a value of code \p fromCode
/// at \p from: the cast table for targets 0 to 33, then the aliases
/// "StdString", "char", "TyxChar*".
TYX_EXPORT bool convertValue(int fromCode, const void *from, const TyxMetaType &target, void *dest);

/// Stream forms of the containers: the pair "key,type,value", the list
/// "[...]" and the map "{key:...}", elements in full variant form.
TYX_EXPORT std::wostream &writeValue(std::wostream &os, const TyxVariantPair &value);
TYX_EXPORT std::wostream &writeValue(std::wostream &os, const TyxVariantList &value);
TYX_EXPORT std::wostream &writeValue(std::wostream &os, const TyxVariantMap &value);
TYX_EXPORT std::wistream &readValue(std::wistream &is, TyxVariantPair &value);
TYX_EXPORT std::wistream &readValue(std::wistream &is, TyxVariantList &value);
TYX_EXPORT std::wistream &readValue(std::wistream &is, TyxVariantMap &value);
/// The rest of the input as text; an empty rest is not a failure.
TYX_EXPORT TyxString readRest(std::wistream &is);

template <class T>
concept TyxWideWritable = requires(std::wostream &os, const T &value)
{
    os << value;
};
template <class T>
concept TyxWideReadable = requires(std::wistream &is, T &value)
{
    is >> value;
};
template <class T>
concept TyxContainerValue =
    std::same_as<T, TyxVariantPair> || std::same_as<T, TyxVariantList> || std::same_as<T, TyxVariantMap>;

} // namespace internal

} // namespace tyx
