// Half-open box: point tests one by one and over lists.
#include <tyx/TyxROIRect.h>

#include <algorithm>
#include <cstdint>

#include "core/TyxPost.h"

namespace tyx {

TyxROI_IF::~TyxROI_IF() = default;

template <class T>
void TyxROIRect<T>::clear()
{
    *this = TyxROIRect();
}

template <class T>
bool TyxROIRect<T>::isEmpty() const
{
    return m_minX == m_maxX && m_minY == m_maxY && m_minZ == m_maxZ;
}

template <class T>
TyxROIRect<double> TyxROIRect<T>::normalized() const
{
    return TyxROIRect<double>(std::min(m_minX, m_maxX), std::min(m_minY, m_maxY), std::min(m_minZ, m_maxZ),
                              std::max(m_minX, m_maxX), std::max(m_minY, m_maxY), std::max(m_minZ, m_maxZ));
}

template <class T>
void TyxROIRect<T>::bounds(double *minX, double *minY, double *minZ, double *maxX, double *maxY,
                           double *maxZ) const
{
    *minX = m_minX;
    *minY = m_minY;
    *minZ = m_minZ;
    *maxX = m_maxX;
    *maxY = m_maxY;
    *maxZ = m_maxZ;
}

template <class T>
bool TyxROIRect<T>::contains(double x, double y, double z) const
{
    return m_minX <= x && x < m_maxX && m_minY <= y && y < m_maxY && m_minZ <= z && z < m_maxZ;
}

template <class T>
bool TyxROIRect<T>::contains(double x, double y) const
{
    return m_minX <= x && x < m_maxX && m_minY <= y && y < m_maxY;
}

template <class T>
bool TyxROIRect<T>::contains(const TyxCoord3D<double> &point) const
{
    return contains(point.x(), point.y(), point.z());
}

template <class T>
bool TyxROIRect<T>::contains(const TyxCoord2D<double> &point) const
{
    return contains(point.x(), point.y());
}

namespace {

void checkLength(size_t n)
{
    if (n > static_cast<size_t>(INT64_MAX))
        TYX_THROW_ERROR(L"vector<bool> too long");
}

} // namespace

template <class T>
std::vector<bool> TyxROIRect<T>::contains(const std::vector<TyxCoord3D<double>> &points) const
{
    checkLength(points.size());
    const double x0 = m_minX, y0 = m_minY, z0 = m_minZ, x1 = m_maxX, y1 = m_maxY, z1 = m_maxZ;
    std::vector<bool> inside(points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        const TyxCoord3D<double> &p = points[i];
        inside[i] = x0 <= p.x() && p.x() < x1 && y0 <= p.y() && p.y() < y1 && z0 <= p.z() && p.z() < z1;
    }
    return inside;
}

template <class T>
std::vector<bool> TyxROIRect<T>::contains(const std::vector<TyxCoord2D<double>> &points) const
{
    checkLength(points.size());
    const double x0 = m_minX, y0 = m_minY, x1 = m_maxX, y1 = m_maxY;
    std::vector<bool> inside(points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        const TyxCoord2D<double> &p = points[i];
        inside[i] = x0 <= p.x() && p.x() < x1 && y0 <= p.y() && p.y() < y1;
    }
    return inside;
}

template class TyxROIRect<double>;

} // namespace tyx
