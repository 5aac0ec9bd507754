#include "module/dialogs/CDProperties.h"

#include <cmath>
#include <cstdint>

#include "module/dialogs/UnitFields.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/Coordinates.h"
#include "module/resources/resource.h"

namespace {

enum TreeImage
{
    RootImage,
    LeafImage,
    GroupImage
};

constexpr int imageWidth = 16;
constexpr COLORREF imageMask = 0xFFFFFF;

CString String(UINT id)
{
    CString text;
    text.LoadString(id);
    return text;
}

template <typename... Values> CString Labelled(UINT labelId, const wchar_t* format, const Values&... values)
{
    CString text;
    text.Format(format, String(labelId).GetString(), values...);
    return text;
}

// 0 for a file that can't be opened. The row has room for 32 bits.
int FileLength(const CString& path)
{
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return 0;
    return static_cast<int>(file.SeekToEnd());
}

// In 32 bits, so that the largest rasters wrap around.
int MemorySize(CSize size, int depth)
{
    const auto bits =
        static_cast<std::uint32_t>(depth) * static_cast<std::uint32_t>(size.cy) * static_cast<std::uint32_t>(size.cx);
    return static_cast<int>(bits) / 8;
}

} // namespace

CDProperties::CDProperties() : CDialog(IDD_PROPERTIES) {}

void CDProperties::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_PROPERTIES_TREE, m_tree);
}

BOOL CDProperties::OnInitDialog()
{
    CDialog::OnInitDialog();
    const CCurentRaster current;
    m_images.Create(IDB_PROPERTIES, imageWidth, 1, imageMask);
    m_tree.SetImageList(&m_images, TVSIL_NORMAL);
    if (!current.m_pRaster)
        return TRUE;
    const HTREEITEM root = AddRow(TVI_ROOT, String(IDS_CURRENT_RASTER), RootImage);
    AddFileRows(root, *current.m_pRaster);
    AddDrawingSize(root, *current.m_pRaster);
    AddDocumentSize(root, *current.m_pRaster);
    m_tree.Expand(root, TVE_EXPAND);
    return TRUE;
}

HTREEITEM CDProperties::AddRow(HTREEITEM parent, const CString& text, int image)
{
    return m_tree.InsertItem(text, image, image, parent, TVI_LAST);
}

HTREEITEM CDProperties::AddGroup(HTREEITEM parent, UINT textId)
{
    return AddRow(parent, String(textId), GroupImage);
}

void CDProperties::AddFileRows(HTREEITEM root, const CAcraster& raster)
{
    const CString path = raster.GetFileName();
    const int depth = raster.GetColorDepth();
    const int colors = TruncateToInt(std::pow(2.0, depth) + 0.5);
    AddRow(root, Labelled(IDS_FILE_NAME, L"%s %s", path.GetString()), LeafImage);
    AddRow(root, Labelled(IDS_FILE_SIZE, L"%s %d bytes", FileLength(path)), LeafImage);
    // Nobody has ever looked up the type: the row is its label alone.
    AddRow(root, Labelled(IDS_FILE_TYPE, L"%s %s", L""), LeafImage);
    AddRow(root, Labelled(IDS_RESOLUTION, L"%s %d dpi", raster.GetDpi()), LeafImage);
    AddRow(root, Labelled(IDS_COLORS, L"%s %d (%d bit)", colors, depth), LeafImage);
    AddRow(root, Labelled(IDS_RASTER_SIZE, L"%s %d bytes", MemorySize(raster.GetSize(), depth)), LeafImage);
}

void CDProperties::AddDrawingSize(HTREEITEM root, const CAcraster& raster)
{
    AcGePoint3d origin;
    double width = 0;
    double height = 0;
    raster.GetPlacement(origin, width, height);
    const HTREEITEM group = AddGroup(root, IDS_SIZE_IN_DRAWING);
    AddRow(group, Labelled(IDS_INSERTION_POINT, L"%s %.2lf:%.2lf", origin.x, origin.y), LeafImage);
    // Drawing units, though they are shown as if they were millimetres.
    AddRow(group, FormatLength(width, 2, false, String(IDS_WIDTH), L""), LeafImage);
    AddRow(group, FormatLength(height, 2, false, String(IDS_HEIGHT), L""), LeafImage);
}

void CDProperties::AddDocumentSize(HTREEITEM root, const CAcraster& raster)
{
    const CSize size = raster.GetSize();
    const double millimetresPerPixel = MillimetresPerInch / raster.GetDpi();
    const HTREEITEM group = AddGroup(root, IDS_DOCUMENT_SIZE);
    AddRow(group, FormatLength(size.cx * millimetresPerPixel, 0, true, String(IDS_WIDTH), L""), LeafImage);
    AddRow(group, FormatLength(size.cy * millimetresPerPixel, 0, true, String(IDS_HEIGHT), L""), LeafImage);
    AddRow(group, Labelled(IDS_WIDTH, L"%s%d pixel", static_cast<int>(size.cx)), LeafImage);
    AddRow(group, Labelled(IDS_HEIGHT, L"%s%d pixel", static_cast<int>(size.cy)), LeafImage);
}
