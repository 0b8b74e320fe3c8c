// Truth test that lets pointers and tiles stand in a condition without
// converting to a number.
#pragma once

#include <tyx/TyxGlobal.h>

namespace tyx::internal {

/// Common root of the classes with a safe truth test.
class TYX_EXPORT TyxSafeBoolBase {
public:
    virtual ~TyxSafeBoolBase();
};

/// Gives a class `if (x)` and `!x` through booleanTest(); the conversion is
/// explicit, so the object never takes part in arithmetic or comparisons.
class TYX_EXPORT TyxSafeBool : public TyxSafeBoolBase {
public:
    ~TyxSafeBool() override;

    explicit operator bool() const { return booleanTest(); }

private:
    virtual bool booleanTest() const = 0;
};

} // namespace tyx::internal
