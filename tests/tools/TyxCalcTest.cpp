// End-to-end tests of tyx-calc on small GeoTIFFs made in a temporary folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include <cpl_conv.h>
#include <gdal.h>

namespace {

namespace fs = std::filesystem;

using Band = std::vector<double>;

const double kTransform[6] = {500000.0, 10.0, 0.0, 4000000.0, 0.0, -10.0};

struct RasterContent {
    int width = 37;
    int height = 23;
    GDALDataType type = GDT_UInt16;
    std::vector<Band> bands;
    std::vector<double> nodata; // per band; NaN: none
    const double *transform = kTransform;
};

class Workspace {
public:
    Workspace()
    {
        GDALAllRegister();
        char pattern[] = "/tmp/tyx-calc-test-XXXXXX";
        m_dir = mkdtemp(pattern);
    }
    ~Workspace() { fs::remove_all(m_dir); }

    std::string path(const std::string &name) const { return m_dir + "/" + name; }

    // Writes a GeoTIFF in blocks of 16 x 16 pixels, so that the sizes of the
    // tests are not multiples of the block.
    std::string write(const std::string &name, const RasterContent &raster) const
    {
        const std::string file = path(name);
        const char *options[] = {"TILED=YES", "BLOCKXSIZE=16", "BLOCKYSIZE=16", nullptr};
        GDALDatasetH ds =
            GDALCreate(GDALGetDriverByName("GTiff"), file.c_str(), raster.width, raster.height,
                       static_cast<int>(raster.bands.size()), raster.type, const_cast<char **>(options));
        GDALSetGeoTransform(ds, const_cast<double *>(raster.transform));
        GDALSetProjection(ds, "EPSG:32633");
        for (size_t b = 0; b < raster.bands.size(); ++b) {
            GDALRasterBandH band = GDALGetRasterBand(ds, static_cast<int>(b) + 1);
            if (b < raster.nodata.size() && !std::isnan(raster.nodata[b]))
                GDALSetRasterNoDataValue(band, raster.nodata[b]);
            EXPECT_EQ(CE_None, GDALRasterIO(band, GF_Write, 0, 0, raster.width, raster.height,
                                            const_cast<double *>(raster.bands[b].data()), raster.width,
                                            raster.height, GDT_Float64, 0, 0));
        }
        GDALClose(ds);
        return file;
    }

    // Runs the tool with \p args (shell words); returns the exit status.
    int run(const std::string &args, const std::string &env = "")
    {
        const std::string command =
            env + " " + TYX_CALC_PATH + " " + args + " >" + path("stdout.txt") + " 2>" + path("stderr.txt");
        const int status = std::system(command.c_str());
        m_stderr = slurp(path("stderr.txt"));
        fs::remove(path("stdout.txt"));
        fs::remove(path("stderr.txt"));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    const std::string &stderrText() const { return m_stderr; }

    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto &entry : fs::directory_iterator(m_dir))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    static std::string slurp(const std::string &file)
    {
        std::ifstream in(file);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::string m_dir;
    std::string m_stderr;
};

Band pattern(int width, int height, int seed)
{
    Band band(static_cast<size_t>(width) * height);
    for (size_t i = 0; i < band.size(); ++i)
        band[i] = static_cast<double>((i * (7 + seed) + seed * 131) % 1000);
    return band;
}

struct Output {
    Band samples;
    GDALDataType type = GDT_Unknown;
    double transform[6] = {};
    std::string projection;
    bool hasNodata = false;
    double nodata = 0.0;
};

Output readOutput(const std::string &file)
{
    Output out;
    GDALDatasetH ds = GDALOpen(file.c_str(), GA_ReadOnly);
    EXPECT_NE(nullptr, ds);
    if (!ds)
        return out;
    GDALRasterBandH band = GDALGetRasterBand(ds, 1);
    const int w = GDALGetRasterXSize(ds), h = GDALGetRasterYSize(ds);
    out.samples.resize(static_cast<size_t>(w) * h);
    EXPECT_EQ(CE_None, GDALRasterIO(band, GF_Read, 0, 0, w, h, out.samples.data(), w, h, GDT_Float64, 0, 0));
    out.type = GDALGetRasterDataType(band);
    GDALGetGeoTransform(ds, out.transform);
    out.projection = GDALGetProjectionRef(ds);
    int has = 0;
    out.nodata = GDALGetRasterNoDataValue(band, &has);
    out.hasNodata = has != 0;
    GDALClose(ds);
    return out;
}

TEST(TyxCalcTest, NormalisedDifferenceMatchesEveryPixelAndKeepsGeoreferencing)
{
    Workspace ws;
    RasterContent raster;
    raster.bands = {pattern(37, 23, 1), pattern(37, 23, 2), pattern(37, 23, 3)};
    raster.bands[0][0] = raster.bands[1][0] = 0; // 0 / 0 stays NaN in a float output
    const std::string in = ws.write("in.tif", raster);
    ASSERT_EQ(0, ws.run("-q -i a=" + in + ":3 -i b=" + in + ":2 -e '(a - b) / (a + b)' -t Float32 -o " +
                        ws.path("out.tif")));
    const Output out = readOutput(ws.path("out.tif"));
    EXPECT_EQ(GDT_Float32, out.type);
    for (size_t i = 0; i < out.samples.size(); ++i) {
        const double a = raster.bands[2][i], b = raster.bands[1][i];
        const double expected = static_cast<float>((a - b) / (a + b));
        if (std::isnan(expected))
            EXPECT_TRUE(std::isnan(out.samples[i])) << i;
        else
            ASSERT_EQ(expected, out.samples[i]) << "pixel " << i;
    }
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(kTransform[k], out.transform[k]);
    GDALDatasetH ds = GDALOpen(in.c_str(), GA_ReadOnly);
    EXPECT_EQ(std::string(GDALGetProjectionRef(ds)), out.projection);
    GDALClose(ds);
    EXPECT_FALSE(out.hasNodata);
    EXPECT_EQ((std::vector<std::string>{"in.tif", "out.tif"}), ws.files());
}

// Integer outputs round half away from zero and clip; division by zero gives
// infinities in a float output and the type's limits in an integer one.
TEST(TyxCalcTest, ConvertsWithRoundclipAndKeepsInfinities)
{
    Workspace ws;
    RasterContent raster;
    raster.width = 5;
    raster.height = 1;
    raster.type = GDT_Int16;
    raster.bands = {{-7, -5, 1, 5, 600}};
    const std::string in = ws.write("in.tif", raster);
    struct Case {
        std::string expression;
        std::string type;
        Band expected;
    };
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<Case> cases = {
        {"a * 0.5", "Byte", {0, 0, 1, 3, 255}},
        {"a * 0.5", "Int16", {-4, -3, 1, 3, 300}},
        {"a * 100", "Int16", {-700, -500, 100, 500, 32767}},
        {"a / 0", "Float32", {-inf, -inf, inf, inf, inf}},
        {"a / 0", "Float64", {-inf, -inf, inf, inf, inf}},
        {"a / 0", "Int16", {-32768, -32768, 32767, 32767, 32767}},
        {"a / 0", "UInt32", {0, 0, 4294967295.0, 4294967295.0, 4294967295.0}},
        {"a + 0.25", "CFloat32", {-6.75, -4.75, 1.25, 5.25, 600.25}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.expression + " to " + c.type);
        ASSERT_EQ(0, ws.run("-q --overwrite -i a=" + in + " -e '" + c.expression + "' -t " + c.type + " -o " +
                            ws.path("out.tif")));
        const Output out = readOutput(ws.path("out.tif"));
        EXPECT_EQ(c.type, GDALGetDataTypeName(out.type));
        EXPECT_EQ(c.expected, out.samples);
    }
}

TEST(TyxCalcTest, NodataOfAnyInputMakesNodata)
{
    Workspace ws;
    // A GeoTIFF keeps one nodata value for all its bands: one file each.
    RasterContent a;
    a.width = 19;
    a.height = 11;
    a.bands = {pattern(19, 11, 4)};
    a.bands[0][3] = 65535;
    a.nodata = {65535};
    RasterContent b = a;
    b.bands = {pattern(19, 11, 5)};
    b.bands[0][40] = 7;
    b.bands[0][41] = 9;
    b.nodata = {7};
    const std::string inA = ws.write("a.tif", a);
    const std::string inB = ws.write("b.tif", b);
    struct Case {
        std::string extra;
        double bNodata;
        double outNodata;
    };
    // The output takes the first input's nodata value unless one is given;
    // --nodata b=9 replaces the file's value 7 for b.
    const std::vector<Case> cases = {
        {"", 7, 65535},
        {"--nodata 0", 7, 0},
        {"--nodata b=9 --nodata 1", 9, 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.extra);
        ASSERT_EQ(0, ws.run("-q --overwrite -i a=" + inA + " -i b=" + inB + " -e 'a + b * 2' -t UInt16 " +
                            c.extra + " -o " + ws.path("out.tif")));
        const Output out = readOutput(ws.path("out.tif"));
        ASSERT_TRUE(out.hasNodata);
        EXPECT_EQ(c.outNodata, out.nodata);
        int masked = 0;
        for (size_t i = 0; i < out.samples.size(); ++i) {
            const bool isNodata = a.bands[0][i] == 65535 || b.bands[0][i] == c.bNodata;
            masked += isNodata ? 1 : 0;
            const double expected =
                isNodata ? c.outNodata : std::min(65535.0, a.bands[0][i] + b.bands[0][i] * 2);
            ASSERT_EQ(expected, out.samples[i]) << "pixel " << i;
        }
        EXPECT_LE(2, masked);
    }
}

TEST(TyxCalcTest, CreationOptionsAndFormatReachTheDriver)
{
    Workspace ws;
    RasterContent raster;
    raster.bands = {pattern(37, 23, 6)};
    const std::string in = ws.write("in.tif", raster);
    ASSERT_EQ(0, ws.run("-q -i a=" + in +
                        " -e 'a - 1' --co TILED=YES --co BLOCKXSIZE=32 --co BLOCKYSIZE=16 -o " +
                        ws.path("tiled.tif")));
    GDALDatasetH ds = GDALOpen(ws.path("tiled.tif").c_str(), GA_ReadOnly);
    int blockWidth = 0, blockHeight = 0;
    GDALGetBlockSize(GDALGetRasterBand(ds, 1), &blockWidth, &blockHeight);
    GDALClose(ds);
    EXPECT_EQ(32, blockWidth);
    EXPECT_EQ(16, blockHeight);
    // A format with a side file: both files get their final names.
    ASSERT_EQ(0, ws.run("-q -i a=" + in + " -e 'a - 1' -t Int32 --format ENVI -o " + ws.path("out.img")));
    const Output out = readOutput(ws.path("out.img"));
    for (size_t i = 0; i < out.samples.size(); ++i)
        ASSERT_EQ(raster.bands[0][i] - 1, out.samples[i]) << "pixel " << i;
    EXPECT_EQ((std::vector<std::string>{"in.tif", "out.hdr", "out.img", "tiled.tif"}), ws.files());
}

TEST(TyxCalcTest, FailuresTellOneLineAndLeaveNoOutput)
{
    Workspace ws;
    RasterContent raster;
    raster.bands = {pattern(37, 23, 1), pattern(37, 23, 2)};
    const std::string in = ws.write("in.tif", raster);
    RasterContent other = raster;
    other.width = 36;
    other.bands = {pattern(36, 23, 1)};
    const std::string narrow = ws.write("narrow.tif", other);
    const double shifted[6] = {500010.0, 10.0, 0.0, 4000000.0, 0.0, -10.0};
    other = raster;
    other.transform = shifted;
    const std::string moved = ws.write("moved.tif", other);
    other = raster;
    other.type = GDT_Int64;
    const std::string wide = ws.write("int64.tif", other);
    {
        std::ifstream whole(in, std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
        std::ofstream(ws.path("cut.tif"), std::ios::binary) << bytes.substr(0, bytes.size() / 2);
        std::ofstream(ws.path("junk.tif")) << "not a raster\n";
        std::ofstream(ws.path("taken.tif")) << "keep me\n";
    }
    const std::string out = ws.path("out.tif");
    struct Case {
        std::string args;
        std::string message;
        std::string env = "";
    };
    const std::vector<Case> cases = {
        {"-i a=" + ws.path("none.tif") + " -e a -o " + out,
         "input '" + ws.path("none.tif") + "' does not exist"},
        {"-i a=" + in + ":3 -e a -o " + out, "band 3 of '" + in + "' does not exist; it has 2 bands"},
        {"-i a=" + in + " -e '(a - ' -o " + out,
         "expression \"(a - \": Parsing error at column #5 : syntax error, unexpected end of file"},
        {"-i a=" + in + " -e 'a + c' -o " + out, "unknown variable 'c' in the expression; the inputs are a"},
        {"-i a=" + in + " -e a -o " + ws.path("taken.tif"),
         "output '" + ws.path("taken.tif") + "' exists; give --overwrite to replace it"},
        {"-i a=" + in + " -i b=" + narrow + " -e 'a + b' -o " + out,
         "input '" + narrow + "' is 36 x 23 pixels but '" + in + "' is 37 x 23"},
        {"-i a=" + in + " -i b=" + moved + " -e 'a + b' -o " + out,
         "input '" + moved + "' has another geotransform than '" + in + "'"},
        {"-i a=" + wide + " -e a -o " + out,
         "band 1 of '" + wide + "' has the data type Int64, which tyx-calc does not read"},
        {"-i a=" + ws.path("junk.tif") + " -e a -o " + out,
         "cannot read '" + ws.path("junk.tif") + "' as a raster: GDAL knows no raster format for it"},
        {"-i a=" + in + " -e a -t Int64 -o " + out,
         "output type 'Int64' is not supported; use Byte, Int16, UInt16, Int32, UInt32, Float32, Float64, "
         "CFloat32 or CFloat64"},
        {"-i a=" + in + " -e 'sum(a)' -o " + out,
         "the expression gives a single value, not a tile of pixels"},
        {"-i a=" + in + " -e 'cmplx(a, 1)' -t Float32 -o " + out,
         "the expression gives complex values; write them as CFloat32 or CFloat64"},
        {"-i a=" + in + " -e a -t Byte --nodata 300 -o " + out,
         "the output's nodata value 300 cannot be stored in Byte; give another with --nodata"},
        {"-i a=" + in + " -e a -o " + out, "interrupted; no output written",
         "TYX_CALC_INTERRUPT_AFTER_TILES=1"},
        {"-i " + in + " -e a -o " + out, "input '" + in + "' is not of the form name=file[:band]"},
    };
    const std::vector<std::string> before = ws.files();
    for (const Case &c : cases) {
        SCOPED_TRACE(c.args);
        EXPECT_EQ(1, ws.run(c.args, c.env));
        EXPECT_EQ("tyx-calc: error: " + c.message + "\n", ws.stderrText());
        EXPECT_EQ(before, ws.files());
    }
    // A truncated file fails when it is opened or at its first read.
    EXPECT_EQ(1, ws.run("-i a=" + ws.path("cut.tif") + " -e a -o " + out));
    EXPECT_EQ(0u, ws.stderrText().find("tyx-calc: error: cannot read "));
    EXPECT_EQ(1, std::count(ws.stderrText().begin(), ws.stderrText().end(), '\n'));
    EXPECT_EQ(before, ws.files());
    // A command-line error shows the parser's brief usage.
    EXPECT_EQ(1, ws.run("-i a=" + in + " -o " + out));
    EXPECT_EQ(0u,
              ws.stderrText().find("PARSE ERROR: Required argument missing: expression\nBrief USAGE: \n"));
}

} // namespace
