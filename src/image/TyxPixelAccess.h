// Private: typed access to the stored value of a pixel sample.
#pragma once

#include <cstring>

#include <tyx/TyxCast.h>
#include <tyx/TyxPixel.h>

#include "image/TyxSampleTypes.h"

namespace tyx::internal {

class TyxPixelAccess {
public:
    /// The stored value read as \p T; \p T must be the sample's own type.
    template <class T>
    static T stored(const TyxPixel::Sample &s)
    {
        T v;
        std::memcpy(static_cast<void *>(&v), s.data(), sizeof(T));
        return v;
    }

    /// Overwrites the value of \p s with \p v, leaving its type alone.
    template <class T>
    static void store(TyxPixel::Sample &s, const T &v)
    {
        s.store(v);
    }

    /// The stored value cast to \p To by the rules of the conversion matrix.
    template <class To>
    static To as(const TyxPixel::Sample &s)
    {
        return visitSampleCode(s.type().code(), To(), [&s](auto tag) {
            using From = typename decltype(tag)::type;
            return numberCast<To>(stored<From>(s));
        });
    }
};

} // namespace tyx::internal
