#include "module/commands/ShellCommands.h"

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/dialogs/CSettings.h"
#include "module/shell/CAboutDlg.h"
#include "module/toolbar/LaMfcToolbar.h"

void ShowToolbarCommand()
{
    const CTempMFC resources;
    CreateToolbar();
}

void SettingsCommand()
{
    const CTempMFC resources;
    CSettings dialog;
    dialog.DoModal();
}

void AboutCommand()
{
    const CTempMFC resources;
    CAboutDlg dialog;
    dialog.DoModal();
}
