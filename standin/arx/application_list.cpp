// One key per application below the list's key:
//     LOADER       path of the module
//     DESCRIPTION  text
//     LOADCTRLS    the load reasons, as bits
//     Commands\    one value per command: the global name, with the local name as its text
#include "standin/arx/application_list.h"

#include <memory>

#include "standin/arx/text.h"
#include "standin/host.h"

namespace standin {

namespace {

std::wstring& listKey()
{
    static std::wstring key = L"Software\\Halvoran\\Desk\\Applications";
    return key;
}

struct CloseKey
{
    using pointer = HKEY;
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, CloseKey>;

Key openKey(const std::wstring& path)
{
    HKEY key = nullptr;
    return Key(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr);
}

Key createKey(const std::wstring& path)
{
    HKEY key = nullptr;
    const LSTATUS status =
        RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
    return Key(status == ERROR_SUCCESS ? key : nullptr);
}

std::wstring readText(HKEY key, const wchar_t* name)
{
    DWORD bytes = 0;
    if (RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return {};
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) != ERROR_SUCCESS)
        return {};
    text.resize(wcslen(text.c_str()));
    return text;
}

bool writeText(HKEY key, const wchar_t* name, const std::wstring& text)
{
    const auto bytes = DWORD((text.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes) == ERROR_SUCCESS;
}

std::wstring keyOf(const std::wstring& name)
{
    return listKey() + L"\\" + name;
}

bool hasCommand(const std::wstring& application, const std::wstring& command)
{
    const Key commands = openKey(keyOf(application) + L"\\Commands");
    if (!commands)
        return false;
    for (DWORD index = 0;; ++index) {
        wchar_t global[256];
        DWORD length = 256;
        if (RegEnumValueW(commands.get(), index, global, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return false;
        if (sameText(global, command) || sameText(readText(commands.get(), global), command))
            return true;
    }
}

} // namespace

void setApplicationListKey(const std::wstring& key)
{
    listKey() = key;
}

std::optional<Application> readApplication(const std::wstring& name)
{
    const Key key = name.empty() ? nullptr : openKey(keyOf(name));
    if (!key)
        return std::nullopt;
    Application application{name, readText(key.get(), L"LOADER"), readText(key.get(), L"DESCRIPTION"), {}};
    DWORD reasons = 0;
    DWORD bytes = sizeof reasons;
    if (RegGetValueW(key.get(), nullptr, L"LOADCTRLS", RRF_RT_REG_DWORD, nullptr, &reasons, &bytes) == ERROR_SUCCESS)
        application.reasons = AcadApp::LoadReasons(reasons);
    return application;
}

AcadApp::ErrorStatus writeApplication(const Application& application)
{
    if (application.name.empty())
        return AcadApp::eRegistryCreateError;
    const Key key = createKey(keyOf(application.name));
    if (!key)
        return AcadApp::eRegistryCreateError;
    const DWORD reasons = DWORD(application.reasons);
    const bool written = writeText(key.get(), L"LOADER", application.modulePath) &&
                         writeText(key.get(), L"DESCRIPTION", application.description) &&
                         RegSetValueExW(key.get(), L"LOADCTRLS", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&reasons),
                                        sizeof reasons) == ERROR_SUCCESS;
    return written ? AcadApp::eOk : AcadApp::eRegistrySetError;
}

AcadApp::ErrorStatus writeApplicationCommand(const std::wstring& name, const std::wstring& globalName,
                                             const std::wstring& localName)
{
    if (name.empty() || globalName.empty())
        return AcadApp::eRegistryCreateError;
    const Key key = createKey(keyOf(name) + L"\\Commands");
    if (!key)
        return AcadApp::eRegistryCreateError;
    return writeText(key.get(), globalName.c_str(), localName) ? AcadApp::eOk : AcadApp::eRegistrySetError;
}

std::vector<Application> allApplications()
{
    std::vector<Application> applications;
    const Key list = openKey(listKey());
    if (!list)
        return applications;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD length = 256;
        if (RegEnumKeyExW(list.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return applications;
        if (auto application = readApplication(name))
            applications.push_back(std::move(*application));
    }
}

std::optional<Application> applicationForCommand(const std::wstring& command)
{
    for (Application& application : allApplications()) {
        const bool mayLoad = (application.reasons & AcadApp::kOnCommandInvocation) != 0 &&
                             (application.reasons & AcadApp::kLoadDisabled) == 0;
        if (mayLoad && hasCommand(application.name, command))
            return application;
    }
    return std::nullopt;
}

} // namespace standin
