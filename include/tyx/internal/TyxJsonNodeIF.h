// The interface behind a JSON node, and the pointer a node holds it by.
#pragma once

#include <cstddef>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxGlobal.h>
#include <tyx/TyxJsonNodeType.h>
#include <tyx/TyxString.h>
#include <tyx/TyxVariant.h>

namespace tyx::internal {

/// One implementation of a JSON node: a name, a variant value and a comment.
/// The operations keep their order, since it is part of the binary
/// interface: after toJson come the four that serve iteration, in the order
/// begin, end, at, find. Every operation that makes a node answers a new
/// object that the caller owns, or null.
class TYX_EXPORT TyxJsonNodeIF {
public:
    virtual ~TyxJsonNodeIF();
    /// A copy of the name, value and comment.
    virtual TyxJsonNodeIF *clone() const = 0;
    /// Makes the value invalid and drops the comment; the name stays.
    virtual void clear() = 0;
    virtual void setValue(const TyxVariant &value) = 0;
    virtual void setName(const TyxString &name) = 0;
    virtual void setComment(const TyxString &comment) = 0;
    /// Appends the value of \p node to this value as a list. Posts an Error
    /// when \p node is of another implementation class.
    virtual void pushBack(const TyxJsonNodeIF &node) = 0;
    virtual bool empty() const = 0;
    /// Members of a Node, elements of an Array, otherwise 0.
    virtual size_t size() const = 0;
    virtual TyxJsonNodeType type() const = 0;
    virtual TyxString name() const = 0;
    virtual TyxString comment() const = 0;
    virtual bool toBool() const = 0;
    virtual TyxString toString() const = 0;
    virtual int toInt() const = 0;
    virtual double toDouble() const = 0;
    /// A node of the same name holding the value converted to a map.
    virtual TyxJsonNodeIF *toNode() const = 0;
    /// A node of the same name holding the value converted to a list.
    virtual TyxJsonNodeIF *toArray() const = 0;
    /// The JSON text of the value, pretty when \p pretty.
    virtual TyxString toJson(bool pretty) const = 0;
    /// The first member or element; null when there is none.
    virtual TyxJsonNodeIF *begin() const = 0;
    /// What an iteration ends at: null.
    virtual TyxJsonNodeIF *end() const = 0;
    /// Element \p index of a list, or member \p index in map order (its key
    /// as name); null when out of range or the value is neither.
    virtual TyxJsonNodeIF *at(unsigned int index) const = 0;
    /// The member named \p name, ignoring case; null when there is none.
    virtual TyxJsonNodeIF *find(const TyxString &name) const = 0;
};

/// Shared pointer to a node implementation; a node clones instead of sharing.
using TyxJsonNodeIFPtr = TyxAutoPtr<TyxJsonNodeIF>;

} // namespace tyx::internal
