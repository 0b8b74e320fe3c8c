// Helpers for the command-line tests: argument properties, thrown texts, and an
// output that writes to a string and records instead of exiting.
#pragma once

#include <functional>
#include <sstream>

#include <tyx/TyxClStdOutput.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxTextMsg.h>

namespace tyx::test {

/// A property for an argument; without a description it reads "About <name>".
inline TyxMetaProperty prop(wchar_t flag, const TyxString &name, const TyxString &label = TyxString(),
                            const TyxMetaType &type = TyxMetaType::String, uint32_t flags = 0,
                            const TyxString &description = TyxString())
{
    return TyxMetaProperty(flag, name, label, type, TyxMetaFlag(flags),
                           description.empty() ? TyxString(L"About " + name) : description);
}

/// The text of the message \p action throws, or a note that it threw none.
inline TyxString thrownText(const std::function<void()> &action)
{
    try {
        action();
    } catch (const TyxTextMsg &msg) {
        return msg.text();
    }
    return L"(nothing thrown)";
}

class RecordingOutput : public TyxClStdOutput {
public:
    RecordingOutput() : TyxClStdOutput(m_text) {}
    void exitProgram(int) const override { ++m_exits; }
    TyxString text() const { return m_text.str(); }
    void clear() { m_text.str(std::wstring()); }
    int exits() const { return m_exits; }

private:
    mutable std::wostringstream m_text;
    mutable int m_exits = 0;
};

} // namespace tyx::test
