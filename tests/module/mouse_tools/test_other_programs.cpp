// The clipboard shared with another program, a process of its own.

#include <fstream>
#include <iterator>

#include "module/tools/CEditPasteTool.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace {

using test::blank;
using test::DibBytes;
using test::Picture;
using test::pictureInDrawing;

const Picture motif = {
    "#..#",
    ".##.",
};

// The other program, at work until it ends by itself.
class Program
{
public:
    Program(const std::wstring& work, const std::filesystem::path& file)
    {
        wchar_t own[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        const std::filesystem::path program = std::filesystem::path(own).replace_filename(L"clipboard_program.exe");
        std::wstring line = L"\"" + program.wstring() + L"\" " + work + L" \"" + file.wstring() + L"\"";
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        EXPECT_TRUE(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                   &m_process))
            << "the other program can't be started";
    }
    ~Program()
    {
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    DWORD exitCode() const
    {
        WaitForSingleObject(m_process.hProcess, INFINITE);
        DWORD code = 99;
        GetExitCodeProcess(m_process.hProcess, &code);
        return code;
    }

private:
    PROCESS_INFORMATION m_process = {};
};

class OtherProgram : public test::MouseFixture
{
protected:
    std::filesystem::path fileOf(const DibBytes& bytes)
    {
        std::ofstream(file("clipboard.dib"), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return file("clipboard.dib");
    }
    // Copies an area of 5 by 3 pixels by the tool.
    void copyArea()
    {
        openRaster();
        SelectAreaCommand();
        drag(at(10, 10), at(15, 13));
        command(ID_AREA_COPY);
        closeRaster();
    }
    // What the other program finds then.
    void expectFound()
    {
        const std::filesystem::path found = file("found.dib");
        EXPECT_EQ(Program(L"get", found).exitCode(), 0u) << "there is no bitmap for the other program";
        std::ifstream in(found, std::ios::binary);
        DibBytes bytes(std::istreambuf_iterator<char>(in), {});
        ASSERT_GE(bytes.size(), 40u + 8 + 3 * 4);
        bytes.resize(16);
        DibBytes wanted = test::dibHeader(5, 3, 1);
        wanted.resize(16);
        EXPECT_EQ(bytes, wanted);
    }
    // Pastes opaque onto an empty sheet, in the middle, by the tool and a click beside what floats.
    void expectPasted()
    {
        openRaster();
        m_viewState.centre = {0.5, -0.5, 0}; // the middle of the view lies in pixel (40, 30)
        auto* tool = new CEditPasteTool;
        if (!tool->Start())
            delete tool;
        ASSERT_NE(g_pArxApp->m_pTool, nullptr) << "there is nothing to paste";
        PasteTransparent = false;
        move(CPoint(20, 20));
        drag(CPoint(20, 20), CPoint(20, 20));
        Picture wanted = blank(80, 60);
        for (size_t row = 0; row < motif.size(); ++row)
            wanted[29 + row].replace(38, 4, motif[row]);
        EXPECT_EQ(pictureInDrawing(0), wanted);
        closeRaster();
    }
};

TEST_F(OtherProgram, FindsACopiedArea)
{
    emptyClipboard();
    copyArea();
    expectFound();
}

TEST_F(OtherProgram, ItsBitmapIsPasted)
{
    ASSERT_EQ(Program(L"put", fileOf(test::dibOf(motif))).exitCode(), 0u);
    expectPasted();
}

TEST_F(OtherProgram, ABitmapThatItOnlyPromisesIsRenderedAndPasted)
{
    emptyClipboard();
    const Program other(L"serve", fileOf(test::dibOf(motif)));
    EXPECT_TRUE(test::pumpUntil([] { return IsClipboardFormatAvailable(CF_DIB) != FALSE; }));
    expectPasted();
    copyArea();
    EXPECT_EQ(other.exitCode(), 0u) << "the copy takes the clipboard from it, and it ends";
    expectFound();
}

} // namespace
