// Breaches of the host's rules, collected for whoever looks.
#pragma once

#include <string>

namespace standin {
void recordBreach(std::string sentence);
} // namespace standin
