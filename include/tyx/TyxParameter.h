// Named value with a property description and an optional cross reference.
#pragma once

#include <iosfwd>

#include <tyx/TyxKeyedObject.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxVariant.h>

namespace tyx {

class TyxParameterList;

/// A named value described by a TyxMetaProperty. A non-empty cross
/// reference names another parameter that supplies the value; the list that
/// holds the parameter resolves it.
class TYX_EXPORT TyxParameter : public TyxKeyedObject {
public:
    TyxParameter();
    /// Named after \p property, which it keeps.
    explicit TyxParameter(const TyxMetaProperty &property);
    /// A reference to \p crossRef; the value is an empty string.
    TyxParameter(const TyxString &name, const TyxString &crossRef);
    /// Holds \p value; \p isExpression sets the "Expression" flag.
    TyxParameter(const TyxString &name, const TyxVariant &value, bool isExpression);
    /// A copy is in no list.
    TyxParameter(const TyxParameter &other);
    /// Takes all but the list membership.
    TyxParameter &operator=(const TyxParameter &other);
    ~TyxParameter() override;

    const TyxVariant &value() const { return m_value; }
    const TyxString &crossRef() const { return m_crossRef; }
    void setCrossRef(const TyxString &crossRef) { m_crossRef = crossRef; }
    /// The list that holds the parameter, or null.
    TyxParameterList *parent() { return m_parent; }
    const TyxParameterList *parent() const { return m_parent; }
    const TyxMetaProperty &properties() const { return m_properties; }
    TyxMetaProperty &properties() { return m_properties; }
    /// Whether the "Expression" flag is set.
    bool isExpression() const { return m_properties.flags().isExpression(); }
    /// Stores \p value, then sets or clears the "Expression" flag.
    void setValue(const TyxVariant &value, bool isExpression = false);
    /// Renames the parameter and its property.
    void setName(const TyxString &name);

    /// Compares cross reference, property, then value.
    bool operator==(const TyxParameter &other) const;
    bool operator!=(const TyxParameter &other) const { return !(*this == other); }

    /// "TyxParameter".
    TyxString className() const override;
    /// A new meta object with "cross_ref", "value" and "properties".
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;

private:
    friend class TyxParameterList;

    TyxParameterList *m_parent = nullptr;
    TyxString m_crossRef;
    TyxVariant m_value;
    TyxMetaProperty m_properties;
};

TYX_DECLARE_SMART_PTR(TyxParameter);

/// Writes "(name,value,property)" with the value in the variant's stream
/// form and the property in its own.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxParameter &parameter);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxParameter &parameter);

} // namespace tyx
