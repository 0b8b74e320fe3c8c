// Scanner of expression text: turns a byte stream into the tokens of the grammar.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "TyxBisonParser.h"

namespace tyx::internal {

/// Splits expression text, read as UTF-8 bytes from a stream, into tokens.
/// It keeps the column after the last token read, for error messages, and
/// hands the text of value-carrying tokens (numbers, strings, names) to the
/// parser through the value slot of the current call.
class TyxFlexScanner {
public:
    /// A scanner over \p in, which must outlive it.
    explicit TyxFlexScanner(std::istream &in);
    ~TyxFlexScanner();
    TyxFlexScanner(const TyxFlexScanner &) = delete;
    TyxFlexScanner &operator=(const TyxFlexScanner &) = delete;

    /// Reads the next token: its code (a character code or a named token),
    /// 0 at the end of the input. A token with text stores it in \p value.
    int lex(TyxBisonParser::value_type *value);

    /// The column after the last token read: a line feed resets it to 0, a
    /// tab moves it to the next multiple of 8, any other byte adds 1.
    int column() const { return m_column; }

    /// Value of an integer token: base 10, saturated at 2147483647.
    static double decimalValue(const std::string &text);
    /// Value of a hexadecimal token with its "0x": saturated at 2147483647.
    static double hexValue(const std::string &text);
    /// Value of a float or exponent token, as strtod gives it.
    static double floatValue(const std::string &text);

    // The generated rules call these.

    /// Fills \p buffer with up to \p size bytes of input; 0 at the end.
    std::size_t read(char *buffer, std::size_t size);
    /// Moves the column over \p length bytes of matched \p text.
    void advanceColumn(const char *text, std::size_t length);
    /// Stores the matched text as the value of the token being returned.
    void setText(const char *text, std::size_t length);
    /// Turns a fatal condition of the generated code into an exception.
    [[noreturn]] static void fatalError(const char *message);

private:
    std::istream &m_in;
    void *m_state = nullptr;
    int m_column = 0;
    TyxBisonParser::value_type *m_value = nullptr;
};

} // namespace tyx::internal
