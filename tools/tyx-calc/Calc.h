// Pieces of tyx-calc: options, rasters, the tile loop and the progress line.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gdal.h>

#include <tyx/TyxDataType.h>

namespace tyx {
class TyxEqnParser;
}

namespace tyxcalc {

/// A failure told to the user in one line; the program then ends with status 1.
struct CalcError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One "-i name=file[:band]".
struct InputArg {
    std::string name;
    std::string path;
    int band = 1;
};

/// One "--nodata [name=]value"; an empty name stands for the output.
struct NodataArg {
    std::string name;
    double value = 0.0;
};

struct Options {
    std::vector<InputArg> inputs;
    std::string expression;
    std::string outputType = "Float64";
    std::string output;
    std::vector<NodataArg> nodata;
    std::vector<std::string> creationOptions;
    std::string format = "GTiff";
    bool overwrite = false;
    bool quiet = false;
};

// ---- Arguments (CalcArgs.cpp) ----------------------------------------------------

/// Reads the command line through the library's parser. Help and version end
/// the process with status 0 there; a parse error is written to standard
/// error with the brief usage and gives false.
bool parseArguments(int argc, char **argv, Options &options);

// ---- Rasters (CalcRasters.cpp) ---------------------------------------------------

/// Closes a GDAL dataset when the last holder lets it go.
using DatasetPtr = std::shared_ptr<void>;

/// A band of an input raster, opened and checked.
struct InputBand {
    InputArg arg;
    DatasetPtr dataset; // shared by the inputs of one file
    GDALRasterBandH band = nullptr;
    GDALDataType gdalType = GDT_Unknown;
    tyx::TyxDataType dataType;
    std::optional<double> nodata;
};

/// The output's sample type: the GDAL type and, for real types, the library's.
struct OutputType {
    GDALDataType gdalType = GDT_Unknown;
    tyx::TyxDataType dataType; // invalid for complex outputs
    bool isComplex = false;
};

/// Geometry shared by all inputs and given to the output.
struct Geometry {
    int width = 0;
    int height = 0;
    int tileWidth = 0; // the first input's block until chooseTileSize
    int tileHeight = 0;
    bool hasGeoTransform = false;
    double geoTransform[6] = {0, 1, 0, 0, 0, 1};
    std::string projection;
};

/// Registers the drivers and keeps GDAL's own messages off the console.
void initGdal();

/// GDAL's last error text, or \p fallback when it has none.
std::string gdalMessage(const std::string &fallback);

/// Opens every input band and checks that all share size and georeferencing.
std::vector<InputBand> openInputs(const Options &options, Geometry &geometry);

/// The output type named by \p name ("Byte", "Float32", ...).
OutputType outputTypeFromName(const std::string &name);

/// The output raster, written under a temporary name in the output's folder
/// and given its final name by commit(); without commit() the destructor
/// deletes it.
class OutputRaster {
public:
    OutputRaster(const Options &options, const Geometry &geometry, const OutputType &type,
                 std::optional<double> nodata);
    ~OutputRaster();
    OutputRaster(const OutputRaster &) = delete;
    OutputRaster &operator=(const OutputRaster &) = delete;

    GDALRasterBandH band() const { return m_band; }
    /// Flushes, closes and renames to the final name; throws CalcError.
    void commit();
    /// Closes and deletes the temporary raster; safe to call twice.
    void discard();

private:
    void close();

    std::string m_finalPath;
    std::string m_tempPath;
    GDALDriverH m_driver = nullptr;
    GDALDatasetH m_dataset = nullptr;
    GDALRasterBandH m_band = nullptr;
    bool m_overwrite = false;
    bool m_pending = false;
};

/// GDAL's block cache beyond the rows of blocks that sizeBlockCache counts.
constexpr int64_t kCacheBaseBytes = 2 * 1024 * 1024;

/// Bytes of one row of blocks of \p band, or of \p tileHeight rows if more,
/// across \p width pixels; of all bands when the blocks are pixel-interleaved.
int64_t blockRowBytes(GDALRasterBandH band, int width, int tileHeight);

/// Caps GDAL's block cache at two rows of blocks (or tiles) of every input
/// and of the output, plus kCacheBaseBytes; returns the cap. \p geometry
/// holds the tile size.
int64_t sizeBlockCache(const std::vector<InputBand> &inputs, const OutputRaster &output,
                       const Geometry &geometry);

// ---- Tile loop (CalcTiles.cpp) ----------------------------------------------------

/// The tile size the loop walks: the first input's block, joined across and
/// then down to about \p targetPixels when it is smaller, cut into rows
/// when it is more than four times larger.
void chooseTileSize(Geometry &geometry, int64_t targetPixels);

/// Pixels per tile the loop aims at; the memory bound of the help text is
/// counted from it.
constexpr int64_t kTargetTilePixels = 262144;

class Progress;

/// Set by the signal handler; the loop stops at the next tile.
bool interrupted();
void installSignalHandlers();

/// Parses the expression and checks that each of its variables is an input,
/// a constant or defined in the text. Throws CalcError.
void parseExpression(tyx::TyxEqnParser &parser, const Options &options);

/// Reads, evaluates, converts and writes every tile. Throws CalcError.
/// The environment variable TYX_CALC_INTERRUPT_AFTER_TILES=n makes the loop
/// raise SIGINT after n tiles, so that tests can interrupt a write.
void runTiles(tyx::TyxEqnParser &parser, const Options &options, std::vector<InputBand> &inputs,
              const Geometry &geometry, const OutputType &type, std::optional<double> outputNodata,
              OutputRaster &output, Progress &progress);

// ---- Progress (CalcProgress.cpp) ----------------------------------------------------

/// A progress line on standard error while it is a terminal, and the
/// summary line at the end.
class Progress {
public:
    Progress(uint64_t totalTiles, uint64_t totalPixels, bool quiet);
    /// Counts one finished tile and redraws at most ten times a second.
    void tileDone();
    /// Ends the progress line and prints the summary unless quiet.
    void finish();
    /// Clears the progress line before an error is printed.
    void abandon();

private:
    void draw();

    uint64_t m_totalTiles;
    uint64_t m_totalPixels;
    uint64_t m_doneTiles = 0;
    bool m_show;
    bool m_quiet;
    bool m_drawn = false;
    double m_start;
    double m_lastDraw = -1.0;
};

/// Seconds of a steady clock.
double nowSeconds();

} // namespace tyxcalc
