// Common base of the nodes of a metadata tree: a name and a description.
#pragma once

#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>

namespace tyx {

/// A named node of a metadata tree.
class TYX_EXPORT TyxMetaDataObject : public TyxObject {
public:
    ~TyxMetaDataObject() override;

    const TyxString &name() const { return m_name; }
    const TyxString &description() const { return m_description; }
    void setName(const TyxString &name) { m_name = name; }
    void setDescription(const TyxString &description) { m_description = description; }

    /// Names and descriptions compared exactly.
    bool operator==(const TyxMetaDataObject &other) const
    {
        return m_name == other.m_name && m_description == other.m_description;
    }
    bool operator!=(const TyxMetaDataObject &other) const { return !(*this == other); }

protected:
    TyxMetaDataObject() = default;
    explicit TyxMetaDataObject(const TyxString &name) : m_name(name) {}
    TyxMetaDataObject(const TyxString &name, const TyxString &description)
        : m_name(name), m_description(description)
    {
    }
    TyxMetaDataObject(const TyxMetaDataObject &) = default;
    TyxMetaDataObject &operator=(const TyxMetaDataObject &) = default;

private:
    TyxString m_name;
    TyxString m_description;
};

} // namespace tyx
