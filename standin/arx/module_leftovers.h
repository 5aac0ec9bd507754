// What a module leaves behind when it is unloaded, which is against the host's rules.
#pragma once

#include "standin/arx/modules.h"

namespace standin {

/// What is held of the drawing now, by whomever.
Holdings presentHoldings();

/// Notes each kind of thing that the module left as a breach, and takes away what would call into its file.
void dropLeftovers(const Module& module);

/// Lets the module's file go, unless threads run in it that do not hold it themselves: that is a breach, and the file
/// stays in memory.
void freeFile(const Module& module);

} // namespace standin
