// Implementation template of meta objects: a class's property table and the
// dispatch of property reads and writes by name.
#pragma once

#include <map>
#include <utility>

#include <tyx/TyxMetaObject.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxVariant.h>

namespace tyx {

/// Meta object of class \p Object, implemented by \p Derived. It holds a
/// plain pointer to the described object and owns nothing.
///
/// \p Derived is constructible from `Object *` and overrides initProperties()
/// to call beginProperties() once and addProperty() for each property, in
/// declared order. Each accessor is a plain function (a lambda without
/// captures will do) that receives the meta object; it returns 0 on success
/// and 1 when the value does not fit, and then leaves the object unchanged.
///
/// Concurrency: the property collection and the accessor table of each
/// \p Derived are process-wide statics built, without a lock, by the first
/// properties(), setProperty() or getProperty() of that class. A program that
/// uses a meta object class from several threads must make that first call
/// once on one thread before the others start (classProperties() will do);
/// afterwards the tables are only read.
template <class Derived, class Object>
class TyxMetaObjectImpl : public TyxMetaObject {
public:
    using Setter = int (*)(Derived &, const TyxVariant &);
    using Getter = int (*)(Derived &, TyxVariant &);
    /// Property name to (setter, getter), exact and case-sensitive.
    using AccessorTable = std::map<TyxString, std::pair<Setter, Getter>>;

    explicit TyxMetaObjectImpl(Object *object) : m_object(object) {}

    /// The described object.
    Object *object() const { return m_object; }

    /// Calls the setter of \p name, else asks superClass(); 1 when neither knows it.
    int setProperty(const TyxString &name, const TyxVariant &value) override
    {
        const auto &table = accessors();
        const auto it = table.find(name);
        if (it != table.end())
            return it->second.first ? it->second.first(static_cast<Derived &>(*this), value) : 1;
        const TyxMetaObjectPtr super = superClass();
        if (TyxMetaObject *parent = super.get(); parent && parent != this)
            return parent->setProperty(name, value);
        return 1;
    }

    /// Calls the getter of \p name, else asks superClass(); 1 when neither
    /// knows it, and \p value is then left alone.
    int getProperty(const TyxString &name, TyxVariant &value) override
    {
        const auto &table = accessors();
        const auto it = table.find(name);
        if (it != table.end())
            return it->second.second ? it->second.second(static_cast<Derived &>(*this), value) : 1;
        const TyxMetaObjectPtr super = superClass();
        if (TyxMetaObject *parent = super.get(); parent && parent != this)
            return parent->getProperty(name, value);
        return 1;
    }

    /// The class's collection, built by initProperties() on first use.
    TyxMetaPropertiesConstPtr properties() override
    {
        if (!store())
            initProperties();
        return store();
    }

    /// The meta object of the base class over the same object; null here.
    virtual TyxMetaObjectPtr superClass() { return {}; }

    /// Builds the class's collection and accessor table. The default makes
    /// an empty collection named after the described object's class.
    virtual void initProperties() { beginProperties(m_object ? m_object->className() : TyxString()); }

    /// The class's collection, built on first use without an object.
    static TyxMetaPropertiesPtr classProperties()
    {
        if (!store()) {
            Derived builder(nullptr);
            builder.initProperties();
        }
        return store();
    }

    /// Converts \p value to \p T into \p out; false, with \p out untouched,
    /// when the conversion fails.
    template <class T>
    static bool take(const TyxVariant &value, T &out)
    {
        if constexpr (internal::TyxVariantHeld<T>) {
            if constexpr (internal::TyxVariantTraits<T>::isBuiltin) {
                // The held type itself needs no conversion.
                if (value.impl().fastCode() == internal::TyxVariantTraits<T>::code) {
                    out = static_cast<const TyxVariantImpl<T> &>(value.impl()).get();
                    return true;
                }
            }
        }
        T converted{};
        if (!value.value(internal::TyxValueTarget<T>::type(), &converted))
            return false;
        out = std::move(converted);
        return true;
    }

protected:
    /// Starts the collection of the class \p className with the parent
    /// collection \p parent, and empties the accessor table.
    void beginProperties(const TyxString &className,
                         const TyxMetaPropertiesPtr &parent = TyxMetaPropertiesPtr())
    {
        table().clear();
        store() = TyxMetaPropertiesPtr(new TyxMetaProperties(className, parent));
    }

    /// Appends \p property with its accessors; a non-null \p validator is
    /// cloned into the property. A name taken already is ignored.
    void addProperty(const TyxMetaProperty &property, Setter setter, Getter getter,
                     const TyxValidator *validator = nullptr)
    {
        TyxMetaPropertyPtr entry(new TyxMetaProperty(property));
        if (validator)
            entry->setValidator(validator);
        if (store()->append(entry) == 0)
            table()[entry->name()] = std::make_pair(setter, getter);
    }

private:
    static TyxMetaPropertiesPtr &store()
    {
        static TyxMetaPropertiesPtr properties;
        return properties;
    }
    static AccessorTable &table()
    {
        static AccessorTable accessors;
        return accessors;
    }
    const AccessorTable &accessors()
    {
        if (!store())
            initProperties();
        return table();
    }

    Object *m_object;
};

} // namespace tyx
