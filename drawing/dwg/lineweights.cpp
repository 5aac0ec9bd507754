#include "drawing/dwg/lineweights.h"

#include <array>
#include <cstddef>
#include <cstdlib>

namespace drawing::dwg {

namespace {

constexpr std::array<int, 24> weights{0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                      53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr int byLayer = 29;
constexpr int byBlock = 30;
constexpr int standard = 31;

} // namespace

int lineweightOf(int number)
{
    if (number >= 0 && static_cast<std::size_t>(number) < weights.size()) {
        return weights[static_cast<std::size_t>(number)];
    }
    return number == byLayer ? -1 : number == byBlock ? -2 : -3;
}

int lineweightNumber(int weight)
{
    if (weight < 0) {
        return weight == -1 ? byLayer : weight == -2 ? byBlock : standard;
    }
    std::size_t nearest = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (std::abs(weights[i] - weight) < std::abs(weights[nearest] - weight)) {
            nearest = i;
        }
    }
    return static_cast<int>(nearest);
}

} // namespace drawing::dwg
