// Object streams: documents of objects as JSON or XML text; the XML text of
// variants.
#pragma once

#include <iosfwd>
#include <string_view>

#include <tyx/TyxObjectProxy.h>

namespace tyx {

/// Writes objects as documents (TyxObjectProxy) in JSON or XML text and
/// reads them back, through the object's meta object on the way out and its
/// factory on the way in. Every read returns a message, empty on success,
/// and changes its target only on success.
///
/// The XML document of an object is an <object> element with the class name
/// and one <variant> element per property, keyed by the property's name:
///
///     <object class="TyxMetaProperty">
///         <variant key="name" type="TyxString">width</variant>
///         <variant key="command_flag" type="TyxChar">119</variant>
///         <variant key="validator" type="TyxObjectProxy">
///             <object class="TyxNumValidator">...</object>
///         </variant>
///     </object>
///
/// The <variant> element is the one toXml() writes, so every value keeps its
/// exact type. The JSON document is the map of TyxObjectProxy::toVariant()
/// written by toJson(): {"class": "TyxMetaProperty", "properties": {...}}.
class TYX_EXPORT TyxSimpleStream : public TyxObject {
public:
    enum Format { Json = 0, Xml = 1 };

    explicit TyxSimpleStream(Format format = Xml, bool pretty = true);
    ~TyxSimpleStream() override;

    /// "TyxSimpleStream".
    TyxString className() const override;

    Format format() const { return m_format; }
    void setFormat(Format format) { m_format = format; }
    /// Whether the text is indented, one element or member a line.
    bool isPretty() const { return m_pretty; }
    void setPretty(bool pretty) { m_pretty = pretty; }

    /// Writes the document of \p object (UTF-8). Fails, writing nothing,
    /// when the object has no meta object.
    TyxTextMsg write(std::ostream &os, const TyxObject &object) const;
    /// Writes \p document.
    TyxTextMsg write(std::ostream &os, const TyxObjectProxy &document) const;
    /// Reads the whole stream as one document into \p document.
    TyxTextMsg read(std::istream &is, TyxObjectProxy &document) const;
    /// Reads a document and makes its object; \p object receives the new
    /// object, the caller's to delete, only on success.
    TyxTextMsg readObject(std::istream &is, TyxObject *&object) const;
    /// Reads a document and applies it to \p object, which must be of the
    /// document's class; unchanged on failure.
    TyxTextMsg readInto(std::istream &is, TyxObject &object) const;

    /// Reads a document from \p text (UTF-8) in \p format: the entry point
    /// for text that is already in memory.
    static TyxTextMsg parse(std::string_view text, Format format, TyxObjectProxy &document);

private:
    Format m_format;
    bool m_pretty;
};

/// Writes \p value as XML (UTF-8): one <variant> element whose "type"
/// attribute is the text of the held type ("UInt16", "TyxDataType") and
/// whose content is the value. Numbers are written in the shortest form that
/// reads back the same, a character as its code, a bool as "true" or
/// "false"; text as it stands, or in Base64 with encoding="base64" when XML
/// would not give it back unchanged (surrounding blanks, "\r", control
/// characters). Buffers are Base64, a null buffer carries null="true". A
/// list, a map (members with a "key" attribute), a pair (its key in "name")
/// and a TyxStrList hold <variant> elements; a document holds its <object>
/// element (TyxSimpleStream). Other types use their stream form, doubles in
/// it at full precision. An invalid variant is an element without a type.
/// Values nested deeper than the XML reader accepts (98 elements) are
/// written as invalid variants.
TYX_EXPORT void toXml(std::ostream &os, const TyxVariant &value, bool pretty = false);
/// The same text on a wide stream.
TYX_EXPORT void toXml(std::wostream &os, const TyxVariant &value, bool pretty = false);
/// Reads the whole stream (UTF-8), the form toXml() writes, into \p value,
/// with exactly the type written. Returns an empty message, or an Error:
/// tinyxml2's text for malformed XML, or a text that says what is wrong and
/// ends in " at line <n>." (an unknown type name, an element where none
/// belongs, text in a list, a value that does not convert to its type, bad
/// Base64). On failure \p value is left as it was.
TYX_EXPORT TyxTextMsg fromXml(std::istream &is, TyxVariant &value);
/// The same from wide text.
TYX_EXPORT TyxTextMsg fromXml(std::wistream &is, TyxVariant &value);
/// The same from \p text in memory (UTF-8).
TYX_EXPORT TyxTextMsg fromXml(std::string_view text, TyxVariant &value);

} // namespace tyx
