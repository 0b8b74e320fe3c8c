// Image region: band-list invariants, set operations and text forms.
#include <tyx/TyxImageROI.h>

#include <algorithm>
#include <cstdint>
#include <istream>
#include <ostream>
#include <sstream>
#include <string>

#include <tyx/TyxVariant.h>

namespace tyx {

namespace {

// Code 26 joins the variant with its casts to the core types.
[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxImageROI>();

std::vector<unsigned int> contiguousBands(int first, unsigned int count)
{
    std::vector<unsigned int> bands(count);
    for (unsigned int i = 0; i < count; ++i)
        bands[i] = static_cast<unsigned int>(first) + i;
    return bands;
}

// The largest entry, or -1 for an empty list.
int64_t lastBand(const std::vector<unsigned int> &bands)
{
    if (bands.empty())
        return -1;
    return *std::max_element(bands.begin(), bands.end());
}

bool notPositive(unsigned int value) { return static_cast<int>(value) <= 0; }

// The column and row just past the region, with the size read as signed.
int64_t endX(const TyxImageROI &roi) { return int64_t(roi.origin().x()) + static_cast<int>(roi.width()); }
int64_t endY(const TyxImageROI &roi) { return int64_t(roi.origin().y()) + static_cast<int>(roi.height()); }

template <class Char>
std::basic_ostream<Char> &writeRoi(std::basic_ostream<Char> &os, const TyxImageROI &roi)
{
    const TyxCoord3D<int> &o = roi.origin();
    const TyxImageSize &s = roi.size();
    os << Char('(') << Char('(') << o.x() << Char(',') << o.y() << Char(',') << o.z() << Char(')');
    os << Char(',') << Char('(') << s.width() << Char(',') << s.height() << Char(',') << s.numBands()
       << Char(')');
    os << Char(',') << Char('(');
    for (size_t i = 0; i < roi.bands().size(); ++i) {
        if (i != 0)
            os << Char(',');
        os << roi.bands()[i];
    }
    return os << Char(')') << Char(')');
}

// A decimal band index; false when the piece is not one.
bool parseBand(const std::basic_string<wchar_t> &piece, unsigned int &band)
{
    std::wistringstream in(piece);
    uint64_t value = 0;
    in >> value;
    if (in.fail() || value > UINT32_MAX)
        return false;
    band = static_cast<unsigned int>(value);
    return true;
}

template <class Char>
std::basic_istream<Char> &readRoi(std::basic_istream<Char> &is, TyxImageROI &roi)
{
    Char c;
    double x = 0, y = 0, z = 0, w = 0, h = 0, b = 0;
    is >> c >> c >> x >> c >> y >> c >> z >> c;
    is >> c >> c >> w >> c >> h >> c >> b >> c;
    is >> c;
    std::basic_string<Char> word;
    is >> word;
    bool ok = !is.fail() && word.size() >= 3;
    std::vector<unsigned int> bands;
    if (ok) {
        // Cut the region's closing parenthesis, then the list's two.
        word.pop_back();
        const std::basic_string<Char> list = word.substr(1, word.size() - 2);
        if (!list.empty()) {
            const TyxString wide(list.begin(), list.end());
            for (const TyxString &piece : splitStr(wide, L",", true)) {
                unsigned int band = 0;
                if (!parseBand(piece, band)) {
                    ok = false;
                    break;
                }
                bands.push_back(band);
            }
        }
        // The numbers are truncated into the fields; a value the field cannot
        // hold fails the read rather than wrapping.
        ok = ok && x > -2147483649.0 && x < 2147483648.0 && y > -2147483649.0 && y < 2147483648.0 &&
             w > -1.0 && w < 4294967296.0 && h > -1.0 && h < 4294967296.0;
    }
    if (!ok) {
        roi = TyxImageROI();
        is.setstate(std::ios_base::failbit);
        return is;
    }
    roi.initialize(static_cast<int>(x), static_cast<int>(y), static_cast<unsigned int>(w),
                   static_cast<unsigned int>(h), bands);
    return is;
}

} // namespace

TyxImageROI::TyxImageROI(const TyxImageSize &size) { initialize(TyxCoord3D<int>(), size); }

TyxImageROI::TyxImageROI(const TyxCoord3D<int> &origin, const TyxImageSize &size)
{
    initialize(origin, size);
}

TyxImageROI::TyxImageROI(int x, int y, unsigned int width, unsigned int height,
                         const std::vector<unsigned int> &bands)
{
    initialize(x, y, width, height, bands);
}

void TyxImageROI::initialize(const TyxCoord3D<int> &origin, const TyxImageSize &size)
{
    // The origin is kept as given, z included, also when there are no bands:
    // a disjoint intersection keeps its computed origin.
    m_origin = origin;
    m_size = size;
    m_bands = contiguousBands(origin.z(), size.numBands());
}

void TyxImageROI::initialize(int x, int y, unsigned int width, unsigned int height,
                             const std::vector<unsigned int> &bands)
{
    m_origin.setX(x);
    m_origin.setY(y);
    m_size.setWidth(width);
    m_size.setHeight(height);
    setBands(bands);
}

void TyxImageROI::setBands(const std::vector<unsigned int> &bands)
{
    m_bands = bands;
    m_size.setNumBands(static_cast<unsigned int>(bands.size()));
    m_origin.setZ(bands.empty() ? 0 : static_cast<int>(*std::min_element(bands.begin(), bands.end())));
}

void TyxImageROI::setOrigin(const TyxCoord3D<int> &origin) { initialize(origin, TyxImageSize(m_size)); }

bool TyxImageROI::contains(const TyxCoord3D<int> &point) const
{
    const int64_t x = point.x(), y = point.y();
    if (x < m_origin.x() || x >= int64_t(m_origin.x()) + width())
        return false;
    if (y < m_origin.y() || y >= int64_t(m_origin.y()) + height())
        return false;
    return point.z() >= 0 &&
           std::find(m_bands.begin(), m_bands.end(), static_cast<unsigned int>(point.z())) != m_bands.end();
}

TyxCoord3D<int> TyxImageROI::lowerRight() const
{
    return {static_cast<int>(m_origin.x() + width() - 1), static_cast<int>(m_origin.y() + height() - 1),
            static_cast<int>(lastBand(m_bands))};
}

TyxImageROI TyxImageROI::boundingROI(const TyxImageROI &other) const
{
    if (width() == 0 || notPositive(height()) || notPositive(numBands()))
        return other;
    if (other.width() == 0 || notPositive(other.height()) || notPositive(other.numBands()))
        return *this;
    const int64_t x = std::min(m_origin.x(), other.m_origin.x());
    const int64_t y = std::min(m_origin.y(), other.m_origin.y());
    const int64_t z = std::min(m_origin.z(), other.m_origin.z());
    const int64_t right = std::max(endX(*this), endX(other));
    const int64_t bottom = std::max(endY(*this), endY(other));
    const int64_t last = std::max(lastBand(m_bands), lastBand(other.m_bands));
    return TyxImageROI(TyxCoord3D<int>(int(x), int(y), int(z)),
                       TyxImageSize(unsigned(right - x), unsigned(bottom - y), unsigned(last - z + 1)));
}

TyxImageROI TyxImageROI::intersection(const TyxImageROI &other) const
{
    const int64_t x = std::max(m_origin.x(), other.m_origin.x());
    const int64_t y = std::max(m_origin.y(), other.m_origin.y());
    const int64_t z = std::max(m_origin.z(), other.m_origin.z());
    const int64_t right = std::min(endX(*this), endX(other));
    const int64_t bottom = std::min(endY(*this), endY(other));
    const int64_t last = std::min(lastBand(m_bands), lastBand(other.m_bands));
    const int64_t w = std::max<int64_t>(right - x, 0);
    const int64_t h = std::max<int64_t>(bottom - y, 0);
    const int64_t b = std::max<int64_t>(last - z + 1, 0);
    return TyxImageROI(TyxCoord3D<int>(int(x), int(y), int(z)),
                       TyxImageSize(unsigned(w), unsigned(h), unsigned(b)));
}

TyxImageROI::operator TyxString() const
{
    std::wostringstream os;
    os << *this;
    return os.str();
}

std::wostream &operator<<(std::wostream &os, const TyxImageROI &roi) { return writeRoi(os, roi); }

std::ostream &operator<<(std::ostream &os, const TyxImageROI &roi) { return writeRoi(os, roi); }

std::wistream &operator>>(std::wistream &is, TyxImageROI &roi) { return readRoi(is, roi); }

std::istream &operator>>(std::istream &is, TyxImageROI &roi) { return readRoi(is, roi); }

bool internal::TyxDefaultCasts<TyxImageROI>::toString(const TyxImageROI &value, TyxString &text)
{
    text = static_cast<TyxString>(value);
    return true;
}

bool internal::TyxDefaultCasts<TyxImageROI>::fromString(const TyxString &text, TyxImageROI &value)
{
    std::wistringstream is(text);
    is >> value;
    // The end of the text after the last word is not a failure.
    return !is.fail();
}

} // namespace tyx
