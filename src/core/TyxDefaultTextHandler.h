// The handler in force until an application installs its own.
#pragma once

#include <tyx/TyxTextHandler.h>

namespace tyx::internal {

/// Throws a copy of every Error and ignores everything else: it prints nothing.
class TyxDefaultTextHandler final : public TyxTextHandler {
public:
    void handleMessage(const TyxTextMsg &message) override;
};

} // namespace tyx::internal
