#include "module/dialogs/PaperSizes.h"

#include "module/dialogs/UnitFields.h"
#include "module/raster/Coordinates.h"

const std::array<PaperSize, 30> PaperSizes = {{
    {2100000, 1480000},  {2970000, 2100000},  {2100000, 2970000},  {4200000, 2970000},  {5940000, 2970000},
    {8410000, 2970000},  {11890000, 2970000}, {5940000, 4200000},  {4200000, 5940000},  {8410000, 4200000},
    {11890000, 4200000}, {8410000, 5940000},  {11890000, 5940000}, {11890000, 8410000}, {2570000, 1820000},
    {2159000, 2794000},  {2159000, 3556000},  {1841500, 2667000},  {2794000, 2159000},  {4318000, 2794000},
    {5588000, 4318000},  {8636000, 5588000},  {11176000, 8636000}, {10160000, 7112000}, {3048000, 2286000},
    {4572000, 3048000},  {6096000, 4572000},  {9144000, 6096000},  {12192000, 9144000}, {10668000, 7620000},
}};

namespace {

constexpr std::array<const wchar_t*, 30> namesShortSideFirst = {
    L"A5  (210 x 148 mm)",       L"A4  (297 x 210 mm)",      L"A4S  (210 x 297 mm)",
    L"A3  (420 x 297 mm)",       L"A3L  (594 x 297 mm)",     L"A3LL  (841 x 297 mm)",
    L"A3LLL  (1189 x 297 mm)",   L"A2  (594 x 420 mm)",      L"A2S  (420 x 594 mm)",
    L"A2L  (841 x 420 mm)",      L"A2LL  (1189 x 420 mm)",   L"A1  (841 x 594 mm)",
    L"A1L  (1189 x 594 mm)",     L"A0  (1189 x 841 mm)",     L"B5  (257 x 182 mm)",
    L"Letter  (8 1/2 x 11 in.)", L"Legal  (8 1/2 x 14 in.)", L"Executive  (7 1/4 x 10 1/2 in.)",
    L"ANSI A (8 1/2 x 11 in.)",  L"ANSI B (11 X 17 in.)",    L"ANSI C (17 X 22 in.)",
    L"ANSI D (22 X 34 in.)",     L"ANSI E (34 X 44 in.)",    L"ANSI F (28 X 40 in.)",
    L"ARCH A (9 X 12 in.)",      L"ARCH B (12 X 18 in.)",    L"ARCH C (18 X 24 in.)",
    L"ARCH D (24 X 36 in.)",     L"ARCH E (36 X 48 in.)",    L"ARCH E1 (30 X 42 in.)",
};

// From this row on the two kinds of names differ.
constexpr int firstTurnedPage = 18;

// Where the first one speaks of an "x" too many, it has always done so.
constexpr std::array<const wchar_t*, 12> namesLongSideFirst = {
    L"ANSI A (11 x 8 1/2 x  in.)", L"ANSI B (17 x 11 in.)", L"ANSI C (22 x 17 in.)", L"ANSI D (34 x 22 in.)",
    L"ANSI E (44 x 34 in.)",       L"ANSI F (40 x 28 in.)", L"ARCH A (12 x 9 in.)",  L"ARCH B (18 x 12 in.)",
    L"ARCH C (24 x 18 in.)",       L"ARCH D (36 x 24 in.)", L"ARCH E (48 x 36 in.)", L"ARCH E1 (42 x 30 in.)",
};

} // namespace

CString PaperName(int page, PaperNames names)
{
    if (names == PaperNames::LongSideFirst && page >= firstTurnedPage)
        return namesLongSideFirst[static_cast<std::size_t>(page - firstTurnedPage)];
    return namesShortSideFirst[static_cast<std::size_t>(page)];
}

void FillPaperList(CWnd& list, PaperNames names)
{
    for (int page = 0; page < static_cast<int>(PaperSizes.size()); ++page)
        list.SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(PaperName(page, names).GetString()));
}

int PixelsOfLength(double millimetres, int dpi)
{
    return TruncateToInt(millimetres / MillimetresPerInch * dpi + 0.5);
}

void LimitResolution(double width, double height, int& dpi)
{
    // The greatest sides in pixels, times the millimetres of an inch.
    constexpr double widthAtOneDpi = 1664589.0;
    constexpr double heightAtOneDpi = 832281.8;
    if (PixelsOfLength(width, dpi) > LargestRasterWidth)
        dpi = TruncateToInt(widthAtOneDpi / width);
    if (PixelsOfLength(height, dpi) > LargestRasterHeight)
        dpi = TruncateToInt(heightAtOneDpi / height);
}
