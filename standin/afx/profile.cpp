// CWinApp: the program's settings in the registry.
#include "standin/afx/afx_app.h"

namespace {

// A registry key that closes itself.
class Key
{
public:
    explicit Key(HKEY key) : m_key(key) {}
    ~Key()
    {
        if (m_key)
            ::RegCloseKey(m_key);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    operator HKEY() const { return m_key; }

private:
    HKEY m_key;
};

CString profilePath(LPCWSTR company, LPCWSTR program)
{
    CString path(L"Software\\");
    path += company;
    path += L"\\";
    path += program;
    return path;
}

} // namespace

HKEY CWinApp::openSection(LPCWSTR section, bool create) const
{
    if (!m_pszRegistryKey || !m_pszProfileName)
        return nullptr;
    const CString path = profilePath(m_pszRegistryKey, m_pszProfileName) + L"\\" + section;
    HKEY key = nullptr;
    const LSTATUS status = create ? ::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                                      KEY_READ | KEY_WRITE, nullptr, &key, nullptr)
                                  : ::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key);
    return status == ERROR_SUCCESS ? key : nullptr;
}

UINT CWinApp::GetProfileInt(LPCWSTR lpszSection, LPCWSTR lpszEntry, int nDefault)
{
    const Key section(openSection(lpszSection, false));
    DWORD value = 0;
    DWORD size = sizeof value;
    if (!section || ::RegGetValueW(section, nullptr, lpszEntry, RRF_RT_REG_DWORD, nullptr, &value, &size))
        return static_cast<UINT>(nDefault);
    return value;
}

BOOL CWinApp::WriteProfileInt(LPCWSTR lpszSection, LPCWSTR lpszEntry, int nValue)
{
    const Key section(openSection(lpszSection, true));
    return section && ::RegSetValueExW(section, lpszEntry, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&nValue),
                                       sizeof nValue) == ERROR_SUCCESS;
}

CString CWinApp::GetProfileString(LPCWSTR lpszSection, LPCWSTR lpszEntry, LPCWSTR lpszDefault)
{
    const Key section(openSection(lpszSection, false));
    DWORD size = 0;
    if (!section || ::RegGetValueW(section, nullptr, lpszEntry, RRF_RT_REG_SZ, nullptr, nullptr, &size))
        return lpszDefault;
    CString text;
    const LSTATUS status = ::RegGetValueW(section, nullptr, lpszEntry, RRF_RT_REG_SZ, nullptr,
                                          text.GetBufferSetLength(static_cast<int>(size / sizeof(wchar_t))), &size);
    text.ReleaseBuffer();
    return status == ERROR_SUCCESS ? text : CString(lpszDefault);
}

BOOL CWinApp::WriteProfileString(LPCWSTR lpszSection, LPCWSTR lpszEntry, LPCWSTR lpszValue)
{
    if (!m_pszRegistryKey || !m_pszProfileName)
        return FALSE;
    if (!lpszEntry) {
        return ::RegDeleteTreeW(HKEY_CURRENT_USER,
                                profilePath(m_pszRegistryKey, m_pszProfileName) + L"\\" + lpszSection) == ERROR_SUCCESS;
    }
    const Key section(openSection(lpszSection, true));
    if (!section)
        return FALSE;
    if (!lpszValue)
        return ::RegDeleteValueW(section, lpszEntry) == ERROR_SUCCESS;
    const DWORD size = static_cast<DWORD>((lstrlenW(lpszValue) + 1) * sizeof(wchar_t));
    return ::RegSetValueExW(section, lpszEntry, 0, REG_SZ, reinterpret_cast<const BYTE*>(lpszValue), size) ==
           ERROR_SUCCESS;
}
