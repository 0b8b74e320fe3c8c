// Usage, long help, version and error texts on a wide stream.
#include <tyx/TyxClStdOutput.h>

#include <algorithm>
#include <iostream>

#include <tyx/TyxClParserIF.h>

namespace tyx {

namespace {

constexpr int lineWidth = 75;

bool isBreak(wchar_t c) { return c == L' ' || c == L',' || c == L'|'; }

// Whether \p arg belongs to one of the parser's exclusive groups, which the
// usage texts list apart.
bool inXorGroup(const TyxClParserIF &parser, const TyxClArg &arg)
{
    return std::any_of(parser.xorList().begin(), parser.xorList().end(), [&](const auto &group) {
        return std::any_of(group.begin(), group.end(), [&](const TyxClArgPtr &a) { return a.get() == &arg; });
    });
}

} // namespace

TyxClStdOutput::TyxClStdOutput() : m_stream(&std::wcout) {}

TyxClStdOutput::TyxClStdOutput(std::wostream &stream) : m_stream(&stream) {}

TyxClStdOutput::~TyxClStdOutput() = default;

TyxString TyxClStdOutput::className() const { return L"TyxClStdOutput"; }

void TyxClStdOutput::usage(const TyxClParserIF &parser) const
{
    std::wostream &os = *m_stream;
    os << L"\nUSAGE: \n\n";
    shortUsage(parser, os);
    os << L"\n\nWhere: \n\n";
    longUsage(parser, os);
    os << L"\n";
    os.flush();
}

void TyxClStdOutput::version(const TyxClParserIF &parser) const
{
    *m_stream << L"\n" << parser.progName() << L"  version: " << parser.version() << L"\n\n";
    m_stream->flush();
}

void TyxClStdOutput::failure(const TyxClParserIF &parser, const TyxTextMsg &msg) const
{
    std::wostream &os = *m_stream;
    os << L"PARSE ERROR: " << msg.text() << L"\n";
    if (parser.hasHelpAndVersion()) {
        os << L"Brief USAGE: \n";
        shortUsage(parser, os);
        os << L"\nFor complete USAGE and HELP type: \n   " << parser.progName() << L" --help\n";
        os.flush();
    } else {
        usage(parser);
    }
}

void TyxClStdOutput::shortUsage(const TyxClParserIF &parser, std::wostream &stream) const
{
    TyxString line = parser.progName() + L" ";
    for (const std::vector<TyxClArgPtr> &group : parser.xorList()) {
        if (group.empty())
            continue;
        line += L" {";
        for (const TyxClArgPtr &arg : group)
            line += arg->shortID(L"val") + L"|";
        line.back() = L'}';
    }
    for (const TyxClArgPtr &arg : parser.argList()) {
        if (inXorGroup(parser, *arg) || arg->isHiddenFromUsage())
            continue;
        if (arg->isRequired())
            line += L" " + arg->shortID(L"val");
        else
            line += L" [" + arg->shortID(L"val") + L"]";
    }
    spacePrint(stream, line, lineWidth, 3, 3);
}

void TyxClStdOutput::longUsage(const TyxClParserIF &parser, std::wostream &stream) const
{
    for (const std::vector<TyxClArgPtr> &group : parser.xorList()) {
        for (size_t i = 0; i < group.size(); ++i) {
            spacePrint(stream, group[i]->longID(L"val"), lineWidth, 3, 3);
            spacePrint(stream, group[i]->description(), lineWidth, 5, 0);
            if (i + 1 < group.size())
                spacePrint(stream, L"-- OR --", lineWidth, 9, 0);
        }
        stream << L"\n";
    }
    for (const TyxClArgPtr &arg : parser.argList()) {
        if (inXorGroup(parser, *arg) || arg->isHiddenFromUsage())
            continue;
        spacePrint(stream, arg->longID(L"val"), lineWidth, 3, 3);
        spacePrint(stream, arg->description(), lineWidth, 5, 0);
        stream << L"\n";
    }
    spacePrint(stream, parser.message(), lineWidth, 3, 0);
}

void TyxClStdOutput::spacePrint(std::wostream &stream, const TyxString &text, int maxWidth, int indent,
                                int secondLineOffset)
{
    const size_t size = text.size();
    if (maxWidth <= 0 || static_cast<long long>(size) + indent <= maxWidth) {
        stream << TyxString(static_cast<size_t>(std::max(indent, 0)), L' ') << text << L"\n";
        return;
    }
    int allowed = maxWidth - indent;
    size_t start = 0;
    bool first = true;
    while (start < size) {
        // At least one character per line, so that a narrow width cannot loop.
        const size_t limit = static_cast<size_t>(std::max(allowed, 1));
        size_t length = std::min(limit, size - start);
        size_t next = start + length;
        if (length == limit && next < size && text[next] != L' ') {
            // Cut after the last blank, comma or bar that fits; a blank itself
            // is dropped at the line end.
            size_t cut = length;
            while (cut > 0 && !isBreak(text[start + cut - 1]))
                --cut;
            if (cut > 0) {
                length = cut;
                next = start + cut;
            }
        }
        // A line feed inside the piece ends it sooner.
        const size_t feed = text.find(L'\n', start);
        if (feed != TyxString::npos && feed < start + length) {
            length = feed - start;
            next = feed + 1;
        }
        // No blanks at a line end.
        while (length > 0 && text[start + length - 1] == L' ')
            --length;
        stream << TyxString(static_cast<size_t>(std::max(indent, 0)), L' ') << text.substr(start, length)
               << L"\n";
        if (first) {
            indent += secondLineOffset;
            allowed -= secondLineOffset;
            first = false;
        }
        start = next;
        while (start < size && text[start] == L' ')
            ++start;
    }
}

} // namespace tyx
