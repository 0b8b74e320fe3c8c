// Tile grid: cell counts, cell regions and the cells a region touches.
#include <tyx/TyxTileGrid.h>

#include <cmath>

namespace tyx {

namespace {

// ceil(image / cell) in double, truncated to 64 bits and cut to the low 32.
// An infinite or NaN quotient (cell size 0) gives 0 instead of the
// processor's undefined conversion.
unsigned int cellCount(unsigned int image, unsigned int cell)
{
    const double quotient = std::ceil(static_cast<double>(image) / static_cast<double>(cell));
    if (!(quotient >= 0.0 && quotient < 18446744073709551616.0))
        return 0;
    return static_cast<unsigned int>(static_cast<uint64_t>(quotient));
}

} // namespace

TyxTileGrid::TyxTileGrid(const TyxImageSize &imageSize, const TyxImageSize &cellSize)
{
    initialize(imageSize, cellSize);
}

void TyxTileGrid::initialize(const TyxImageSize &imageSize, const TyxImageSize &cellSize)
{
    m_imageSize = imageSize;
    m_cellSize = cellSize;
    m_numCellsHorz = cellCount(imageSize.width(), cellSize.width());
    m_numCellsVert = cellCount(imageSize.height(), cellSize.height());
    m_numCells = m_numCellsHorz * m_numCellsVert;
}

TyxImageROI TyxTileGrid::operator[](unsigned int cell) const
{
    const unsigned int row = m_numCellsHorz == 0 ? 0 : cell / m_numCellsHorz;
    const unsigned int column = cell - row * m_numCellsHorz;
    return (*this)(column, row, 0);
}

TyxImageROI TyxTileGrid::operator()(unsigned int column, unsigned int row, unsigned int band) const
{
    const TyxCoord3D<int> origin(static_cast<int>(m_cellSize.width() * column),
                                 static_cast<int>(m_cellSize.height() * row), static_cast<int>(band));
    TyxImageROI roi(origin, m_cellSize);
    // Clip the lower-right corner to the image, dimension by dimension.
    const int64_t limits[3] = {m_imageSize.width(), m_imageSize.height(), m_imageSize.numBands()};
    const int64_t starts[3] = {origin.x(), origin.y(), origin.z()};
    int64_t corner[3] = {starts[0] + int64_t(m_cellSize.width()) - 1,
                         starts[1] + int64_t(m_cellSize.height()) - 1,
                         starts[2] + int64_t(m_cellSize.numBands()) - 1};
    bool clipped = false;
    for (int i = 0; i < 3; ++i) {
        if (corner[i] >= limits[i]) {
            corner[i] = limits[i] - 1;
            clipped = true;
        }
    }
    if (clipped) {
        // A cell wholly past the image gets a size of 0 rather than a wrapped one.
        auto extent = [](int64_t last, int64_t first) {
            return static_cast<unsigned int>(last < first ? 0 : last - first + 1);
        };
        roi.initialize(origin, TyxImageSize(extent(corner[0], starts[0]), extent(corner[1], starts[1]),
                                            extent(corner[2], starts[2])));
    }
    return roi;
}

unsigned int TyxTileGrid::imageToCell(unsigned int x, unsigned int y, unsigned int band) const
{
    if (x >= m_imageSize.width() || y >= m_imageSize.height() || band >= m_imageSize.numBands())
        return NoCell;
    // A zero cell size has no cells; answer the sentinel instead of dividing.
    if (m_cellSize.width() == 0 || m_cellSize.height() == 0)
        return NoCell;
    return x / m_cellSize.width() + (y / m_cellSize.height()) * m_numCellsHorz;
}

std::set<unsigned int> TyxTileGrid::intersectedCells(const TyxImageROI &roi) const
{
    std::set<unsigned int> cells;
    const TyxImageROI part = roi.intersection(TyxImageROI(m_imageSize));
    if (static_cast<int>(part.width()) <= 0 || static_cast<int>(part.height()) <= 0 ||
        static_cast<int>(part.numBands()) <= 0)
        return cells;
    const TyxCoord3D<int> lr = part.lowerRight();
    const TyxCoord3D<int> ul = part.origin();
    unsigned int first = imageToCell(unsigned(ul.x()), unsigned(ul.y()), unsigned(ul.z()));
    const unsigned int last = imageToCell(unsigned(lr.x()), unsigned(lr.y()), unsigned(ul.z()));
    const unsigned int topRight = imageToCell(unsigned(lr.x()), unsigned(ul.y()), unsigned(ul.z()));
    if (first == NoCell || last == NoCell || topRight == NoCell)
        return cells;
    const unsigned int perRow = topRight - first + 1;
    const unsigned int skip = m_numCellsHorz - perRow;
    while (first <= last) {
        for (unsigned int i = 0; i < perRow; ++i)
            cells.insert(first + i);
        first += perRow + skip;
    }
    return cells;
}

} // namespace tyx
