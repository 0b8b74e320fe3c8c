// Half-open box in x, y and z: the one implementation of TyxROI_IF.
#pragma once

#include <tyx/TyxROI_IF.h>

namespace tyx {

/// A box whose minima belong to it and whose maxima do not. Instantiated for
/// double.
template <class T>
class TYX_EXPORT TyxROIRect : public TyxROI_IF {
public:
    TyxROIRect() = default;
    TyxROIRect(T minX, T minY, T minZ, T maxX, T maxY, T maxZ)
        : m_minX(minX), m_minY(minY), m_minZ(minZ), m_maxX(maxX), m_maxY(maxY), m_maxZ(maxZ)
    {
    }

    void clear() override;
    bool isEmpty() const override;
    TyxROIRect<double> normalized() const override;
    void bounds(double *minX, double *minY, double *minZ, double *maxX, double *maxY,
                double *maxZ) const override;
    bool contains(double x, double y, double z) const override;
    bool contains(double x, double y) const override;
    bool contains(const TyxCoord3D<double> &point) const override;
    bool contains(const TyxCoord2D<double> &point) const override;
    std::vector<bool> contains(const std::vector<TyxCoord3D<double>> &points) const override;
    std::vector<bool> contains(const std::vector<TyxCoord2D<double>> &points) const override;

    T minX() const { return m_minX; }
    T minY() const { return m_minY; }
    T minZ() const { return m_minZ; }
    T maxX() const { return m_maxX; }
    T maxY() const { return m_maxY; }
    T maxZ() const { return m_maxZ; }

    bool operator==(const TyxROIRect &o) const
    {
        return m_minX == o.m_minX && m_minY == o.m_minY && m_minZ == o.m_minZ && m_maxX == o.m_maxX &&
               m_maxY == o.m_maxY && m_maxZ == o.m_maxZ;
    }
    bool operator!=(const TyxROIRect &other) const { return !(*this == other); }

private:
    T m_minX = 0;
    T m_minY = 0;
    T m_minZ = 0;
    T m_maxX = 0;
    T m_maxY = 0;
    T m_maxZ = 0;
};

extern template class TyxROIRect<double>;

} // namespace tyx
