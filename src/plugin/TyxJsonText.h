// The JSON reader and writer between text and variants, over RapidJSON.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariant.h>

namespace tyx::internal {

/// The outcome of a parse: an empty message on success, otherwise the Error
/// with the line and the offset of the failure.
struct TyxJsonParseResult {
    TyxTextMsg msg;
    uint64_t line = 0;
    uint64_t offset = 0;
};

/// Parses UTF-8 \p text into \p value; \p value is left alone on failure.
TyxJsonParseResult parseJsonText(const std::string &text, TyxVariant &value);
/// Parses wide \p text into \p value; offsets count wide units.
TyxJsonParseResult parseJsonText(const std::wstring &text, TyxVariant &value);

/// The rest of the stream, read through its buffer in bulk.
std::string readAllText(std::istream &is);
std::wstring readAllText(std::wistream &is);

/// Writes \p value as JSON text to the stream, UTF-8 on a narrow one. When
/// \p pretty, \p indent gives the indent (see toJson).
void writeJsonText(std::ostream &os, const TyxVariant &value, const TyxString &indent, bool pretty);
void writeJsonText(std::wostream &os, const TyxVariant &value, const TyxString &indent, bool pretty);
/// The JSON text of \p value as a wide string.
TyxString jsonText(const TyxVariant &value, bool pretty);

/// The compact form of the JSON \p text: the reader's events written straight
/// back, so members keep their order and numbers take the writer's shortest
/// form; \p text itself when it is not JSON.
TyxString stripJsonWhiteSpace(const TyxString &text);

} // namespace tyx::internal
