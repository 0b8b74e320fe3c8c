// Action an argument runs when the command line gives it.
#pragma once

#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

TYX_DECLARE_SMART_PTR(TyxClArgVisitorIF);

/// Runs when its argument is found on the command line.
class TYX_EXPORT TyxClArgVisitorIF : public TyxObject, public TyxRefCounted {
public:
    ~TyxClArgVisitorIF() override;
    /// "TyxClArgVisitorIF".
    TyxString className() const override;
    /// A new visitor doing the same.
    virtual TyxClArgVisitorIF *clone() const = 0;
    /// The action. May throw TyxClExitException to end the parse.
    virtual void visit() const = 0;

protected:
    TyxClArgVisitorIF() = default;
    TyxClArgVisitorIF(const TyxClArgVisitorIF &other) : TyxObject(other), TyxRefCounted() {}
};

} // namespace tyx
