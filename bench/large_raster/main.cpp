// The peak memory of one operation of the worker on one file, as the worker does it: a process for each.
//
//   large_raster make KIND WIDTH HEIGHT FORMAT FILE   KIND: blank, page SCAN, noise, dense
//   large_raster OPERATION FILE
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <sys/resource.h>

#include "imaging/display.h"
#include "imaging/error.h"
#include "imaging/mirror.h"
#include "imaging/paste.h"
#include "imaging/resample.h"
#include "imaging/turn.h"
#include "worker/engine/convert_file.h"
#include "worker/engine/edit_file.h"
#include "workerlink/protocol.h"

namespace {

using namespace imaging;
namespace fs = std::filesystem;

Bitmap tiled(const fs::path& scan, Size size)
{
    const Bitmap page = readRaster(scan).bitmap;
    Bitmap bitmap(size);
    for (int top = 0; top < size.height; top += page.height())
        for (int left = 0; left < size.width; left += page.width())
            paste(bitmap, page, {left, top}, PasteMode::opaque);
    return bitmap;
}

// Noise: every pixel by chance. Otherwise the dearest picture for group 4: every second row alternates.
Bitmap filled(Size size, bool noise)
{
    Bitmap bitmap(size);
    std::uint64_t state = 88172645463325252u; // xorshift64
    for (int y = 0; y < size.height; ++y) {
        std::uint64_t* const row = bitmap.row(y);
        for (std::ptrdiff_t i = 0; i < bitmap.wordsPerRow(); ++i) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            row[i] = noise ? state : y % 2 ? 0 : 0x5555555555555555;
        }
        row[bitmap.wordsPerRow() - 1] &= bitmap.lastWordMask();
    }
    return bitmap;
}

void make(char** arguments)
{
    const std::string kind = arguments[0];
    const Size size{std::atoi(arguments[1]), std::atoi(arguments[2])};
    const auto format = *formatFromCode(std::uint32_t(std::atoi(arguments[3])));
    Bitmap bitmap;
    if (kind == "blank") {
        bitmap = Bitmap(size);
    } else if (kind == "noise" || kind == "dense") {
        bitmap = filled(size, kind == "noise");
    } else {
        bitmap = tiled(kind, size);
    }
    writeRaster(arguments[4], bitmap, {400, 400}, format);
}

void changed(const fs::path& file, void (*change)(Bitmap&))
{
    RasterFile raster = readRaster(file);
    change(raster.bitmap);
    worker::CommitGate gate;
    worker::writeBack(file, raster, gate);
}

void convert(const fs::path& file, Format format, bool crop)
{
    worker::CommitGate gate;
    worker::ConvertFile request{file, file, formatCode(format), {}};
    if (crop)
        request.region = Region(Rect{100, 100, 60000, 30000});
    worker::convertFile(request, gate);
}

void rotate(const fs::path& file, double degrees, bool region)
{
    worker::CommitGate gate;
    worker::Rotate request{file, degrees * std::acos(-1) / 180, {30000, 15000}, false, {}};
    if (region)
        request.region = Region::fromRects(std::vector<Rect>{{0, 0, 65000, 16000}, {0, 16000, 40000, 32000}});
    worker::rotateFile(request, gate);
}

void filter(const fs::path& file, std::uint32_t mode, std::uint32_t tenths)
{
    worker::CommitGate gate;
    worker::filterFile({file, mode, tenths, false, {}}, gate);
}

void perform(const std::string& operation, const fs::path& file)
{
    using Perform = void (*)(const fs::path&);
    static const std::map<std::string, Perform> operations = {
        {"read", [](const fs::path& f) { readRaster(f); }},
        {"invert",
         [](const fs::path& f) {
             worker::CommitGate gate;
             worker::invertFile({f}, gate);
         }},
        {"mirror", [](const fs::path& f) { changed(f, [](Bitmap& b) { mirrorHorizontal(b); }); }},
        {"quarter-turn", [](const fs::path& f) { changed(f, [](Bitmap& b) { b = turnClockwise(b); }); }},
        {"rotate-1", [](const fs::path& f) { rotate(f, 1, false); }},
        {"rotate-91", [](const fs::path& f) { rotate(f, 91, false); }},
        {"rotate-region", [](const fs::path& f) { rotate(f, 91, true); }},
        {"despeckle", [](const fs::path& f) { filter(f, FilterDespeckle, 3); }},
        {"despeckle-large", [](const fs::path& f) { filter(f, FilterDespeckle, 5000); }},
        {"fill", [](const fs::path& f) { filter(f, FilterFill, 3); }},
        {"fill-large", [](const fs::path& f) { filter(f, FilterFill, 5000); }},
        {"crop", [](const fs::path& f) { convert(f, Format::TiffGroup4, true); }},
        {"to-cals", [](const fs::path& f) { convert(f, Format::Cals, false); }},
        {"to-tiff", [](const fs::path& f) { convert(f, Format::TiffGroup4, false); }},
        {"to-png", [](const fs::path& f) { convert(f, Format::Png, false); }},
        {"to-pcx", [](const fs::path& f) { convert(f, Format::Pcx, false); }},
        {"half", [](const fs::path& f) { changed(f, [](Bitmap& b) {
                                             b = resample(b, {32768, 16384});
                                         }); }},
        {"three-quarters", [](const fs::path& f) { changed(f, [](Bitmap& b) {
                                                       b = resample(b, {49151, 24575});
                                                   }); }},
        {"double", [](const fs::path& f) { changed(f, [](Bitmap& b) {
                                               b = resample(b, {131070, 65534});
                                           }); }},
    };
    operations.at(operation)(file);
}

} // namespace

int main(int count, char** arguments)
{
    const std::string operation = arguments[1];
    std::string outcome = "done";
    try {
        if (operation == "make" && count == 7) {
            make(arguments + 2);
        } else {
            perform(operation, arguments[2]);
        }
    } catch (const ImagingError& error) {
        outcome = error.what();
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::cout << operation << ": " << usage.ru_maxrss / 1000 << " MB, " << usage.ru_utime.tv_sec << " s, " << outcome
              << "\n";
}
