#include <cstdio>
#include <filesystem>
#include <numbers>

#include "imaging/invert.h"
#include "imaging/raster_file.h"
#include "link_fixture.h"
#include "workerlink/CMemMap.h"
#include "workerlink/CMemMapSemaphore.h"
#include "workerlink/RunWorker.h"
#include "workerlink/SendToWorker.h"
#include "workerlink/SerializeMessage.h"

// Whole exchanges with the worker program as it is shipped.

namespace {

using Picture = std::vector<std::string>;

imaging::Bitmap bitmapOf(const Picture& picture)
{
    imaging::Bitmap bitmap({static_cast<int>(picture[0].size()), static_cast<int>(picture.size())});
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            bitmap.setInk(x, y, picture[static_cast<size_t>(y)][static_cast<size_t>(x)] == '#');
    }
    return bitmap;
}

Picture pictureOf(const imaging::Bitmap& bitmap)
{
    Picture picture;
    for (int y = 0; y < bitmap.height(); ++y) {
        std::string row;
        for (int x = 0; x < bitmap.width(); ++x)
            row += bitmap.ink(x, y) ? '#' : '.';
        picture.push_back(row);
    }
    return picture;
}

class RealWorker : public LinkTest
{
protected:
    RealWorker() : m_folder(std::filesystem::temp_directory_path() / "with a blank")
    {
        std::filesystem::create_directory(m_folder);
        SetWorkerPath(workerPath());
    }
    ~RealWorker() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    static CString workerPath() { return programPath(HALVORAN_PROGRAM_FOLDER "/HVV6.exe"); }

    std::filesystem::path in(const wchar_t* name) const { return m_folder / name; }
    CString text(const wchar_t* name) const { return in(name).wstring().c_str(); }

    void put(const wchar_t* name, const Picture& picture, double dotsPerInch)
    {
        imaging::writeRaster(in(name), bitmapOf(picture), {dotsPerInch, dotsPerInch}, imaging::Format::TiffGroup4);
    }

    Picture picture(const wchar_t* name) const { return pictureOf(imaging::readRaster(in(name)).bitmap); }

    size_t fileCount() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(m_folder), {}));
    }

private:
    std::filesystem::path m_folder;
};

/// The module's side of an exchange, one step at a time, so that a test can look at what stands in between.
class SteppedExchange
{
public:
    explicit SteppedExchange(const WorkerMessage& message)
        : m_bytes(SerializeMessage(message)), m_request(m_bytes.data(), static_cast<DWORD>(m_bytes.size()), L"")
    {
        const std::wstring digits = std::to_wstring(number());
        working.Open((L"WORKING_" + digits).c_str(), true);
        ready.Open((L"READY_" + digits).c_str(), true);
        ok.Open((L"OK_" + digits).c_str(), true);
    }

    DWORD number() const { return m_request.id; }
    void start(const CString& workerPath)
    {
        WorkerProcess process(run);
        ASSERT_TRUE(process.Start(workerPath, number()));
    }
    DWORD exitCode()
    {
        WaitForSingleObject(run.process, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(run.process, &code);
        return code;
    }

    WorkerRunResult run;
    CMemMapSemaphore working;
    CMemMapSemaphore ready;
    CMemMapSemaphore ok;

private:
    std::vector<BYTE> m_bytes;
    CMemMap m_request;
};

std::set<std::wstring> named(DWORD number, std::initializer_list<const wchar_t*> prefixes)
{
    std::set<std::wstring> names;
    for (const wchar_t* prefix : prefixes)
        names.insert(prefix + std::to_wstring(number));
    return names;
}

} // namespace

TEST_F(RealWorker, AWholeExchangeWatched)
{
    put(L"image.tif", {"#.#", "...", ".#."}, 300);
    WorkerMessage message(OperationInvert);
    message.invert.file = text(L"image.tif");
    const DWORD begun = GetTickCount();
    const auto say = [&](const char* what, const std::set<std::wstring>& objects) {
        std::printf("  %4lu ms  %s:", GetTickCount() - begun, what);
        for (const std::wstring& name : objects)
            std::printf(" %ls", name.c_str());
        std::printf("\n");
    };
    SteppedExchange exchange(message);
    const DWORD number = exchange.number();
    std::printf("  number %lu\n", number);
    EXPECT_EQ(objectsOf(number), named(number, {L"CMemMap_M_", L"CMemMap_S_", L"WORKING_", L"READY_", L"OK_"}));
    say("request published", objectsOf(number));

    exchange.start(workerPath());
    ASSERT_TRUE(exchange.working.Wait(60000));
    say("WORKING", objectsOf(number));

    ASSERT_TRUE(exchange.ready.Wait(60000));
    EXPECT_TRUE(exchange.ok.Wait(0)) << "OK has to come before READY";
    EXPECT_EQ(objectsOf(number), named(number, {L"CMemMap_M_", L"CMemMap_S_", L"WORKING_", L"READY_", L"OK_"}));
    say("OK and READY", objectsOf(number));
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(exchange.run.process, &code) && code == STILL_ACTIVE)
        << "the worker keeps its reply alive until it is taken";

    const CMemMap reply(number, L"");
    say("reply taken", objectsOf(number));
    EXPECT_EQ(std::vector<BYTE>(reply.data, reply.data + reply.size), SerializeMessage(message));
    EXPECT_EQ(exchange.exitCode(), 0u);
    EXPECT_EQ(objectsOf(number), named(number, {L"WORKING_", L"READY_", L"OK_"})) << "the module's own remain";
    say("worker ended", objectsOf(number));
    EXPECT_EQ(picture(L"image.tif"), (Picture{".#.", "###", "#.#"}));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(RealWorker, NothingOfTheRequestStandsWhenTheWorkerWorks)
{
    put(L"image.tif", {"#.#", "...", ".#."}, 300);
    WorkerMessage message(OperationInvert);
    message.invert.file = text(L"image.tif");
    // A quick worker may have its reply out, under the same names, before this side looks: then it is asked again.
    bool seen = false;
    for (int attempt = 0; attempt < 30 && !seen; ++attempt) {
        SteppedExchange exchange(message);
        exchange.start(workerPath());
        ASSERT_TRUE(exchange.working.Wait(60000));
        seen = objectsOf(exchange.number()) == named(exchange.number(), {L"WORKING_", L"READY_", L"OK_"});
        ASSERT_TRUE(exchange.ready.Wait(60000));
        const CMemMap reply(exchange.number(), L"");
        EXPECT_EQ(exchange.exitCode(), 0u);
    }
    EXPECT_TRUE(seen) << "the request's block or its semaphore stood on while the worker worked";
}

TEST_F(RealWorker, DoesWhatTheModuleAsks)
{
    put(L"image.tif", {"#...", "....", "..##"}, 254);

    WorkerMessage query(OperationFormatQuery);
    query.formatQuery.file = text(L"image.tif");
    query.formatQuery.filterIndex = -1;
    query.formatQuery.formatCode = -1000;
    ASSERT_TRUE(SendToWorker(query));
    EXPECT_EQ(query.formatQuery.filterIndex, 0);
    EXPECT_EQ(query.formatQuery.formatCode, 29);
    EXPECT_EQ(query.formatQuery.filter.Find(L"TIFF group 4 (*.tif)|*.tif|CALS"), 0);
    EXPECT_EQ(query.formatQuery.filter.Right(2), L"||");

    CRgn corner;
    corner.CreateRectRgn(0, 0, 2, 2);
    WorkerMessage filter(OperationFilter);
    filter.filter.file = text(L"image.tif");
    filter.filter.mode = FilterDespeckle;
    filter.filter.size = 2;
    filter.filter.selectionOnly = 1;
    filter.filter.region = &corner;
    ASSERT_TRUE(SendToWorker(filter));
    EXPECT_EQ(picture(L"image.tif"), (Picture{"....", "....", "..##"})) << "only the speck in the selection goes";

    WorkerMessage rotate(OperationRotate);
    rotate.rotate.file = text(L"image.tif");
    rotate.rotate.angle = std::numbers::pi / 2;
    rotate.rotate.pivot = {2, 1};
    ASSERT_TRUE(SendToWorker(rotate));
    EXPECT_EQ(picture(L"image.tif"), (Picture{"....", ".#..", ".#.."}));

    WorkerMessage convert(OperationConvertFile);
    convert.convertFile.sourceFile = text(L"image.tif");
    convert.convertFile.targetFile = text(L"Plan \x00DC\x0142\x4E2D.cal");
    convert.convertFile.formatCode = 50;
    ASSERT_TRUE(SendToWorker(convert));
    EXPECT_EQ(picture(L"Plan \x00DC\x0142\x4E2D.cal"), (Picture{"....", ".#..", ".#.."}));

    CRgn ell;
    ell.CreateRectRgn(0, 0, 1, 3);
    CRgn foot;
    foot.CreateRectRgn(0, 1, 3, 2);
    ell.CombineRgn(&ell, &foot, RGN_OR);
    WorkerMessage crop(OperationConvertFile);
    crop.convertFile.sourceFile = crop.convertFile.targetFile = text(L"image.tif");
    crop.convertFile.region = &ell;
    ASSERT_TRUE(SendToWorker(crop));
    EXPECT_EQ(picture(L"image.tif"), (Picture{"...", ".#.", "..."}));
    EXPECT_NEAR(imaging::inspectRaster(in(L"image.tif")).resolution.x, 254, 0.001);
    EXPECT_EQ(fileCount(), 2u);
}

TEST_F(RealWorker, AnswersWhatItCannotDoAtOnceAndLeavesTheFile)
{
    put(L"image.tif", {"#."}, 300);
    WorkerMessage missing(OperationInvert);
    missing.invert.file = text(L"missing.tif");
    WorkerMessage unknown(3);
    WorkerMessage wrongFormat(OperationConvertFile);
    wrongFormat.convertFile.sourceFile = wrongFormat.convertFile.targetFile = text(L"image.tif");
    wrongFormat.convertFile.formatCode = 28;
    for (WorkerMessage* message : {&missing, &unknown, &wrongFormat}) {
        const std::vector<BYTE> bytes = SerializeMessage(*message);
        const WorkerRunResult result = RunWorker(workerPath(), bytes.data(), static_cast<DWORD>(bytes.size()));
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.reply, nullptr);
        EXPECT_EQ(result.errorText, L"") << "READY without OK is no fault of the process";
        EXPECT_FALSE(SendToWorker(*message));
    }
    // A request cut short, and none at all.
    const std::vector<BYTE> bytes = SerializeMessage(missing);
    for (const DWORD size : {static_cast<DWORD>(bytes.size()) - 1, DWORD(3), DWORD(0)}) {
        const WorkerRunResult result = RunWorker(workerPath(), bytes.data(), size);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.errorText, L"") << "a request of " << size << " bytes";
    }
    EXPECT_EQ(picture(L"image.tif"), (Picture{"#."}));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(RealWorker, LeavesOnQuitWhileItsReplyWaits)
{
    put(L"image.tif", {"#."}, 300);
    WorkerMessage message(OperationInvert);
    message.invert.file = text(L"image.tif");
    SteppedExchange exchange(message);
    exchange.start(workerPath());
    ASSERT_TRUE(exchange.ready.Wait(60000));
    PostThreadMessageW(exchange.run.threadId, WM_QUIT, 1, 0);
    EXPECT_EQ(exchange.exitCode(), 1u);
    EXPECT_EQ(objectsOf(exchange.number()), named(exchange.number(), {L"WORKING_", L"READY_", L"OK_"}));
}

TEST_F(RealWorker, LeavesOnQuitInTheMiddleOfAnOperationWithTheFileWhole)
{
    // Large enough to be at work when the message comes; whole means either the old image or the new one.
    imaging::Bitmap large({20000, 14000});
    for (int y = 0; y < large.height(); y += 7) {
        for (int x = y % 50; x < large.width(); x += 50)
            large.setInk(x, y, true);
    }
    imaging::writeRaster(in(L"large.tif"), large, {400, 400}, imaging::Format::TiffGroup4);
    WorkerMessage message(OperationInvert);
    message.invert.file = text(L"large.tif");
    SteppedExchange exchange(message);
    exchange.start(workerPath());
    ASSERT_TRUE(exchange.working.Wait(60000));
    PostThreadMessageW(exchange.run.threadId, WM_QUIT, 1, 0);
    EXPECT_EQ(exchange.exitCode(), 1u);
    const imaging::Bitmap left = imaging::readRaster(in(L"large.tif")).bitmap;
    imaging::Bitmap inverted = large;
    imaging::invert(inverted);
    EXPECT_TRUE(left == large || left == inverted) << "the file is neither the old image nor the new one";
    EXPECT_EQ(fileCount(), 1u) << "a half-written file stays behind";
}

TEST_F(RealWorker, RefusesACommandLineThatIsNoNumber)
{
    for (const wchar_t* arguments : {L"", L" x", L" 12x", L" -5", L" 4294967296", L" 1 2"}) {
        std::wstring commandLine = L"\"" + std::wstring(workerPath()) + L"\"" + arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION started = {};
        ASSERT_TRUE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                                   nullptr, &startup, &started));
        WaitForSingleObject(started.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(started.hProcess, &code);
        EXPECT_EQ(code, 4u) << "arguments:" << std::string(arguments, arguments + wcslen(arguments));
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
}

TEST_F(RealWorker, EndsAtOnceUnderANumberThatNobodyWaitsFor)
{
    const auto process = std::make_unique<WorkerRunResult>();
    WorkerProcess(*process).Start(workerPath(), 70001);
    WaitForSingleObject(process->process, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process->process, &code);
    EXPECT_EQ(code, 3u);
}
