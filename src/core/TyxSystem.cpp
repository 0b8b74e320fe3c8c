// System services on Linux.
#include <tyx/TyxSystem.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <ctime>
#include <dlfcn.h>
#include <fstream>
#include <string>
#include <unistd.h>

#include <tyx/TyxForLoopBase.h>

namespace tyx {

namespace {

constexpr double degToRad = 0.017453292519943295;
constexpr double radToDeg = 57.29577951308232;
constexpr double earthRadius = 6367444.6570999995;

bool &parallelLoopsSwitch()
{
    static bool enabled = true;
    return enabled;
}

template <size_t Size>
void reverseEach(unsigned char *data, size_t count)
{
    for (size_t i = 0; i < count; ++i, data += Size)
        std::reverse(data, data + Size);
}

void reverseEach(unsigned char *data, size_t count, size_t elementSize)
{
    switch (elementSize) {
    case 2: return reverseEach<2>(data, count);
    case 4: return reverseEach<4>(data, count);
    case 8: return reverseEach<8>(data, count);
    default:
        for (size_t i = 0; i < count; ++i, data += elementSize)
            std::reverse(data, data + elementSize);
    }
}

} // namespace

uint64_t physicalRam()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    return (pages > 0 && pageSize > 0) ? static_cast<uint64_t>(pages) * static_cast<uint64_t>(pageSize) : 0;
}

uint64_t availableRam()
{
    std::ifstream meminfo("/proc/meminfo");
    std::string key;
    uint64_t kilobytes = 0;
    std::string unit;
    while (meminfo >> key >> kilobytes >> unit) {
        if (key == "MemAvailable:")
            return kilobytes * 1024;
    }
    return 0;
}

bool enableParallelLoops(bool enable)
{
    const bool previous = parallelLoopsSwitch();
    parallelLoopsSwitch() = enable;
    return previous;
}

bool useParallelLoops() { return parallelLoopsSwitch(); }

bool isTimingLoops() { return false; }

void swapBytes(void *data, size_t count, size_t elementSize, bool parallel)
{
    if (elementSize < 2 || count == 0)
        return;
    // The range walks blocks of elements, so the loop base adds nothing per
    // element.
    constexpr size_t block = 1 << 16;
    const size_t blocks = (count + block - 1) / block;
    auto *bytes = static_cast<unsigned char *>(data);
    TyxLoopRange range;
    range.begin = 0;
    range.end = static_cast<unsigned int>(blocks);
    range.step = 1;
    TyxForLoopBase::run(range, parallel && count >= 256, isTimingLoops(), [&](int64_t b) {
        const size_t first = static_cast<size_t>(b) * block;
        reverseEach(bytes + first * elementSize, std::min(block, count - first), elementSize);
    });
}

double epsilonDouble() { return 2.220446049250313e-16; }

bool isNaN(double value) { return std::isnan(value); }

int64_t timeStampFromStr(const TyxString &text)
{
    if (text.size() < 14)
        return 0;
    auto field = [&text](size_t position, size_t length) { return atoi(text.substr(position, length)); };
    std::tm parts{};
    parts.tm_year = field(0, 4) - 1900;
    parts.tm_mon = field(4, 2) - 1;
    parts.tm_mday = field(6, 2);
    parts.tm_hour = field(8, 2);
    parts.tm_min = field(10, 2);
    parts.tm_sec = field(12, 2);
    parts.tm_wday = -1;
    parts.tm_yday = -1;
    parts.tm_isdst = -1;
    int64_t stamp = static_cast<int64_t>(std::mktime(&parts)) * 1000;
    if (text.size() >= 18)
        stamp += atoi(text.substr(15));
    return stamp;
}

TyxString exeFilePath()
{
    // Built once by the language's thread-safe initialisation: the first
    // callers may come from several threads at once.
    static const TyxString path = [] {
        char buffer[PATH_MAX];
        const ssize_t length = readlink("/proc/self/exe", buffer, sizeof(buffer));
        return length > 0 ? fromUTF8(std::string_view(buffer, static_cast<size_t>(length))) : TyxString();
    }();
    return path;
}

TyxString exePath()
{
    // The link target is absolute and normalised, so the folder is the text
    // before the last separator ("/" for a program in the root).
    static const TyxString folder = [] {
        const TyxString file = exeFilePath();
        const size_t slash = file.rfind(L'/');
        if (slash == TyxString::npos)
            return TyxString();
        return slash == 0 ? TyxString(L"/") : TyxString(file.substr(0, slash));
    }();
    return folder;
}

TyxString dsoPath(const void *address)
{
    Dl_info info{};
    if (dladdr(address, &info) == 0 || !info.dli_fname)
        return {};
    return fromUTF8(info.dli_fname);
}

double greatCircleDistance(double lon1, double lat1, double lon2, double lat2)
{
    const double phi1 = lat1 * degToRad;
    const double phi2 = lat2 * degToRad;
    const double sinHalfLat = std::sin((phi2 - phi1) / 2);
    const double sinHalfLon = std::sin((lon2 - lon1) * degToRad / 2);
    const double a = sinHalfLat * sinHalfLat + std::cos(phi1) * std::cos(phi2) * sinHalfLon * sinHalfLon;
    return earthRadius * 2 * std::atan2(std::sqrt(a), std::sqrt(1 - a));
}

double greatCircleHeading(double lon1, double lat1, double lon2, double lat2)
{
    const double phi1 = lat1 * degToRad;
    const double phi2 = lat2 * degToRad;
    const double dLon = (lon2 - lon1) * degToRad;
    double heading = radToDeg * std::atan2(std::sin(dLon) * std::cos(phi2),
                                           std::cos(phi1) * std::sin(phi2) -
                                               std::sin(phi1) * std::cos(phi2) * std::cos(dLon));
    if (heading < 0)
        heading += 360;
    return heading;
}

double directDistance(double lon1, double lat1, double lon2, double lat2)
{
    double latMeters = 0;
    double lonMeters = 0;
    metersPerDegree((lat1 + lat2) / 2, latMeters, lonMeters);
    const double dx = (lon2 - lon1) * lonMeters;
    const double dy = (lat2 - lat1) * latMeters;
    return std::sqrt(dx * dx + dy * dy);
}

double directHeading(double lon1, double lat1, double lon2, double lat2)
{
    double heading = radToDeg * std::atan2(-(lat2 - lat1), lon2 - lon1);
    if (heading < 0)
        heading += 360;
    heading += 90;
    if (heading >= 360)
        heading -= 360;
    return heading;
}

namespace {

struct MidPointTerms {
    double phi1;
    double phi2;
    double bx;
    double by;
};

MidPointTerms midPointTerms(double lon1, double lat1, double lon2, double lat2)
{
    const double phi1 = lat1 * degToRad;
    const double phi2 = lat2 * degToRad;
    const double dLon = (lon2 - lon1) * degToRad;
    return {phi1, phi2, std::cos(phi2) * std::cos(dLon), std::cos(phi2) * std::sin(dLon)};
}

} // namespace

double latitudeMidPoint(double lon1, double lat1, double lon2, double lat2)
{
    const MidPointTerms t = midPointTerms(lon1, lat1, lon2, lat2);
    const double across = std::cos(t.phi1) + t.bx;
    return radToDeg *
           std::atan2(std::sin(t.phi1) + std::sin(t.phi2), std::sqrt(across * across + t.by * t.by));
}

double longitudeMidPoint(double lon1, double lat1, double lon2, double lat2)
{
    const MidPointTerms t = midPointTerms(lon1, lat1, lon2, lat2);
    return lon1 + radToDeg * std::atan2(t.by, std::cos(t.phi1) + t.bx);
}

void metersPerDegree(double latitude, double &latMeters, double &lonMeters)
{
    const double p = latitude * degToRad;
    latMeters = 111132.92 - 559.82 * std::cos(2 * p) + 1.175 * std::cos(4 * p) - 0.0023 * std::cos(6 * p);
    lonMeters = 111412.84 * std::cos(p) - 93.5 * std::cos(3 * p) + 0.118 * std::cos(5 * p);
}

} // namespace tyx
