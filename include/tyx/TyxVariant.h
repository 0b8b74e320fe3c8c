// Shared handle on a typed value: the library's variant.
//
// How a later value type joins the variant and the conversion matrix, with
// no edit to this header or to any central switch:
//
//  1. In the type's own public header, specialise
//     tyx::internal::TyxVariantTraits<T>. A type with a built-in code
//     (12, 13, 17 to 30) derives it from
//     TyxBuiltinVariantTraits<T, TyxMetaType::Code, Impl>; a type coded at
//     run time (1024 up) from TyxRegisteredVariantTraits<T, Impl> and adds
//     `static TyxString className()`. Impl is TyxVariantImpl<T> or a class
//     derived from it (TyxBufferPtrVariant, for instance). Declare it right
//     after the class, before anything uses TyxVariantImpl<T>. From then on
//     TyxVariant(T) and value<T>() work.
//  2. In the same header, specialise tyx::internal::TyxDefaultCasts<T>
//     (toString, fromString, getDefault) and TyxCast<T, U>, TyxCast<U, T>
//     for the pairs the matrix allows with the types that exist already
//     (TyxCast.h holds the core ones). Whichever of two later types comes
//     second carries the casts between them.
//  3. In the type's source file, at namespace scope, register it once:
//         const bool joined = tyx::internal::TyxVariantRegistrar::join<T>();
//     join() registers the prototype (a default-made T), the default and
//     every cast between T and each core type that TyxCast has, both ways.
//     Casts with other later types join with joinCasts<T, U1, U2...>().
//     The test program of the core area holds a complete example (Probe).
//  Until a built-in code has joined, prototype() of it is the invalid variant
//  and value() to it writes nothing and answers false.
#pragma once

#include <complex>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <tyx/TyxBoolVariant.h>
#include <tyx/TyxCast.h>
#include <tyx/TyxDoubleVariant.h>
#include <tyx/TyxFloatVariant.h>
#include <tyx/TyxInvalidVariant.h>
#include <tyx/TyxStringVariant.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

namespace internal {
template <class T>
struct TyxValueTarget;
}

/// Holds one value of any of the library's value types and knows its type.
/// Copies share the value; a variant without a value shares the one invalid
/// implementation. Asking for another type goes through the conversion
/// matrix and never throws: a failed conversion answers false.
class TYX_EXPORT TyxVariant {
public:
    /// The invalid variant.
    TyxVariant() noexcept;
    TyxVariant(const TyxVariant &other) = default;
    TyxVariant &operator=(const TyxVariant &other) = default;
    /// Takes the value of \p other, which is left invalid.
    TyxVariant(TyxVariant &&other) noexcept;
    TyxVariant &operator=(TyxVariant &&other) noexcept;
    ~TyxVariant() = default;

    /// Holds \p value under the code its traits give: bool, the integers,
    /// float, double, std::complex<double>, wchar_t, TyxString, TyxStrList,
    /// the pair, list and map, and every type that joined later.
    template <class T>
    requires internal::TyxVariantHeld<std::remove_cvref_t<T>> TyxVariant(T &&value)
        : m_impl(std::make_shared<typename internal::TyxVariantTraits<std::remove_cvref_t<T>>::Impl>(
              std::forward<T>(value)))
    {
    }
    /// A character, widened with its sign (code 14).
    TyxVariant(char value);
    /// Held as Int64 and UInt64.
    TyxVariant(long long value);
    TyxVariant(unsigned long long value);
    /// Text, held as TyxString; narrow text is decoded as UTF-8.
    TyxVariant(const char *text);
    TyxVariant(const wchar_t *text);
    TyxVariant(const std::string &text);
    TyxVariant(const std::wstring &text);
    /// The value that \p value points at, of type \p type, through the
    /// prototype of the type; invalid when the type has none.
    TyxVariant(const TyxMetaType &type, const void *value);

    /// Replaces the value by text. A variant that holds text and is the only
    /// owner of its value changes in place; otherwise it gets a new value and
    /// its former copies keep the old one.
    TyxVariant &operator=(const char *text);
    TyxVariant &operator=(const std::string &text);
    TyxVariant &operator=(const wchar_t *text);
    TyxVariant &operator=(const std::wstring &text);
    /// Replaces the value by a character, in place under the same rule.
    template <class C>
    requires(std::is_same_v<C, char> || std::is_same_v<C, wchar_t>) TyxVariant &operator=(C character)
    {
        return assignChar(static_cast<wchar_t>(character));
    }

    /// The held type.
    const TyxMetaType &type() const { return m_impl->type(); }
    /// The text of the held type's code.
    const TyxString &typeName() const { return type().toString(); }
    bool isValid() const { return type() != TyxMetaType::Invalid; }
    /// A numeric type, or a value that converts to double.
    bool isNumeric() const;
    /// Makes the variant invalid.
    void clear();
    /// Whether another variant shares this one's value. Code that writes
    /// into a value it made itself checks this first. The invalid value is
    /// never counted as shared.
    bool isShared() const noexcept { return m_impl.use_count() > 1; }

    /// Converts to \p target into \p dest; false when that fails.
    bool value(const TyxMetaType &target, void *dest) const { return m_impl->value(target, dest); }
    /// The value as \p T, or T's default when the conversion fails.
    template <class T>
    T value() const
    {
        if constexpr (std::is_same_v<T, TyxVariant>) {
            return *this;
        } else if constexpr (std::is_same_v<T, long long> || std::is_same_v<T, unsigned long long>) {
            using Held = std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>;
            return static_cast<T>(value<Held>());
        } else {
            if constexpr (internal::TyxVariantHeld<T>) {
                if constexpr (internal::TyxVariantTraits<T>::isBuiltin) {
#if defined(__GNUC__) && !defined(__clang__)
// GCC 12 at -O3 follows this branch into variants whose held type it can see
// is another one and reports an array bound it can never reach.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Warray-bounds"
#endif
                    if (m_impl->fastCode() == internal::TyxVariantTraits<T>::code)
                        return static_cast<const TyxVariantImpl<T> &>(*m_impl).get();
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
                }
            }
            T result{};
            m_impl->value(internal::TyxValueTarget<T>::type(), &result);
            return result;
        }
    }

    /// The same value object, or the other side converted to this side's
    /// type and equal. Not symmetric: the left side's type decides.
    bool operator==(const TyxVariant &other) const
    {
        return m_impl == other.m_impl || m_impl->isEqual(*other.m_impl);
    }
    bool operator!=(const TyxVariant &other) const { return !(*this == other); }

    /// The implementation object, for reading the held value in place.
    const TyxVariantIF &impl() const { return *m_impl; }

    /// The registered prototype of \p type, or the invalid variant.
    static TyxVariant prototype(const TyxMetaType &type);
    /// The type whose class name is \p name, exact and case-sensitive;
    /// Invalid when none is.
    static TyxMetaType typeFromName(const TyxString &name);

private:
    friend struct internal::TyxVariantRegistrar;
    friend TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxVariant &variant);

    explicit TyxVariant(std::shared_ptr<TyxVariantIF> impl) : m_impl(std::move(impl)) {}

    static TyxVariant fromValue(const TyxMetaType &type, const void *value);
    /// Stores \p prototype under the code of \p type, replacing an earlier
    /// one; false for a null prototype or the invalid type.
    static bool registerType(const TyxMetaType &type, std::shared_ptr<TyxVariantIF> prototype);
    /// Zeroes \p size bytes at \p memory.
    static void clearPOD(void *memory, size_t size);

    TyxVariant &assignText(TyxString &&text);
    TyxVariant &assignChar(wchar_t character);

    std::shared_ptr<TyxVariantIF> m_impl;
};

/// Writes the text of the type, ",", then the value.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxVariant &variant);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxVariant &variant);
/// Reads the form operator<< writes, up to the end of the line. Malformed
/// input sets the failure bit and leaves a usable variant.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxVariant &variant);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxVariant &variant);
/// Writes "key,type,value".
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxVariantPair &pair);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxVariantPair &pair);
/// Reads the key up to ",", then the variant.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxVariantPair &pair);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxVariantPair &pair);

namespace internal {

/// A cast between two held values, and the writer of a type's default.
using TyxCastFn = bool (*)(const void *from, void *to);
using TyxDefaultFn = void (*)(void *to);

template <class From, class To>
bool castThunk(const void *from, void *to)
{
    return TyxCast<From, To>::cast(*static_cast<const From *>(from), *static_cast<To *>(to));
}

template <class T>
void defaultThunk(void *to)
{
    TyxDefaultCasts<T>::getDefault(*static_cast<T *>(to));
}

/// The types every later type meets when it joins.
using TyxCoreVariantTypes =
    TyxTypeList<bool, signed char, unsigned char, short, unsigned short, int, unsigned int, int64_t, uint64_t,
                float, double, std::complex<double>, wchar_t, TyxString, TyxStrList, TyxVariantPair,
                TyxVariantList, TyxVariantMap>;

/// The targets of value() that are not held types.
enum class TyxValueAlias { CharPointer, StdString, NarrowChar, WideChar, Variant };

/// The type registered for \p alias: "TyxChar*", "StdString", "char",
/// "wchar_t" (code 14) and "TyxVariant".
TYX_EXPORT const TyxMetaType &aliasType(TyxValueAlias alias);

/// Registration of variant types into the process-wide registry. Safe at
/// static initialisation in any order; see the top of this header.
struct TYX_EXPORT TyxVariantRegistrar {
    /// Makes \p T a variant type: its prototype, its default and its casts
    /// with itself and with the core types. Returns true.
    template <class T>
    static bool join()
    {
        using Traits = TyxVariantTraits<T>;
        const TyxMetaType &type = Traits::type();
        registerPrototype(type, std::make_shared<typename Traits::Impl>());
        if constexpr (TyxHasDefaultCasts<T>)
            registerDefault(type.toEnum(), &defaultThunk<T>);
        joinPair<T, T>();
        joinCasts<T>(TyxCoreVariantTypes{});
        return true;
    }

    /// Registers the casts between \p T and each of \p Others, both ways,
    /// where TyxCast has them.
    template <class T, class... Others>
    static void joinCasts(TyxTypeList<Others...> = {})
    {
        (joinPair<T, Others>(), ...);
    }

    /// Stores \p prototype under \p type (TyxVariant::registerType).
    static bool registerPrototype(const TyxMetaType &type, std::shared_ptr<TyxVariantIF> prototype);
    /// Enters \p fn as the cast from code \p from to code \p to. Only targets
    /// 0 to 33 are kept: value() dispatches on those.
    static void registerCast(int from, int to, TyxCastFn fn);
    /// Enters \p fn as the writer of the default of code \p code (0 to 33).
    static void registerDefault(int code, TyxDefaultFn fn);
    /// The code of \p className, registered with TyxMetaType when new.
    static TyxMetaType registerName(const TyxString &className);

private:
    template <class A, class B>
    static void joinPair()
    {
        const int a = TyxVariantTraits<A>::type().toEnum();
        const int b = TyxVariantTraits<B>::type().toEnum();
        if constexpr (TyxCastExists<A, B>)
            registerCast(a, b, &castThunk<A, B>);
        if constexpr (!std::is_same_v<A, B> && TyxCastExists<B, A>)
            registerCast(b, a, &castThunk<B, A>);
    }
};

/// The type that value<T>() asks for: the held type's code, or an alias.
template <class T>
struct TyxValueTarget {
    static const TyxMetaType &type() { return TyxVariantTraits<T>::type(); }
};
template <>
struct TyxValueTarget<std::string> {
    static const TyxMetaType &type() { return aliasType(TyxValueAlias::StdString); }
};
template <>
struct TyxValueTarget<char> {
    static const TyxMetaType &type() { return aliasType(TyxValueAlias::NarrowChar); }
};
template <>
struct TyxValueTarget<const wchar_t *> {
    static const TyxMetaType &type() { return aliasType(TyxValueAlias::CharPointer); }
};

} // namespace internal

} // namespace tyx
