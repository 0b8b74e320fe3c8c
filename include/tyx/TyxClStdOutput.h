// Console output of a command-line parser: usage, long help and errors.
#pragma once

#include <iosfwd>

#include <tyx/TyxClOutputIF.h>

namespace tyx {

/// Writes to the standard wide output, or to the stream given.
class TYX_EXPORT TyxClStdOutput : public TyxClOutputIF {
public:
    TyxClStdOutput();
    /// Writes to \p stream, which must outlive the output.
    explicit TyxClStdOutput(std::wostream &stream);
    ~TyxClStdOutput() override;
    /// "TyxClStdOutput".
    TyxString className() const override;
    void usage(const TyxClParserIF &parser) const override;
    void version(const TyxClParserIF &parser) const override;
    void failure(const TyxClParserIF &parser, const TyxTextMsg &msg) const override;

    /// Writes \p text in lines of at most \p maxWidth columns, \p indent blanks
    /// in front, later lines \p secondLineOffset further in. Breaks after the
    /// last blank, comma or bar that fits, or at the width if none does.
    static void spacePrint(std::wostream &stream, const TyxString &text, int maxWidth, int indent,
                           int secondLineOffset);

private:
    void shortUsage(const TyxClParserIF &parser, std::wostream &stream) const;
    void longUsage(const TyxClParserIF &parser, std::wostream &stream) const;

    std::wostream *m_stream;
};

} // namespace tyx
