// The implementation of JSON nodes over one variant.
#pragma once

#include <tyx/TyxJsonNodeType.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>
#include <tyx/internal/TyxJsonNodeIF.h>

namespace tyx::internal {

/// A node as a name and a variant: a "Node" holds a TyxVariantMap, an
/// "Array" a TyxVariantList. It keeps where the last at() stood in a map, so
/// a walk over the members in order takes one step per member.
class TyxJsonNodeImpl final : public TyxJsonNodeIF {
public:
    TyxJsonNodeImpl() = default;
    /// The empty value of \p type: an empty map or list, "", 0.0, false, or
    /// invalid for Null.
    explicit TyxJsonNodeImpl(const TyxJsonNodeType &type);
    TyxJsonNodeImpl(const TyxString &name, const TyxVariant &value);
    /// Copies name, value and comment; the walking position starts afresh.
    TyxJsonNodeImpl(const TyxJsonNodeImpl &other);
    TyxJsonNodeImpl &operator=(const TyxJsonNodeImpl &) = delete;
    ~TyxJsonNodeImpl() override;

    TyxJsonNodeIF *clone() const override;
    void clear() override;
    void setValue(const TyxVariant &value) override;
    void setName(const TyxString &name) override;
    void setComment(const TyxString &comment) override;
    void pushBack(const TyxJsonNodeIF &node) override;
    bool empty() const override;
    size_t size() const override;
    TyxJsonNodeType type() const override;
    TyxString name() const override;
    TyxString comment() const override;
    bool toBool() const override;
    TyxString toString() const override;
    int toInt() const override;
    double toDouble() const override;
    TyxJsonNodeIF *toNode() const override;
    TyxJsonNodeIF *toArray() const override;
    TyxString toJson(bool pretty) const override;
    TyxJsonNodeIF *begin() const override;
    TyxJsonNodeIF *end() const override;
    TyxJsonNodeIF *at(unsigned int index) const override;
    TyxJsonNodeIF *find(const TyxString &name) const override;

    const TyxVariant &value() const { return m_value; }

    /// The node type of a variant: invalid gives Null, bool Bool, text
    /// String, a list Array, a map Node, another numeric type Number and
    /// anything else String.
    static TyxJsonNodeType typeOf(const TyxVariant &value);

private:
    TyxString m_name;
    TyxVariant m_value;
    // The member the last at() made from a map value, and its index. It
    // points into the map m_value shares, which nobody changes while shared;
    // every change of m_value drops it.
    mutable TyxVariantMap::const_iterator m_member;
    mutable unsigned int m_position = 0;
    mutable bool m_hasPosition = false;
    TyxString m_comment;
};

} // namespace tyx::internal
