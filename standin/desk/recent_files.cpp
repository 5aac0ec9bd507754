#include "standin/desk/recent_files.h"

#include <algorithm>

#include "standin/afx/afx.h"
#include "standin/text.h"

namespace desk {
namespace {

const wchar_t* const section = L"Recent files";

std::wstring entryAt(std::size_t index)
{
    return L"File" + std::to_wstring(index + 1);
}

} // namespace

void RecentFiles::remove(const std::filesystem::path& file)
{
    const std::wstring name = standin::upperCase(file.wstring());
    std::erase_if(m_files,
                  [&](const std::filesystem::path& each) { return standin::upperCase(each.wstring()) == name; });
}

void RecentFiles::add(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(file, error).lexically_normal().make_preferred();
    remove(whole);
    m_files.insert(m_files.begin(), whole);
    if (m_files.size() > most)
        m_files.resize(most);
}

void RecentFiles::load()
{
    m_files.clear();
    for (std::size_t i = 0; i < most; ++i) {
        const CString file = AfxGetApp()->GetProfileString(section, entryAt(i).c_str(), L"");
        if (!file.IsEmpty())
            m_files.emplace_back(static_cast<const wchar_t*>(file));
    }
}

void RecentFiles::save() const
{
    for (std::size_t i = 0; i < most; ++i) {
        const std::wstring file = i < m_files.size() ? m_files[i].wstring() : std::wstring();
        AfxGetApp()->WriteProfileString(section, entryAt(i).c_str(), file.empty() ? nullptr : file.c_str());
    }
}

} // namespace desk
