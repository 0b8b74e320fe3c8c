// Counted proxy and deleter interface behind TyxAutoPtr.
#include <tyx/TyxAutoPtr.h>

namespace tyx::internal {

DeleterIF::~DeleterIF() = default;

TyxAutoPtrProxy::~TyxAutoPtrProxy() { m_deleter->destroy(m_owned); }

} // namespace tyx::internal
