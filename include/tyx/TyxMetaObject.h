// Description of a live object: the view through which its properties are
// read and written by name.
#pragma once

#include <tyx/TyxSmartPtr.h>

namespace tyx {

/// Short-lived, non-owning view of one object. The property interface joins
/// this class with the metadata area; until then it is an empty root.
class TYX_EXPORT TyxMetaObject : public TyxRefCounted {
public:
    ~TyxMetaObject() override;

protected:
    TyxMetaObject() = default;
};

TYX_DECLARE_SMART_PTR(TyxMetaObject);

} // namespace tyx
