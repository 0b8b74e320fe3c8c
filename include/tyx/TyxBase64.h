// Base64 coder: the standard alphabet of RFC 4648 with padding.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxTextMsg.h>

namespace tyx {

/// Turns bytes into Base64 text and back, with the standard alphabet
/// ("A" to "Z", "a" to "z", "0" to "9", "+", "/") and "=" padding to whole
/// groups of four characters. The document forms of variants and objects
/// carry buffers and other binary values through it.
///
/// Both directions return a message: empty on success, an Error that says
/// what is wrong and at which offset otherwise. On failure the output
/// argument is left as it was.
///
/// Decoding accepts line breaks ("\n" and "\r") anywhere and nothing else
/// outside the alphabet: no blanks, no URL-safe alphabet, no missing
/// padding. Unused low bits of a padded group are ignored.
class TYX_EXPORT TyxBase64 {
public:
    /// Encodes \p size bytes at \p data into \p text, replacing its content.
    /// With \p lineLength above 0 a "\n" follows every \p lineLength
    /// characters except at the very end. Fails only for a null \p data with
    /// a non-zero \p size.
    static TyxTextMsg encode(const void *data, uint64_t size, std::string &text, unsigned int lineLength = 0);
    /// Encodes \p bytes into \p text.
    static TyxTextMsg encode(const std::vector<uint8_t> &bytes, std::string &text,
                             unsigned int lineLength = 0);
    /// Decodes \p text into \p bytes, replacing their content. Fails with
    /// "Invalid Base64 character '<c>' at offset <n>.", "Misplaced Base64
    /// padding at offset <n>.", "Base64 text continues after the padding at
    /// offset <n>." or "Truncated Base64 group: the text ends after <k> of 4
    /// characters.", where offsets count characters of \p text from 0.
    static TyxTextMsg decode(std::string_view text, std::vector<uint8_t> &bytes);
    /// The same for wide text; a unit outside ASCII is a bad character.
    static TyxTextMsg decode(std::wstring_view text, std::vector<uint8_t> &bytes);

    /// The length of the encoding of \p size bytes, without line breaks.
    static constexpr uint64_t encodedSize(uint64_t size) { return (size + 2) / 3 * 4; }
};

} // namespace tyx
