// Reference-counted object with a key and a name.
#pragma once

#include <tyx/TyxKey.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxString.h>

namespace tyx {

/// An object with an identity: a key and a name. The name is kept as given,
/// white space included; an empty name becomes the key's decimal text, so
/// every keyed object has a name.
class TYX_EXPORT TyxKeyedObject : public TyxObject, public TyxRefCounted {
public:
    /// Takes both as given, apart from the name rule above.
    TyxKeyedObject(const TyxKey &key, const TyxString &name);
    /// Takes the next key from a process-wide counter, which starts at 0 and
    /// counts as TyxKey's ++ does.
    explicit TyxKeyedObject(const TyxString &name);
    TyxKeyedObject(const TyxKeyedObject &) = default;
    TyxKeyedObject &operator=(const TyxKeyedObject &) = default;
    ~TyxKeyedObject() override;

    /// "TyxKeyedObject".
    TyxString className() const override;

    const TyxKey &key() const { return m_key; }
    const TyxString &name() const { return m_name; }

    /// Compares the names only, exactly; the keys do not enter.
    bool operator==(const TyxKeyedObject &other) const { return m_name == other.m_name; }
    bool operator!=(const TyxKeyedObject &other) const { return !(*this == other); }

protected:
    void setKey(const TyxKey &key) { m_key = key; }
    void setName(const TyxString &name) { m_name = name; }

private:
    TyxKey m_key;
    TyxString m_name;
};

} // namespace tyx
