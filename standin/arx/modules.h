// Loaded modules and the messages that they hear.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "standin/arx/rxregsvc.h"

namespace standin {

struct Module
{
    using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

    std::filesystem::path file;
    HMODULE handle = nullptr;
    EntryPoint entryPoint = nullptr;
    bool locked = true; // against unloading, until the module asks otherwise
};

class DynamicLinker final : public AcRxDynamicLinker
{
public:
    bool unlockApplication(void* applicationId) override;
    bool lockApplication(void* applicationId) override;
    bool isApplicationLocked(const ACHAR* moduleName) const override;
    bool registerAppMDIAware(void* applicationId) override;
    bool loadModule(const ACHAR* fileName, bool print) override;
    bool unloadModule(const ACHAR* fileName) override;

    /// All modules that are loaded, in that order.
    void send(AcRx::AppMsgCode message);
    /// By file name, with or without folder and extension, or by the name in the application list; null if none.
    Module* find(const std::wstring& name) const;

    std::vector<std::unique_ptr<Module>> modules;

private:
    Module* byId(void* applicationId) const;
};

DynamicLinker& dynamicLinker();

} // namespace standin
