// The shared state of a plug-in and the callbacks a dying protocol runs.
#pragma once

#include <memory>

#include <tyx/TyxDsoHandle.h>
#include <tyx/TyxPluginLibrary.h>
#include <tyx/TyxPluginProtocol.h>

namespace tyx::internal {

/// What a plug-in shares with its destroy callback.
struct TyxPluginBody {
    TyxPluginProtocolPtr protocol;
    TyxDsoHandle dso;
};

/// Forgets protocol and handle of a plug-in whose protocol dies; the handle
/// is not released, since the shared object's code is on the stack.
struct PluginDestroyCallback {
    std::shared_ptr<TyxPluginBody> body;
    void operator()() const
    {
        body->protocol = TyxPluginProtocolPtr();
        body->dso.clear();
    }
};

} // namespace tyx::internal
