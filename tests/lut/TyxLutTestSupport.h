// Helpers shared by the look-up table tests: a recording text handler.
#pragma once

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>

#include <vector>

namespace tyx::test {

/// Records posted messages instead of throwing them.
class RecordingHandler : public TyxTextHandler {
public:
    void handleMessage(const TyxTextMsg &message) override { messages.push_back(message); }
    std::vector<TyxTextMsg> messages;
};

/// Installs a recording handler for the life of a test.
class HandlerScope {
public:
    HandlerScope() : handler(new RecordingHandler) { TyxCoreLibMgr::instance().setTextHandler(handler); }
    ~HandlerScope() { TyxCoreLibMgr::instance().setTextHandler(nullptr); }
    /// The text of the only message, or a note that there was not one.
    TyxString onlyText() const
    {
        if (handler->messages.size() != 1)
            return L"<" + std::to_wstring(handler->messages.size()) + L" messages>";
        return handler->messages.front().text();
    }
    TyxSmartPtr<RecordingHandler> handler;
};

} // namespace tyx::test
