// Failure handling of the for-loop base.
#include <tyx/TyxForLoopBase.h>

namespace tyx {

void TyxForLoopBase::caught(TyxTextMsg &failure, const char *what)
{
    failure.setText(TyxString(what), __FILE__, __LINE__, TyxTextMsg::Error);
}

void TyxForLoopBase::caughtUnknown(TyxTextMsg &failure)
{
    failure.setText(L"Caught an unknown exception.", __FILE__, __LINE__, TyxTextMsg::Error);
}

bool TyxForLoopBase::postFailure(const TyxTextMsg &failure)
{
    if (failure.empty())
        return false;
    postMessage(failure);
    return true;
}

} // namespace tyx
