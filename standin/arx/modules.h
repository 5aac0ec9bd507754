// Loaded modules and the messages that they hear.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "standin/arx/rxregsvc.h"

namespace standin {

/// What is held of the open drawings: of locks those that lockDocument gave.
struct Holdings
{
    int documentLocks = 0;
    int openObjects = 0;
    int selectionSets = 0;
};

struct Module
{
    using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

    std::filesystem::path file;
    HMODULE handle = nullptr;
    EntryPoint entryPoint = nullptr;
    bool locked = true; // against unloading, until the module asks otherwise
    Holdings before;    // what others held when it was loaded
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
    /// The locks of a drawing that is closed have gone, whoever had them.
    void forgetLocks();
    /// By file name, with or without folder and extension, or by the name in the application list; null if none.
    Module* find(const std::wstring& name) const;

    std::vector<std::unique_ptr<Module>> modules;

private:
    Module* byId(void* applicationId) const;
};

DynamicLinker& dynamicLinker();

} // namespace standin
