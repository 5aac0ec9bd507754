#pragma once

/// Starts the module on the CArxApp in g_pArxApp; ~CModuleApp stops it. Not 0: the host keeps the module.
int ModuleStartup();
