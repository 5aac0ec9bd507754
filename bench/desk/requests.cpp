#include "bench/desk/requests.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>

#include "bench/desk/durations.h"
#include "imaging/invert.h"
#include "imaging/raster_file.h"
#include "module/base/CTempFile.h"
#include "module/raster/AskWorker.h"
#include "module/raster/CCurentRaster.h"
#include "tests/module/support/desk_fixture.h"
#include "workerlink/SendToWorker.h"
#include "workerlink/WorkerMessage.h"

namespace bench {

namespace {

constexpr int runs = 7;

void row(const char* what, const std::function<void()>& step)
{
    Durations times;
    for (int run = 0; run < runs; ++run)
        times.add(microseconds(step));
    std::printf("| %s | %.0f | %.0f |\n", what, times.percentile(0) / 1000, times.median() / 1000);
    std::fflush(stdout);
}

// A request without a raster: the worker says which format a file of that name has.
void askForFormat(const CString& file)
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = file;
    message.formatQuery.filterIndex = -1;
    message.formatQuery.formatCode = -1000;
    if (!AskWorker(message))
        throw std::runtime_error("The worker did not answer.");
}

// As the module takes over what the worker has left.
std::unique_ptr<Atil::Image> readBack(const CString& file)
{
    AcDbRasterImageDef definition;
    definition.setSourceFileName(file);
    definition.load();
    Atil::Image* image = nullptr;
    if (definition.openImage(image) != Acad::eOk)
        throw std::runtime_error("The file can't be read.");
    auto working = std::make_unique<Atil::Image>(*image);
    definition.closeImage();
    return working;
}

} // namespace

void benchRequests(BenchDesk& desk, const std::filesystem::path& sheet)
{
    SetWorkerPath(test::workerProgram());
    CAcraster& raster = desk.openSheet(sheet);
    {
        const CCurentRaster current;
        const CSize size = raster.GetSize();
        std::printf("\n| A request on %ld x %ld | best, ms | median, ms |\n|---|---:|---:|\n", size.cx, size.cy);

        const CTempFile file;
        imaging::RasterFile worked;
        row("the module writes its image", [&] { raster.WriteTiff(file.m_strPath); });
        row("the worker starts, says which format a file has, and ends", [&] { askForFormat(file.m_strPath); });
        const std::filesystem::path path(file.m_strPath.GetString());
        row("the worker reads the image", [&] { worked = imaging::readRaster(path); });
        row("the worker inverts it", [&] { imaging::invert(worked.bitmap); });
        row("the worker writes it",
            [&] { imaging::writeRaster(path, worked.bitmap, worked.info.resolution, imaging::Format::TiffGroup4); });
        std::unique_ptr<Atil::Image> working;
        row("the module reads it", [&] { working = readBack(file.m_strPath); });
        row("all of the request", [&] { raster.Invert(); });
        row("commit", [&] { raster.Reload(false); });
    }
    desk.closeSheet();
}

} // namespace bench
