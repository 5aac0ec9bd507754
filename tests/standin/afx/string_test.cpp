#include <gtest/gtest.h>

#include "standin/afx/afx.h"

namespace {

std::wstring plain(const CString& text)
{
    return text.GetString();
}

TEST(String, FormatFollowsTheWideRuntimeOfWindows)
{
    CString text;
    text.Format(L"%s|%d|%u|%lu|%.2f|%.*lf%s", CString(L"wide"), -5, 7u, 4000000000ul, 1.5, 1, 2.75, L" mm");
    EXPECT_EQ(plain(text), L"wide|-5|7|4000000000|1.50|2.8 mm");
    text.Format(L"%S", "narrow");
    EXPECT_EQ(plain(text), L"narrow");
    text.AppendFormat(L"-%03d", 7);
    EXPECT_EQ(plain(text), L"narrow-007");
    text.Format(L"%s", std::wstring(5000, L'x').c_str());
    EXPECT_EQ(text.GetLength(), 5000) << "a long text is not cut";
}

TEST(String, BufferIsWrittenAndReleased)
{
    CString text(L"abc");
    lstrcpyW(text.GetBuffer(MAX_PATH), L"from the system");
    text.ReleaseBuffer();
    EXPECT_EQ(plain(text), L"from the system");
    EXPECT_EQ(text.GetLength(), 15);
    text.GetBuffer(100);
    text.ReleaseBuffer(4);
    EXPECT_EQ(plain(text), L"from");
}

TEST(String, NarrowTextIsWidenedFromTheAnsiCodePage)
{
    const char bytes[] = {'a', static_cast<char>(0xE4), 0};
    wchar_t expected[4]{};
    MultiByteToWideChar(CP_ACP, 0, bytes, 2, expected, 4);
    EXPECT_EQ(plain(CString(bytes)), expected);
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
}

} // namespace
