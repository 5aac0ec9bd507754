#include "module/raster/CPenList.h"

#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "module/base/CScopeGuard.h"
#include "module/raster/Coordinates.h"
#include "module/raster/SetAsideFile.h"

namespace {

constexpr int defaultWidth = 18;
constexpr int widthOfMissingPart = 20;

// The settings have room for so many pens in a value.
struct SettingsPart
{
    const wchar_t* name;
    int first;
    int end;
};
constexpr SettingsPart settingsParts[] = {
    {L"Penlist11", 0, 85},
    {L"Penlist12", 85, 170},
    {L"Penlist13", 170, CPenList::Count},
};
constexpr int digitsPerPen = 3;

constexpr const wchar_t* penFileFilter = L"Pen Files (*.pen)|*.pen||";
constexpr const wchar_t* penFileExtension = L"pen";
// A number has no use for more of a line, and a pen file none for more of a file.
constexpr std::size_t longestNumber = 64;
constexpr std::size_t longestFile = 1 << 20;

// The beginnings of the file's lines, as many as there are pens.
std::vector<std::string> ReadLines(CFile& file)
{
    std::vector<char> bytes(longestFile);
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    std::vector<std::string> lines;
    auto at = bytes.begin();
    while (at != bytes.end() && lines.size() < CPenList::Count) {
        const auto end = std::find(at, bytes.end(), '\n');
        const auto kept = static_cast<std::size_t>(end - at) < longestNumber ? end : at + longestNumber;
        lines.emplace_back(at, kept);
        at = end == bytes.end() ? end : end + 1;
    }
    return lines;
}

void ThrowWritingError(DWORD error, const CString& path)
{
    CFileException::ThrowOsError(static_cast<LONG>(error), path);
}

} // namespace

CPenList::CPenList(const CString& section, double scale) : m_dScale(scale)
{
    m_widths.fill(defaultWidth);
    if (!section.IsEmpty())
        LoadSettings(section);
}

CPenList::~CPenList() = default;

int CPenList::Width(int index) const
{
    return TruncateToInt(m_widths[static_cast<std::size_t>(std::min(index, Count - 1))] * m_dScale + 0.5);
}

bool CPenList::LoadSettings(const CString& section)
{
    bool brokenOff = false;
    for (const SettingsPart& part : settingsParts) {
        const CString text = brokenOff ? CString() : AfxGetApp()->GetProfileString(section, part.name);
        if (text.IsEmpty() && part.first == 0)
            return false;
        brokenOff = text.IsEmpty();
        for (int pen = part.first; pen < part.end; ++pen) {
            int& width = m_widths[static_cast<std::size_t>(pen)];
            if (brokenOff) {
                width = widthOfMissingPart;
            } else {
                unsigned value = 0;
                const CString digits = text.Mid((pen - part.first) * digitsPerPen, digitsPerPen);
                width = std::swscanf(digits, L"%3x", &value) == 1 ? static_cast<int>(value) : defaultWidth;
            }
        }
    }
    return true;
}

void CPenList::StoreSettings(const CString& section) const
{
    for (const SettingsPart& part : settingsParts) {
        CString text;
        for (int pen = part.first; pen < part.end; ++pen)
            text.AppendFormat(L"%03x", static_cast<unsigned>(m_widths[static_cast<std::size_t>(pen)]));
        AfxGetApp()->WriteProfileString(section, part.name, text);
    }
}

bool CPenList::AskForName(std::unique_ptr<CFileDialog>& dialog, bool open, CString& name)
{
    if (!name.IsEmpty())
        return true;
    if (!dialog) {
        const DWORD flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | (open ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT);
        dialog = std::make_unique<CFileDialog>(open, penFileExtension, nullptr, flags, penFileFilter);
    }
    if (dialog->DoModal() != IDOK)
        return false;
    name = dialog->GetPathName();
    return true;
}

int CPenList::ReadFile(CString name)
{
    if (!AskForName(m_pOpenDialog, true, name))
        return 0;
    CFile file(name, CFile::modeRead | CFile::shareDenyWrite);
    const std::vector<std::string> lines = ReadLines(file);
    if (lines.empty())
        return 1;
    for (std::size_t pen = 0; pen < m_widths.size(); ++pen)
        m_widths[pen] = _wtoi(CString(lines[std::min(pen, lines.size() - 1)].c_str()));
    return 1;
}

int CPenList::WriteFile(CString name)
{
    if (!AskForName(m_pSaveDialog, false, name))
        return 0;
    if (IsMarkedReadOnly(name))
        ThrowWritingError(ERROR_ACCESS_DENIED, name);
    auto last = m_widths.size() - 1;
    while (last > 0 && m_widths[last] == m_widths[last - 1])
        --last;
    std::string text;
    for (std::size_t pen = 0; pen <= last; ++pen)
        text += std::to_string(m_widths[pen]) + "\r\n";

    const CString fresh = FreeNameBeside(name);
    CScopeGuard remove([&fresh] { DeleteFileW(fresh); });
    {
        CFile file(fresh, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
        file.Write(text.data(), static_cast<UINT>(text.size()));
        file.Close();
    }
    if (!MoveFileExW(fresh, name, MOVEFILE_REPLACE_EXISTING))
        ThrowWritingError(GetLastError(), name);
    remove.Dismiss();
    return 1;
}
