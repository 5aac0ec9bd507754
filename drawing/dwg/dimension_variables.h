#pragma once

#include <span>
#include <string_view>

namespace drawing::dwg {

/// The forms of values among the bits.
enum class ValueForm
{
    Bit,
    Short,
    Real,
    Text,
};

/// A variable of dimensions, in the order in which both the header variables and the dimension styles have them.
struct DimensionVariable
{
    std::string_view name; // in the header
    int code = 0;          // in a dimension style
    ValueForm form = ValueForm::Bit;
    double usual = 0;
};

/// All of them but those that name other objects, which stand elsewhere, and the line weights behind them.
std::span<const DimensionVariable> dimensionVariables();

} // namespace drawing::dwg
