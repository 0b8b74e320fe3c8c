// Colour model codes, their band counts, keys and stream forms.
#include <tyx/TyxColorModel.h>

#include <array>
#include <istream>
#include <ostream>
#include <string>

#include "image/TyxCodeKeys.h"

namespace tyx {

namespace {

// Joins the variant (code 29) and the conversion matrix at library load.
[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxColorModel>();

constexpr int kCodeCount = TyxColorModel::Invalid;

struct Row {
    const wchar_t *key;
    unsigned bands;
};

// The codes' keys and colour band counts; 0 stands for a count the caller gives.
constexpr std::array<Row, kCodeCount> kRows = {{{L"GrayScale", 1},
                                                {L"MultiSpectral", 0},
                                                {L"RGB", 3},
                                                {L"sRGB", 3},
                                                {L"RIMM_RGB", 3},
                                                {L"ROMM_RGB", 3},
                                                {L"ERIMM_RGB", 3},
                                                {L"HSI", 3},
                                                {L"HSV", 3},
                                                {L"YCbCr", 3},
                                                {L"CMYK", 4},
                                                {L"YIQ", 3},
                                                {L"YUV", 3},
                                                {L"CIELAB", 3},
                                                {L"CIELUV", 3},
                                                {L"CIEXYZ", 3},
                                                {L"Alpha", 1},
                                                {L"PremultipliedAlpha", 1},
                                                {L"Other", 0}}};

TyxTextMsg errorMsg(const TyxString &text, int line)
{
    return TyxTextMsg(text, TyxString(__FILE__), line, TyxTextMsg::Error);
}

template <class Char>
std::basic_ostream<Char> &writeModel(std::basic_ostream<Char> &os, const TyxColorModel &model)
{
    std::wstring text = L"(" + model.name() + L"," + std::to_wstring(model.numColorBands()) + L"," +
                        std::to_wstring(model.numExtraBands());
    const std::vector<TyxColorModel::ExtraBandType> &extra = model.extraBands();
    for (size_t i = 0; i < extra.size(); ++i)
        text += (i == 0 ? L":" : L",") + std::to_wstring(static_cast<int32_t>(extra[i]));
    text += L")";
    return internal::writeCodeKey(os, TyxString(std::move(text)));
}

template <class Char>
std::basic_istream<Char> &readModel(std::basic_istream<Char> &is, TyxColorModel &model)
{
    Char skipped{};
    is.get(skipped);
    std::basic_string<Char> key;
    std::getline(is, key, static_cast<Char>(','));
    unsigned long bands = 0;
    long long count = 0;
    is >> bands;
    is.get(skipped);
    is >> count;
    std::vector<TyxColorModel::ExtraBandType> extra;
    if (count > 0) {
        is.get(skipped);
        // The count comes from the text: read while the stream holds numbers
        // rather than reserving what it claims.
        for (long long i = 0; i < count && is; ++i) {
            long long band = 0;
            is >> band;
            if (!is)
                break;
            extra.push_back(static_cast<TyxColorModel::ExtraBandType>(static_cast<int32_t>(band)));
            is.get(skipped);
        }
    }
    TyxString wideKey;
    if constexpr (sizeof(Char) == 1)
        wideKey = fromUTF8(key);
    else
        wideKey = TyxString(key);
    model.setType(TyxColorModel::fromString(wideKey), static_cast<unsigned>(bands));
    model.setExtraBands(extra);
    return is;
}

} // namespace

TyxColorModel::TyxColorModel(Code code) { setType(code); }

TyxColorModel::TyxColorModel(const TyxString &key) { setType(fromString(key)); }

TyxColorModel::TyxColorModel(Code code, const std::vector<ExtraBandType> &extraBands)
    : m_extraBands(extraBands)
{
    setType(code);
}

TyxColorModel::TyxColorModel(Code code, unsigned numColorBands, const std::vector<ExtraBandType> &extraBands)
    : m_extraBands(extraBands)
{
    setType(code, numColorBands);
}

TyxTextMsg TyxColorModel::setType(Code code)
{
    if (code > Other) {
        m_type = Invalid;
        return errorMsg(L"Passed invalid color model type [" + std::to_wstring(static_cast<int32_t>(code)) +
                            L"]. ",
                        __LINE__);
    }
    if (code == MultiSpectral || code == Other) {
        m_type = Invalid;
        return errorMsg(L"Passed invalid color model type MultiSpectral or Other. Please use the alternate "
                        L"setType method.",
                        __LINE__);
    }
    if (enumerator().isValid(static_cast<int>(code))) {
        m_type = code;
        m_numColorBands = kRows[static_cast<size_t>(code)].bands;
        return TyxTextMsg();
    }
    m_type = Invalid;
    return errorMsg(L"Passed an invalid (out-of-range) enumeration type.", __LINE__);
}

TyxTextMsg TyxColorModel::setType(Code code, unsigned numColorBands)
{
    if (code > Other)
        return setType(code);
    if (code == MultiSpectral || code == Other) {
        if (numColorBands == 0) {
            m_type = Invalid;
            return errorMsg(L"Passed invalid number of image bands (less than 1).", __LINE__);
        }
        m_type = code;
        m_numColorBands = numColorBands;
        return TyxTextMsg();
    }
    TyxTextMsg msg = setType(code);
    if (!msg.empty())
        return msg;
    if (numColorBands == m_numColorBands)
        return msg;
    m_type = Invalid;
    return errorMsg(L"Passed type (" + TyxString(kRows[static_cast<size_t>(code)].key) +
                        L") but with an invalid number of bands (" + std::to_wstring(numColorBands) + L").",
                    __LINE__);
}

const TyxString &TyxColorModel::name() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[static_cast<size_t>(m_type)] : empty;
}

const TyxEnum &TyxColorModel::enumerator()
{
    static const TyxEnum &table = []() -> const TyxEnum & {
        std::vector<TyxEnum::Item> items;
        for (int code = 0; code < kCodeCount; ++code)
            items.emplace_back(code, kRows[static_cast<size_t>(code)].key,
                               TyxVariant(kRows[static_cast<size_t>(code)].bands));
        return internal::buildCodeEnumerator<TyxColorModel>(items);
    }();
    return table;
}

const std::vector<TyxString> &TyxColorModel::allKeys() { return enumerator().allKeys(); }

TyxColorModel::Code TyxColorModel::fromString(const TyxString &key)
{
    return internal::codeOfKey(enumerator(), key, Invalid);
}

bool TyxColorModel::isValid(const TyxString &key) { return fromString(key) != Invalid; }

bool TyxColorModel::operator==(const TyxColorModel &other) const
{
    return m_type == other.m_type && m_numColorBands == other.m_numColorBands &&
           m_extraBands == other.m_extraBands;
}

std::wostream &operator<<(std::wostream &os, const TyxColorModel &model) { return writeModel(os, model); }

std::ostream &operator<<(std::ostream &os, const TyxColorModel &model) { return writeModel(os, model); }

std::wistream &operator>>(std::wistream &is, TyxColorModel &model) { return readModel(is, model); }

std::istream &operator>>(std::istream &is, TyxColorModel &model) { return readModel(is, model); }

} // namespace tyx
