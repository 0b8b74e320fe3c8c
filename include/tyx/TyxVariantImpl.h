// Implementation template of the variant for one held type.
#pragma once

#include <concepts>
#include <istream>
#include <memory>
#include <ostream>
#include <utility>

#include <tyx/TyxVariantIF.h>
#include <tyx/internal/TyxVariantTraits.h>

namespace tyx {

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
