// Tokenizer of wide text streams with chosen delimiters, white space and comments.
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <memory>
#include <streambuf>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

/// Cuts a wide stream into tokens. Delimiter characters are tokens by
/// themselves; white space separates tokens; a line comment runs from its
/// marker (one or two characters) to the end of the line; a block comment
/// runs from its begin marker to its end marker; a double quote opens a
/// literal, in which a backslash makes the next character plain. Characters
/// are read straight from the stream's buffer, and the line number is kept
/// for messages.
///
/// The stream is not owned and must outlive the tokenizer. One thread at a
/// time.
class TYX_EXPORT TyxTokenizer {
public:
    /// Kind of the token found last.
    enum TokenType { Word = 0, Literal = 1, Delimiter = 2 };

    /// Validates the character sets; a failure is kept in status() and makes
    /// every nextToken() post it and answer false. Newline and carriage
    /// return are added to \p whitespace when absent.
    TyxTokenizer(std::basic_istream<wchar_t> &stream, const TyxString &delimiters,
                 const TyxString &lineComment, const TyxString &blockBegin, const TyxString &blockEnd,
                 const TyxString &whitespace);
    TyxTokenizer(const TyxTokenizer &) = delete;
    TyxTokenizer &operator=(const TyxTokenizer &) = delete;
    ~TyxTokenizer();

    /// Makes a tokenizer and posts its status if construction left one.
    static std::unique_ptr<TyxTokenizer> create(std::basic_istream<wchar_t> &stream,
                                                const TyxString &delimiters, const TyxString &lineComment,
                                                const TyxString &blockBegin, const TyxString &blockEnd,
                                                const TyxString &whitespace);

    /// Reads the next token into \p token, skipping white space and comments.
    /// True when \p token is not empty afterwards: false at the end of input,
    /// for an empty literal, and after a failure, which is posted with the
    /// token cleared.
    bool nextToken(TyxString &token);
    /// The same, also telling the kind of token in \p type.
    bool nextToken(TyxString &token, TokenType &type);
    /// Reads raw characters into \p text up to \p terminator, which is
    /// consumed and not kept. False at the end of input, with \p text holding
    /// what was read.
    bool nextData(TyxString &text, wchar_t terminator);

    /// The current line, from 1.
    int lineNumber() const { return m_line; }
    void setLineNumber(int line) { m_line = line; }
    /// A copy of the status: empty while all is well.
    TyxTextMsg status() const { return m_status; }

    /// The first token of the file at \p path, from at most \p maxBytes bytes
    /// at its start (decoded as UTF-8, padded with newlines when the file is
    /// shorter). False when the file cannot be opened (posted), when the
    /// character sets are invalid or when there is no token.
    static bool findToken(TyxString &token, TokenType &type, const TyxString &path, int maxBytes,
                          const TyxString &delimiters, const TyxString &lineComment,
                          const TyxString &blockBegin, const TyxString &blockEnd,
                          const TyxString &whitespace);

private:
    enum Kind { End, Quote, LineComment, BlockComment, Delim, White, WordChar };

    void validate();
    Kind classify();
    bool atMarker(const TyxString &marker, wchar_t first);
    bool isDelimiter(wchar_t c) const;
    bool isWhitespace(wchar_t c) const;
    void skipWhitespace();
    void skipLineComment();
    void skipBlockComment();
    void readLiteral(TyxString &token);
    void readWord(TyxString &token);
    bool fail(TyxString &token);

    std::basic_istream<wchar_t> &m_stream;
    std::basic_streambuf<wchar_t> *m_buffer = nullptr;
    TyxString m_whitespace;
    TyxString m_delimiters;
    TyxString m_lineComment;
    TyxString m_blockBegin;
    TyxString m_blockEnd;
    int m_line = 1;
    TyxTextMsg m_status;
    // Classes of the ASCII characters, so that the common case is one load.
    std::array<uint8_t, 128> m_ascii{};
};

} // namespace tyx
