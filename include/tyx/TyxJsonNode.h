// A JSON document as a tree of named variants, and the JSON text functions.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxJsonNodeType.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>
#include <tyx/internal/TyxJsonNodeIF.h>

namespace tyx {

/// The deepest nesting of arrays and objects that fromJson accepts; a deeper
/// text fails with a message instead of exhausting the stack. toJson writes
/// containers nested deeper than this as null.
inline constexpr unsigned int TyxJsonMaxDepth = 512;

/// A value-like JSON node: a name and a variant. A "Node" holds a
/// TyxVariantMap (member names match ignoring case), an "Array" a
/// TyxVariantList. Copies do not share. A node made by a failed parse holds
/// nothing: it is empty, of type Null, and answers defaults.
class TYX_EXPORT TyxJsonNode : public TyxObject {
public:
    /// Where an iteration stands: the implementation walked and the index of
    /// the current member or element in it.
    struct IterState {
        /// The index of a member that find made, until a step needs it.
        static constexpr unsigned int unknownIndex = ~0u;
        const internal::TyxJsonNodeIF *owner = nullptr;
        unsigned int index = 0;
    };

    /// Walks the members of a Node in map order (each named by its key) or
    /// the elements of an Array (unnamed). Each step makes a new node holding
    /// a copy of the value: changing it leaves the walked node alone. An
    /// iterator is valid while the walked node lives and keeps its value.
    template <class T>
    class iterator_p;
    using iterator = iterator_p<TyxJsonNode>;
    using const_iterator = iterator_p<const TyxJsonNode>;

    /// An empty node holding nothing.
    TyxJsonNode();
    /// A node with an empty name and the empty value of \p type: an empty
    /// map, an empty list, "", 0.0, false, or invalid for Null.
    explicit TyxJsonNode(const TyxJsonNodeType &type);
    TyxJsonNode(const TyxString &name, const TyxVariant &value);
    TyxJsonNode(const TyxJsonNode &other);
    TyxJsonNode(TyxJsonNode &&other) noexcept;
    ~TyxJsonNode() override;

    TyxJsonNode &operator=(const TyxJsonNode &other);
    TyxJsonNode &operator=(TyxJsonNode &&other) noexcept;
    /// Sets the value, keeping the name.
    TyxJsonNode &operator=(const TyxVariant &value);

    TyxString className() const override;

    /// Whether the node holds an implementation at all.
    bool isNull() const { return !m_impl; }

    /// Makes the value invalid and drops the comment; the name stays.
    void clear();
    /// size() == 0.
    bool empty() const;
    /// Members of a Node, elements of an Array, otherwise 0.
    size_t size() const;
    TyxJsonNodeType type() const;
    TyxString name() const;
    void setName(const TyxString &name);
    /// A free text kept with the node; toJson does not write it.
    TyxString comment() const;
    void setComment(const TyxString &comment);
    /// The held variant.
    TyxVariant value() const;
    void setValue(const TyxVariant &value);
    /// Appends the value of \p node to this value as a list; a value that is
    /// not a list becomes the first element. Posts the Error "Cannot pushBack
    /// an TyxJsonNodeIFPtr instantiated by a different TyxJsonNode
    /// implementation." when \p node holds another implementation or none.
    void pushBack(const TyxJsonNode &node);

    /// The value through the variant's conversions.
    bool toBool() const;
    double toDouble() const;
    int toInt() const;
    TyxString toString() const;
    /// A node holding this value as a map (an Array or a scalar gives an
    /// empty map unless the variant converts).
    TyxJsonNode toNode() const;
    /// A node holding this value as a list.
    TyxJsonNode toArray() const;
    /// The JSON text of the value, pretty when \p pretty.
    TyxString toJson(bool pretty = false) const;

    /// The first member or element; the end for any other node.
    iterator begin();
    const_iterator begin() const;
    iterator end();
    const_iterator end() const;

    /// Element \p index of an Array, or member \p index in map order of a
    /// Node (its key as name); the end when out of range. Walking the indices
    /// in order takes one step each.
    iterator at(unsigned int index);
    const_iterator at(unsigned int index) const;
    /// The member named \p name, matched ignoring case; the end when there is
    /// none. Stepping on from it walks the members after it.
    iterator find(const TyxString &name);
    const_iterator find(const TyxString &name) const;

    /// The node of \p text with an empty name, or a node holding nothing when
    /// the text is not JSON.
    static TyxJsonNode parse(const TyxString &text);
    static TyxJsonNode parse(std::istream &is);
    static TyxJsonNode parse(std::wistream &is);
    /// Whether \p text parses.
    static bool isValid(const TyxString &text);
    /// Whether the stream parses; on failure \p line and \p offset tell where.
    static bool isValid(std::istream &is, uint64_t &line, uint64_t &offset);
    static bool isValid(std::wistream &is, uint64_t &line, uint64_t &offset);
    /// The compact form of the JSON \p text; \p text unchanged when it is not JSON.
    static TyxString stripWhiteSpace(const TyxString &text);

private:
    /// Takes \p impl, which the caller made with new; null holds nothing.
    static TyxJsonNode adopt(internal::TyxJsonNodeIF *impl);
    /// The index of the member named \p name in \p owner.
    static unsigned int indexOf(const internal::TyxJsonNodeIF &owner, const TyxString &name);
    explicit TyxJsonNode(const internal::TyxJsonNodeIFPtr &impl);

    internal::TyxJsonNodeIFPtr m_impl;
};

template <class T>
class TyxJsonNode::iterator_p {
public:
    iterator_p() = default;
    T &operator*() const { return m_current; }
    T *operator->() const { return &m_current; }
    iterator_p &operator++()
    {
        step();
        return *this;
    }
    iterator_p operator++(int)
    {
        iterator_p before = *this;
        step();
        return before;
    }
    /// Iterators at the end are equal; others when at one place of one node.
    template <class U>
    bool operator==(const iterator_p<U> &other) const
    {
        return atEnd() == other.atEnd() &&
               (atEnd() || (m_state.owner == other.m_state.owner && m_state.index == other.m_state.index));
    }
    template <class U>
    bool operator!=(const iterator_p<U> &other) const
    {
        return !(*this == other);
    }

private:
    friend class TyxJsonNode;
    template <class>
    friend class iterator_p;
    iterator_p(const IterState &state, TyxJsonNode &&current) : m_state(state), m_current(std::move(current))
    {
        if (atEnd())
            m_state = IterState();
    }
    bool atEnd() const { return m_current.isNull(); }
    void step()
    {
        if (atEnd())
            return;
        if (m_state.index == IterState::unknownIndex)
            m_state.index = TyxJsonNode::indexOf(*m_state.owner, m_current.name());
        ++m_state.index;
        m_current = TyxJsonNode::adopt(m_state.owner->at(m_state.index));
        if (atEnd())
            m_state = IterState();
    }

    IterState m_state;
    mutable TyxJsonNode m_current;
};

inline TyxJsonNode::iterator TyxJsonNode::begin()
{
    return m_impl ? iterator({m_impl.get(), 0}, adopt(m_impl->begin())) : iterator();
}
inline TyxJsonNode::const_iterator TyxJsonNode::begin() const
{
    return m_impl ? const_iterator({m_impl.get(), 0}, adopt(m_impl->begin())) : const_iterator();
}
inline TyxJsonNode::iterator TyxJsonNode::end() { return iterator(); }
inline TyxJsonNode::const_iterator TyxJsonNode::end() const { return const_iterator(); }
inline TyxJsonNode::iterator TyxJsonNode::at(unsigned int index)
{
    return m_impl ? iterator({m_impl.get(), index}, adopt(m_impl->at(index))) : iterator();
}
inline TyxJsonNode::const_iterator TyxJsonNode::at(unsigned int index) const
{
    return m_impl ? const_iterator({m_impl.get(), index}, adopt(m_impl->at(index))) : const_iterator();
}
inline TyxJsonNode::iterator TyxJsonNode::find(const TyxString &name)
{
    return m_impl ? iterator({m_impl.get(), IterState::unknownIndex}, adopt(m_impl->find(name))) : iterator();
}
inline TyxJsonNode::const_iterator TyxJsonNode::find(const TyxString &name) const
{
    return m_impl ? const_iterator({m_impl.get(), IterState::unknownIndex}, adopt(m_impl->find(name)))
                  : const_iterator();
}

/// Shares a node; a copy of the pointer is the same node.
using TyxJsonNodePtr = TyxAutoPtr<TyxJsonNode>;

/// Writes toJson(false).
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxJsonNode &node);
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxJsonNode &node);
/// Parses the rest of the stream; a failure sets the fail bit and leaves a
/// node holding nothing.
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxJsonNode &node);
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxJsonNode &node);

/// Parses the whole stream (UTF-8) into \p value: objects give a
/// TyxVariantMap, arrays a TyxVariantList, strings a TyxString, true and false
/// a bool, null an invalid variant, and numbers an int, unsigned int, int64,
/// uint64 or double as the reader reports them. Returns an empty message, or
/// an Error "<reader text> (Line: <line> Offset: <offset>)"; on failure
/// \p value is left as it was.
TYX_EXPORT TyxTextMsg fromJson(std::istream &is, TyxVariant &value);
/// The same from wide text; the offset counts wide characters.
TYX_EXPORT TyxTextMsg fromJson(std::wistream &is, TyxVariant &value);
/// Writes \p value as UTF-8 JSON. When \p pretty, \p indent gives the indent:
/// one of ' ', '\t', '\n', '\r' repeated; empty or anything else means four
/// spaces. Numbers come in the shortest form that reads back the same; a
/// non-finite number, and any value that is not a bool, number, text, list or
/// map, is written as its text (non-finite numbers as null).
TYX_EXPORT void toJson(std::ostream &os, const TyxVariant &value, const TyxString &indent = TyxString(),
                       bool pretty = false);
TYX_EXPORT void toJson(std::wostream &os, const TyxVariant &value, const TyxString &indent = TyxString(),
                       bool pretty = false);

} // namespace tyx
