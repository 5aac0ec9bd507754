#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/file_system.h"
#include "imaging/error.h"
#include "imaging/fresh_file.h"
#include "imaging/raster_file.h"
#include "tests/support/files.h"

// Raster files under names that no single code page holds and of any length, and what Windows does about files in use.

using namespace imaging;

namespace {

class WidePaths : public testing::Test
{
protected:
    std::filesystem::path file(const wchar_t* name) const { return m_folder / name; }
    TemporaryFolder m_folder{L"halvoran \u00e4\u0436\u6f22 "};
};

Bitmap stripes(int width, int height)
{
    Bitmap bitmap({width, height});
    for (int y = 0; y < height; ++y)
        for (int x = y % 3; x < width; x += 5 + y % 7)
            bitmap.setInk(x, y, true);
    return bitmap;
}

// This program once more, as a writer that comes as far as half of its file.
class HalfWriter
{
public:
    explicit HalfWriter(const std::filesystem::path& folder)
    {
        const std::wstring event = L"halvoran-half-" + std::to_wstring(GetCurrentProcessId());
        m_half = CreateEventW(nullptr, TRUE, FALSE, event.c_str());
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        std::wstring command = L"\"" + std::wstring(program) + L"\" write-half " + event;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                                   &startup, &m_process));
        const HANDLE either[] = {m_half, m_process.hProcess};
        EXPECT_EQ(WaitForMultipleObjects(2, either, FALSE, INFINITE), WAIT_OBJECT_0) << "the writer did not get so far";
    }
    ~HalfWriter()
    {
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
        CloseHandle(m_half);
    }
    HalfWriter(const HalfWriter&) = delete;
    HalfWriter& operator=(const HalfWriter&) = delete;

    void kill()
    {
        TerminateProcess(m_process.hProcess, 1);
        WaitForSingleObject(m_process.hProcess, INFINITE);
    }

private:
    HANDLE m_half = nullptr;
    PROCESS_INFORMATION m_process = {};
};

int writeHalf(const char* event)
{
    FreshFile file(L"plan.tif");
    const std::vector<char> half(1 << 20);
    file.append(half.data(), half.size());
    SetEvent(OpenEventA(EVENT_MODIFY_STATE, FALSE, event));
    Sleep(INFINITE);
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount == 3 && std::string(arguments[1]) == "write-half")
        return writeHalf(arguments[2]);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}

TEST_F(WidePaths, EveryFormatIsWrittenReadAndReplacedUnderANameOfManyAlphabets)
{
    const auto path = file(L"Lageplan \u00d6st \u0416\u0443\u043a \u56f3\u9762.tif");
    for (const FormatDescription& format : formatDescriptions()) {
        if (!format.writable)
            continue;
        SCOPED_TRACE(format.name);
        const Bitmap bitmap = stripes(203, 1100);
        writeRaster(path, bitmap, {300, 300}, format.format);
        const RasterFile read = readRaster(path);
        EXPECT_TRUE(read.bitmap == bitmap);
        EXPECT_EQ(read.info.format, format.format);
        EXPECT_EQ(read.info.resolution, (Resolution{300, 300}));
        EXPECT_EQ(m_folder.names().size(), 1u);
    }
}

TEST_F(WidePaths, AFileThatIsHeldOrWriteProtectedKeepsItsContent)
{
    const auto path = file(L"\u56f3\u9762.tif");
    writeRaster(path, stripes(40, 30), {}, Format::TiffGroup4);
    const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_THROW(writeRaster(path, stripes(50, 60), {}, Format::Png), ImagingError);
    CloseHandle(held);
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_THROW(writeRaster(path, stripes(50, 60), {}, Format::Png), ImagingError);
    EXPECT_TRUE(readRaster(path).bitmap == stripes(40, 30));
    EXPECT_EQ(m_folder.names().size(), 1u);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    writeRaster(path, stripes(50, 60), {}, Format::Png);
    EXPECT_TRUE(readRaster(path).bitmap == stripes(50, 60));
}

TEST_F(WidePaths, ErrorsSpellTheNameInUtf8)
{
    const auto path = file(L"\u0416.png");
    std::ofstream(path, std::ios::binary) << "\x89PNG\r\n\x1a\n and no more";
    try {
        readRaster(path);
        FAIL() << "a stump of a PNG file was read";
    } catch (const ImagingError& error) {
        EXPECT_NE(std::string(error.what()).find("\xd0\x96.png: The PNG image is damaged"), std::string::npos)
            << error.what();
    }
}

TEST_F(WidePaths, ATargetsPathMayBeOfAnyLength)
{
    const std::size_t folderLength = file(L"").native().size();
    for (const std::size_t length : {241u, 242u, 250u, 258u, 259u, 260u, 261u, 280u}) {
        SCOPED_TRACE(length);
        const auto path = file(std::wstring(length - folderLength - 4, L'n').append(L".tif").c_str());
        ASSERT_EQ(path.native().size(), length);
        for (const int width : {40, 50}) {
            writeRaster(path, stripes(width, 30), {}, Format::TiffGroup4);
            EXPECT_TRUE(readRaster(path).bitmap == stripes(width, 30));
        }
        EXPECT_THAT(m_folder.names(), testing::ElementsAre(path.filename()));
        ASSERT_TRUE(DeleteFileW(files::ofAnyLength(path).c_str()));
    }
}

TEST_F(WidePaths, AKilledWriterLeavesTheTargetWholeAndItsFileGoesAtTheNextWriting)
{
    writeRaster(file(L"plan.tif"), stripes(40, 30), {}, Format::TiffGroup4);
    HalfWriter writer(m_folder.path());
    writeRaster(file(L"other.tif"), stripes(9, 9), {}, Format::TiffGroup4);
    EXPECT_THAT(m_folder.names(), testing::SizeIs(3)) << "the file of a writer that still writes is left alone";
    writer.kill();
    EXPECT_THAT(m_folder.names(), testing::SizeIs(3)) << "the killed writer was to leave half a file";
    EXPECT_TRUE(readRaster(file(L"plan.tif")).bitmap == stripes(40, 30));
    writeRaster(file(L"other.tif"), stripes(9, 9), {}, Format::TiffGroup4);
    EXPECT_THAT(m_folder.names(), testing::ElementsAre(L"other.tif", L"plan.tif"));
}
