// Replaceable sink of posted messages.
#pragma once

#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>

namespace tyx {

class TyxTextMsg;

/// Receives every posted message. It runs on the posting thread, possibly on
/// several at once, and may throw to stop the operation that posted.
class TYX_EXPORT TyxTextHandler : public TyxRefCounted {
public:
    ~TyxTextHandler() override;

    virtual void handleMessage(const TyxTextMsg &message) = 0;

protected:
    TyxTextHandler() = default;
};

TYX_DECLARE_SMART_PTR(TyxTextHandler);

} // namespace tyx
