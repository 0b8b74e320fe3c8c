// TEMPORARY stand-in for TyxVariant until the value types land: holds a double or a text.
#pragma once

#include <memory>

#include <tyx/TyxString.h>

namespace tyx {

class TyxVariant {
public:
    enum Code { Double = 10, String = 15, Invalid = 34 };
    TyxVariant() = default;
    explicit TyxVariant(double value) : m_code(Double), m_double(value) {}
    explicit TyxVariant(const TyxString &value) : m_code(String), m_text(std::make_shared<TyxString>(value))
    {
    }
    bool isValid() const { return m_code != Invalid; }
    int typeCode() const { return m_code; }
    double toDouble() const { return m_double; }
    const TyxString &toString() const { return *m_text; }

private:
    Code m_code = Invalid;
    double m_double = 0.0;
    std::shared_ptr<TyxString> m_text;
};

} // namespace tyx
