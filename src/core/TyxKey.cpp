// Object identity number: name and text forms.
#include <tyx/TyxKey.h>

#include <istream>
#include <ostream>

namespace tyx {

namespace {

template <class Char>
std::basic_istream<Char> &readKey(std::basic_istream<Char> &is, TyxKey &key)
{
    unsigned int value = 0;
    if (is >> value)
        key = TyxKey(value);
    else
        key.invalidate();
    return is;
}

} // namespace

TyxKey::~TyxKey() = default;

TyxString TyxKey::className() const { return L"TyxKey"; }

TyxKey::operator TyxString() const { return std::to_wstring(m_value); }

std::wostream &operator<<(std::wostream &os, const TyxKey &key) { return os << key.value(); }

std::ostream &operator<<(std::ostream &os, const TyxKey &key) { return os << key.value(); }

std::wistream &operator>>(std::wistream &is, TyxKey &key) { return readKey(is, key); }

std::istream &operator>>(std::istream &is, TyxKey &key) { return readKey(is, key); }

} // namespace tyx
