// tyx-calc's rasters: opening and checking the inputs, creating and finishing the output.
#include "Calc.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

#include <cpl_conv.h>
#include <cpl_error.h>
#include <cpl_string.h>
#include <cpl_vsi.h>

using tyx::TyxDataType;
using tyx::TyxNumericType;

namespace tyxcalc {

namespace {

// The library's type of a GDAL sample type; invalid for types the tile
// arithmetic does not serve (64-bit integers, complex integers).
TyxDataType dataTypeOf(GDALDataType type)
{
    switch (type) {
    case GDT_Byte: return TyxDataType(TyxNumericType::U8);
    case GDT_Int16: return TyxDataType(TyxNumericType::I16);
    case GDT_UInt16: return TyxDataType(TyxNumericType::U16);
    case GDT_Int32: return TyxDataType(TyxNumericType::I32);
    case GDT_UInt32: return TyxDataType(TyxNumericType::U32);
    case GDT_Float32: return TyxDataType(TyxNumericType::Float);
    case GDT_Float64: return TyxDataType(TyxNumericType::Double);
    case GDT_CFloat32: return TyxDataType(TyxNumericType::ComplexFloat);
    case GDT_CFloat64: return TyxDataType(TyxNumericType::ComplexDouble);
    default: return TyxDataType();
    }
}

bool fileExists(const std::string &path)
{
    VSIStatBufL st;
    return VSIStatL(path.c_str(), &st) == 0;
}

bool sameGeoTransform(const double *a, const double *b)
{
    for (int i = 0; i < 6; ++i) {
        const double scale = std::max({1.0, std::fabs(a[i]), std::fabs(b[i])});
        if (std::fabs(a[i] - b[i]) > 1e-9 * scale)
            return false;
    }
    return true;
}

} // namespace

void initGdal()
{
    GDALAllRegister();
    // GDAL's own messages would reach the console; the tool reports the last
    // one itself, in its own line.
    CPLSetErrorHandler(CPLQuietErrorHandler);
}

int64_t blockRowBytes(GDALRasterBandH band, int width, int tileHeight)
{
    int blockWidth = 0, blockHeight = 0;
    GDALGetBlockSize(band, &blockWidth, &blockHeight);
    int64_t bytes = int64_t(width) * std::max(blockHeight, tileHeight) *
                    GDALGetDataTypeSizeBytes(GDALGetRasterDataType(band));
    // A pixel-interleaved block holds every band: reading one caches all.
    GDALDatasetH dataset = GDALGetBandDataset(band);
    const char *interleave =
        dataset ? GDALGetMetadataItem(dataset, "INTERLEAVE", "IMAGE_STRUCTURE") : nullptr;
    if (dataset && interleave && EQUAL(interleave, "PIXEL"))
        bytes *= GDALGetRasterCount(dataset);
    return bytes;
}

int64_t sizeBlockCache(const std::vector<InputBand> &inputs, const OutputRaster &output,
                       const Geometry &geometry)
{
    // Two rows of blocks (or of tiles, if higher) of each input and of the
    // output: no tile evicts a block that a later tile still needs.
    const int width = geometry.width, tileHeight = geometry.tileHeight;
    int64_t bytes = kCacheBaseBytes + 2 * blockRowBytes(output.band(), width, tileHeight);
    for (const InputBand &in : inputs)
        bytes += 2 * blockRowBytes(in.band, width, tileHeight);
    GDALSetCacheMax64(bytes);
    return bytes;
}

std::string gdalMessage(const std::string &fallback)
{
    const char *text = CPLGetLastErrorMsg();
    std::string message = (text && *text) ? text : fallback;
    for (char &c : message) {
        if (c == '\n' || c == '\r')
            c = ' ';
    }
    return message;
}

std::vector<InputBand> openInputs(const Options &options, Geometry &geometry)
{
    std::map<std::string, DatasetPtr> opened;
    std::vector<InputBand> inputs;
    for (const InputArg &arg : options.inputs) {
        InputBand in;
        in.arg = arg;
        DatasetPtr &dataset = opened[arg.path];
        if (!dataset) {
            CPLErrorReset();
            GDALDatasetH handle =
                GDALOpenEx(arg.path.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY, nullptr, nullptr, nullptr);
            if (!handle && !fileExists(arg.path))
                throw CalcError("input '" + arg.path + "' does not exist");
            if (!handle)
                throw CalcError("cannot read '" + arg.path +
                                "' as a raster: " + gdalMessage("GDAL knows no raster format for it"));
            dataset = DatasetPtr(handle, [](void *h) { GDALClose(static_cast<GDALDatasetH>(h)); });
        }
        in.dataset = dataset;
        GDALDatasetH handle = dataset.get();
        const int bands = GDALGetRasterCount(handle);
        if (arg.band > bands)
            throw CalcError("band " + std::to_string(arg.band) + " of '" + arg.path +
                            "' does not exist; it has " + std::to_string(bands) +
                            (bands == 1 ? " band" : " bands"));
        in.band = GDALGetRasterBand(handle, arg.band);
        in.gdalType = GDALGetRasterDataType(in.band);
        in.dataType = dataTypeOf(in.gdalType);
        if (!in.dataType.isValid())
            throw CalcError("band " + std::to_string(arg.band) + " of '" + arg.path + "' has the data type " +
                            GDALGetDataTypeName(in.gdalType) + ", which tyx-calc does not read");
        int hasNodata = 0;
        const double nodata = GDALGetRasterNoDataValue(in.band, &hasNodata);
        if (hasNodata)
            in.nodata = nodata;
        for (const NodataArg &given : options.nodata) {
            if (given.name == arg.name)
                in.nodata = given.value;
        }

        const int width = GDALGetRasterXSize(handle);
        const int height = GDALGetRasterYSize(handle);
        double transform[6] = {0, 1, 0, 0, 0, 1};
        const bool hasTransform = GDALGetGeoTransform(handle, transform) == CE_None;
        if (inputs.empty()) {
            geometry.width = width;
            geometry.height = height;
            GDALGetBlockSize(in.band, &geometry.tileWidth, &geometry.tileHeight);
            geometry.hasGeoTransform = hasTransform;
            std::memcpy(geometry.geoTransform, transform, sizeof transform);
            const char *wkt = GDALGetProjectionRef(handle);
            geometry.projection = wkt ? wkt : "";
        } else {
            const std::string first = "'" + inputs.front().arg.path + "'";
            if (width != geometry.width || height != geometry.height)
                throw CalcError("input '" + arg.path + "' is " + std::to_string(width) + " x " +
                                std::to_string(height) + " pixels but " + first + " is " +
                                std::to_string(geometry.width) + " x " + std::to_string(geometry.height));
            if (hasTransform != geometry.hasGeoTransform ||
                (hasTransform && !sameGeoTransform(transform, geometry.geoTransform)))
                throw CalcError("input '" + arg.path + "' has another geotransform than " + first);
        }
        inputs.push_back(std::move(in));
    }
    return inputs;
}

OutputType outputTypeFromName(const std::string &name)
{
    OutputType type;
    type.gdalType = GDALGetDataTypeByName(name.c_str());
    switch (type.gdalType) {
    case GDT_Byte:
    case GDT_Int16:
    case GDT_UInt16:
    case GDT_Int32:
    case GDT_UInt32:
    case GDT_Float32:
    case GDT_Float64: type.dataType = dataTypeOf(type.gdalType); break;
    case GDT_CFloat32:
    case GDT_CFloat64: type.isComplex = true; break;
    default:
        throw CalcError("output type '" + name +
                        "' is not supported; use Byte, Int16, UInt16, Int32, UInt32, Float32, Float64, "
                        "CFloat32 or CFloat64");
    }
    return type;
}

OutputRaster::OutputRaster(const Options &options, const Geometry &geometry, const OutputType &type,
                           std::optional<double> nodata)
    : m_finalPath(options.output), m_overwrite(options.overwrite)
{
    m_driver = GDALGetDriverByName(options.format.c_str());
    if (!m_driver)
        throw CalcError("no GDAL driver is called '" + options.format + "'");
    if (!CSLFetchBoolean(GDALGetMetadata(m_driver, nullptr), GDAL_DCAP_CREATE, FALSE))
        throw CalcError("the GDAL driver '" + options.format + "' cannot create rasters");
    if (fileExists(m_finalPath) && !m_overwrite)
        throw CalcError("output '" + m_finalPath + "' exists; give --overwrite to replace it");

    // The temporary raster lies in the output's folder, so that the final
    // rename stays on one file system; it keeps the output's extension.
    const size_t slash = m_finalPath.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : m_finalPath.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? m_finalPath : m_finalPath.substr(slash + 1);
    m_tempPath = folder + ".tyx-calc-" + std::to_string(::getpid()) + "-" + base;

    std::vector<const char *> creation;
    for (const std::string &option : options.creationOptions)
        creation.push_back(option.c_str());
    creation.push_back(nullptr);
    CPLErrorReset();
    m_dataset = GDALCreate(m_driver, m_tempPath.c_str(), geometry.width, geometry.height, 1, type.gdalType,
                           const_cast<char **>(creation.data()));
    if (!m_dataset)
        throw CalcError("cannot create '" + m_finalPath + "': " + gdalMessage("the driver refused"));
    m_pending = true;
    m_band = GDALGetRasterBand(m_dataset, 1);
    if (geometry.hasGeoTransform)
        GDALSetGeoTransform(m_dataset, const_cast<double *>(geometry.geoTransform));
    if (!geometry.projection.empty())
        GDALSetProjection(m_dataset, geometry.projection.c_str());
    if (nodata)
        GDALSetRasterNoDataValue(m_band, *nodata);
}

OutputRaster::~OutputRaster() { discard(); }

void OutputRaster::close()
{
    if (m_dataset) {
        GDALClose(m_dataset);
        m_dataset = nullptr;
        m_band = nullptr;
    }
}

void OutputRaster::commit()
{
    CPLErrorReset();
    GDALFlushCache(m_dataset);
    close();
    // GDAL 3.6's close reports a failed write only through the last error.
    if (CPLGetLastErrorType() >= CE_Failure)
        throw CalcError("cannot write '" + m_finalPath + "': " + gdalMessage("write failed"));
    if (m_overwrite && fileExists(m_finalPath)) {
        // Delete the old raster with its side files; a file the driver does
        // not know as a raster is simply replaced by the rename.
        CPLErrorReset();
        if (GDALDeleteDataset(m_driver, m_finalPath.c_str()) != CE_None)
            VSIUnlink(m_finalPath.c_str());
    }
    CPLErrorReset();
    if (GDALRenameDataset(m_driver, m_finalPath.c_str(), m_tempPath.c_str()) != CE_None)
        throw CalcError("cannot rename the result to '" + m_finalPath + "': " + gdalMessage("rename failed"));
    m_pending = false;
}

void OutputRaster::discard()
{
    close();
    if (m_pending) {
        m_pending = false;
        if (GDALDeleteDataset(m_driver, m_tempPath.c_str()) != CE_None)
            VSIUnlink(m_tempPath.c_str());
    }
}

} // namespace tyxcalc
