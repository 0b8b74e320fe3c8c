// The implementation of the variant that holds text.
#include <tyx/TyxStringVariant.h>

#include <cwctype>
#include <string>

namespace tyx {

std::wistream &TyxStringVariant::read(std::wistream &is)
{
    m_value.clear();
    std::wistream::sentry sentry(is); // skips leading blanks
    if (!sentry) {
        // Nothing but blanks: an empty text, which is not a failure.
        if (is.eof())
            is.clear(std::ios_base::eofbit);
        return is;
    }
    if (is.peek() == L'"') {
        is.get();
        std::wstring quoted;
        std::getline(is, quoted, L'"');
        m_value = quoted;
        return is;
    }
    m_value = internal::readRest(is);
    return is;
}

} // namespace tyx
