// A location held as one text: a path or a URL.
#pragma once

#include <iosfwd>

#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>

namespace tyx {

/// A location, kept as the text it was given. The file and plug-in classes
/// take it in place of a bare path, so a text converts to it implicitly.
class TYX_EXPORT TyxURI : public TyxObject {
public:
    TyxURI() = default;
    TyxURI(const TyxString &text) : m_text(text) {}
    TyxURI(const TyxURI &) = default;
    TyxURI &operator=(const TyxURI &) = default;
    TyxURI &operator=(const TyxString &text)
    {
        m_text = text;
        return *this;
    }
    ~TyxURI() override;

    /// "TyxURI".
    TyxString className() const override;

    void clear() { m_text.clear(); }
    bool empty() const { return m_text.empty(); }
    bool isEmpty() const { return m_text.empty(); }
    const TyxString &text() const { return m_text; }
    operator const TyxString &() const { return m_text; }

    /// A URI of canonicalizePath() of the text.
    TyxURI canonicalize() const;

    bool operator==(const TyxURI &other) const { return m_text == other.m_text; }
    bool operator!=(const TyxURI &other) const { return m_text != other.m_text; }
    bool operator==(const TyxString &text) const { return m_text == text; }
    bool operator!=(const TyxString &text) const { return m_text != text; }
    bool operator<(const TyxURI &other) const { return m_text < other.m_text; }
    bool operator>(const TyxURI &other) const { return m_text > other.m_text; }

protected:
    TyxString m_text;
};

/// Writes the text between double quotes.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxURI &uri);
/// Writes the text in UTF-8 between double quotes.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxURI &uri);
/// Reads the opening character, whatever it is, then the text up to the next
/// double quote or the end of the stream.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxURI &uri);
/// The same from UTF-8 text.
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxURI &uri);

} // namespace tyx
