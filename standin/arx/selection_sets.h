#pragma once

namespace standin {
/// Frees as many sets, the latest first.
void dropSelectionSets(int count);
} // namespace standin
