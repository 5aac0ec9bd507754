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

TEST(String, PartsStayInsideTheText)
{
    const CString text(L"drawing.tif");
    const struct
    {
        CString part;
        const wchar_t* expected;
    } cases[] = {
        {text.Left(7), L"drawing"},
        {text.Left(99), L"drawing.tif"},
        {text.Left(-1), L""},
        {text.Right(3), L"tif"},
        {text.Right(99), L"drawing.tif"},
        {text.Mid(8), L"tif"},
        {text.Mid(4, 3), L"ing"},
        {text.Mid(9, 99), L"if"},
        {text.Mid(99, 1), L""},
        {text.Mid(-3, 4), L"draw"},
        {text.SpanExcluding(L"."), L"drawing"},
        {text.SpanIncluding(L"ward"), L"draw"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(plain(one.part), one.expected);
}

TEST(String, SearchGivesIndicesOrMinusOne)
{
    const CString path(L"C:\\scans\\a.b.tif");
    EXPECT_EQ(path.Find(L'\\', 3), 8);
    EXPECT_EQ(path.Find(L"scans"), 3);
    EXPECT_EQ(path.Find(L"SCANS"), -1);
    EXPECT_EQ(path.ReverseFind(L'.'), 12);
    EXPECT_EQ(path.ReverseFind(L'?'), -1);
    EXPECT_EQ(path.FindOneOf(L".\\"), 2);
    EXPECT_EQ(path.Find(L'C', 99), -1);
}

TEST(String, EditingChangesTheTextInPlace)
{
    CString text(L"  a,b,c \t");
    EXPECT_EQ(plain(text.Trim()), L"a,b,c");
    EXPECT_EQ(text.Replace(L",", L", "), 2);
    EXPECT_EQ(plain(text), L"a, b, c");
    EXPECT_EQ(text.Replace(L"a", L"aa"), 1) << "the replacement is not searched again";
    EXPECT_EQ(text.Replace(L"a", L"x"), 2);
    EXPECT_EQ(text.Replace(L"xx", L"aa"), 1);
    EXPECT_EQ(text.Remove(L' '), 2);
    EXPECT_EQ(text.Delete(0, 1), 5);
    EXPECT_EQ(text.Insert(1, L"-"), 6);
    EXPECT_EQ(plain(text), L"a-,b,c");
    EXPECT_EQ(plain(text.MakeUpper()), L"A-,B,C");
    EXPECT_EQ(plain(CString(L"\u00e4\u03b1").MakeUpper()), L"\u00c4\u0391");
    EXPECT_EQ(text.CompareNoCase(L"a-,b,C"), 0);
    EXPECT_NE(text.Compare(L"a-,b,C"), 0);
    text = text.Mid(1);
    text = text.GetString() + 1; // a part of itself
    EXPECT_EQ(plain(text), L",B,C");
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
