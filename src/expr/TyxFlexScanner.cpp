// Scanner of expression text: stream input, column counting and token values.
#include "expr/TyxFlexScanner.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <istream>
#include <new>

#include "core/TyxPost.h"

// Entry points of the generated scanner (reentrant, prefix "tyx_yy").
using yyscan_t = void *;
int tyx_yylex_init_extra(tyx::internal::TyxFlexScanner *extra, yyscan_t *state);
int tyx_yylex(yyscan_t state);
int tyx_yylex_destroy(yyscan_t state);

namespace tyx::internal {

namespace {

// Integer literals convert as a 32-bit strtol would: too large saturates, without an error.
double saturatedValue(const std::string &text, int base)
{
    const long long value = std::strtoll(text.c_str(), nullptr, base);
    return static_cast<double>(value > INT_MAX ? INT_MAX : value);
}

} // namespace

TyxFlexScanner::TyxFlexScanner(std::istream &in) : m_in(in)
{
    if (tyx_yylex_init_extra(this, &m_state) != 0)
        throw std::bad_alloc();
}

TyxFlexScanner::~TyxFlexScanner() { tyx_yylex_destroy(m_state); }

int TyxFlexScanner::lex(TyxBisonParser::value_type *value)
{
    m_value = value;
    const int token = tyx_yylex(m_state);
    m_value = nullptr;
    return token;
}

double TyxFlexScanner::decimalValue(const std::string &text) { return saturatedValue(text, 10); }

double TyxFlexScanner::hexValue(const std::string &text) { return saturatedValue(text, 16); }

double TyxFlexScanner::floatValue(const std::string &text) { return std::strtod(text.c_str(), nullptr); }

std::size_t TyxFlexScanner::read(char *buffer, std::size_t size)
{
    if (!m_in.good())
        return 0;
    m_in.read(buffer, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(m_in.gcount());
}

void TyxFlexScanner::advanceColumn(const char *text, std::size_t length)
{
    // Counted wide so that a huge input saturates instead of overflowing.
    long long column = m_column;
    for (std::size_t i = 0; i < length; ++i) {
        switch (text[i]) {
        case '\n': column = 0; break;
        case '\t': column = column - column % 8 + 8; break;
        default: ++column; break;
        }
    }
    m_column = static_cast<int>(column > INT_MAX ? INT_MAX : column);
}

void TyxFlexScanner::setText(const char *text, std::size_t length)
{
    if (m_value)
        m_value->emplace<std::string>(text, length);
}

void TyxFlexScanner::fatalError(const char *message) { TYX_THROW_ERROR(message); }

} // namespace tyx::internal
