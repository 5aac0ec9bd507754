// Settings in the real registry.
#include <gtest/gtest.h>

#include "standin/afx/afx.h"

namespace {

class Profile : public testing::Test
{
protected:
    void SetUp() override
    {
        app.m_pszRegistryKey = L"HalvoranAfxTest";
        app.m_pszProfileName = L"Unit";
    }
    void TearDown() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\HalvoranAfxTest"); }

    CWinApp app{L"Test"};
};

TEST_F(Profile, ValuesLieUnderCompanyProgramAndSection)
{
    EXPECT_TRUE(app.WriteProfileInt(L"ProgramDefault", L"PenToolPixel", -7));
    EXPECT_TRUE(app.WriteProfileString(L"ProgramDefault", L"Font", L"Arial \u00e5"));
    DWORD number = 0;
    DWORD size = sizeof number;
    const wchar_t* path = L"Software\\HalvoranAfxTest\\Unit\\ProgramDefault";
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path, L"PenToolPixel", RRF_RT_REG_DWORD, nullptr, &number, &size), 0);
    EXPECT_EQ(static_cast<int>(number), -7);
    wchar_t text[32];
    size = sizeof text;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path, L"Font", RRF_RT_REG_SZ, nullptr, text, &size), 0);
    EXPECT_STREQ(text, L"Arial \u00e5");
    EXPECT_EQ(static_cast<int>(app.GetProfileInt(L"ProgramDefault", L"PenToolPixel", 2)), -7);
    EXPECT_TRUE(app.GetProfileString(L"ProgramDefault", L"Font", L"x") == L"Arial \u00e5");
}

TEST_F(Profile, MissingForeignAndDeletedValuesReadAsTheDefault)
{
    EXPECT_EQ(app.GetProfileInt(L"None", L"Here", 5), 5u);
    app.WriteProfileString(L"Section", L"A", L"12");
    app.WriteProfileString(L"Section", L"B", L"");
    EXPECT_EQ(app.GetProfileInt(L"Section", L"A", 3), 3u) << "a text is no number";
    EXPECT_TRUE(app.WriteProfileString(L"Section", L"A", nullptr));
    EXPECT_TRUE(app.GetProfileString(L"Section", L"A", L"gone") == L"gone");
    EXPECT_TRUE(app.GetProfileString(L"Section", L"B", L"gone") == L"") << "an empty text is a value";
    EXPECT_TRUE(app.WriteProfileString(L"Section", nullptr, nullptr));
    EXPECT_TRUE(app.GetProfileString(L"Section", L"B", L"gone") == L"gone");
}

TEST_F(Profile, WaitCursorsNest)
{
    const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
    const HCURSOR wait = ::LoadCursorW(nullptr, IDC_WAIT);
    ::SetCursor(arrow);
    {
        CWaitCursor outer;
        EXPECT_EQ(::GetCursor(), wait);
        {
            CWaitCursor inner;
            ::SetCursor(arrow); // a message box has been up
            inner.Restore();
            EXPECT_EQ(::GetCursor(), wait);
        }
        EXPECT_EQ(::GetCursor(), wait) << "the outer one still waits";
    }
    EXPECT_EQ(::GetCursor(), arrow);
}

} // namespace
