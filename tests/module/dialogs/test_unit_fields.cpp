// Lengths as text, in fields and above sliders.

#include "module/dialogs/CBuddySlider.h"
#include "module/dialogs/UnitFields.h"
#include "tests/module/support/desk_fixture.h"

namespace {

constexpr std::int16_t decimalUnits = 2;
constexpr std::int16_t architecturalUnits = 4;

class UnitFields : public test::DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        openDrawing({test::blank(4, 4)});
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 100, 20, view().m_hWnd, reinterpret_cast<HMENU>(lengthField),
                        nullptr, nullptr);
        CreateWindowExW(WS_EX_TRANSPARENT, L"EDIT", L"", WS_CHILD, 0, 30, 100, 20, view().m_hWnd,
                        reinterpret_cast<HMENU>(plainField), nullptr, nullptr);
    }
    static void setUnits(std::int16_t units) { ASSERT_TRUE(standin::setSystemVariable(L"LUNITS", units)); }

    std::wstring shown(int field, double value, int decimals)
    {
        CDataExchange exchange(&view(), FALSE);
        DDX_LengthText(&exchange, field, value, decimals);
        wchar_t text[400] = {};
        GetDlgItemTextW(view().m_hWnd, field, text, 400);
        return text;
    }
    double read(int field, const std::wstring& text)
    {
        SetDlgItemTextW(view().m_hWnd, field, text.c_str());
        CDataExchange exchange(&view(), TRUE);
        double value = -1;
        DDX_LengthValue(&exchange, field, value);
        return value;
    }

    static constexpr int lengthField = 1;
    static constexpr int plainField = 2;
};

TEST_F(UnitFields, ShowLengthsInTheDrawingsUnitAndPlainNumbersAsTheyAre)
{
    struct Row
    {
        std::int16_t units;
        double value;
        int decimals;
        const wchar_t* length;
        const wchar_t* plain;
    };
    const Row rows[] = {
        {decimalUnits, 25.4, 2, L"25.40 mm", L"25.40"},
        {architecturalUnits, 25.4, 2, L"1.0000\"", L"25.40"},
        {decimalUnits, 1234.5, 2, L"1,234.50 mm", L"1,234.50"},
        {3, 1234.5, 2, L"48.6024\"", L"1,234.50"},
        {decimalUnits, -0.26, 1, L"-0.3 mm", L"-0.3"},
        {decimalUnits, 1234567.891, 0, L"1,234,568 mm", L"1,234,568"},
    };
    for (const Row& row : rows) {
        setUnits(row.units);
        EXPECT_EQ(shown(lengthField, row.value, row.decimals), row.length);
        EXPECT_EQ(shown(plainField, row.value, row.decimals), row.plain);
    }
}

TEST_F(UnitFields, ReadWhateverIsTyped)
{
    struct Row
    {
        std::int16_t units;
        const wchar_t* text;
        double length;
        double plain;
    };
    const std::wstring endless(40000, L'9');
    const Row rows[] = {
        {decimalUnits, L"1,234.50 mm", 1234.5, 1234.5},
        {architecturalUnits, L"1.0000\"", 25.4, 1},
        {decimalUnits, L"", 0, 0},
        {decimalUnits, L"no number", 0, 0},
        {decimalUnits, L"-3.5 mm", -3.5, -3.5},
        {decimalUnits, L"1e308", 1e308, 1e308},
        {decimalUnits, L"1,,2,3", 123, 123},
    };
    for (const Row& row : rows) {
        setUnits(row.units);
        EXPECT_DOUBLE_EQ(read(lengthField, row.text), row.length) << std::filesystem::path(row.text);
        EXPECT_DOUBLE_EQ(read(plainField, row.text), row.plain) << std::filesystem::path(row.text);
    }
    // Only so much of a text is looked at; what no format can hold is shown all the same.
    EXPECT_NEAR(read(plainField, endless) / 1e254, 1, 1e-9);
    EXPECT_GT(shown(lengthField, 1e300, 2).size(), 300u);
}

TEST_F(UnitFields, ALengthAsTextKeepsToItsWords)
{
    setUnits(decimalUnits);
    EXPECT_EQ(FormatLength(297, 0, true, L"Width: ", L"!"), L"Width: 297 mm!");
    EXPECT_EQ(FormatLength(1234.5, 1, false, L"", L""), L"1,234.5");
    setUnits(architecturalUnits);
    EXPECT_EQ(FormatLength(297, 0, true, L"Width: ", L""), L"Width: 11.69\"");
    EXPECT_EQ(FormatLength(25.4, 0, false, L"", L""), L"1.00");
    for (const std::int16_t units : {decimalUnits, architecturalUnits}) {
        setUnits(units);
        ASSERT_TRUE(standin::setSystemVariable(L"LUPREC", std::int16_t(3)));
        EXPECT_EQ(FormatLength(1234.5678, -1, true, L"", L""), L"1234.568") << "the drawing's own precision";
    }
}

TEST_F(UnitFields, TheLabelRidesAboveTheSlidersThumb)
{
    setUnits(decimalUnits);
    const HWND label = CreateWindowExW(0, L"STATIC", L"percent", WS_CHILD | WS_VISIBLE | WS_GROUP, 0, 0, 50, 15,
                                       view().m_hWnd, nullptr, nullptr, nullptr);
    CBuddySlider slider;
    ASSERT_TRUE(slider.Create(WS_VISIBLE | TBS_HORZ, CRect(20, 50, 220, 80), &view(), 77));
    const auto labelAt = [&](int position) {
        slider.SetPos(position);
        slider.RedrawWindow();
        CRect place;
        GetWindowRect(label, &place);
        MapWindowPoints(nullptr, view().m_hWnd, reinterpret_cast<POINT*>(&place), 2);
        return place;
    };
    const auto text = [&] {
        wchar_t shown[100] = {};
        GetWindowTextW(label, shown, 100);
        return std::wstring(shown);
    };
    slider.SetValues(0.1, 2.0, 1, true, L"");
    slider.SetPositions(1, 20);
    EXPECT_EQ(slider.GetPageSize(), 3) << "a sixth of 19";
    // The way of the thumb runs from 30 to 210; position 10 lies 9/19 on it.
    struct Row
    {
        int position;
        const wchar_t* text;
        int middle;
    };
    for (const Row& row : {Row{1, L"0.1 mm", 30}, Row{10, L"1.0 mm", 115}, Row{20, L"2.0 mm", 210}}) {
        const CRect place = labelAt(row.position);
        EXPECT_EQ(text(), row.text);
        EXPECT_EQ(place.bottom, 50);
        EXPECT_NEAR((place.left + place.right) / 2.0, row.middle, 1);
        EXPECT_TRUE(IsWindowVisible(label));
    }
    setUnits(architecturalUnits);
    labelAt(10);
    EXPECT_EQ(text(), L"0.039\"") << "1.0 mm in inches, with two decimals more";

    SetWindowTextW(label, L" percent");
    slider.SetValues(0, 100, 0, false, L"Use.Predefined.Unit");
    labelAt(20);
    EXPECT_EQ(text(), L"100 percent");
    slider.DestroyWindow();
}

} // namespace
