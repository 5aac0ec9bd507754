// Ticks of the monitor timer, with selections of growing size.
#pragma once

namespace bench {

class BenchDesk;

// Prints a table in Markdown.
void benchTicks(BenchDesk& desk);

} // namespace bench
