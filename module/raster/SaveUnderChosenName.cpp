#include "module/raster/SaveUnderChosenName.h"

#include <optional>

#include "module/base/SayOnCommandLine.h"
#include "module/raster/CAcraster.h"
#include "module/resources/resource.h"
#include "module/shell/CFileDialogEx.h"

namespace {

constexpr DWORD saveDialogFlags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;

struct SaveChoice
{
    CString path;
    int filterIndex; // zero-based
};

// False if the user gave up.
bool AskForFile(CAcraster& raster, SaveChoice& choice)
{
    const RasterFormats formats = raster.QueryFormats();
    CFileDialogEx dialog(FALSE, saveDialogFlags, formats.filter, AfxGetMainWnd());
    wchar_t name[MAX_PATH] = {};
    const CString fileName = raster.GetFileName();
    lstrcpynW(name, fileName, MAX_PATH);
    CString title;
    title.LoadString(IDS_SAVE_RASTER_AS);

    OPENFILENAMEW& fields = dialog.GetOFN();
    fields.lpstrFile = name;
    fields.nMaxFile = MAX_PATH;
    fields.nFileOffset = static_cast<WORD>(CString(name).ReverseFind(L'\\') + 1);
    fields.lpstrTitle = title;
    fields.nFilterIndex = static_cast<DWORD>(formats.filterIndex) + 1;
    if (dialog.DoModal() != IDOK)
        return false;
    choice = {dialog.GetPathName(), static_cast<int>(fields.nFilterIndex) - 1};
    return true;
}

} // namespace

bool SaveUnderChosenName(CAcraster& raster, CRgn* region)
{
    SaveChoice choice;
    if (!AskForFile(raster, choice))
        return false;
    const std::optional<DWORD> formatCode = raster.QueryFormatCode(choice.filterIndex);
    if (!formatCode) {
        SayOnCommandLine(L"The raster was not saved: nobody knows the file format.");
        if (raster.IsBorrowed())
            raster.KeepInFile();
        return false;
    }
    const CWaitCursor wait;
    return raster.SaveAs(choice.path, *formatCode, region);
}
