// Process-wide owner of the text handlers.
#include <tyx/TyxCoreLibMgr.h>

#include "core/TyxDefaultTextHandler.h"

namespace tyx {

TyxCoreLibMgr::TyxCoreLibMgr()
    : m_version(TYX_VERSION_MAJOR, TYX_VERSION_MINOR, TYX_VERSION_PATCH),
      m_defaultHandler(new internal::TyxDefaultTextHandler)
{
}

TyxCoreLibMgr &TyxCoreLibMgr::instance()
{
    // Never destroyed, so that messages posted from static destructors still
    // find a handler.
    static TyxCoreLibMgr *const manager = new TyxCoreLibMgr;
    return *manager;
}

int TyxCoreLibMgr::initialize(const TyxTextHandlerPtr &handler)
{
    if (!m_initialized) {
        setTextHandler(handler);
        m_initialized = true;
    }
    return 0;
}

void TyxCoreLibMgr::deInitialize()
{
    if (m_initialized) {
        m_textHandler = nullptr;
        m_initialized = false;
    }
}

void TyxCoreLibMgr::setTextHandler(const TyxTextHandlerPtr &handler)
{
    const TyxTextHandlerPtr keep(handler);
    m_textHandler = keep;
}

TyxTextHandlerPtr TyxCoreLibMgr::textHandler() { return m_textHandler ? m_textHandler : m_defaultHandler; }

TyxTextHandlerConstPtr TyxCoreLibMgr::textHandler() const
{
    return m_textHandler ? TyxTextHandlerConstPtr(m_textHandler) : TyxTextHandlerConstPtr(m_defaultHandler);
}

} // namespace tyx
