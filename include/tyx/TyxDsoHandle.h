// Handle on one dynamic shared object opened through the system loader.
#pragma once

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxURI.h>

namespace tyx {

/// Opens a shared object with dlopen (RTLD_NOW | RTLD_LOCAL) and looks up its
/// symbols. Not copyable: one handle, one release.
class TYX_EXPORT TyxDsoHandle {
public:
    /// A plain function pointer, the type addressOf answers.
    using Function = void (*)();

    TyxDsoHandle();
    TyxDsoHandle(const TyxDsoHandle &) = delete;
    TyxDsoHandle &operator=(const TyxDsoHandle &) = delete;
    /// Releases the object when unloadAtDestruction is set, otherwise only
    /// forgets it.
    ~TyxDsoHandle();

    /// Opens the canonical form of \p uri. Loading the file already open
    /// succeeds at once; another open file is released first. On failure the
    /// Error reads "<path> : <loader text>" and nothing stays open.
    TyxTextMsg load(const TyxURI &uri);
    /// Forgets handle and name, then releases the object; nothing when
    /// nothing is open.
    void unload();
    /// Forgets handle and name without releasing the object, for when its
    /// own code is running.
    void clear();
    /// The address of \p symbol (narrowed to 8 bits), or null when nothing is
    /// open or the symbol is missing.
    Function addressOf(const TyxString &symbol) const;

    bool isLoaded() const { return m_handle != nullptr; }
    /// The canonical location of the open file; empty when none is.
    const TyxURI &fileName() const { return m_fileName; }
    /// Whether destruction releases the object (true by default).
    void unloadAtDestruction(bool unload) { m_unloadAtDestruction = unload; }

private:
    void release();

    bool m_unloadAtDestruction = true;
    void *m_handle = nullptr;
    TyxURI m_fileName;
};

} // namespace tyx
