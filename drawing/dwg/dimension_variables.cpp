#include "drawing/dwg/dimension_variables.h"

namespace drawing::dwg {

std::span<const DimensionVariable> dimensionVariables()
{
    using enum ValueForm;
    static constexpr DimensionVariable variables[] = {
        {"$DIMPOST", 3, Text},        {"$DIMAPOST", 4, Text},        {"$DIMSCALE", 40, Real, 1},
        {"$DIMASZ", 41, Real, 0.18},  {"$DIMEXO", 42, Real, 0.0625}, {"$DIMDLI", 43, Real, 0.38},
        {"$DIMEXE", 44, Real, 0.18},  {"$DIMRND", 45, Real},         {"$DIMDLE", 46, Real},
        {"$DIMTP", 47, Real},         {"$DIMTM", 48, Real},          {"$DIMTOL", 71, Bit},
        {"$DIMLIM", 72, Bit},         {"$DIMTIH", 73, Bit, 1},       {"$DIMTOH", 74, Bit, 1},
        {"$DIMSE1", 75, Bit},         {"$DIMSE2", 76, Bit},          {"$DIMTAD", 77, Short},
        {"$DIMZIN", 78, Short},       {"$DIMAZIN", 79, Short},       {"$DIMTXT", 140, Real, 0.18},
        {"$DIMCEN", 141, Real, 0.09}, {"$DIMTSZ", 142, Real},        {"$DIMALTF", 143, Real, 25.4},
        {"$DIMLFAC", 144, Real, 1},   {"$DIMTVP", 145, Real},        {"$DIMTFAC", 146, Real, 1},
        {"$DIMGAP", 147, Real, 0.09}, {"$DIMALTRND", 148, Real},     {"$DIMALT", 170, Bit},
        {"$DIMALTD", 171, Short, 2},  {"$DIMTOFL", 172, Bit},        {"$DIMSAH", 173, Bit},
        {"$DIMTIX", 174, Bit},        {"$DIMSOXD", 175, Bit},        {"$DIMCLRD", 176, Short},
        {"$DIMCLRE", 177, Short},     {"$DIMCLRT", 178, Short},      {"$DIMADEC", 179, Short},
        {"$DIMDEC", 271, Short, 4},   {"$DIMTDEC", 272, Short, 4},   {"$DIMALTU", 273, Short, 2},
        {"$DIMALTTD", 274, Short, 2}, {"$DIMAUNIT", 275, Short},     {"$DIMFRAC", 276, Short},
        {"$DIMLUNIT", 277, Short, 2}, {"$DIMDSEP", 278, Short, 46},  {"$DIMTMOVE", 279, Short},
        {"$DIMJUST", 280, Short},     {"$DIMSD1", 281, Bit},         {"$DIMSD2", 282, Bit},
        {"$DIMTOLJ", 283, Short, 1},  {"$DIMTZIN", 284, Short},      {"$DIMALTZ", 285, Short},
        {"$DIMALTTZ", 286, Short},    {"$DIMUPT", 288, Bit},         {"$DIMATFIT", 289, Short, 3},
    };
    return variables;
}

} // namespace drawing::dwg
