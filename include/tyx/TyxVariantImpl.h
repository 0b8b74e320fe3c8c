// Implementation template of the variant for one held type, and the traits
// that tie a C++ type to its variant code.
#pragma once

#include <concepts>
#include <istream>
#include <memory>
#include <ostream>
#include <utility>

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

/// Holds one value of type \p T and gives every operation of the interface.
/// The traits of \p T name the code and the class that create() and clone()
/// make, so a derived class keeps its class through copies.
template <class T>
class TYX_EXPORT TyxVariantImpl : public TyxVariantIF {
public:
    using Traits = internal::TyxVariantTraits<T>;

    TyxVariantImpl() : TyxVariantIF(fastCodeOfT()), m_value() {}
    explicit TyxVariantImpl(const T &value) : TyxVariantIF(fastCodeOfT()), m_value(value) {}
    explicit TyxVariantImpl(T &&value) : TyxVariantIF(fastCodeOfT()), m_value(std::move(value)) {}

    std::shared_ptr<TyxVariantIF> create(const void *value) const override
    {
        return std::make_shared<typename Traits::Impl>(*static_cast<const T *>(value));
    }

    std::shared_ptr<TyxVariantIF> clone() const override
    {
        return std::make_shared<typename Traits::Impl>(m_value);
    }

    /// Converts \p other to this type; a failed conversion is unequal.
    bool isEqual(const TyxVariantIF &other) const override
    {
        if constexpr (std::equality_comparable<T>) {
            T converted{};
            if (!other.value(type(), &converted))
                return false;
            return converted == m_value;
        } else {
            return false;
        }
    }

    /// The type's stream form, or else its text by the conversion matrix.
    std::wostream &write(std::wostream &os) const override
    {
        if constexpr (internal::TyxContainerValue<T>)
            internal::writeValue(os, m_value);
        else if constexpr (internal::TyxWideWritable<T>)
            os << m_value;
        else if constexpr (internal::TyxHasDefaultCasts<T>) {
            TyxString text;
            internal::TyxDefaultCasts<T>::toString(m_value, text);
            os << static_cast<const std::wstring &>(text);
        }
        return os;
    }

    /// Takes the rest of the input and parses it by the conversion matrix's
    /// text rules, or else by the type's stream form.
    std::wistream &read(std::wistream &is) override
    {
        if constexpr (internal::TyxContainerValue<T>) {
            internal::readValue(is, m_value);
        } else if constexpr (internal::TyxHasDefaultCasts<T>) {
            if (!internal::TyxDefaultCasts<T>::fromString(internal::readRest(is), m_value))
                is.setstate(std::ios_base::failbit);
        } else if constexpr (internal::TyxWideReadable<T>) {
            is >> m_value;
        } else {
            is.setstate(std::ios_base::failbit);
        }
        return is;
    }

    const TyxMetaType &type() const override { return Traits::type(); }
    const void *constData() const override { return &m_value; }
    void *data() override { return &m_value; }

    bool value(const TyxMetaType &target, void *dest) const override
    {
        // Asking for the held type copies, whatever the cast table says.
        if (target == Traits::type()) {
            *static_cast<T *>(dest) = m_value;
            return true;
        }
        return internal::convertValue(Traits::type().toEnum(), &m_value, target, dest);
    }

    bool setValue(const TyxMetaType &source, const void *src) override
    {
        if (source != Traits::type())
            return false;
        m_value = *static_cast<const T *>(src);
        return true;
    }

    TyxString className() const override { return Traits::className(); }

    /// The held value.
    const T &get() const { return m_value; }

protected:
    T m_value;

private:
    static constexpr int32_t fastCodeOfT()
    {
        if constexpr (Traits::isBuiltin)
            return Traits::code;
        else
            return -1;
    }
};

} // namespace tyx
