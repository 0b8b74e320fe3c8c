// Thrown by the help and version visitors to stop a parse.
#pragma once

#include <exception>

#include <tyx/TyxObject.h>

namespace tyx {

/// Carries the exit status the program should end with.
class TYX_EXPORT TyxClExitException : public TyxObject, public std::exception {
public:
    explicit TyxClExitException(int status = 0) : m_status(status) {}
    ~TyxClExitException() override;
    /// "TyxClExitException".
    TyxString className() const override;
    const char *what() const noexcept override;

    int status() const { return m_status; }

private:
    int m_status;
};

} // namespace tyx
