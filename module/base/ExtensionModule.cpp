#include "module/base/ExtensionModule.h"

#include "module/base/CTempMFC.h"

namespace {

AFX_EXTENSION_MODULE extensionModule = {};

} // namespace

void ExtensionModuleInit(HINSTANCE module)
{
    CTempMFC::SetModule(module, L"Orvolabs", L"HVA6");
    if (AfxInitExtensionModule(extensionModule, module))
        new CDynLinkLibrary(extensionModule); // the class library deletes it in AfxTermExtensionModule
}

void ExtensionModuleEnd()
{
    AfxTermExtensionModule(extensionModule, FALSE);
}

CString ModuleFilePath()
{
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&extensionModule), &module);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

CString ProgramFilePath(const CString& name)
{
    CString folder = ModuleFilePath();
    const CString longPathPrefix = L"\\\\?\\";
    if (folder.Left(longPathPrefix.GetLength()) == longPathPrefix)
        folder = folder.Mid(longPathPrefix.GetLength());
    return folder.Left(folder.ReverseFind(L'\\') + 1) + name;
}
