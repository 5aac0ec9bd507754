#include <filesystem>

#include "imaging/invert.h"
#include "imaging/raster_file.h"
#include "link_fixture.h"
#include "tests/support/pictures.h"
#include "workerlink/CMemMap.h"
#include "workerlink/CMemMapSemaphore.h"
#include "workerlink/RunWorker.h"
#include "workerlink/SendToWorker.h"
#include "workerlink/SerializeMessage.h"

// Whole exchanges with the worker program as it is shipped.

namespace {

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
        imaging::writeRaster(in(name), drawn(picture), {dotsPerInch, dotsPerInch}, imaging::Format::TiffGroup4);
    }

    // The request to invert this picture, in image.tif.
    WorkerMessage inversionOf(const Picture& picture)
    {
        put(L"image.tif", picture, 300);
        WorkerMessage message(OperationInvert);
        message.invert.file = text(L"image.tif");
        return message;
    }

    Picture picture(const wchar_t* name) const { return rowsOf(imaging::readRaster(in(name)).bitmap); }

    size_t fileCount() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(m_folder), {}));
    }

private:
    std::filesystem::path m_folder;
};

// The module's side of an exchange, one step at a time, so that a test can look at what stands in between.
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
    const WorkerMessage message = inversionOf({"#.#", "...", ".#."});
    SteppedExchange exchange(message);
    const DWORD number = exchange.number();
    EXPECT_EQ(objectsOf(number), named(number, {L"CMemMap_M_", L"CMemMap_S_", L"WORKING_", L"READY_", L"OK_"}));

    exchange.start(workerPath());
    ASSERT_TRUE(exchange.working.Wait(60000));

    ASSERT_TRUE(exchange.ready.Wait(60000));
    EXPECT_TRUE(exchange.ok.Wait(0)) << "OK has to come before READY";
    EXPECT_EQ(objectsOf(number), named(number, {L"CMemMap_M_", L"CMemMap_S_", L"WORKING_", L"READY_", L"OK_"}));
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(exchange.run.process, &code) && code == STILL_ACTIVE)
        << "the worker keeps its reply alive until it is taken";

    const CMemMap reply(number, L"");
    EXPECT_EQ(std::vector<BYTE>(reply.data, reply.data + reply.size), SerializeMessage(message));
    EXPECT_EQ(exchange.exitCode(), 0u);
    EXPECT_EQ(objectsOf(number), named(number, {L"WORKING_", L"READY_", L"OK_"})) << "the module's own remain";
    EXPECT_EQ(picture(L"image.tif"), (Picture{".#.", "###", "#.#"}));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(RealWorker, WritesUnderAnyNameAndOnlyWhatIsSelected)
{
    put(L"image.tif", {"##.#", ".#..", ".#.#"}, 254);
    CRgn ell;
    ell.CreateRectRgn(0, 0, 1, 3);
    CRgn foot;
    foot.CreateRectRgn(0, 1, 3, 2);
    ell.CombineRgn(&ell, &foot, RGN_OR);
    const wchar_t target[] = L"Plan \x00DC\x0142\x4E2D.cal";
    WorkerMessage convert(OperationConvertFile);
    convert.convertFile.sourceFile = text(L"image.tif");
    convert.convertFile.targetFile = text(target);
    convert.convertFile.formatCode = 50;
    convert.convertFile.region = &ell;
    ASSERT_TRUE(SendToWorker(convert));
    EXPECT_EQ(picture(target), (Picture{"#..", ".#.", "..."}));
    EXPECT_NEAR(imaging::inspectRaster(in(target)).resolution.x, 254, 0.001);
    EXPECT_EQ(fileCount(), 2u);

    WorkerMessage query(OperationFormatQuery);
    query.formatQuery.file = text(L"image.tif");
    query.formatQuery.filterIndex = -1;
    ASSERT_TRUE(SendToWorker(query));
    EXPECT_EQ(query.formatQuery.filterIndex, 0);
    EXPECT_EQ(query.formatQuery.formatCode, 29);
    EXPECT_EQ(query.formatQuery.filter.Find(L"TIFF group 4 (*.tif)|*.tif|CALS"), 0);
    EXPECT_EQ(query.formatQuery.filter.Right(2), L"||");
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
    const WorkerMessage message = inversionOf({"#."});
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

TEST_F(RealWorker, EndsAtOnceWithoutANumberAndUnderOneThatNobodyWaitsFor)
{
    struct Case
    {
        const wchar_t* arguments;
        DWORD exitCode;
    };
    for (const Case& row : {Case{L"", 4}, Case{L" x", 4}, Case{L" 12x", 4}, Case{L" -5", 4}, Case{L" 4294967296", 4},
                            Case{L" 1 2", 4}, Case{L" 70001", 3}}) {
        std::wstring commandLine = L"\"" + std::wstring(workerPath()) + L"\"" + row.arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION started = {};
        ASSERT_TRUE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                                   nullptr, &startup, &started));
        WaitForSingleObject(started.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(started.hProcess, &code);
        EXPECT_EQ(code, row.exitCode) << "arguments:" << testing::PrintToString(row.arguments);
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
}
