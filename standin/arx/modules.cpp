#include "standin/arx/modules.h"

#include <algorithm>

#include "standin/arx/acedads.h"
#include "standin/arx/application_list.h"
#include "standin/arx/code_watch.h"
#include "standin/arx/command_stack.h"
#include "standin/arx/editor.h"
#include "standin/arx/module_leftovers.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/rxapi.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"
#include "standin/host.h"

ACRX_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)
ACRX_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject)

namespace standin {

namespace fs = std::filesystem;

namespace {

class SystemRegistry final : public AcRxDictionary
{
public:
    AcRxObject* at(const ACHAR* key) const override
    {
        if (!key)
            return nullptr;
        const std::wstring_view name = key;
        if (name == ACRX_DYNAMIC_LINKER)
            return &dynamicLinker();
        if (name == ACRX_COMMAND_DOCK)
            return &commandStack();
        return name == ACED_EDITOR_OBJ ? &editor() : nullptr;
    }
};

fs::path programFolder()
{
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(std::wstring(path, length)).parent_path();
}

// The file that a module's name stands for; empty if there is none. A name without an extension means a module.
fs::path findModuleFile(fs::path name)
{
    if (!name.has_extension())
        name += L".arx";
    std::error_code error;
    for (const fs::path& place : {name.has_parent_path() ? name : programFolder() / name, fs::absolute(name, error)}) {
        if (fs::is_regular_file(place, error))
            return fs::absolute(place, error).make_preferred();
    }
    return {};
}

std::wstring lastErrorText()
{
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, GetLastError(), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring message(text ? text : L"unknown error", text ? length : 13);
    LocalFree(text);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r'))
        message.pop_back();
    return message;
}

template <class Function> Function procedure(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

bool versionAccepted(HMODULE library)
{
    const auto version = procedure<int (*)(unsigned long*, unsigned long*)>(library, "acrxGetApiVersion");
    unsigned long major = 0;
    unsigned long minor = 0;
    return version && version(&major, &minor) && major == apiVersionMajor;
}

void drop(Module& module)
{
    dropLeftovers(module);
    freeFile(module);
    std::erase_if(dynamicLinker().modules, [&](const auto& loaded) { return loaded.get() == &module; });
}

Failure unload(Module& module, bool force)
{
    const std::wstring name = module.file.filename().wstring();
    if (module.locked && !force)
        return name + L" is locked and cannot be unloaded.";
    const AcRx::AppRetCode answer = module.entryPoint(AcRx::kUnloadAppMsg, &module);
    if (answer == AcRx::kRetError && !force)
        return name + L" refused to be unloaded.";
    drop(module);
    return std::nullopt;
}

} // namespace

DynamicLinker& dynamicLinker()
{
    static DynamicLinker linker;
    return linker;
}

Module* DynamicLinker::byId(void* applicationId) const
{
    for (const auto& module : modules) {
        if (module.get() == applicationId)
            return module.get();
    }
    recordBreach("An application id was used that is no loaded module's.");
    return nullptr;
}

Module* DynamicLinker::find(const std::wstring& name) const
{
    const auto listed = readApplication(name);
    const std::wstring listedFile = listed ? fs::path(listed->modulePath).filename().wstring() : std::wstring();
    for (const auto& module : modules) {
        const fs::path& file = module->file;
        for (const std::wstring& own : {file.wstring(), file.filename().wstring(), file.stem().wstring()}) {
            if (sameText(own, name))
                return module.get();
        }
        if (sameText(file.filename().wstring(), listedFile))
            return module.get();
    }
    return nullptr;
}

bool DynamicLinker::unlockApplication(void* applicationId)
{
    Module* module = byId(applicationId);
    if (module)
        module->locked = false;
    return module != nullptr;
}

bool DynamicLinker::lockApplication(void* applicationId)
{
    Module* module = byId(applicationId);
    if (module)
        module->locked = true;
    return module != nullptr;
}

bool DynamicLinker::isApplicationLocked(const ACHAR* moduleName) const
{
    const Module* module = moduleName ? find(moduleName) : nullptr;
    return module && module->locked;
}

bool DynamicLinker::registerAppMDIAware(void* applicationId)
{
    return byId(applicationId) != nullptr;
}

bool DynamicLinker::loadModule(const ACHAR* fileName, bool print)
{
    if (!fileName)
        return false;
    const Failure failure = standin::loadModule(fileName);
    if (failure && print)
        acedAlert(failure->c_str());
    return !failure;
}

bool DynamicLinker::unloadModule(const ACHAR* fileName)
{
    return fileName && !standin::unloadModule(fileName);
}

void DynamicLinker::send(AcRx::AppMsgCode message)
{
    std::vector<Module*> present;
    for (const auto& module : modules)
        present.push_back(module.get());
    for (Module* module : present)
        module->entryPoint(message, module);
}

void DynamicLinker::forgetLocks()
{
    for (const auto& module : modules)
        module->before.documentLocks = std::min(module->before.documentLocks, documentLocks());
}

Failure loadModule(const fs::path& name)
{
    const fs::path file = findModuleFile(name);
    if (file.empty())
        return L"There is no module " + name.wstring() + L".";
    if (dynamicLinker().find(file.wstring()))
        return std::nullopt;
    HMODULE library = LoadLibraryW(file.c_str());
    if (!library)
        return file.wstring() + L" cannot be loaded: " + lastErrorText();
    auto module = std::make_unique<Module>();
    module->file = file;
    module->handle = library;
    module->entryPoint = procedure<Module::EntryPoint>(library, "acrxEntryPoint");
    module->before = presentHoldings();
    if (!module->entryPoint || !versionAccepted(library)) {
        FreeLibrary(library);
        return file.wstring() + L" is no module for this version.";
    }
    watchCalls(library);
    Module& loaded = *module;
    dynamicLinker().modules.push_back(std::move(module));
    if (loaded.entryPoint(AcRx::kInitAppMsg, &loaded) == AcRx::kRetError) {
        drop(loaded);
        return file.wstring() + L" refused to start.";
    }
    for (std::size_t i = 0; i < openDrawings().size(); ++i)
        loaded.entryPoint(AcRx::kLoadDwgMsg, &loaded);
    return std::nullopt;
}

Failure unloadModule(const std::wstring& name)
{
    Module* module = dynamicLinker().find(name);
    if (!module)
        return name + L" is not loaded.";
    return unload(*module, false);
}

void unloadAllModules()
{
    while (!dynamicLinker().modules.empty())
        unload(*dynamicLinker().modules.back(), true);
}

std::vector<fs::path> loadedModules()
{
    std::vector<fs::path> files;
    for (const auto& module : dynamicLinker().modules)
        files.push_back(module->file);
    return files;
}

std::vector<std::wstring> loadUnlistedModules()
{
    std::vector<std::wstring> failures;
    const std::vector<Application> listed = allApplications();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(programFolder(), error)) {
        const bool known = std::ranges::any_of(listed, [&](const Application& application) {
            return sameText(application.modulePath, entry.path().wstring());
        });
        if (known || !sameText(entry.path().extension().wstring(), L".arx"))
            continue;
        if (Failure failure = loadModule(entry.path()))
            failures.push_back(*failure);
    }
    return failures;
}

std::vector<std::wstring> loadStartupModules()
{
    std::vector<std::wstring> failures;
    for (const Application& application : allApplications()) {
        const bool wanted = (application.reasons & AcadApp::kOnAutoCADStartup) != 0 &&
                            (application.reasons & AcadApp::kLoadDisabled) == 0;
        if (wanted) {
            if (Failure failure = loadModule(application.modulePath))
                failures.push_back(*failure);
        }
    }
    return failures;
}

} // namespace standin

AcRxDictionary* acrxSysRegistry()
{
    static standin::SystemRegistry registry;
    return &registry;
}

bool acrxUnlockApplication(void* applicationId)
{
    return standin::dynamicLinker().unlockApplication(applicationId);
}

bool acrxRegisterAppMDIAware(void* applicationId)
{
    return standin::dynamicLinker().registerAppMDIAware(applicationId);
}

int acedArxLoad(const ACHAR* moduleName)
{
    return moduleName && !standin::loadModule(moduleName) ? RTNORM : RTERROR;
}
