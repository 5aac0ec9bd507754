#pragma once

#include "module/base/CArxApp.h"

/// The application object that the entry point makes: its end is the module's stop, which undoes what ModuleStartup and
/// the work since then have made, in an order of its own.
class CModuleApp : public CArxApp
{
public:
    CModuleApp();
    ~CModuleApp() override;
};
