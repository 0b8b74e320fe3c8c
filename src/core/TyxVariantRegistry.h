// Private access to the process-wide variant registry.
#pragma once

#include <memory>

#include <tyx/TyxVariantIF.h>

namespace tyx::internal {

/// The one implementation object that every invalid variant shares.
std::shared_ptr<TyxVariantIF> invalidVariantImpl() noexcept;

/// Writes the default of \p target into \p dest when the target is a built-in
/// code whose type has joined; otherwise leaves \p dest alone.
void writeDefault(const TyxMetaType &target, void *dest);

} // namespace tyx::internal
