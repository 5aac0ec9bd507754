#include "standin/desk/outside_files.h"

#include "standin/host.h"
#include "standin/text.h"

namespace desk {
namespace {

std::filesystem::path programFile()
{
    std::wstring path(32'768, L'\0'); // the longest that there may be
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::vector<std::filesystem::path> filesOf(HDROP drop)
{
    std::vector<std::filesystem::path> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + std::size_t(1), L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        files.emplace_back(path);
    }
    return files;
}

// A command that asks for a path, with its answer.
std::wstring withPath(const wchar_t* command, const std::filesystem::path& file)
{
    return std::wstring(command) + L" " + file.wstring() + L"\r";
}

} // namespace

bool isDrawingName(const std::filesystem::path& file)
{
    const std::wstring extension = standin::upperCase(file.extension().wstring());
    return extension == L".DXF" || extension == L".DWG";
}

void OutsideFiles::used(const std::filesystem::path& file)
{
    m_recent.add(file);
    m_recent.save();
}

void OutsideFiles::openRecent(std::size_t index)
{
    if (index >= m_recent.files().size())
        return;
    const std::filesystem::path file = m_recent.files()[index];
    std::error_code error;
    if (std::filesystem::is_regular_file(file, error)) {
        m_events.typed(withPath(L"-open", file));
        return;
    }
    m_recent.remove(file);
    m_recent.save();
    m_events.alert(file.wstring() + L" is not there any more.");
}

void OutsideFiles::takeDropped(HDROP drop)
{
    const std::vector<std::filesystem::path> files = filesOf(drop);
    DragFinish(drop);
    std::vector<std::filesystem::path> rasters;
    for (const std::filesystem::path& file : files) {
        if (isDrawingName(file)) {
            m_events.typed(withPath(L"-open", file));
        } else {
            rasters.push_back(file);
        }
    }
    if (!rasters.empty())
        place(rasters);
}

// One at a time: the command asks for a point that only the user can show.
void OutsideFiles::place(const std::vector<std::filesystem::path>& rasters)
{
    if (rasters.size() > 1) {
        m_events.said(L"Only " + rasters.front().filename().wstring() +
                      L" is placed: rasters are dropped one after the other.");
    }
    m_events.typed(withPath(L"-imageattach", rasters.front()));
}

void OutsideFiles::openGuide()
{
    const std::filesystem::path guide = programFile().parent_path() / L"Guide" / L"index.html";
    std::error_code error;
    if (!std::filesystem::is_regular_file(guide, error)) {
        m_events.said(L"The guide is missing: it should be " + guide.wstring() + L". HELP lists the commands.");
        return;
    }
    const auto result =
        reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", guide.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    constexpr INT_PTR failures = 32; // up to and with this number
    m_events.said((result > failures ? L"The guide: " : L"No program opens the guide: ") + guide.wstring());
}

} // namespace desk
