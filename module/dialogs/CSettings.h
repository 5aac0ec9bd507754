#pragma once

#include <memory>

#include "platform/platform.h"

/// "Settings": when the host loads the module, whether the toolbar is shown, and the module's unloading.
class CSettings : public CDialog
{
public:
    CSettings();

    /// Gives up what an OK has left to be done a moment later.
    static void CancelTimers();

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    void StoreLoadChoice();

    enum LoadChoice
    {
        AtHostStart,
        OnDemand
    };

    int m_nLoadChoice = -1; // one of LoadChoice
    int m_bUnload = 0;
    int m_bFlat = 0; // shown by no control
    int m_bHideToolbar = 0;
    std::unique_ptr<AcadAppInfo> m_pApplication; // the module's entry in the host's list, made on opening
    CButton m_unloadButton;
};
