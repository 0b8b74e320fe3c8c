// XML elements of variants and documents, on tinyxml2: the codec behind
// toXml, fromXml and the XML object streams.
#pragma once

#include <string>
#include <string_view>

#include <tinyxml2.h>

#include <tyx/TyxObjectProxy.h>

namespace tyx::internal {

/// The deepest nesting of elements that the writer writes and the reader
/// accepts, kept below what tinyxml2 parses so that whatever is written reads
/// back; a deeper value is written as an invalid variant.
constexpr int TyxXmlMaxDepth = TINYXML2_MAX_ELEMENT_DEPTH - 2;

/// tinyxml2's printer, which tells whether it was made compact so that each
/// element is opened the same way.
class TyxXmlPrinter : public tinyxml2::XMLPrinter {
public:
    explicit TyxXmlPrinter(bool compact) : tinyxml2::XMLPrinter(nullptr, compact), m_compact(compact) {}
    bool isCompact() const { return m_compact; }

private:
    bool m_compact;
};

/// Writes \p value as a <variant> element, with a "key" attribute when
/// \p key is not null.
void writeXmlVariant(TyxXmlPrinter &printer, const TyxVariant &value, const char *key, int depth);
/// Writes \p document as an <object> element.
void writeXmlObject(TyxXmlPrinter &printer, const TyxObjectProxy &document, int depth);

/// Reads a <variant> element into \p value (replaced only on success).
TyxTextMsg readXmlVariant(const tinyxml2::XMLElement *element, TyxVariant &value, int depth);
/// Reads an <object> element into \p document (replaced only on success).
TyxTextMsg readXmlObject(const tinyxml2::XMLElement *element, TyxObjectProxy &document, int depth);

/// Parses \p text into \p doc; the message is tinyxml2's error text, or
/// "The XML text holds no element." / "The XML text holds more than one
/// top-level element.".
TyxTextMsg parseXmlText(std::string_view text, tinyxml2::XMLDocument &doc);

/// The XML text of \p value, UTF-8.
std::string xmlText(const TyxVariant &value, bool pretty);
/// The XML text of \p document, UTF-8.
std::string xmlText(const TyxObjectProxy &document, bool pretty);

} // namespace tyx::internal
