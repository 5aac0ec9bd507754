// A stroke of the pen, message by message, on sheets of growing size.
#pragma once

namespace bench {

class BenchDesk;

// Prints a table in Markdown.
void benchStrokes(BenchDesk& desk);

} // namespace bench
