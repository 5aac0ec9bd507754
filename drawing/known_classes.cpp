#include "drawing/known_classes.h"

namespace drawing {

std::span<const KnownClass> knownClasses()
{
    static constexpr KnownClass classes[] = {
        {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes"},
        {"ACDBPLACEHOLDER", "AcDbPlaceHolder", "ObjectDBX Classes"},
        {"LAYOUT", "AcDbLayout", "ObjectDBX Classes"},
        {"DICTIONARYVAR", "AcDbDictionaryVar", "ObjectDBX Classes"},
        {"SORTENTSTABLE", "AcDbSortentsTable", "ObjectDBX Classes"},
        {"PLOTSETTINGS", "AcDbPlotSettings", "ObjectDBX Classes"},
        {"IMAGE", "AcDbRasterImage", "ISM", 127, true},
        {"IMAGEDEF", "AcDbRasterImageDef", "ISM"},
        {"IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", "ISM", 1},
        {"RASTERVARIABLES", "AcDbRasterVariables", "ISM"},
    };
    return classes;
}

} // namespace drawing
