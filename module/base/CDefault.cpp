#include "module/base/CDefault.h"

#include <algorithm>
#include <variant>
#include <vector>

#include "module/base/ExtensionModule.h"

namespace {

struct Setting
{
    const wchar_t* name;
    std::variant<int, CString> value; // of the type that the registry is to hold
};

// In the order in which they are read and written.
std::vector<Setting> DefaultSettings()
{
    const CString module = ModuleFilePath();
    return {
        {L"Setting", CString(L"<Halvoran>")},
        {L"EraseToolPixel", 5},
        {L"LineToolPixel", 2},
        {L"PenToolPixel", 2},
        {L"Font", CString(L"Arial")},
        {L"FontSize", 10},
        {L"FontItalic", 0},
        {L"FontWeight", 400},
        {L"Scanner", 0},
        {L"ScannerType", 0},
        {L"CISWPath", CString()},
        {L"OCRDefNet", module.Left(module.ReverseFind(L'\\') + 1) + L"DefNet.ndb"},
        {L"OCRScanMin", 15},
        {L"OCRScanMax", 100},
        {L"OCRScanSingel", 0},
        {L"OCRScanAlg", 0},
        {L"OCRNetAlg", 5},
        {L"OCRTollerans", 60},
        {FlatToolbarSetting, 1},
        {L"LTLoadOnStart", 1},
        {L"m_ShowPreview", 1},
        {ShowToolbarSetting, 1},
    };
}

std::vector<Setting>& Settings()
{
    static std::vector<Setting> settings = DefaultSettings();
    return settings;
}

void Read(CWinApp& application, Setting& setting)
{
    if (int* number = std::get_if<int>(&setting.value)) {
        *number = static_cast<int>(application.GetProfileInt(SettingsSection, setting.name, *number));
    } else {
        CString& text = std::get<CString>(setting.value);
        text = application.GetProfileString(SettingsSection, setting.name, text);
    }
}

void Write(CWinApp& application, const Setting& setting)
{
    if (const int* number = std::get_if<int>(&setting.value)) {
        application.WriteProfileInt(SettingsSection, setting.name, *number);
    } else {
        application.WriteProfileString(SettingsSection, setting.name, std::get<CString>(setting.value));
    }
}

int& Integer(const wchar_t* name)
{
    std::vector<Setting>& settings = Settings();
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [name](const Setting& setting) { return wcscmp(setting.name, name) == 0; });
    return std::get<int>(found->value);
}

} // namespace

CDefault::CDefault()
{
    Settings() = DefaultSettings();
    if (CWinApp* application = AfxGetApp()) {
        for (Setting& setting : Settings())
            Read(*application, setting);
    }
}

CDefault::~CDefault()
{
    if (CWinApp* application = AfxGetApp()) {
        for (const Setting& setting : Settings())
            Write(*application, setting);
    }
}

int CDefault::GetInteger(const wchar_t* name)
{
    return Integer(name);
}

void CDefault::SetInteger(const wchar_t* name, int value)
{
    Integer(name) = value;
}
