#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/fax_mutations.h"

// Any bytes, read as group 3 or group 4 data by us and by libtiff: the first three tell the coding and the size. What
// we read must be what libtiff reads, and it must read it.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t headSize = 3;
    if (size <= headSize)
        return 0;
    FaxData stream = faxForms()[data[0] % faxForms().size()];
    stream.width = data[1] + 1;
    stream.height = data[2] % 32 + 1;
    stream.bytes.assign(data + headSize, data + size);
    const FaxVerdict verdict = compareWithLibtiff(stream);
    if (verdict != FaxVerdict::WeRead && verdict != FaxVerdict::PixelsDiffer)
        return 0;
    std::fprintf(stderr, verdict == FaxVerdict::WeRead ? "libtiff refuses this\n" : "libtiff sees other pixels\n");
    std::abort();
}
