// Command-line parser: holds the arguments of a program and walks its line.
#pragma once

#include <tyx/TyxClIgnoreRestVisitor.h>
#include <tyx/TyxClParserIF.h>
#include <tyx/TyxClXorHandler.h>

namespace tyx {

/// Offers each element of the command line to the arguments in the order they
/// were added; the first that takes it ends the round. "--" (or
/// "--ignore_rest") makes every argument marked "Ignorable" stand out of the
/// rest of the line.
///
/// Errors are TyxTextMsg. With exception handling on (the default) parse()
/// hands them to the output's failure() and returns them; with it off they
/// are thrown to the caller. Help and version stop the parse; with exit on
/// help set (the default) the parser then calls the output's exitProgram(0),
/// which ends the process unless the output is replaced by one that throws
/// or records; with it off parse() returns an empty message. The library
/// itself never ends the process after a parse error.
class TYX_EXPORT TyxClParser : public TyxClParserIF {
public:
    /// Sets the process-wide delimiter and, with \p helpAndVersion, adds the
    /// "-h, --help" and "-v, --version" switches.
    explicit TyxClParser(const TyxString &message, const TyxString &version = L"none",
                         wchar_t delimiter = L' ', bool helpAndVersion = true);
    TyxClParser(const TyxClParser &) = delete;
    TyxClParser &operator=(const TyxClParser &) = delete;
    ~TyxClParser() override;
    /// "TyxClParser".
    TyxString className() const override;

    /// Throws when \p arg clashes with one held, or is an unlabeled argument
    /// after an optional one.
    void add(const TyxClArgPtr &arg) override;
    void xorAdd(const TyxClArgPtr &a, const TyxClArgPtr &b) override;
    void xorAdd(std::vector<TyxClArgPtr> &group) override;
    TyxTextMsg parse(int argc, const char *const *argv) override;
    /// Wide form.
    TyxTextMsg parse(int argc, const wchar_t *const *argv);
    /// The first element is the program's name. Combined switch groups are
    /// marked in place. Returns an empty message on success.
    TyxTextMsg parse(std::vector<TyxString> &args) override;
    /// Every argument back to its default, ready for another parse.
    void reset() override;
    void setOutput(const TyxClOutputIFPtr &output) override;
    TyxClOutputIFPtr output() const override { return m_output; }
    wchar_t delimiter() const override { return m_delimiter; }
    bool hasHelpAndVersion() const override { return m_helpAndVersion; }
    const TyxString &progName() const override { return m_progName; }
    const TyxString &message() const override { return m_message; }
    const TyxString &version() const override { return m_version; }
    const std::list<TyxClArgPtr> &argList() const override { return m_args; }
    const std::vector<std::vector<TyxClArgPtr>> &xorList() const override { return m_xorHandler.groups(); }

    void setExceptionHandling(bool on) { m_exceptionHandling = on; }
    bool exceptionHandling() const { return m_exceptionHandling; }
    void setExitOnHelp(bool on) { m_exitOnHelp = on; }
    bool exitOnHelp() const { return m_exitOnHelp; }

private:
    void constructor();
    void check(const TyxClArgPtr &arg);
    static bool emptyCombined(const TyxString &text);
    void missingArgsException() const;
    void walk(std::vector<TyxString> &args);

    std::list<TyxClArgPtr> m_args;
    TyxString m_progName = L"not_set_yet";
    TyxString m_message;
    TyxString m_version;
    int m_numRequired = 0;
    wchar_t m_delimiter;
    TyxClXorHandler m_xorHandler;
    TyxClOutputIFPtr m_output;
    TyxClIgnoreRestVisitorPtr m_ignoreRest;
    bool m_exceptionHandling = true;
    bool m_optionalUnlabeled = false;
    bool m_exitOnHelp = true;
    bool m_helpAndVersion;
};

} // namespace tyx
