// Bit set that says how a property may be used.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxStrList.h>
#include <tyx/TyxString.h>

namespace tyx {

/// The usage bits of a property. Construction from a number or from text
/// normalises the bits: "Return" clears "NoCrossRef", and more than one of
/// the three file and directory bits clears all three.
class TYX_EXPORT TyxMetaFlag {
public:
    enum Flags : uint32_t {
        Editable = 0x0000,
        ReadOnly = 0x0001,
        NoCrossRef = 0x0002,
        NoPersist = 0x0004,
        Required = 0x0008,
        Disabled = 0x0010,
        Ignorable = 0x0020,
        Hidden = 0x0040,
        Return = 0x0080,
        System = 0x0100,
        Expression = 0x0200,
        MultiLine = 0x0400,
        InFileName = 0x0800,
        OutFileName = 0x1000,
        Directory = 0x2000
    };
    /// The three bits that name a file or a directory.
    static constexpr uint32_t FileBits = InFileName | OutFileName | Directory;

    TyxMetaFlag() = default;
    TyxMetaFlag(Flags flags) : m_flags(normalised(flags)) {}
    explicit TyxMetaFlag(unsigned int flags) : m_flags(normalised(flags)) {}
    /// The flags named in \p text, as fromString() reads them.
    explicit TyxMetaFlag(const TyxString &text);

    operator Flags() const { return static_cast<Flags>(m_flags); }
    operator TyxString() const { return toString(); }
    uint32_t value() const { return m_flags; }
    /// "(" the names of the set bits, low bit first, joined by " | ", ")";
    /// "(Editable)" for none.
    TyxString toString() const;

    bool isEditable() const { return (m_flags & (ReadOnly | Disabled)) == 0; }
    bool isHidden() const { return (m_flags & (Hidden | System)) != 0; }
    bool isReadable() const { return (m_flags & System) == 0; }
    bool isParameterizable() const { return (m_flags & NoCrossRef) == 0; }
    bool isPersistable() const { return (m_flags & NoPersist) == 0; }
    bool isDisabled() const { return (m_flags & Disabled) != 0; }
    bool isIgnorable() const { return (m_flags & Ignorable) != 0; }
    bool isRequired() const { return (m_flags & Required) != 0; }
    bool isReturn() const { return (m_flags & Return) != 0; }
    bool isSystem() const { return (m_flags & System) != 0; }
    bool isExpression() const { return (m_flags & Expression) != 0; }
    bool isMultiLine() const { return (m_flags & MultiLine) != 0; }
    bool isInFilename() const { return (m_flags & FileBits) == InFileName; }
    bool isOutFilename() const { return (m_flags & FileBits) == OutFileName; }
    bool isDirectory() const { return (m_flags & FileBits) == Directory; }

    bool operator==(const TyxMetaFlag &other) const { return m_flags == other.m_flags; }
    bool operator!=(const TyxMetaFlag &other) const { return m_flags != other.m_flags; }

    /// The fifteen names, "Editable" first, in bit order.
    static const TyxStrList &allKeys();
    /// The flags named in \p text, "(a | b)" or "a|b"; unknown words are
    /// skipped, so bad text gives 0.
    static TyxMetaFlag fromString(const TyxString &text);
    /// \p flags with the normalisation rules applied.
    static uint32_t normalised(uint32_t flags);

private:
    uint32_t m_flags = 0;
};

TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMetaFlag &flags);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMetaFlag &flags);
/// Reads "(a | b)" or one word; an unclosed "(" sets the failure bit and
/// leaves \p flags unchanged.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxMetaFlag &flags);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxMetaFlag &flags);

} // namespace tyx
