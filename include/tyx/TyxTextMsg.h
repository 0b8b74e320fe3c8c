// The library's message: exception, result and posted record in one.
#pragma once

#include <exception>
#include <iosfwd>
#include <string>

#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>

namespace tyx {

/// A message with a severity, a source position and a text. An empty text
/// means success wherever a message is returned or filled in.
class TYX_EXPORT TyxTextMsg : public std::exception, public TyxObject {
public:
    /// Severity; a user type outside 0 to 3 gives User.
    enum Code { Error = 0, Warning = 1, Info = 2, Debug = 3, User = 4 };

    TyxTextMsg();
    TyxTextMsg(const TyxString &text, int code);
    TyxTextMsg(TyxString &&text, int code);
    /// \p srcFname is cut to its bare file name.
    TyxTextMsg(const TyxString &text, const TyxString &srcFname, int srcLine, int code);
    TyxTextMsg(TyxString &&text, const TyxString &srcFname, int srcLine, int code);
    /// Copies every field but the buffer of what().
    TyxTextMsg(const TyxTextMsg &other);
    TyxTextMsg(TyxTextMsg &&other) noexcept;
    TyxTextMsg &operator=(const TyxTextMsg &other);
    TyxTextMsg &operator=(TyxTextMsg &&other) noexcept;
    ~TyxTextMsg() override;

    const TyxString &text() const { return m_text; }
    operator const TyxString &() const { return m_text; }
    const TyxString &srcFname() const { return m_srcFname; }
    int srcLine() const { return m_srcLine; }
    Code type() const { return m_type; }
    int userType() const { return m_userType; }
    bool isVerbose() const { return m_verbose; }
    void setVerbose(bool verbose) { m_verbose = verbose; }

    /// Whether the text is empty: the test for success.
    bool empty() const { return m_text.empty(); }
    bool isEmpty() const { return m_text.empty(); }

    void setText(const TyxString &text, int code);
    /// Replaces every field and clears the verbose flag.
    void setText(const TyxString &text, const TyxString &srcFname, int srcLine, int code);
    void appendText(const TyxString &text);
    /// Becomes equal to a default-constructed message.
    void clear();

    /// The text alone as UTF-8, valid until the next call or until the
    /// message goes.
    const char *what() const noexcept override;
    /// A copy owned by the caller.
    virtual TyxTextMsg *clone() const;
    /// `*this == *other`; \p other must not be null.
    virtual bool isEqual(const TyxTextMsg *other) const;

    bool operator==(const TyxTextMsg &other) const;
    bool operator!=(const TyxTextMsg &other) const { return !(*this == other); }

    /// The source file name used when none is known: "<filename unknown>".
    static const TyxString &unknown();

private:
    static TyxString trimFname(const TyxString &name);
    static TyxString trimFname(TyxString &&name);
    void setCode(int code);

    bool m_verbose = false;
    Code m_type = User;
    int m_userType = User;
    int m_srcLine = 0;
    TyxString m_srcFname;
    TyxString m_text;
    mutable std::string m_whatBuffer;
};

/// Writes "label: text - (file : line)"; an empty text writes nothing.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxTextMsg &message);
/// The same text in UTF-8, each piece (label, text, file name) encoded by
/// itself.
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxTextMsg &message);

/// Records an Error as the last error, then hands the message to the current
/// text handler. The default handler throws errors.
TYX_EXPORT void postMessage(const TyxTextMsg &message);
/// A copy of the last error posted. Read it on the thread that saw the failure.
TYX_EXPORT TyxTextMsg lastError();

} // namespace tyx
