// Usage bits of a property, their names and text form.
#include <tyx/TyxMetaFlag.h>

#include <istream>
#include <ostream>
#include <sstream>

namespace tyx {

namespace {

// One round per set bit.
int bit_count_sparse_ones(uint32_t bits)
{
    int count = 0;
    while (bits) {
        bits &= bits - 1;
        ++count;
    }
    return count;
}

TyxMetaFlag fromText(const TyxString &text)
{
    const TyxStrList &keys = TyxMetaFlag::allKeys();
    const std::vector<TyxString> pieces = splitStr(text, L"|", false);
    uint32_t bits = 0;
    for (auto it = pieces.rbegin(); it != pieces.rend(); ++it) {
        const size_t index = keys.find(trim(*it), true);
        if (index != TyxStrList::INVALID_INDEX() && index > 0)
            bits |= 1u << (index - 1);
    }
    return TyxMetaFlag(bits);
}

} // namespace

TyxMetaFlag::TyxMetaFlag(const TyxString &text) : m_flags(fromString(text).m_flags) {}

uint32_t TyxMetaFlag::normalised(uint32_t flags)
{
    if ((flags & Return) && (flags & NoCrossRef))
        flags &= ~static_cast<uint32_t>(NoCrossRef);
    if (bit_count_sparse_ones(flags & FileBits) > 1)
        flags &= ~FileBits;
    return flags;
}

const TyxStrList &TyxMetaFlag::allKeys()
{
    static const TyxStrList keys{L"Editable",   L"ReadOnly",  L"NoCrossRef", L"NoPersist",   L"Required",
                                 L"Disabled",   L"Ignorable", L"Hidden",     L"Return",      L"System",
                                 L"Expression", L"MultiLine", L"InFileName", L"OutFileName", L"Directory"};
    return keys;
}

TyxString TyxMetaFlag::toString() const
{
    if (m_flags == 0)
        return L"(Editable)";
    const TyxStrList &keys = allKeys();
    TyxString text = L"(";
    bool first = true;
    for (int bit = 0; bit < 14; ++bit) {
        if (!(m_flags & (1u << bit)))
            continue;
        if (!first)
            text += L" | ";
        text += keys[static_cast<size_t>(bit) + 1];
        first = false;
    }
    text += L")";
    return text;
}

TyxMetaFlag TyxMetaFlag::fromString(const TyxString &text)
{
    std::wistringstream is(text);
    TyxMetaFlag flags;
    is >> flags;
    return flags;
}

std::wostream &operator<<(std::wostream &os, const TyxMetaFlag &flags)
{
    return os << static_cast<const std::wstring &>(flags.toString());
}

std::ostream &operator<<(std::ostream &os, const TyxMetaFlag &flags)
{
    return os << toUTF8(flags.toString());
}

std::wistream &operator>>(std::wistream &is, TyxMetaFlag &flags)
{
    is >> std::ws;
    std::wistream::int_type first = is.peek();
    if (first == std::wistream::traits_type::eof()) {
        is.setstate(std::ios_base::failbit);
        return is;
    }
    TyxString text;
    if (first == L'(') {
        is.get();
        wchar_t c = 0;
        bool closed = false;
        while (is.get(c)) {
            if (c == L')') {
                closed = true;
                break;
            }
            text += c;
        }
        if (!closed) {
            is.clear(is.rdstate() & ~std::ios_base::failbit);
            is.setstate(std::ios_base::failbit);
            return is;
        }
    } else {
        std::wstring word;
        is >> word;
        text = word;
    }
    flags = fromText(text);
    return is;
}

std::istream &operator>>(std::istream &is, TyxMetaFlag &flags)
{
    is >> std::ws;
    std::string text;
    if (is.peek() == '(') {
        char c = 0;
        while (is.get(c)) {
            text += c;
            if (c == ')')
                break;
        }
        if (text.back() != ')') {
            is.clear();
            is.setstate(std::ios_base::failbit);
            return is;
        }
    } else {
        is >> text;
    }
    std::wistringstream wide(fromUTF8(text));
    wide >> flags;
    if (wide.fail())
        is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace tyx
