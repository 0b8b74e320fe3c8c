// Shared helpers of the fuzz targets: quiet message handling and slicing the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>

namespace tyx::fuzz {

/// Keeps posted messages off the console; the readers post freely on bad
/// input, and the fuzzer's output should show only its findings.
class QuietHandler : public TyxTextHandler {
public:
    void handleMessage(const TyxTextMsg &message) override { m_last = message.text().size(); }

private:
    size_t m_last = 0;
};

/// Installs the quiet handler once per process.
inline void beQuiet()
{
    static const bool installed = [] {
        TyxCoreLibMgr::instance().setTextHandler(TyxTextHandlerPtr(new QuietHandler()));
        return true;
    }();
    (void)installed;
}

/// The input as narrow text.
inline std::string_view bytes(const uint8_t *data, size_t size)
{
    return std::string_view(reinterpret_cast<const char *>(data), size);
}

/// The input decoded as UTF-8 (malformed bytes are widened one by one).
inline TyxString text(const uint8_t *data, size_t size) { return fromUTF8(bytes(data, size)); }

/// The input cut at every \p separator byte.
inline std::vector<std::string> split(std::string_view input, char separator)
{
    std::vector<std::string> parts;
    size_t start = 0;
    for (;;) {
        const size_t end = input.find(separator, start);
        parts.emplace_back(
            input.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
        if (end == std::string_view::npos)
            return parts;
        start = end + 1;
    }
}

} // namespace tyx::fuzz
