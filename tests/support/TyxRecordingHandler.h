// A text handler that records posted messages, and a scope that installs it for one test.
#pragma once

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>

#include <mutex>
#include <string>
#include <vector>

namespace tyx::test {

/// Records posted messages instead of throwing them; threads may post at
/// once. Read the messages after the posting threads have ended.
class RecordingHandler : public TyxTextHandler {
public:
    void handleMessage(const TyxTextMsg &message) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        messages.push_back(message);
    }
    std::vector<TyxTextMsg> messages;

private:
    std::mutex m_mutex;
};

/// Installs a recording handler for the life of a test and restores the default after it.
class HandlerScope {
public:
    HandlerScope() : handler(new RecordingHandler) { TyxCoreLibMgr::instance().setTextHandler(handler); }
    ~HandlerScope() { TyxCoreLibMgr::instance().setTextHandler(nullptr); }
    HandlerScope(const HandlerScope &) = delete;
    HandlerScope &operator=(const HandlerScope &) = delete;

    const std::vector<TyxTextMsg> &messages() const { return handler->messages; }

    /// The texts of the messages, in the order they were posted.
    std::vector<TyxString> texts() const
    {
        std::vector<TyxString> result;
        for (const TyxTextMsg &message : handler->messages)
            result.push_back(message.text());
        return result;
    }

    /// The text of the only message, or a note that there was not exactly one.
    TyxString onlyText() const
    {
        if (handler->messages.size() != 1)
            return L"<" + std::to_wstring(handler->messages.size()) + L" messages>";
        return handler->messages.front().text();
    }

    TyxSmartPtr<RecordingHandler> handler;
};

} // namespace tyx::test
