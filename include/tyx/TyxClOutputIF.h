// Where a command-line parser writes usage, version and errors.
#pragma once

#include <tyx/TyxObject.h>
#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

class TyxClParserIF;
TYX_DECLARE_SMART_PTR(TyxClOutputIF);

/// Writes what a parser has to tell the user. It also decides how the
/// program ends after help or version: exitProgram() calls std::exit by
/// default; an output that throws or records there keeps the caller in
/// control.
class TYX_EXPORT TyxClOutputIF : public TyxObject, public TyxRefCounted {
public:
    ~TyxClOutputIF() override;
    /// "TyxClOutputIF".
    TyxString className() const override;
    virtual void usage(const TyxClParserIF &parser) const = 0;
    virtual void version(const TyxClParserIF &parser) const = 0;
    virtual void failure(const TyxClParserIF &parser, const TyxTextMsg &msg) const = 0;
    /// Ends the program with \p status after help or version was shown.
    virtual void exitProgram(int status) const;

protected:
    TyxClOutputIF() = default;
};

} // namespace tyx
