// Commands on what sits around the work.
#pragma once

/// Makes the toolbar if it is gone. One that is hidden stays so.
void ShowToolbarCommand();
void SettingsCommand();
void AboutCommand();
