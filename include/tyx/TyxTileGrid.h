// Regular division of an image into rectangular cells.
#pragma once

#include <cstdint>
#include <iterator>
#include <set>

#include <tyx/TyxGlobal.h>
#include <tyx/TyxImageROI.h>
#include <tyx/TyxImageSize.h>

namespace tyx {

/// Cuts an image into cells of one size, row by row; the cells of the right
/// and lower edges are clipped to the image. The bands take no part in the
/// cell count. A default grid has no cells.
class TYX_EXPORT TyxTileGrid {
public:
    /// Forward iterator over the cells' regions; index -1 is the end.
    class Iterator_p {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = TyxImageROI;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = TyxImageROI;

        Iterator_p() = default;
        Iterator_p(const TyxTileGrid *grid, int32_t index) : m_grid(grid), m_index(index) {}

        /// The region of the current cell.
        TyxImageROI operator*() const { return (*m_grid)[static_cast<unsigned int>(m_index)]; }
        Iterator_p &operator++()
        {
            if (m_index >= 0 && static_cast<uint32_t>(m_index) + 1 < m_grid->numCells())
                ++m_index;
            else
                m_index = -1;
            return *this;
        }
        Iterator_p operator++(int)
        {
            Iterator_p before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator_p &other) const { return m_index == other.m_index; }
        bool operator!=(const Iterator_p &other) const { return m_index != other.m_index; }
        int32_t index() const { return m_index; }

    private:
        const TyxTileGrid *m_grid = nullptr;
        int32_t m_index = -1;
    };

    /// The sentinel of imageToCell for a position outside the image.
    static constexpr unsigned int NoCell = 0xFFFFFFFFu;

    TyxTileGrid() = default;
    TyxTileGrid(const TyxImageSize &imageSize, const TyxImageSize &cellSize);

    /// Counts the cells: ceil(image / cell) across and down. A cell width or
    /// height of 0 gives an empty grid.
    void initialize(const TyxImageSize &imageSize, const TyxImageSize &cellSize);
    /// All fields zero.
    void clear() { *this = TyxTileGrid(); }

    /// The region of cell \p cell, counted row by row, at band 0.
    TyxImageROI operator[](unsigned int cell) const;
    /// The region of the cell at \p column, \p row from \p band, clipped to
    /// the image.
    TyxImageROI operator()(unsigned int column, unsigned int row, unsigned int band) const;

    /// The cell holding the position, or NoCell when it lies outside the image.
    unsigned int imageToCell(unsigned int x, unsigned int y, unsigned int band) const;
    /// The cells that \p roi touches, ascending; empty when it misses the image.
    std::set<unsigned int> intersectedCells(const TyxImageROI &roi) const;

    unsigned int numCells() const { return m_numCells; }
    unsigned int numCellsHorz() const { return m_numCellsHorz; }
    unsigned int numCellsVert() const { return m_numCellsVert; }
    const TyxImageSize &cellSize() const { return m_cellSize; }
    const TyxImageSize &imageSize() const { return m_imageSize; }
    bool empty() const { return m_numCells == 0; }
    bool isEmpty() const { return empty(); }

    /// Index 0, or the end when there are no cells.
    Iterator_p begin() const { return Iterator_p(this, m_numCells == 0 ? -1 : 0); }
    Iterator_p end() const { return Iterator_p(this, -1); }

    /// All nine values.
    bool operator==(const TyxTileGrid &other) const
    {
        return m_numCellsHorz == other.m_numCellsHorz && m_numCellsVert == other.m_numCellsVert &&
               m_numCells == other.m_numCells && m_cellSize == other.m_cellSize &&
               m_imageSize == other.m_imageSize;
    }
    bool operator!=(const TyxTileGrid &other) const { return !(*this == other); }

private:
    unsigned int m_numCellsHorz = 0;
    unsigned int m_numCellsVert = 0;
    unsigned int m_numCells = 0;
    TyxImageSize m_cellSize;
    TyxImageSize m_imageSize;
};

} // namespace tyx
