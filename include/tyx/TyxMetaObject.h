// Description of a live object: the view through which its properties are
// read and written by name.
#pragma once

#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxString.h>

namespace tyx {

class TyxVariant;
class TyxMetaPropertiesConstPtr;

/// Short-lived, non-owning view of one object. Code that knows only names
/// and variants reads and sets the object's properties through it. A meta
/// object must not outlive the object it describes.
class TYX_EXPORT TyxMetaObject : public TyxRefCounted {
public:
    ~TyxMetaObject() override;

    /// Sets the property \p name from \p value. Returns 0 on success, 1 when
    /// there is no such property or the value does not fit it.
    virtual int setProperty(const TyxString &name, const TyxVariant &value) = 0;
    /// Reads the property \p name into \p value. Returns 0 on success, 1 when
    /// there is no such property; \p value is then left alone.
    virtual int getProperty(const TyxString &name, TyxVariant &value) = 0;
    /// The description of the class's properties.
    virtual TyxMetaPropertiesConstPtr properties() = 0;

protected:
    TyxMetaObject() = default;
};

TYX_DECLARE_SMART_PTR(TyxMetaObject);

} // namespace tyx
