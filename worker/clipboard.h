#pragma once

#include "worker/engine/clipboard.h"

namespace worker {

/// The system's clipboard; the bitmap is its CF_DIB.
class SystemClipboard : public Clipboard
{
public:
    std::vector<std::byte> readDib() override;
    void putDib(std::span<const std::byte> dib) override;
};

} // namespace worker
