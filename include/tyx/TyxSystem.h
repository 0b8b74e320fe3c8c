// System services: memory queries, loop switches, byte swapping, numeric
// helpers, time stamps, paths of the running program and geodesy.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tyx/TyxString.h>

namespace tyx {

/// Total physical memory in bytes.
TYX_EXPORT uint64_t physicalRam();
/// Physical memory available to new work, in bytes (MemAvailable).
TYX_EXPORT uint64_t availableRam();

/// Sets whether tile operations ask for parallel loops; returns the previous
/// setting. On by default.
TYX_EXPORT bool enableParallelLoops(bool enable);
/// Whether tile operations ask for parallel loops.
TYX_EXPORT bool useParallelLoops();
/// Whether loops are timed; always false, the library has no setter.
TYX_EXPORT bool isTimingLoops();

/// Reverses the bytes of each of \p count elements of \p elementSize bytes,
/// in place.
TYX_EXPORT void swapBytes(void *data, size_t count, size_t elementSize, bool parallel);

/// 2.220446049250313e-16.
TYX_EXPORT double epsilonDouble();
/// Whether \p value is not a number.
TYX_EXPORT bool isNaN(double value);

/// Milliseconds since the epoch of a local time written "YYYYMMDDhhmmss",
/// optionally followed by one separator and milliseconds. Texts shorter than
/// 14 characters give 0.
TYX_EXPORT int64_t timeStampFromStr(const TyxString &text);

/// Path of the running executable; empty when it cannot be read.
TYX_EXPORT TyxString exeFilePath();
/// Path of the module (executable or shared object) holding \p address;
/// empty when it cannot be found.
TYX_EXPORT TyxString dsoPath(const void *address);

// Geodesy: arguments in degrees, ordered longitude 1, latitude 1, longitude 2,
// latitude 2; headings in degrees from 0 to 360.

/// Haversine distance in metres on a sphere of radius 6367444.6570999995 m.
TYX_EXPORT double greatCircleDistance(double lon1, double lat1, double lon2, double lat2);
/// Initial bearing of the great circle from point 1 to point 2.
TYX_EXPORT double greatCircleHeading(double lon1, double lat1, double lon2, double lat2);
/// Distance in metres on a plane, with the degree lengths at the mean latitude.
TYX_EXPORT double directDistance(double lon1, double lat1, double lon2, double lat2);
/// Heading on a plane: 0 to the north, 90 to the east.
TYX_EXPORT double directHeading(double lon1, double lat1, double lon2, double lat2);
/// Latitude of the great-circle mid point.
TYX_EXPORT double latitudeMidPoint(double lon1, double lat1, double lon2, double lat2);
/// Longitude of the great-circle mid point.
TYX_EXPORT double longitudeMidPoint(double lon1, double lat1, double lon2, double lat2);
/// Lengths in metres of one degree of latitude and of longitude at \p latitude.
TYX_EXPORT void metersPerDegree(double latitude, double &latMeters, double &lonMeters);

} // namespace tyx
