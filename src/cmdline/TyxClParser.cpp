// Walking a command line through the arguments of a program.
#include <tyx/TyxClParser.h>

#include <tyx/TyxClExitException.h>
#include <tyx/TyxClHelpVisitor.h>
#include <tyx/TyxClStdOutput.h>
#include <tyx/TyxClSwitchArg.h>
#include <tyx/TyxClVersionVisitor.h>

#include "core/TyxPost.h"

namespace tyx {

TyxClParser::TyxClParser(const TyxString &message, const TyxString &version, wchar_t delimiter,
                         bool helpAndVersion)
    : m_message(message), m_version(version), m_delimiter(delimiter), m_helpAndVersion(helpAndVersion)
{
    constructor();
}

TyxClParser::~TyxClParser() = default;

TyxString TyxClParser::className() const { return L"TyxClParser"; }

void TyxClParser::constructor()
{
    TyxClArg::setDelimiter(m_delimiter);
    m_output = new TyxClStdOutput();
    m_ignoreRest = new TyxClIgnoreRestVisitor();
    if (!m_helpAndVersion)
        return;
    add(new TyxClSwitchArg(TyxMetaProperty(L'h', L"help", TyxString(), TyxMetaType::Bool, TyxMetaFlag(),
                                           L"Displays usage information and exits"),
                           false, new TyxClHelpVisitor(this)));
    add(new TyxClSwitchArg(TyxMetaProperty(L'v', L"version", TyxString(), TyxMetaType::Bool, TyxMetaFlag(),
                                           L"Displays version information and exits"),
                           false, new TyxClVersionVisitor(this)));
}

void TyxClParser::add(const TyxClArgPtr &arg)
{
    if (!arg)
        TYX_THROW_ERROR(L"Argument is null");
    for (const TyxClArgPtr &held : m_args) {
        if (held->matches(*arg))
            TYX_THROW_ERROR(L"Argument with same flag/name already exists: " + arg->longID());
    }
    check(arg);
    arg->setIgnoreVisitor(m_ignoreRest);
    m_args.push_back(arg);
    if (arg->isRequired())
        ++m_numRequired;
}

void TyxClParser::check(const TyxClArgPtr &arg)
{
    if (!arg->isUnlabeled())
        return;
    if (m_optionalUnlabeled)
        TYX_THROW_ERROR(L"No more unlabeled arguments are allowed following an optional unlabeled arg: " +
                        arg->longID());
    if (!arg->isRequired())
        m_optionalUnlabeled = true;
}

void TyxClParser::xorAdd(const TyxClArgPtr &a, const TyxClArgPtr &b)
{
    std::vector<TyxClArgPtr> group{a, b};
    xorAdd(group);
}

void TyxClParser::xorAdd(std::vector<TyxClArgPtr> &group)
{
    for (const TyxClArgPtr &arg : group) {
        if (!arg)
            TYX_THROW_ERROR(L"Argument is null");
        arg->setRequireLabel(L"OR required");
        if (arg->isRequired())
            arg->forceRequired();
    }
    m_xorHandler.add(group);
    for (const TyxClArgPtr &arg : group)
        add(arg);
}

TyxTextMsg TyxClParser::parse(int argc, const char *const *argv)
{
    std::vector<TyxString> args;
    for (int i = 0; i < argc && argv && argv[i]; ++i)
        args.emplace_back(argv[i]);
    return parse(args);
}

TyxTextMsg TyxClParser::parse(int argc, const wchar_t *const *argv)
{
    std::vector<TyxString> args;
    for (int i = 0; i < argc && argv && argv[i]; ++i)
        args.emplace_back(argv[i]);
    return parse(args);
}

TyxTextMsg TyxClParser::parse(std::vector<TyxString> &args)
{
    bool stopped = false;
    int status = 0;
    try {
        walk(args);
    } catch (const TyxClExitException &e) {
        stopped = true;
        status = e.status();
    } catch (const TyxTextMsg &msg) {
        if (!m_exceptionHandling)
            throw;
        if (m_output)
            m_output->failure(*this, msg);
        return msg;
    }
    if (stopped && m_exitOnHelp && m_output)
        m_output->exitProgram(status);
    return TyxTextMsg();
}

void TyxClParser::walk(std::vector<TyxString> &args)
{
    if (!args.empty()) {
        m_progName = args.front();
        args.erase(args.begin());
    }
    int requiredCount = 0;
    for (int i = 0; static_cast<size_t>(i) < args.size(); ++i) {
        // The marker is taken before any argument is offered it, so that an
        // unlabeled argument cannot swallow it.
        if (args[static_cast<size_t>(i)] == TyxClArg::nameStartString() ||
            args[static_cast<size_t>(i)] == TyxClArg::nameStartString() + TyxClArg::ignoreNameString()) {
            m_ignoreRest->visit();
            continue;
        }
        bool matched = false;
        for (const TyxClArgPtr &arg : m_args) {
            const int hitsBefore = arg->hitCount();
            if (arg->processArg(&i, args)) {
                requiredCount += m_xorHandler.check(arg);
                matched = true;
                break;
            }
            // A letter of a combined group that is not the last one used.
            if (arg->hitCount() != hitsBefore)
                requiredCount += m_xorHandler.check(arg);
        }
        if (!matched && !emptyCombined(args[static_cast<size_t>(i)]))
            TYX_THROW_ERROR(L"Couldn't find match for argument: " + args[static_cast<size_t>(i)]);
    }
    if (requiredCount < m_numRequired)
        missingArgsException();
    if (requiredCount > m_numRequired)
        TYX_THROW_ERROR(L"Too many arguments!");
}

bool TyxClParser::emptyCombined(const TyxString &text)
{
    if (text.size() < 2 || text[0] != TyxClArg::flagStartChar())
        return false;
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i] != TyxClArg::blankChar())
            return false;
    }
    return true;
}

void TyxClParser::missingArgsException() const
{
    TyxString names;
    int count = 0;
    for (const TyxClArgPtr &arg : m_args) {
        if (arg->isRequired() && !arg->isSet()) {
            if (count++ > 0)
                names += L", ";
            names += arg->name();
        }
    }
    TYX_THROW_ERROR((count > 1 ? L"Required arguments missing: " : L"Required argument missing: ") + names);
}

void TyxClParser::reset()
{
    for (const TyxClArgPtr &arg : m_args)
        arg->reset();
    m_ignoreRest->reset();
}

void TyxClParser::setOutput(const TyxClOutputIFPtr &output) { m_output = output; }

} // namespace tyx
