// The handler in force until an application installs its own.
#include "core/TyxDefaultTextHandler.h"

#include <tyx/TyxTextMsg.h>

namespace tyx::internal {

void TyxDefaultTextHandler::handleMessage(const TyxTextMsg &message)
{
    if (message.type() == TyxTextMsg::Error)
        throw TyxTextMsg(message);
}

} // namespace tyx::internal
