#pragma once

#include "module/dialogs/CBuddySlider.h"

/// What "Despeckles" and "Fill" have in common: all but their template. The command presets the members and does the
/// work.
class CSizeFilterDialog : public CDialog
{
public:
    int m_bOnlySelection = 0; // offered only if it is set on opening
    int m_nSize = 10;         // 1 to 20, in tenths of a millimetre

protected:
    explicit CSizeFilterDialog(UINT templateId);

    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

private:
    CBuddySlider m_slider;
};
