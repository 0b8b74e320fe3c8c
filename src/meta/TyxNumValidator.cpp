// Number validators, their meta object and their factory's element types.
#include <tyx/TyxNumValidator.h>

#include <sstream>
#include <type_traits>

#include <tyx/TyxMetaObjectImpl.h>
#include <tyx/TyxNumericType.h>

#include "core/TyxPost.h"

namespace tyx {

namespace {

// The variant type that carries a bound of element type T.
template <class T>
using HeldBound = std::conditional_t<
    std::is_same_v<T, long long>, int64_t,
    std::conditional_t<
        std::is_same_v<T, unsigned long long>, uint64_t,
        std::conditional_t<std::is_same_v<T, long>, int64_t,
                           std::conditional_t<std::is_same_v<T, unsigned long>, uint64_t, T>>>>;

// Stream insertion of a bound; the 8-bit types write a number.
template <class T>
TyxString boundText(T bound)
{
    std::wostringstream os;
    if constexpr (sizeof(T) == 1)
        os << static_cast<int>(bound);
    else
        os << bound;
    return os.str();
}

} // namespace

/// Meta object of TyxNumValidator<T>: element type, flags and bounds.
template <class T>
class TyxNumValidatorMetaObj : public TyxMetaObjectImpl<TyxNumValidatorMetaObj<T>, TyxNumValidator<T>> {
    using Base = TyxMetaObjectImpl<TyxNumValidatorMetaObj<T>, TyxNumValidator<T>>;

public:
    using Base::Base;

    void initProperties() override
    {
        using Meta = TyxNumValidatorMetaObj<T>;
        this->beginProperties(L"TyxNumValidator");
        // The element type is fixed by the class: only its own code is accepted.
        this->addProperty(
            TyxMetaProperty(L"template_type", TyxMetaType::Int, TyxMetaFlag(), L"Data Type"),
            [](Meta &, const TyxVariant &v) {
                int code = -1;
                return Base::take(v, code) && code == TyxNumValidator<T>::templateType() ? 0 : 1;
            },
            [](Meta &, TyxVariant &v) { return (v = TyxNumValidator<T>::templateType()), 0; });
        this->addProperty(
            TyxMetaProperty(L"flags", TyxMetaType::UInt8, TyxMetaFlag(), L"Flags"),
            [](Meta &m, const TyxVariant &v) {
                int flags = 0;
                if (!Base::take(v, flags) || flags < 0 || flags > 0xFF)
                    return 1;
                m.object()->setFlags(static_cast<uint8_t>(flags));
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = static_cast<int>(m.object()->flags())), 0; });
        this->addProperty(
            TyxMetaProperty(L"lower_bound", internal::TyxVariantTraits<HeldBound<T>>::type(), TyxMetaFlag(),
                            L"Lower Bound"),
            [](Meta &m, const TyxVariant &v) {
                HeldBound<T> bound{};
                if (!Base::take(v, bound))
                    return 1;
                m.object()->setLower(static_cast<T>(bound));
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = static_cast<HeldBound<T>>(m.object()->lower())), 0; });
        this->addProperty(
            TyxMetaProperty(L"upper_bound", internal::TyxVariantTraits<HeldBound<T>>::type(), TyxMetaFlag(),
                            L"Upper Bound"),
            [](Meta &m, const TyxVariant &v) {
                HeldBound<T> bound{};
                if (!Base::take(v, bound))
                    return 1;
                m.object()->setUpper(static_cast<T>(bound));
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = static_cast<HeldBound<T>>(m.object()->upper())), 0; });
    }
};

template <class T>
TyxNumValidator<T>::~TyxNumValidator() = default;

template <class T>
TyxString TyxNumValidator<T>::className() const
{
    return L"TyxNumValidator";
}

template <class T>
TyxMetaObjectConstPtr TyxNumValidator<T>::metaObject() const
{
    return TyxMetaObjectConstPtr(new TyxNumValidatorMetaObj<T>(const_cast<TyxNumValidator<T> *>(this)));
}

template <class T>
TyxValidator *TyxNumValidator<T>::clone() const
{
    return new TyxNumValidator<T>(*this);
}

template <class T>
bool TyxNumValidator<T>::isEqual(const TyxValidator *other) const
{
    const auto *same = dynamic_cast<const TyxNumValidator<T> *>(other);
    return same && *this == *same;
}

template <class T>
bool TyxNumValidator<T>::isValid(const TyxVariant &value, TyxTextMsg *msg) const
{
    if (m_flags == 0)
        return true;
    const T v = value.value<T>();
    bool ok = true;
    if ((m_flags & 3) != 3) {
        if (m_flags & LowerInclusive)
            ok = m_lower <= v;
        else if (m_flags & LowerExclusive)
            ok = m_lower < v;
    }
    if (ok && (m_flags & 12) != 12) {
        if (m_flags & UpperInclusive)
            ok = m_upper >= v;
        else if (m_flags & UpperExclusive)
            ok = m_upper > v;
    }
    if (ok)
        return true;
    if (msg) {
        // The brackets follow the flags alone, also where a test was skipped.
        TyxString text = L"The value of '" + value.value<TyxString>() + L"' is not within ";
        if (m_flags & LowerInclusive)
            text += L"[" + boundText(m_lower) + L", ";
        else if (m_flags & LowerExclusive)
            text += L"(" + boundText(m_lower) + L", ";
        else
            text += L"(-inf, ";
        if (m_flags & UpperInclusive)
            text += boundText(m_upper) + L"].";
        else if (m_flags & UpperExclusive)
            text += boundText(m_upper) + L").";
        else
            text += L"inf).";
        TYX_FILL_ERROR(msg, text);
    }
    return false;
}

template <class T>
TyxString TyxNumValidator<T>::typeName()
{
    if constexpr (std::is_same_v<T, signed char>)
        return L"signed char";
    else if constexpr (std::is_same_v<T, unsigned char>)
        return L"unsigned char";
    else if constexpr (std::is_same_v<T, short>)
        return L"short";
    else if constexpr (std::is_same_v<T, unsigned short>)
        return L"unsigned short";
    else if constexpr (std::is_same_v<T, int>)
        return L"int";
    else if constexpr (std::is_same_v<T, unsigned int>)
        return L"unsigned int";
    else if constexpr (std::is_same_v<T, float>)
        return L"float";
    else if constexpr (std::is_same_v<T, double>)
        return L"double";
    else if constexpr (std::is_signed_v<T>)
        return L"TyxI64";
    else
        return L"TyxU64";
}

template <class T>
int TyxNumValidator<T>::templateType()
{
    if constexpr (std::is_same_v<T, signed char>)
        return TyxNumericType::I8;
    else if constexpr (std::is_same_v<T, unsigned char>)
        return TyxNumericType::U8;
    else if constexpr (std::is_same_v<T, short>)
        return TyxNumericType::I16;
    else if constexpr (std::is_same_v<T, unsigned short>)
        return TyxNumericType::U16;
    else if constexpr (std::is_same_v<T, int>)
        return TyxNumericType::I32;
    else if constexpr (std::is_same_v<T, unsigned int>)
        return TyxNumericType::U32;
    else if constexpr (std::is_same_v<T, float>)
        return TyxNumericType::Float;
    else if constexpr (std::is_same_v<T, double>)
        return TyxNumericType::Double;
    else if constexpr (std::is_signed_v<T>)
        return TyxNumericType::I64;
    else
        return TyxNumericType::U64;
}

template class TyxNumValidator<signed char>;
template class TyxNumValidator<unsigned char>;
template class TyxNumValidator<short>;
template class TyxNumValidator<unsigned short>;
template class TyxNumValidator<int>;
template class TyxNumValidator<unsigned int>;
template class TyxNumValidator<long>;
template class TyxNumValidator<unsigned long>;
template class TyxNumValidator<long long>;
template class TyxNumValidator<unsigned long long>;
template class TyxNumValidator<float>;
template class TyxNumValidator<double>;

namespace internal {

namespace {

template <class T>
TyxMetaObjectPtr metaObjFor(const void *validator, uint64_t typeID, TyxMetaObjectPtr &result)
{
    if (!result && typeID == TyxVariantTraits<T>::type().typeID())
        result = TyxMetaObjectPtr(new TyxNumValidatorMetaObj<T>(
            const_cast<TyxNumValidator<T> *>(static_cast<const TyxNumValidator<T> *>(validator))));
    return result;
}

} // namespace

TyxMetaObjectPtr numValidatorMetaObj(const void *validator, uint64_t typeID)
{
    TyxMetaObjectPtr result;
    if (!validator || typeID == 0)
        return result;
    metaObjFor<signed char>(validator, typeID, result);
    metaObjFor<unsigned char>(validator, typeID, result);
    metaObjFor<short>(validator, typeID, result);
    metaObjFor<unsigned short>(validator, typeID, result);
    metaObjFor<int>(validator, typeID, result);
    metaObjFor<unsigned int>(validator, typeID, result);
    metaObjFor<int64_t>(validator, typeID, result);
    metaObjFor<uint64_t>(validator, typeID, result);
    metaObjFor<float>(validator, typeID, result);
    metaObjFor<double>(validator, typeID, result);
    return result;
}

} // namespace internal

} // namespace tyx
