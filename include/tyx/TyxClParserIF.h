// Interface of a command-line parser, as its output sees it.
#pragma once

#include <list>
#include <vector>

#include <tyx/TyxClArg.h>
#include <tyx/TyxClOutputIF.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

class TYX_EXPORT TyxClParserIF : public TyxObject {
public:
    ~TyxClParserIF() override;
    /// "TyxClParserIF".
    TyxString className() const override;

    virtual void add(const TyxClArgPtr &arg) = 0;
    virtual void xorAdd(const TyxClArgPtr &a, const TyxClArgPtr &b) = 0;
    virtual void xorAdd(std::vector<TyxClArgPtr> &group) = 0;
    /// Narrow form: each element is UTF-8.
    virtual TyxTextMsg parse(int argc, const char *const *argv) = 0;
    virtual TyxTextMsg parse(std::vector<TyxString> &args) = 0;
    virtual void reset() = 0;
    virtual void setOutput(const TyxClOutputIFPtr &output) = 0;
    virtual TyxClOutputIFPtr output() const = 0;
    virtual wchar_t delimiter() const = 0;
    virtual bool hasHelpAndVersion() const = 0;
    virtual const TyxString &progName() const = 0;
    virtual const TyxString &message() const = 0;
    virtual const TyxString &version() const = 0;
    virtual const std::list<TyxClArgPtr> &argList() const = 0;
    virtual const std::vector<std::vector<TyxClArgPtr>> &xorList() const = 0;

protected:
    TyxClParserIF() = default;
};

} // namespace tyx
