// Object streams in JSON and XML.
#include <tyx/TyxSimpleStream.h>

#include <iterator>
#include <ostream>
#include <sstream>

#include <tyx/TyxJsonNode.h>

#include "core/TyxPost.h"
#include "document/TyxXmlText.h"

namespace tyx {

namespace {

std::string readAll(std::istream &is)
{
    return std::string(std::istreambuf_iterator<char>(is), std::istreambuf_iterator<char>());
}

} // namespace

TyxSimpleStream::TyxSimpleStream(Format format, bool pretty) : m_format(format), m_pretty(pretty) {}

TyxSimpleStream::~TyxSimpleStream() = default;

TyxString TyxSimpleStream::className() const { return L"TyxSimpleStream"; }

TyxTextMsg TyxSimpleStream::write(std::ostream &os, const TyxObject &object) const
{
    TyxObjectProxy document;
    if (TyxTextMsg msg = TyxObjectProxy::fromObject(object, document); !msg.empty())
        return msg;
    return write(os, document);
}

TyxTextMsg TyxSimpleStream::write(std::ostream &os, const TyxObjectProxy &document) const
{
    if (m_format == Json)
        toJson(os, document.toVariant(), TyxString(), m_pretty);
    else
        os << internal::xmlText(document, m_pretty);
    if (!os)
        return TYX_ERROR_MSG(L"The document of class '" + document.objectClassName() +
                             L"' could not be written to the stream.");
    return TyxTextMsg();
}

TyxTextMsg TyxSimpleStream::parse(std::string_view text, Format format, TyxObjectProxy &document)
{
    if (format == Json) {
        std::istringstream is{std::string(text)};
        TyxVariant value;
        if (TyxTextMsg msg = fromJson(is, value); !msg.empty())
            return msg;
        return TyxObjectProxy::fromVariant(value, document);
    }
    tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
    if (TyxTextMsg msg = internal::parseXmlText(text, doc); !msg.empty())
        return msg;
    return internal::readXmlObject(doc.RootElement(), document, 0);
}

TyxTextMsg TyxSimpleStream::read(std::istream &is, TyxObjectProxy &document) const
{
    return parse(readAll(is), m_format, document);
}

TyxTextMsg TyxSimpleStream::readObject(std::istream &is, TyxObject *&object) const
{
    TyxObjectProxy document;
    if (TyxTextMsg msg = read(is, document); !msg.empty())
        return msg;
    return document.createObject(object);
}

TyxTextMsg TyxSimpleStream::readInto(std::istream &is, TyxObject &object) const
{
    TyxObjectProxy document;
    if (TyxTextMsg msg = read(is, document); !msg.empty())
        return msg;
    return document.applyTo(object);
}

} // namespace tyx
