// Runs a fuzz program for a moment, on inputs that are by chance but the same each time: compiled as it stands, and
// without a crash or a fault that the sanitizers see.

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main()
{
    constexpr int inputs = 600;
    constexpr unsigned longest = 60;
    std::mt19937 random(4711);
    for (int i = 0; i < inputs; ++i) {
        std::vector<std::uint8_t> input(random() % longest);
        for (std::uint8_t& byte : input) {
            byte = static_cast<std::uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    return 0;
}
