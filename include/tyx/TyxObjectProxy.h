// Document form of an object that has a meta object: its class name and its
// properties as variants.
#pragma once

#include <utility>
#include <vector>

#include <tyx/TyxObject.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// The document of one object: the class name of the object and its
/// properties, in order, as name and variant. A property that holds another
/// object holds that object's document, a variant of type TyxObjectProxy;
/// a property that holds no object (a null pointer) holds an invalid
/// variant. Documents are plain values that copy and compare; in a variant
/// (TyxObjectProxyVariant) their text is their XML.
///
/// From object to document: fromObject() reads, through the object's meta
/// object, every property that is persistable and has a getter, in the order
/// of propertyNames(true). Values whose type is registered as an object
/// holder (registerHolder(); the library registers TyxValidatorConstPtr and
/// TyxMetaProperty) are turned into nested documents.
///
/// From document to object: createObject() asks the factory registered for
/// the class name (TyxObjectFactory) for a new object, handing it all
/// properties as arguments, then applies the document to it. applyTo() works
/// on an existing object of the same class. For each property of the
/// document, in order:
///  1. the class must know the property ("Unknown property");
///  2. the value is prepared for the property's type: a nested document
///     becomes an object through its own factory, recursively; Base64 text
///     becomes a buffer for a TyxBufferPtr property; an invalid variant
///     becomes a null object for a holder type;
///  3. the property's validator, if any, must accept it;
///  4. a property that is not editable is not set: the factory made it, and
///     the document must agree with the object's value.
/// Only when every property has passed are the values set, through the meta
/// object; a setter that refuses makes the values set before it return to
/// what they were. A failure is the returned message, which names the
/// property and the class (nested failures name the whole path), and the
/// target is left unchanged.
///
/// Variant form, used for JSON: toVariant() gives a map {"class": name,
/// "properties": {name: value}}, with nested documents as such maps and
/// buffers as Base64 text; fromVariant() reads it back, taking any map of
/// exactly those two members as a nested document. JSON carries no type
/// names, so values come back as JSON kinds and take their types from the
/// properties' setters; the XML form (TyxSimpleStream, toXml) keeps every
/// type.
class TYX_EXPORT TyxObjectProxy : public TyxObject {
public:
    using PropertyList = std::vector<TyxVariantPair>;
    /// The object held by a variant of a holder type, or null.
    using ObjectOf = const TyxObject *(*)(const TyxVariant &value);
    /// Puts \p object (owned, possibly null) into \p value. Returns false,
    /// and deletes the object, when it is not of the held class.
    using VariantOf = bool (*)(TyxObject *object, TyxVariant &value);

    TyxObjectProxy() = default;
    /// An empty document of class \p objectClassName.
    explicit TyxObjectProxy(const TyxString &objectClassName);
    TyxObjectProxy(const TyxObjectProxy &) = default;
    TyxObjectProxy &operator=(const TyxObjectProxy &) = default;
    ~TyxObjectProxy() override;

    /// "TyxObjectProxy".
    TyxString className() const override;

    /// The class name of the described object.
    const TyxString &objectClassName() const { return m_objectClassName; }
    void setObjectClassName(const TyxString &name) { m_objectClassName = name; }
    /// The properties in document order.
    const PropertyList &properties() const { return m_properties; }
    /// The value of \p name (exact), or an invalid variant.
    TyxVariant property(const TyxString &name) const;
    bool contains(const TyxString &name) const;
    /// Replaces the value of \p name, or appends it.
    void setProperty(const TyxString &name, const TyxVariant &value);
    /// Removes \p name; false when it is absent.
    bool removeProperty(const TyxString &name);
    size_t size() const { return m_properties.size(); }
    bool empty() const { return m_properties.empty(); }
    void clear();

    /// Same class name and the same properties in the same order, values
    /// compared as variants.
    bool operator==(const TyxObjectProxy &other) const;
    bool operator!=(const TyxObjectProxy &other) const { return !(*this == other); }

    /// Makes \p document the document of \p object; \p document is left
    /// alone on failure (no meta object, an unreadable nested object).
    static TyxTextMsg fromObject(const TyxObject &object, TyxObjectProxy &document);
    /// Makes a new object of this document; \p object receives it (the
    /// caller's to delete) only on success.
    TyxTextMsg createObject(TyxObject *&object) const;
    /// Sets the properties of \p object from this document; unchanged on failure.
    TyxTextMsg applyTo(TyxObject &object) const;

    /// The map form described above.
    TyxVariant toVariant() const;
    /// Reads the map form into \p document; left alone on failure.
    static TyxTextMsg fromVariant(const TyxVariant &value, TyxObjectProxy &document);

    /// Registers the variant type \p type as holding objects. A second
    /// registration of a type replaces the first.
    static void registerHolder(const TyxMetaType &type, ObjectOf objectOf, VariantOf variantOf);
    /// Registers a smart pointer class \p Ptr (such as TyxValidatorConstPtr)
    /// to objects of class \p T.
    template <class Ptr, class T>
    static void registerPointerHolder()
    {
        registerHolder(
            internal::TyxVariantTraits<Ptr>::type(),
            [](const TyxVariant &value) -> const TyxObject * {
                return static_cast<const TyxVariantImpl<Ptr> &>(value.impl()).get().get();
            },
            [](TyxObject *object, TyxVariant &value) {
                T *typed = dynamic_cast<T *>(object);
                if (object && !typed) {
                    delete object;
                    return false;
                }
                value = TyxVariant(Ptr(typed));
                return true;
            });
    }
    /// Registers a value class \p T that is itself a variant type (such as
    /// TyxMetaProperty). A null object is refused.
    template <class T>
    static void registerValueHolder()
    {
        registerHolder(
            internal::TyxVariantTraits<T>::type(),
            [](const TyxVariant &value) -> const TyxObject * {
                return &static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
            },
            [](TyxObject *object, TyxVariant &value) {
                T *typed = dynamic_cast<T *>(object);
                if (!typed) {
                    delete object;
                    return false;
                }
                value = TyxVariant(*typed);
                delete typed;
                return true;
            });
    }
    /// The document of the object held by \p value, a variant of a holder
    /// type; a null object gives an empty document without a class name.
    static TyxTextMsg fromHolder(const TyxVariant &value, TyxObjectProxy &document);
    /// Makes the object of this document and puts it into \p value as a
    /// variant of the holder type \p type; a document without a class name
    /// gives the null object. \p value is left alone on failure.
    TyxTextMsg toHolder(const TyxMetaType &type, TyxVariant &value) const;
    /// Whether \p type is registered as holding objects.
    static bool isHolder(const TyxMetaType &type);

private:
    TyxString m_objectClassName;
    PropertyList m_properties;
};

/// The variant of a document, registered at run time under the name
/// "TyxObjectProxy". Its text form, and its stream form, is the document's
/// XML (TyxSimpleStream).
class TYX_EXPORT TyxObjectProxyVariant : public TyxVariantImpl<TyxObjectProxy> {
public:
    using TyxVariantImpl<TyxObjectProxy>::TyxVariantImpl;
    ~TyxObjectProxyVariant() override;
    /// Equal to another document variant with an equal document; nothing
    /// else converts to a document.
    bool isEqual(const TyxVariantIF &other) const override;
};

namespace internal {

template <>
struct TyxVariantTraits<TyxObjectProxy> : TyxRegisteredVariantTraits<TyxObjectProxy, TyxObjectProxyVariant> {
    static TyxString className() { return L"TyxObjectProxy"; }
};

/// Text through the XML form.
template <>
struct TYX_EXPORT TyxDefaultCasts<TyxObjectProxy> {
    static bool toString(const TyxObjectProxy &value, TyxString &text);
    static bool fromString(const TyxString &text, TyxObjectProxy &value);
    static void getDefault(TyxObjectProxy &value) { value = TyxObjectProxy(); }
};

} // namespace internal

} // namespace tyx
