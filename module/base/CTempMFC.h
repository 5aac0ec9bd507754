#pragma once

#include "platform/platform.h"

/// While one lives, the class library finds the module's resources first and its settings under the module's own names.
/// Every way from the host into code that loads resources (commands, the message hook, timers, reactors) goes through
/// one; they nest. Where there is no application object any more, as at the end of the host, only the resources change.
class CTempMFC
{
public:
    CTempMFC();
    virtual ~CTempMFC();
    CTempMFC(const CTempMFC&) = delete;
    CTempMFC& operator=(const CTempMFC&) = delete;

    /// What to switch to. Takes note of the host's own values, so it is called outside of any guard.
    static void SetModule(HINSTANCE resources, LPCWSTR companyName, LPCWSTR applicationName);
    /// Puts the host's values back, however deep the guards are nested: the module goes.
    static void Reset();
};

/// The other way round, within a CTempMFC: while one lives, the host finds its own resources and names, for a call back
/// into it. Outside of a CTempMFC it changes nothing.
class CTempHost
{
public:
    CTempHost();
    ~CTempHost();
    CTempHost(const CTempHost&) = delete;
    CTempHost& operator=(const CTempHost&) = delete;
};
