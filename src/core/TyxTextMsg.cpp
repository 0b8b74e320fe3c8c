// Messages: fields, text form, posting and the last error.
#include <tyx/TyxTextMsg.h>

#include <mutex>
#include <ostream>
#include <string>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxTextHandler.h>

namespace tyx {

namespace {

struct LastError {
    std::mutex mutex;
    TyxTextMsg message;
};

LastError &lastErrorStore()
{
    static LastError store;
    return store;
}

const wchar_t *label(TyxTextMsg::Code code)
{
    switch (code) {
    case TyxTextMsg::Error: return L"error";
    case TyxTextMsg::Warning: return L"warning";
    case TyxTextMsg::Info: return L"info";
    case TyxTextMsg::Debug: return L"debug";
    case TyxTextMsg::User: break;
    }
    return L"user";
}

TyxString textForm(const TyxTextMsg &message)
{
    if (message.empty())
        return {};
    return TyxString(label(message.type()) + (L": " + message.text()) + L" - (" + message.srcFname() +
                     L" : " + std::to_wstring(message.srcLine()) + L")");
}

} // namespace

TyxTextMsg::TyxTextMsg() : m_srcFname(unknown()) {}

TyxTextMsg::TyxTextMsg(const TyxString &text, int code) : m_srcFname(unknown()), m_text(text)
{
    setCode(code);
}

TyxTextMsg::TyxTextMsg(TyxString &&text, int code) : m_srcFname(unknown()), m_text(std::move(text))
{
    setCode(code);
}

TyxTextMsg::TyxTextMsg(const TyxString &text, const TyxString &srcFname, int srcLine, int code)
    : m_srcLine(srcLine), m_srcFname(trimFname(srcFname)), m_text(text)
{
    setCode(code);
}

TyxTextMsg::TyxTextMsg(TyxString &&text, const TyxString &srcFname, int srcLine, int code)
    : m_srcLine(srcLine), m_srcFname(trimFname(srcFname)), m_text(std::move(text))
{
    setCode(code);
}

TyxTextMsg::TyxTextMsg(const TyxTextMsg &other)
    : std::exception(other), TyxObject(other), m_verbose(other.m_verbose), m_type(other.m_type),
      m_userType(other.m_userType), m_srcLine(other.m_srcLine), m_srcFname(other.m_srcFname),
      m_text(other.m_text)
{
}

TyxTextMsg::TyxTextMsg(TyxTextMsg &&other) noexcept
    : std::exception(other), TyxObject(other), m_verbose(other.m_verbose), m_type(other.m_type),
      m_userType(other.m_userType), m_srcLine(other.m_srcLine), m_srcFname(std::move(other.m_srcFname)),
      m_text(std::move(other.m_text))
{
}

TyxTextMsg &TyxTextMsg::operator=(const TyxTextMsg &other)
{
    if (this != &other) {
        m_verbose = other.m_verbose;
        m_type = other.m_type;
        m_userType = other.m_userType;
        m_srcLine = other.m_srcLine;
        m_srcFname = other.m_srcFname;
        m_text = other.m_text;
    }
    return *this;
}

TyxTextMsg &TyxTextMsg::operator=(TyxTextMsg &&other) noexcept
{
    if (this != &other) {
        m_verbose = other.m_verbose;
        m_type = other.m_type;
        m_userType = other.m_userType;
        m_srcLine = other.m_srcLine;
        m_srcFname = std::move(other.m_srcFname);
        m_text = std::move(other.m_text);
    }
    return *this;
}

TyxTextMsg::~TyxTextMsg() = default;

void TyxTextMsg::setCode(int code)
{
    m_userType = code;
    m_type = static_cast<unsigned>(code) <= Debug ? static_cast<Code>(code) : User;
}

void TyxTextMsg::setText(const TyxString &text, int code) { setText(text, unknown(), 0, code); }

void TyxTextMsg::setText(const TyxString &text, const TyxString &srcFname, int srcLine, int code)
{
    m_verbose = false;
    m_srcLine = srcLine;
    m_srcFname = trimFname(srcFname);
    m_text = text;
    setCode(code);
}

void TyxTextMsg::appendText(const TyxString &text) { m_text += text; }

void TyxTextMsg::clear() { *this = TyxTextMsg(); }

const char *TyxTextMsg::what() const noexcept
{
    try {
        m_whatBuffer = toUTF8(m_text);
    } catch (...) {
        m_whatBuffer.clear();
    }
    return m_whatBuffer.c_str();
}

TyxTextMsg *TyxTextMsg::clone() const { return new TyxTextMsg(*this); }

bool TyxTextMsg::isEqual(const TyxTextMsg *other) const { return *this == *other; }

bool TyxTextMsg::operator==(const TyxTextMsg &other) const
{
    return m_verbose == other.m_verbose && m_type == other.m_type && m_userType == other.m_userType &&
           m_srcLine == other.m_srcLine && m_srcFname == other.m_srcFname && m_text == other.m_text;
}

const TyxString &TyxTextMsg::unknown()
{
    static const TyxString name(L"<filename unknown>");
    return name;
}

TyxString TyxTextMsg::trimFname(const TyxString &name)
{
    const size_t cut = name.find_last_of(L"\\/");
    return cut == TyxString::npos ? name : TyxString(name.substr(cut + 1));
}

TyxString TyxTextMsg::trimFname(TyxString &&name)
{
    const size_t cut = name.find_last_of(L"\\/");
    return cut == TyxString::npos ? std::move(name) : TyxString(name.substr(cut + 1));
}

std::wostream &operator<<(std::wostream &os, const TyxTextMsg &message) { return os << textForm(message); }

// Each piece is encoded by itself, so a unit that UTF-8 cannot hold sends only
// its own piece into the byte-per-unit fallback.
std::ostream &operator<<(std::ostream &os, const TyxTextMsg &message)
{
    if (message.empty())
        return os;
    return os << toUTF8(label(message.type())) << ": " << toUTF8(message.text()) << " - ("
              << toUTF8(message.srcFname()) << " : " << std::to_string(message.srcLine()) << ")";
}

void postMessage(const TyxTextMsg &message)
{
    if (message.type() == TyxTextMsg::Error) {
        LastError &store = lastErrorStore();
        std::lock_guard<std::mutex> lock(store.mutex);
        store.message = message;
    }
    const TyxTextHandlerPtr handler = TyxCoreLibMgr::instance().textHandler();
    handler->handleMessage(message);
}

TyxTextMsg lastError() { return lastErrorStore().message; }

} // namespace tyx
