// Output for the tests: writes to a string and records instead of exiting.
#pragma once

#include <sstream>

#include <tyx/TyxClStdOutput.h>

namespace tyx::test {

class RecordingOutput : public TyxClStdOutput {
public:
    RecordingOutput() : TyxClStdOutput(m_text) {}
    void exitProgram(int status) const override
    {
        ++m_exits;
        m_status = status;
    }
    TyxString text() const { return m_text.str(); }
    void clear() { m_text.str(std::wstring()); }
    int exits() const { return m_exits; }
    int status() const { return m_status; }

private:
    mutable std::wostringstream m_text;
    mutable int m_exits = 0;
    mutable int m_status = -1;
};

} // namespace tyx::test
