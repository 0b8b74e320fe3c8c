// Process-wide owner of the text handlers and the library's version.
#pragma once

#include <tyx/TyxTextHandler.h>
#include <tyx/TyxVersion.h>

namespace tyx {

/// The library's singleton: made at the first instance() call, alive until
/// the process ends. Handlers are installed before threads start.
class TYX_EXPORT TyxCoreLibMgr {
public:
    static TyxCoreLibMgr &instance();

    TyxCoreLibMgr(const TyxCoreLibMgr &) = delete;
    TyxCoreLibMgr &operator=(const TyxCoreLibMgr &) = delete;

    /// The first call installs \p handler and marks the library initialised;
    /// later calls change nothing. Returns 0.
    int initialize(const TyxTextHandlerPtr &handler);
    /// Drops the installed handler and leaves the initialised state.
    void deInitialize();
    bool isInitialized() const { return m_initialized; }

    /// Replaces the installed handler; null uninstalls it.
    void setTextHandler(const TyxTextHandlerPtr &handler);
    /// The installed handler, else the default one, which throws errors.
    TyxTextHandlerPtr textHandler();
    TyxTextHandlerConstPtr textHandler() const;

    /// The library's version, 4.1.0.
    const TyxVersion &version() const { return m_version; }

private:
    TyxCoreLibMgr();

    bool m_initialized = false;
    TyxVersion m_version;
    TyxTextHandlerPtr m_defaultHandler;
    TyxTextHandlerPtr m_textHandler;
};

} // namespace tyx
