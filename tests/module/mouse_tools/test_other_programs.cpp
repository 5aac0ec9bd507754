// The clipboard shared with another program, a process of its own.

#include <cstring>
#include <fstream>
#include <iterator>

#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/CEditPasteTool.h"
#include "tools/ToolMessageHook.h"

namespace {

using test::blank;
using test::DibBytes;
using test::Picture;
using test::pictureInDrawing;

template <typename... Values> DibBytes bytesOf(Values... values)
{
    return {static_cast<BYTE>(values)...};
}

DibBytes operator+(DibBytes left, const DibBytes& right)
{
    for (const BYTE value : right)
        left.push_back(value);
    return left;
}

DibBytes little(DWORD value)
{
    return bytesOf(value, value >> 8, value >> 16, value >> 24);
}

DibBytes repeated(const DibBytes& bytes, int times)
{
    DibBytes all;
    for (int i = 0; i < times; ++i)
        all = std::move(all) + bytes;
    return all;
}

// A header of any length; what lies beyond the first 40 bytes is given or zero.
DibBytes header(DWORD length, int width, int height, int bits, DWORD compression = BI_RGB, const DibBytes& rest = {})
{
    DibBytes bytes = little(length) + little(width) + little(height) + bytesOf(1, 0, bits, 0) + little(compression);
    bytes.resize(40);
    bytes = std::move(bytes) + rest;
    bytes.resize(length);
    return bytes;
}

class OtherProgram : public test::MouseFixture
{
protected:
    // Lets the other program work to its end; its exit code.
    DWORD run(const std::wstring& work, const std::filesystem::path& path)
    {
        const PROCESS_INFORMATION process = start(work, path);
        WaitForSingleObject(process.hProcess, INFINITE);
        DWORD code = 99;
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return code;
    }
    static PROCESS_INFORMATION start(const std::wstring& work, const std::filesystem::path& path)
    {
        wchar_t own[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        const std::filesystem::path program = std::filesystem::path(own).replace_filename(L"clipboard_program.exe");
        std::wstring line = L"\"" + program.wstring() + L"\" " + work + L" \"" + path.wstring() + L"\"";
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process = {};
        EXPECT_TRUE(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                   &process))
            << "the other program can't be started";
        return process;
    }
    std::filesystem::path fileOf(const DibBytes& bytes)
    {
        const std::filesystem::path path = file("clipboard.dib");
        std::ofstream out(path, std::ios::binary);
        for (const BYTE value : bytes)
            out.put(static_cast<char>(value));
        return path;
    }
    // What the other program finds.
    DibBytes found()
    {
        const std::filesystem::path path = file("found.dib");
        EXPECT_EQ(run(L"get", path), 0u) << "there is no bitmap for the other program";
        std::ifstream in(path, std::ios::binary);
        DibBytes bytes;
        for (std::istreambuf_iterator<char> next(in), end; next != end; ++next)
            bytes.push_back(static_cast<BYTE>(*next));
        return bytes;
    }
    // Pastes plain onto an empty sheet, in the middle, by the tool and a click beside what floats.
    Picture pasted()
    {
        openRaster();
        m_viewState.centre = {0.5, -0.5, 0}; // the middle of the view lies in pixel (40, 30)
        auto* tool = new CEditPasteTool;
        if (!tool->Start()) {
            delete tool;
            return {"the tool does not start"};
        }
        PasteTransparent = false;
        move(CPoint(20, 20));
        drag(CPoint(20, 20), CPoint(20, 20));
        Picture picture = pictureInDrawing(0);
        delete g_pArxApp->m_pTool;
        g_pArxApp->DropRaster();
        standin::closeDrawing();
        return picture;
    }
};

TEST_F(OtherProgram, FindsACopiedAreaAsABitmapOfOneBit)
{
    Picture picture = blank(80, 60);
    picture[10].replace(10, 5, "#.##.");
    picture[11].replace(10, 5, ".#.##");
    picture[12].replace(10, 5, "#####");
    for (const UINT id : {ID_AREA_COPY, ID_AREA_CUT}) {
        SCOPED_TRACE(id);
        emptyClipboard();
        openRaster(picture);
        SelectAreaCommand();
        drag(at(10, 10), at(15, 13));
        // Without the lower right corner, which is paper in the copy.
        move(at(15, 13), MK_CONTROL);
        drag(at(15, 13), at(13, 12), MK_CONTROL);
        command(id);
        // 300 dots per inch are 11811 per metre; the bottom row comes first, each row filled up to 4 bytes.
        const DibBytes wanted = little(40) + little(5) + little(3) + bytesOf(1, 0, 1, 0) + little(BI_RGB) + little(12) +
                                little(11811) + little(11811) + little(2) + little(0) +
                                bytesOf(0, 0, 0, 0, 255, 255, 255, 0) + //
                                bytesOf(0b00011000, 0, 0, 0) +          // ###..
                                bytesOf(0b10100000, 0, 0, 0) +          // .#.##
                                bytesOf(0b01001000, 0, 0, 0);           // #.##.
        DibBytes bytes = found();
        ASSERT_GE(bytes.size(), wanted.size());
        bytes.resize(wanted.size()); // the system rounds the block's size up
        EXPECT_EQ(bytes, wanted);
        delete g_pArxApp->m_pTool;
        g_pArxApp->DropRaster();
        standin::closeDrawing();
    }
}

// The picture of all bitmaps below, in the colours 0 black, 1 white, 2 dark and 3 light.
const Picture motif = {
    "#..#", // 2 1 3 0
    ".##.", // 3 0 2 1
};

TEST_F(OtherProgram, ItsBitmapsOfAnyDepthArePasted)
{
    const DibBytes black = bytesOf(0, 0, 0, 0);
    const DibBytes white = bytesOf(255, 255, 255, 0);
    const DibBytes dark = bytesOf(90, 20, 30, 0);
    const DibBytes light = bytesOf(200, 250, 250, 0);
    const DibBytes four = black + white + dark + light;
    const auto palette = [&](int count) { return four + repeated(white, count - 4); };

    const DibBytes upper1 = bytesOf(0x90, 0, 0, 0);
    const DibBytes lower1 = bytesOf(0x60, 0, 0, 0);
    const DibBytes upper4 = bytesOf(0x21, 0x30, 0, 0);
    const DibBytes lower4 = bytesOf(0x30, 0x21, 0, 0);
    const DibBytes upper8 = bytesOf(2, 1, 3, 0);
    const DibBytes lower8 = bytesOf(3, 0, 2, 1);
    const DibBytes upper24 = bytesOf(90, 20, 30, 255, 255, 255, 200, 250, 250, 0, 0, 0);
    const DibBytes lower24 = bytesOf(200, 250, 250, 0, 0, 0, 90, 20, 30, 255, 255, 255);
    const DibBytes upper32 = dark + white + light + black;
    const DibBytes lower32 = light + black + dark + white;
    const DibBytes masks = little(0xFF0000) + little(0xFF00) + little(0xFF);
    constexpr DWORD v4 = 108;
    constexpr DWORD v5 = 124;
    struct Case
    {
        const char* what;
        DibBytes dib;
    };
    const Case cases[] = {
        {"1 bit, white first", header(40, 4, 2, 1) + white + black + lower1 + upper1},
        {"1 bit, black first, top row first", header(40, 4, -2, 1) + black + white + lower1 + upper1},
        {"1 bit, a header of 124 bytes", header(v5, 4, 2, 1) + white + black + lower1 + upper1},
        {"4 bits", header(40, 4, 2, 4) + palette(16) + lower4 + upper4},
        {"4 bits, top row first, a header of 108 bytes", header(v4, 4, -2, 4) + palette(16) + upper4 + lower4},
        {"8 bits", header(40, 4, 2, 8) + palette(256) + lower8 + upper8},
        {"8 bits, top row first", header(40, 4, -2, 8) + palette(256) + upper8 + lower8},
        {"8 bits, a header of 124 bytes", header(v5, 4, 2, 8) + palette(256) + lower8 + upper8},
        {"24 bits", header(40, 4, 2, 24) + lower24 + upper24},
        {"24 bits, top row first, a header of 124 bytes", header(v5, 4, -2, 24) + upper24 + lower24},
        {"32 bits", header(40, 4, 2, 32) + lower32 + upper32},
        {"32 bits, top row first", header(40, 4, -2, 32) + upper32 + lower32},
        {"32 bits, masks behind the header", header(40, 4, 2, 32, BI_BITFIELDS) + masks + lower32 + upper32},
        {"32 bits, masks in a header of 108 bytes", header(v4, 4, 2, 32, BI_BITFIELDS, masks) + lower32 + upper32},
        {"32 bits, masks in a header of 124 bytes", header(v5, 4, -2, 32, BI_BITFIELDS, masks) + upper32 + lower32},
    };
    // The picture floats in the middle, from (38, 29) on.
    Picture wanted = blank(80, 60);
    for (size_t row = 0; row < motif.size(); ++row)
        wanted[29 + row].replace(38, 4, motif[row]);
    for (const Case& row : cases) {
        ASSERT_EQ(run(L"put", fileOf(row.dib)), 0u) << row.what;
        EXPECT_EQ(pasted(), wanted) << row.what;
    }
}

TEST_F(OtherProgram, ABitmapThatItOnlyPromisesIsRenderedAndPasted)
{
    const DibBytes dib = test::dibOf(motif);
    emptyClipboard();
    const PROCESS_INFORMATION process = start(L"serve", fileOf(dib));
    EXPECT_TRUE(test::pumpUntil([] { return IsClipboardFormatAvailable(CF_DIB) != FALSE; }));
    Picture wanted = blank(80, 60);
    for (size_t row = 0; row < motif.size(); ++row)
        wanted[29 + row].replace(38, 4, motif[row]);
    EXPECT_EQ(pasted(), wanted);

    // A copy takes the clipboard away from the other program, which ends then.
    openRaster();
    SelectAreaCommand();
    drag(at(10, 10), at(15, 13));
    command(ID_AREA_COPY);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 10000), WAIT_OBJECT_0) << "the other program still owns it";
    DibBytes bytes = found();
    bytes.resize(12);
    EXPECT_EQ(bytes, little(40) + little(5) + little(3));
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

} // namespace
