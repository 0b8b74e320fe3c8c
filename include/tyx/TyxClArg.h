// Base of every command-line argument: a property, a value and its default.
#pragma once

#include <vector>

#include <tyx/TyxClArgVisitorIF.h>
#include <tyx/TyxClIgnoreRestVisitor.h>
#include <tyx/TyxKeyedObject.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxSmartPtr.h>
#include <tyx/TyxVariant.h>

namespace tyx {

TYX_DECLARE_SMART_PTR(TyxClArg);

/// One command-line argument. The property gives the short flag
/// (cmdLineFlag), the long name, the value label, the help text, the value
/// type and the "Required" and "Ignorable" flags. Failures are thrown as
/// TyxTextMsg; the parser catches them.
class TYX_EXPORT TyxClArg : public TyxKeyedObject {
public:
    ~TyxClArg() override;

    /// "TyxClArg".
    TyxString className() const override;
    /// The "Required" flag of the property.
    virtual bool isRequired() const;
    /// Short form for the usage line; \p valueId stands for the value when the
    /// property has no label.
    virtual TyxString shortID(const TyxString &valueId = L"val") const = 0;
    /// Long form for the help text.
    virtual TyxString longID(const TyxString &valueId = L"val") const = 0;
    /// Restores the default value and clears the set state.
    virtual void reset();
    /// Whether the argument accepts a value at all (true by default).
    virtual bool acceptsValue() const { return true; }
    /// Whether the argument is positional (false by default).
    virtual bool isUnlabeled() const { return false; }
    /// Whether the usage and help texts leave the argument out (false by default).
    virtual bool isHiddenFromUsage() const { return false; }
    /// Answers whether the argument was given before and notes that it has
    /// been given now; false for arguments taken once.
    virtual bool allowMore() { return false; }
    /// Tries to take args[*index]; may move *index on to a value it used.
    virtual bool processArg(int *index, std::vector<TyxString> &args) = 0;

    /// Two arguments clash when they share a non-empty flag or name.
    bool matches(const TyxClArg &other) const;

    /// The short flag as text, empty when there is none.
    TyxString flag() const;
    bool hasFlag() const { return m_properties.cmdLineFlag() != 0; }
    const TyxString &label() const { return m_properties.label(); }
    /// The property's description, led by the require label when required.
    TyxString description() const;
    bool isIgnorable() const { return m_properties.flags().isIgnorable(); }
    /// Given, or an exclusive partner was given.
    bool isSet() const { return m_isValueSet || m_isXorSet; }
    bool isValueSet() const { return m_isValueSet; }
    bool isXorSet() const { return m_isXorSet; }
    const TyxVariant &variant() const { return m_value; }
    const TyxVariant &defaultValue() const { return m_defaultValue; }
    const TyxMetaProperty &properties() const { return m_properties; }
    /// How many times the argument has taken a value since the last reset.
    int hitCount() const { return m_hits; }

    static wchar_t flagStartChar() { return L'-'; }
    static TyxString flagStartString() { return L"-"; }
    static TyxString nameStartString() { return L"--"; }
    static TyxString ignoreNameString() { return L"ignore_rest"; }
    /// Marks a switch letter already used in a combined group.
    static wchar_t blankChar() { return static_cast<wchar_t>(7); }
    /// Between a flag and its value; a blank means the next element. Shared by
    /// the whole process: the parser constructed last sets it.
    static wchar_t delimiter();

protected:
    /// Throws when the flag or the name cannot be told from other input.
    TyxClArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue,
             const TyxClArgVisitorIFConstPtr &visitor);

    bool argMatches(const TyxString &text) const;
    bool combinedSwitchesMatch(TyxString &text) const;
    /// Whether this argument stands out of a parse after the ignore marker.
    bool ignoreRest() const;
    /// Converts \p text to the property's type, validates it and stores it.
    void setValue(const TyxString &text);
    /// Stores an already typed value and runs the visitor.
    void setTypedValue(const TyxVariant &value);
    /// Converts and validates \p text without storing it.
    TyxVariant convert(const TyxString &text) const;
    static void splitStr(const TyxString &text, TyxString &flagPart, TyxString &valuePart);
    static bool hasBlanks(const TyxString &text);
    static bool lastCombined(const TyxString &text);
    /// The label, or \p valueId when there is none.
    TyxString valueName(const TyxString &valueId) const;
    /// "-f" plus the delimiter and "<val>", or the long form.
    TyxString flagWithValue(const TyxString &valueId) const;
    TyxString nameWithValue(const TyxString &valueId) const;
    /// The ID used in messages.
    TyxString messageId() const { return longID(); }
    /// Throws when the argument cannot be set again.
    void checkNotSet() const;

    TyxVariant &value() { return m_value; }
    void markSet() { m_isValueSet = true; }

    /// For the arguments accepted many times: marks further values as welcome
    /// and answers whether they already were. reset() clears the mark.
    bool welcomeMoreValues();
    /// The values given since the last reset, for the arguments that keep a
    /// list; before the first the list is empty, whatever the default.
    TyxVariantList valueList() const;
    /// Converts and validates \p text and appends it to the list of values.
    void appendValue(const TyxString &text);

private:
    friend class TyxClParser;
    friend class TyxClXorHandler;

    void forceRequired();
    void setXor() { m_isXorSet = true; }
    void setRequireLabel(const TyxString &label) { m_requireLabel = label; }
    void setIgnoreVisitor(const TyxClIgnoreRestVisitorPtr &visitor) { m_ignoreVisitor = visitor; }
    static void setDelimiter(wchar_t delimiter);

    TyxMetaProperty m_properties;
    TyxVariant m_value;
    TyxVariant m_defaultValue;
    TyxString m_requireLabel = L"required";
    bool m_isValueSet = false;
    bool m_isXorSet = false;
    TyxClIgnoreRestVisitorPtr m_ignoreVisitor;
    TyxClArgVisitorIFConstPtr m_visitor;
    int m_hits = 0;
    bool m_moreWelcome = false;
};

} // namespace tyx
