// Shared objects through dlopen, dlsym and dlclose.
#include <tyx/TyxDsoHandle.h>

#include <dlfcn.h>

namespace tyx {

TyxDsoHandle::TyxDsoHandle() = default;

TyxDsoHandle::~TyxDsoHandle()
{
    if (m_unloadAtDestruction)
        unload();
}

void TyxDsoHandle::release()
{
    if (m_unloadAtDestruction)
        unload();
    else
        clear();
}

TyxTextMsg TyxDsoHandle::load(const TyxURI &uri)
{
    const TyxURI canonical = uri.canonicalize();
    if (isLoaded() && canonical == m_fileName)
        return TyxTextMsg();
    if (isLoaded())
        release();
    m_fileName = canonical;
    const std::string path = toUTF8(canonical.text());
    dlerror();
    m_handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_handle)
        return TyxTextMsg();
    const char *reason = dlerror();
    m_fileName.clear();
    return TyxTextMsg(canonical.text() + L" : " + fromUTF8(reason ? reason : "unknown loader error"),
                      __FILE__, __LINE__, TyxTextMsg::Error);
}

void TyxDsoHandle::unload()
{
    if (!m_handle)
        return;
    void *handle = m_handle;
    clear();
    dlclose(handle);
}

void TyxDsoHandle::clear()
{
    m_handle = nullptr;
    m_fileName.clear();
}

TyxDsoHandle::Function TyxDsoHandle::addressOf(const TyxString &symbol) const
{
    if (!m_handle)
        return nullptr;
    std::string narrow(symbol.size(), '\0');
    for (size_t i = 0; i < symbol.size(); ++i)
        narrow[i] = static_cast<char>(symbol[i]);
    void *address = dlsym(m_handle, narrow.c_str());
    // POSIX allows converting an object pointer from dlsym to a function pointer.
    return reinterpret_cast<Function>(address);
}

} // namespace tyx
