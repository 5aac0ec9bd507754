// imaging_bench SHEET.tif [benchmark options]: our operations on one core and on all beside Leptonica's and libtiff's,
// on one sheet, in one run. Where both are to give the same pixels, that is checked first; the run fails if they
// differ.

#include <cmath>
#include <exception>
#include <functional>
#include <iostream>
#include <numbers>

#include "imaging/crop.h"
#include "imaging/despeckle.h"
#include "imaging/display.h"
#include "imaging/invert.h"
#include "imaging/mirror.h"
#include "imaging/raster_file.h"
#include "imaging/resample.h"
#include "imaging/rotate.h"
#include "imaging/turn.h"
#include "one_core.h"
#include "peers.h"
#include "table.h"

using namespace bench;
using imaging::Bitmap;

namespace {

constexpr int speckSide = 6;
constexpr double degree = std::numbers::pi / 180;

void add(const std::string& name, const std::function<void()>& work)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [work](benchmark::State& state) {
                                     for (auto _ : state)
                                         work();
                                 })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime()
        ->Repetitions(5)
        ->MinTime(0.05);
}

// Ours is measured twice: split over the cores, and on one of them.
void addOurs(const std::string& row, const std::function<void()>& work)
{
    add(row + "/all", work);
    add(row + "/one", [work] {
        const OneCore narrow;
        work();
    });
}

// One row of the table for an operation that makes a new image from an old one.
void addRow(const std::string& row, const Bitmap& sheet, Pix* pix, const std::function<Bitmap(const Bitmap&)>& ours,
            const std::function<Pix*(Pix*)>& theirs, bool samePixels)
{
    if (samePixels) {
        const PixPointer expected(theirs(pix));
        if (!(fromPix(*expected) == ours(sheet)))
            throw std::runtime_error(row + ": the results differ");
    }
    addOurs(row, [&sheet, ours] { benchmark::DoNotOptimize(ours(sheet).row(0)); });
    add(row + "/leptonica", [pix, theirs] { benchmark::DoNotOptimize(PixPointer(theirs(pix)).get()); });
}

// One row for an operation that changes an image in its place. Done twice, each of these leaves it as it was.
void addRowInPlace(const std::string& row, Bitmap& sheet, Pix* pix, const std::function<void(Bitmap&)>& ours,
                   const std::function<void(Pix*)>& theirs)
{
    for (int i = 0; i < 2; ++i) {
        ours(sheet);
        theirs(pix);
        if (!(fromPix(*pix) == sheet))
            throw std::runtime_error(row + ": the results differ");
    }
    addOurs(row, [&sheet, ours] { ours(sheet); });
    add(row + "/leptonica", [pix, theirs] { theirs(pix); });
}

void addMovements(Bitmap& sheet, Pix* pix)
{
    addRow(
        "copy", sheet, pix, [](const Bitmap& b) { return b; }, [](Pix* p) { return pixCopy(nullptr, p); }, true);
    addRowInPlace(
        "invert", sheet, pix, [](Bitmap& b) { imaging::invert(b); }, [](Pix* p) { pixInvert(p, p); });
    addRowInPlace("mirror left and right", sheet, pix, imaging::mirrorHorizontal, [](Pix* p) { pixFlipLR(p, p); });
    addRowInPlace("mirror top and bottom", sheet, pix, imaging::mirrorVertical, [](Pix* p) { pixFlipTB(p, p); });
    addRowInPlace("turn by 180 degrees", sheet, pix, imaging::turnHalf, [](Pix* p) { pixRotate180(p, p); });
    addRow(
        "turn clockwise", sheet, pix, imaging::turnClockwise, [](Pix* p) { return pixRotate90(p, 1); }, true);
    addRow(
        "turn counter-clockwise", sheet, pix, imaging::turnCounterClockwise, [](Pix* p) { return pixRotate90(p, -1); },
        true);
    const auto turned = [](double degrees) {
        return [degrees](const Bitmap& b) {
            Bitmap copy = b;
            imaging::rotate(copy, degrees * degree, {b.width() / 2, b.height() / 2}, false);
            return copy;
        };
    };
    const auto turnedByPeer = [](double degrees, int method) {
        return
            [degrees, method](Pix* p) { return pixRotate(p, float(degrees * degree), method, L_BRING_IN_WHITE, 0, 0); };
    };
    addRow("rotate by 1 degree (theirs by shearing)", sheet, pix, turned(1), turnedByPeer(1, L_ROTATE_SHEAR), false);
    addRow("rotate by 10 degrees (theirs by shearing)", sheet, pix, turned(10), turnedByPeer(10, L_ROTATE_SHEAR),
           false);
    addRow("rotate by 30 degrees (theirs by sampling)", sheet, pix, turned(30), turnedByPeer(30, L_ROTATE_SAMPLING),
           false);
}

void addSizes(const Bitmap& sheet, Pix* pix)
{
    const auto resampled = [](int width, int height) {
        return [=](const Bitmap& b) { return imaging::resample(b, {width, height}); };
    };
    const auto sampledByPeer = [](double factor) {
        return [factor](Pix* p) { return pixScaleBinary(p, float(factor), float(factor)); };
    };
    const int w = sheet.width();
    const int h = sheet.height();
    // Of an odd side the peer drops the last pixels, so that only a sheet of even sides has to come out the same.
    const auto halvedByPeer = [](Pix* p) { return pixReduceRankBinary2(p, 2, nullptr); };
    const Bitmap even = imaging::extract(sheet, {0, 0, w / 2 * 2, h / 2 * 2});
    if (!(fromPix(*PixPointer(halvedByPeer(pix))) == imaging::resample(even, {w / 2, h / 2})))
        throw std::runtime_error("resample 2 to 1: the results differ");
    addRow("resample 2 to 1, by area", sheet, pix, resampled(w / 2, h / 2), halvedByPeer, false);
    addRow(
        "resample 4 to 1, by area (theirs by halving twice)", sheet, pix, resampled(w / 4, h / 4),
        [](Pix* p) { return pixReduceRankBinaryCascade(p, 2, 2, 0, 0); }, false);
    addRow("resample 400 to 300 dpi, by area (theirs by sampling)", sheet, pix, resampled(w * 3 / 4, h * 3 / 4),
           sampledByPeer(0.75), false);
    addRow("resample 400 to 600 dpi", sheet, pix, resampled(w * 3 / 2, h * 3 / 2), sampledByPeer(1.5), false);
    addRow(
        "resample 1 to 2", sheet, pix, resampled(w * 2, h * 2), [](Pix* p) { return pixExpandBinaryPower2(p, 2); },
        true);
}

void addFilters(const Bitmap& sheet, Pix* pix)
{
    addRow(
        "despeckle", sheet, pix,
        [](const Bitmap& b) {
            Bitmap copy = b;
            imaging::despeckle(copy, speckSide);
            return copy;
        },
        [](Pix* p) { return pixSelectBySize(p, speckSide, speckSide, 8, L_SELECT_IF_EITHER, L_SELECT_IF_GT, nullptr); },
        true);
    addRow(
        "fill holes", sheet, pix,
        [](const Bitmap& b) {
            Bitmap copy = b;
            imaging::fillHoles(copy, speckSide);
            return copy;
        },
        [](Pix* p) {
            const PixPointer paper(pixInvert(nullptr, p));
            const PixPointer holes(
                pixSelectBySize(paper.get(), speckSide, speckSide, 4, L_SELECT_IF_BOTH, L_SELECT_IF_LTE, nullptr));
            return pixOr(nullptr, holes.get(), p);
        },
        false); // theirs fills paper at the border as well
}

void addFiles(const std::string& path, const Bitmap& sheet, Pix* pix)
{
    const std::string target = path + ".written.tif";
    addOurs("group 4 file, read", [path] { benchmark::DoNotOptimize(imaging::readRaster(path).bitmap.row(0)); });
    add("group 4 file, read/leptonica", [path] { benchmark::DoNotOptimize(PixPointer(pixRead(path.c_str())).get()); });
    add("group 4 file, read/libtiff", [path, &sheet] {
        Bitmap bitmap(sheet.size());
        readWithLibtiff(path, bitmap);
        benchmark::DoNotOptimize(bitmap.row(0));
    });
    addOurs("group 4 file, written", [target, &sheet] {
        imaging::writeRaster(target, sheet, {400, 400}, imaging::Format::TiffGroup4);
    });
    add("group 4 file, written/leptonica", [target, pix] { pixWrite(target.c_str(), pix, IFF_TIFF_G4); });
    add("group 4 file, written/libtiff", [target, &sheet] { writeWithLibtiff(target, sheet, 400); });
}

// What a pan or zoom costs on a view of 1600 x 1000 pixels.
void addDisplay(const Bitmap& view, Pix* pix)
{
    static std::vector<std::uint8_t> gray(1600 * 1000);
    const auto show = [&view](const std::string& name, const imaging::Affine& map) {
        addOurs(name, [&view, map] { imaging::sampleCoverage(view, map, {1600, 1000}, gray.data(), 1600); });
    };
    const auto centred = [&view](double scale, double degrees) {
        const double c = scale * std::cos(degrees * degree);
        const double s = scale * std::sin(degrees * degree);
        return imaging::Affine{c,  s, view.width() / 2 - 800 * c - 500 * s,
                               -s, c, view.height() / 2 + 800 * s - 500 * c};
    };
    const double extents = std::max(view.width() / 1600.0, view.height() / 1000.0);
    show("show 20,000 x 14,000 at extents", {extents, 0, 0, 0, extents, 0});
    add("show 20,000 x 14,000 at extents/leptonica",
        [pix, extents] { benchmark::DoNotOptimize(PixPointer(pixScaleToGray(pix, float(1 / extents))).get()); });
    show("show at 4 to 1", {4, 0, 2000, 0, 4, 2000});
    show("show at 1.5 to 1", {1.5, 0, 2000, 0, 1.5, 2000});
    show("show at 1 to 4", {0.25, 0, 2000, 0, 0.25, 2000});
    show("show at extents, turned by 30 degrees", centred(extents, 30));
    show("show at extents, turned by 90 degrees", {0, extents, 0, extents, 0, 0});
    show("show at 1.5 to 1, turned by 30 degrees", centred(1.5, 30));
}

int run(int argc, char** argv)
{
    // What ours and the peers' do takes turns in being measured, so that what else the machine does slows both alike.
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleaving.data());
    argc = int(arguments.size());
    arguments.push_back(nullptr);
    argv = arguments.data();
    benchmark::Initialize(&argc, argv);
    setMsgSeverity(L_SEVERITY_ERROR);
    if (argc != 2)
        throw std::runtime_error("usage: imaging_bench SHEET.tif [--benchmark_filter=...]");
    const std::string path = argv[1];
    Bitmap sheet = imaging::readRaster(path).bitmap;
    const PixPointer pix = toPix(sheet);
    const Bitmap view = imaging::resample(sheet, {20000, 14000});
    const PixPointer viewPix = toPix(view);
    addMovements(sheet, pix.get());
    addSizes(sheet, pix.get());
    addFilters(sheet, pix.get());
    addFiles(path, sheet, pix.get());
    addDisplay(view, viewPix.get());
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
