#include "fonts/font_folder.h"

#include <system_error>

namespace fonts {
namespace {

std::wstring wide(const std::string& text)
{
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(), size);
    return result;
}

std::wstring capitals(std::wstring text)
{
    CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

// The font files of everyday text styles, without extension.
const std::map<std::wstring, FontNames> everydayFiles = {
    {L"ARIAL", {L"Arial", false, false}},
    {L"ARIALBD", {L"Arial", true, false}},
    {L"ARIALI", {L"Arial", false, true}},
    {L"ARIALBI", {L"Arial", true, true}},
    {L"TIMES", {L"Times New Roman", false, false}},
    {L"TIMESBD", {L"Times New Roman", true, false}},
    {L"TIMESI", {L"Times New Roman", false, true}},
    {L"TIMESBI", {L"Times New Roman", true, true}},
    {L"COUR", {L"Courier New", false, false}},
    {L"COURBD", {L"Courier New", true, false}},
    {L"COURI", {L"Courier New", false, true}},
    {L"COURBI", {L"Courier New", true, true}},
    {L"TAHOMA", {L"Tahoma", false, false}},
    {L"TAHOMABD", {L"Tahoma", true, false}},
    {L"VERDANA", {L"Verdana", false, false}},
    {L"VERDANAB", {L"Verdana", true, false}},
    {L"VERDANAI", {L"Verdana", false, true}},
    {L"VERDANAZ", {L"Verdana", true, true}},
    {L"CALIBRI", {L"Calibri", false, false}},
    {L"CALIBRIB", {L"Calibri", true, false}},
    {L"DEJAVUSANS", {L"DejaVu Sans", false, false}},
    {L"DEJAVUSERIF", {L"DejaVu Serif", false, false}},
    {L"DEJAVUSANSMONO", {L"DejaVu Sans Mono", false, false}},
};

// Families with the same widths, for systems without the first.
const std::map<std::wstring, std::wstring> sameWidths = {
    {L"ARIAL", L"Liberation Sans"},  {L"HELVETICA", L"Liberation Sans"},   {L"TIMES NEW ROMAN", L"Liberation Serif"},
    {L"TIMES", L"Liberation Serif"}, {L"COURIER NEW", L"Liberation Mono"}, {L"COURIER", L"Liberation Mono"},
};

// Stands in for a family of outlines that is not there.
constexpr const wchar_t* plainFamily = L"Liberation Sans";

} // namespace

FontFolder::~FontFolder()
{
    m_typefaces.clear();
    for (const auto& file : m_added)
        RemoveFontResourceExW(file.c_str(), FR_PRIVATE, nullptr);
}

void FontFolder::open()
{
    m_open = true;
    std::error_code error;
    for (std::filesystem::directory_iterator each(m_folder, error), end; !error && each != end; each.increment(error)) {
        const auto& file = each->path();
        const auto names = capitals(file.extension().wstring()) == L".TTF" ? readFontNames(file) : std::nullopt;
        if (names && AddFontResourceExW(file.c_str(), FR_PRIVATE, nullptr) > 0) {
            m_added.push_back(file);
            m_files[capitals(file.stem().wstring())] = *names;
        }
    }
}

drawing::Typeface* FontFolder::find(const drawing::FontRequest& request)
{
    if (!m_open)
        open();
    const std::wstring name = wide(request.name);
    const bool isFile = !request.isFamily || capitals(name).ends_with(L".TTF");
    return isFile ? findFile(name) : findFamily(name, request.bold, request.italic);
}

drawing::Typeface* FontFolder::findFile(const std::wstring& name)
{
    std::wstring stem = capitals(name.substr(name.find_last_of(L"\\/") + 1));
    const std::size_t dot = stem.find_last_of(L'.');
    const std::wstring extension = dot == std::wstring::npos ? L"" : stem.substr(dot);
    const bool outlines = extension == L".TTF" || extension == L".TTC" || extension == L".OTF";
    if (!extension.empty() && !outlines)
        return nullptr;
    stem = stem.substr(0, dot);
    for (const auto* files : {static_cast<const std::map<std::wstring, FontNames>*>(&m_files), &everydayFiles}) {
        if (const auto known = files->find(stem); known != files->end())
            return findFamily(known->second.family, known->second.bold, known->second.italic);
    }
    return outlines ? findFamily(stem, false, false) : nullptr;
}

drawing::Typeface* FontFolder::findFamily(const std::wstring& name, bool bold, bool italic)
{
    if (drawing::Typeface* own = typeface(name, bold, italic))
        return own;
    const auto same = sameWidths.find(capitals(name));
    return typeface(same != sameWidths.end() ? same->second : plainFamily, bold, italic);
}

// Null if the system has no such family.
drawing::Typeface* FontFolder::typeface(const std::wstring& family, bool bold, bool italic)
{
    if (family.empty() || family.size() >= LF_FACESIZE)
        return nullptr;
    auto& known = m_typefaces[{capitals(family), bold, italic}];
    if (!known)
        known = std::make_unique<SystemTypeface>(family, bold, italic);
    return known->isFamily() ? known.get() : nullptr;
}

std::filesystem::path folderBesideProgram()
{
    constexpr std::size_t longestPath = 32768;
    std::wstring program(longestPath, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return std::filesystem::path(program).parent_path() / L"Fonts";
}

} // namespace fonts
