// Tokenizer reading straight from a wide stream buffer.
#include <tyx/TyxTokenizer.h>

#include <fcntl.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <tyx/TyxFile.h>

#include "core/TyxPost.h"

namespace tyx {

namespace {

using Traits = std::char_traits<wchar_t>;

constexpr uint8_t kDelimiter = 1;
constexpr uint8_t kWhitespace = 2;
constexpr uint8_t kMarkerStart = 4; // may begin a line or block comment marker

bool holds(const TyxString &set, wchar_t c) { return set.find(c) != TyxString::npos; }

} // namespace

TyxTokenizer::TyxTokenizer(std::basic_istream<wchar_t> &stream, const TyxString &delimiters,
                           const TyxString &lineComment, const TyxString &blockBegin,
                           const TyxString &blockEnd, const TyxString &whitespace)
    : m_stream(stream), m_whitespace(whitespace), m_delimiters(delimiters), m_lineComment(lineComment),
      m_blockBegin(blockBegin), m_blockEnd(blockEnd)
{
    if (stream.fail()) {
        m_status.setText(L"Invalid input stream for the tokenizer.", __FILE__, __LINE__, TyxTextMsg::Error);
        return;
    }
    m_buffer = stream.rdbuf();
    if (!m_buffer) {
        m_status.setText(L"Failed to retrieve stream buffer for tokenizer.", __FILE__, __LINE__,
                         TyxTextMsg::Error);
        return;
    }
    if (!holds(m_whitespace, L'\n'))
        m_whitespace += L'\n';
    if (!holds(m_whitespace, L'\r'))
        m_whitespace += L'\r';
    validate();
    for (wchar_t c : m_delimiters)
        if (c >= 0 && c < 128)
            m_ascii[c] |= kDelimiter;
    for (wchar_t c : m_whitespace)
        if (c >= 0 && c < 128)
            m_ascii[c] |= kWhitespace;
    for (const TyxString *marker : {&m_lineComment, &m_blockBegin})
        if (!marker->empty() && (*marker)[0] >= 0 && (*marker)[0] < 128)
            m_ascii[(*marker)[0]] |= kMarkerStart;
}

TyxTokenizer::~TyxTokenizer() = default;

std::unique_ptr<TyxTokenizer> TyxTokenizer::create(std::basic_istream<wchar_t> &stream,
                                                   const TyxString &delimiters, const TyxString &lineComment,
                                                   const TyxString &blockBegin, const TyxString &blockEnd,
                                                   const TyxString &whitespace)
{
    auto tokenizer =
        std::make_unique<TyxTokenizer>(stream, delimiters, lineComment, blockBegin, blockEnd, whitespace);
    if (!tokenizer->m_status.empty())
        postMessage(tokenizer->m_status);
    return tokenizer;
}

void TyxTokenizer::validate()
{
    auto setError = [this](const TyxString &text) {
        m_status.setText(text, __FILE__, __LINE__, TyxTextMsg::Error);
    };
    auto hasWhite = [this](const TyxString &s) {
        for (wchar_t c : s)
            if (holds(m_whitespace, c))
                return true;
        return false;
    };

    if (m_lineComment.size() > 2)
        return setError(L"Line comment identifier, '" + m_lineComment + L"', exceeds maximum length of 2");
    if (holds(m_lineComment, L'"'))
        return setError(L"Line comment identifier, '" + m_lineComment +
                        L"' may not include literal token identifier '\"'");
    if (hasWhite(m_lineComment))
        return setError(L"Line comment identifier may not include whitespace TyxCharacters");

    const bool blockLengthsOk =
        m_blockBegin.empty() ? m_blockEnd.empty()
                             : (m_blockBegin.size() <= 2 && !m_blockEnd.empty() && m_blockEnd.size() <= 2);
    if (!blockLengthsOk)
        return setError(L"Block comment begin, '" + m_blockBegin + L"', and block comment end, '" +
                        m_blockEnd + L"', failed length test");
    if (!m_blockBegin.empty()) {
        if (holds(m_blockBegin, L'"'))
            return setError(L"Invalid character, '\"', in block comment begin identifier");
        if (holds(m_blockEnd, L'"'))
            return setError(L"Invalid  TyxCharacter, '\"', in block comment end identifier");
        if (hasWhite(m_blockBegin))
            return setError(L"White space found in block comment begin identifier");
        if (hasWhite(m_blockEnd))
            return setError(L"White  space found in block comment end identifier");
    }

    if (!m_lineComment.empty() && !m_blockBegin.empty()) {
        if (m_lineComment.size() == 1 && holds(m_blockBegin, m_lineComment[0]))
            return setError(L"The line comment TyxCharacter '" + m_lineComment +
                            L"' must differ from each TyxCharacter in the block comment begin identifier '" +
                            m_blockBegin + L"'");
        if (m_blockBegin.size() == 1 && m_lineComment.size() > 1 && holds(m_lineComment, m_blockBegin[0]))
            return setError(L"The block comment begin TyxCharacter '" + m_blockBegin +
                            L"' must differ from each TyxCharacter in the line comment identifier '" +
                            m_lineComment + L"'");
        if (m_lineComment.size() == m_blockBegin.size() && m_lineComment == m_blockBegin)
            return setError(L"Block begin comment and line comment  identifiers must differ");
    }

    for (wchar_t c : m_whitespace)
        if (holds(m_delimiters, c))
            return setError(L"'" + TyxString(1, c) +
                            L"' cannot be listed as both whitespace and as a delimiter");
    if (holds(m_whitespace, L'"'))
        return setError(L"Literal TyxCharacter, '\"', cannot be listed as a whitespace");
    if (holds(m_delimiters, L'"'))
        return setError(L"Literal TyxCharacter, '\"', cannot be listed as a delimiter");
}

bool TyxTokenizer::isDelimiter(wchar_t c) const
{
    return (c >= 0 && c < 128) ? (m_ascii[c] & kDelimiter) != 0 : holds(m_delimiters, c);
}

bool TyxTokenizer::isWhitespace(wchar_t c) const
{
    return (c >= 0 && c < 128) ? (m_ascii[c] & kWhitespace) != 0 : holds(m_whitespace, c);
}

bool TyxTokenizer::atMarker(const TyxString &marker, wchar_t first)
{
    // An empty marker never matches.
    if (marker.empty() || first != marker[0])
        return false;
    if (marker.size() == 1)
        return true;
    // Looks one character further and puts the first one back.
    m_buffer->sbumpc();
    const Traits::int_type second = m_buffer->sgetc();
    m_buffer->sputbackc(first);
    return !Traits::eq_int_type(second, Traits::eof()) && Traits::to_char_type(second) == marker[1];
}

TyxTokenizer::Kind TyxTokenizer::classify()
{
    const Traits::int_type next = m_buffer->sgetc();
    if (Traits::eq_int_type(next, Traits::eof())) {
        m_stream.setstate(std::ios_base::eofbit);
        return End;
    }
    const wchar_t c = Traits::to_char_type(next);
    if (c == L'"')
        return Quote;
    const bool ascii = c >= 0 && c < 128;
    if (!ascii || (m_ascii[c] & kMarkerStart)) {
        if (atMarker(m_lineComment, c))
            return LineComment;
        if (atMarker(m_blockBegin, c))
            return BlockComment;
    }
    if (isDelimiter(c))
        return Delim;
    if (isWhitespace(c))
        return White;
    return WordChar;
}

void TyxTokenizer::skipWhitespace()
{
    for (;;) {
        const Traits::int_type next = m_buffer->sgetc();
        if (Traits::eq_int_type(next, Traits::eof()) || !isWhitespace(Traits::to_char_type(next)))
            return;
        if (Traits::to_char_type(next) == L'\n')
            ++m_line;
        m_buffer->sbumpc();
    }
}

void TyxTokenizer::skipLineComment()
{
    for (;;) {
        const Traits::int_type c = m_buffer->sbumpc();
        if (Traits::eq_int_type(c, Traits::eof()))
            return;
        if (Traits::to_char_type(c) == L'\n') {
            ++m_line;
            return;
        }
    }
}

void TyxTokenizer::skipBlockComment()
{
    const int startLine = m_line;
    for (size_t i = 0; i < m_blockBegin.size(); ++i)
        m_buffer->sbumpc();
    for (;;) {
        const Traits::int_type next = m_buffer->sbumpc();
        if (Traits::eq_int_type(next, Traits::eof())) {
            m_status.setText(L"Failed to find closing block comment delimiter at line " +
                                 std::to_wstring(startLine) + L".",
                             __FILE__, __LINE__, TyxTextMsg::Error);
            return;
        }
        const wchar_t c = Traits::to_char_type(next);
        if (c == L'\n')
            ++m_line;
        if (c != m_blockEnd[0])
            continue;
        if (m_blockEnd.size() == 1)
            return;
        const Traits::int_type second = m_buffer->sgetc();
        if (!Traits::eq_int_type(second, Traits::eof()) && Traits::to_char_type(second) == m_blockEnd[1]) {
            m_buffer->sbumpc();
            return;
        }
    }
}

void TyxTokenizer::readLiteral(TyxString &token)
{
    const int startLine = m_line;
    m_buffer->sbumpc(); // the opening quote
    bool escaped = false;
    for (;;) {
        const Traits::int_type next = m_buffer->sbumpc();
        if (Traits::eq_int_type(next, Traits::eof())) {
            token.clear();
            m_status.setText(L"Failed to find closing literal delimiter (\") at line " +
                                 std::to_wstring(startLine) + L".",
                             __FILE__, __LINE__, TyxTextMsg::Error);
            return;
        }
        const wchar_t c = Traits::to_char_type(next);
        if (c == L'\n')
            ++m_line;
        if (escaped) {
            // The character replaces the kept backslash and is taken as it is.
            token.back() = c;
            escaped = false;
            continue;
        }
        if (c == L'"')
            return;
        token += c;
        escaped = c == L'\\';
    }
}

void TyxTokenizer::readWord(TyxString &token)
{
    for (;;) {
        const Traits::int_type next = m_buffer->sgetc();
        if (Traits::eq_int_type(next, Traits::eof()))
            return;
        const wchar_t c = Traits::to_char_type(next);
        if (c >= 0 && c < 128) {
            if (c == L'"' || (m_ascii[c] & (kDelimiter | kWhitespace)))
                return;
            if ((m_ascii[c] & kMarkerStart) && (atMarker(m_lineComment, c) || atMarker(m_blockBegin, c)))
                return;
        } else if (holds(m_delimiters, c) || holds(m_whitespace, c) || atMarker(m_lineComment, c) ||
                   atMarker(m_blockBegin, c)) {
            return;
        }
        token += c;
        m_buffer->sbumpc();
    }
}

bool TyxTokenizer::fail(TyxString &token)
{
    token.clear();
    postMessage(m_status);
    return false;
}

bool TyxTokenizer::nextToken(TyxString &token)
{
    TokenType type = Word;
    return nextToken(token, type);
}

bool TyxTokenizer::nextToken(TyxString &token, TokenType &type)
{
    token.clear();
    if (!m_status.empty())
        return fail(token);
    for (;;) {
        switch (classify()) {
        case End: return false;
        case White: skipWhitespace(); break;
        case LineComment: skipLineComment(); break;
        case BlockComment:
            skipBlockComment();
            if (!m_status.empty())
                return fail(token);
            break;
        case Quote:
            readLiteral(token);
            if (!m_status.empty())
                return fail(token);
            type = Literal;
            return !token.empty();
        case Delim:
            token = Traits::to_char_type(m_buffer->sbumpc());
            type = Delimiter;
            return true;
        case WordChar:
            readWord(token);
            type = Word;
            return !token.empty();
        }
    }
}

bool TyxTokenizer::nextData(TyxString &text, wchar_t terminator)
{
    text.clear();
    if (!m_buffer)
        return false;
    for (;;) {
        const Traits::int_type next = m_buffer->sbumpc();
        if (Traits::eq_int_type(next, Traits::eof())) {
            m_stream.setstate(std::ios_base::eofbit);
            return false;
        }
        const wchar_t c = Traits::to_char_type(next);
        if (c == L'\n')
            ++m_line;
        if (c == terminator)
            return true;
        text += c;
    }
}

bool TyxTokenizer::findToken(TyxString &token, TokenType &type, const TyxString &path, int maxBytes,
                             const TyxString &delimiters, const TyxString &lineComment,
                             const TyxString &blockBegin, const TyxString &blockEnd,
                             const TyxString &whitespace)
{
    TyxFile file;
    if (file.open(TyxURI(path), O_RDONLY) != 0) {
        TYX_POST_ERROR(L"Cannot open file for read-only access: " + path);
        return false;
    }
    const size_t size = maxBytes > 0 ? size_t(maxBytes) : 0;
    std::vector<char> bytes(size + 1, '\n');
    bytes[size] = '\0';
    size_t filled = 0;
    while (filled < size) {
        const size_t got = file.read(bytes.data() + filled, size - filled);
        if (got == TyxFile::ERROR_CODE || got == 0)
            break;
        filled += got;
    }
    // The text ends at the first zero byte, as the C string it is.
    std::wistringstream stream(fromUTF8(std::string_view(bytes.data())));
    TyxTokenizer tokenizer(stream, delimiters, lineComment, blockBegin, blockEnd, whitespace);
    if (!tokenizer.m_status.empty())
        return false;
    return tokenizer.nextToken(token, type);
}

} // namespace tyx
