// Interface of a floating-point region that filters points.
#pragma once

#include <vector>

#include <tyx/TyxCoord2D.h>
#include <tyx/TyxCoord3D.h>
#include <tyx/TyxGlobal.h>

namespace tyx {

template <class T>
class TyxROIRect;

/// A box in x, y and z that tells which points lie in it.
class TYX_EXPORT TyxROI_IF {
public:
    virtual ~TyxROI_IF();
    /// Sets all bounds to 0.
    virtual void clear() = 0;
    /// Each minimum equals its maximum.
    virtual bool isEmpty() const = 0;
    /// The same box with each pair of bounds in order.
    virtual TyxROIRect<double> normalized() const = 0;
    /// Copies the six bounds out.
    virtual void bounds(double *minX, double *minY, double *minZ, double *maxX, double *maxY,
                        double *maxZ) const = 0;
    /// The point lies in the half-open box; a NaN coordinate never does.
    virtual bool contains(double x, double y, double z) const = 0;
    /// The same for x and y only.
    virtual bool contains(double x, double y) const = 0;
    virtual bool contains(const TyxCoord3D<double> &point) const = 0;
    virtual bool contains(const TyxCoord2D<double> &point) const = 0;
    /// One answer per point, in order.
    virtual std::vector<bool> contains(const std::vector<TyxCoord3D<double>> &points) const = 0;
    virtual std::vector<bool> contains(const std::vector<TyxCoord2D<double>> &points) const = 0;
};

} // namespace tyx
