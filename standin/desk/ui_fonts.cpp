#include "standin/desk/ui_fonts.h"

#include <initializer_list>

namespace desk {
namespace {

constexpr int pointSize = 9;

bool installed(HDC context, const wchar_t* family)
{
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    wcsncpy(wanted.lfFaceName, family, LF_FACESIZE - 1);
    bool found = false;
    const auto note = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM result) -> int {
        *reinterpret_cast<bool*>(result) = true;
        return 0;
    };
    EnumFontFamiliesExW(context, &wanted, note, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}

HFONT makeFont(HDC context, std::initializer_list<const wchar_t*> families)
{
    LOGFONTW description{};
    description.lfHeight = -MulDiv(pointSize, GetDeviceCaps(context, LOGPIXELSY), 72);
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfQuality = CLEARTYPE_QUALITY;
    for (const wchar_t* family : families) {
        wcsncpy(description.lfFaceName, family, LF_FACESIZE - 1);
        if (installed(context, family))
            break;
    }
    return CreateFontIndirectW(&description);
}

} // namespace

UiFonts::UiFonts()
{
    const HDC context = GetDC(nullptr);
    dotsPerInch = GetDeviceCaps(context, LOGPIXELSY);
    text.Attach(makeFont(context, {L"Segoe UI", L"DejaVu Sans", L"Tahoma"}));
    monospace.Attach(makeFont(context, {L"Consolas", L"DejaVu Sans Mono", L"Liberation Mono", L"Courier New"}));
    const HGDIOBJ former = SelectObject(context, monospace.GetSafeHandle());
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    monospaceHeight = metrics.tmHeight;
    SelectObject(context, former);
    ReleaseDC(nullptr, context);
}

} // namespace desk
