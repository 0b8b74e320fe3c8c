// Tile description: validation into a message.
#include <tyx/TyxImageTileDesc.h>

#include <sstream>

namespace tyx {

namespace {

template <class T>
TyxString streamed(const T &value)
{
    std::wostringstream os;
    os << value;
    return os.str();
}

bool notPositive(unsigned int value) { return static_cast<int>(value) <= 0; }

} // namespace

TyxTextMsg TyxImageTileDesc::validate() const
{
    auto fail = [](const TyxString &text, int line) {
        return TyxTextMsg(text, __FILE__, line, TyxTextMsg::Error);
    };
    if (notPositive(width()) || notPositive(height()) || notPositive(numBands()))
        return fail(L"Invalid ROI size [" + streamed(m_roi.size()) + L"].", __LINE__);
    if (!m_dataType.isValid())
        return fail(L"Invalid image data type [" + streamed(m_dataType) + L"].", __LINE__);
    if (!m_layout.isValid())
        return fail(L"Invalid image data layout [" + m_layout.toString() + L"].", __LINE__);
    const unsigned int depth = m_dataType.logicalBitDepth();
    if (depth == 0 || depth > m_dataType.physicalBitDepth())
        return fail(L"Invalid bit depth [" + std::to_wstring(depth) + L"] for image data type [" +
                        streamed(m_dataType) + L"].",
                    __LINE__);
    if ((m_dataType.isFloat() || m_dataType.isComplex()) && depth != m_dataType.physicalBitDepth())
        return fail(L"Invalid bit depth [" + std::to_wstring(depth) + L"] for data type [" +
                        streamed(m_dataType) + L"].",
                    __LINE__);
    return TyxTextMsg();
}

} // namespace tyx
