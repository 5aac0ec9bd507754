#include "drawing/dwg/header_section.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "drawing/dwg/bit_transfer.h"
#include "drawing/dwg/dimension_variables.h"
#include "drawing/dwg/lineweights.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

constexpr std::string_view what = "the section of the header variables";

enum class Form
{
    Bit,
    Short,
    Real,
    Text,
    Point,
    FlatPoint, // two raw reals
    Date,      // a day, counted as astronomers do, and milliseconds of it
    Record,    // by its name in DXF, by its handle here
};

struct Field
{
    std::string_view name;
    Form form;
    int code = 70;
    double usual = 0;
    std::string_view kind = {}; // of a record
};

// The variables in the order of the section, in runs between which stand the handle seed, dimension variables and
// roots.
constexpr Field beforeSeed[] = {
    {"$DIMASO", Form::Bit, 70, 1},
    {"$DIMSHO", Form::Bit, 70, 1},
    {"$PLINEGEN", Form::Bit},
    {"$ORTHOMODE", Form::Bit},
    {"$REGENMODE", Form::Bit, 70, 1},
    {"$FILLMODE", Form::Bit, 70, 1},
    {"$QTEXTMODE", Form::Bit},
    {"$PSLTSCALE", Form::Bit, 70, 1},
    {"$LIMCHECK", Form::Bit},
    {"$USRTIMER", Form::Bit, 70, 1},
    {"$SKPOLY", Form::Bit},
    {"$ANGDIR", Form::Bit},
    {"$SPLFRAME", Form::Bit},
    {"$MIRRTEXT", Form::Bit, 70, 1},
    {"$WORLDVIEW", Form::Bit, 70, 1},
    {"$TILEMODE", Form::Bit, 70, 1},
    {"$PLIMCHECK", Form::Bit},
    {"$VISRETAIN", Form::Bit, 70, 1},
    {"$DISPSILH", Form::Bit},
    {"$PELLIPSE", Form::Bit},
    {"$PROXYGRAPHICS", Form::Short, 70, 1},
    {"$TREEDEPTH", Form::Short, 70, 3020},
    {"$LUNITS", Form::Short, 70, 2},
    {"$LUPREC", Form::Short, 70, 4},
    {"$AUNITS", Form::Short},
    {"$AUPREC", Form::Short},
    {"$ATTMODE", Form::Short, 70, 1},
    {"$PDMODE", Form::Short},
    {"$USERI1", Form::Short},
    {"$USERI2", Form::Short},
    {"$USERI3", Form::Short},
    {"$USERI4", Form::Short},
    {"$USERI5", Form::Short},
    {"$SPLINESEGS", Form::Short, 70, 8},
    {"$SURFU", Form::Short, 70, 6},
    {"$SURFV", Form::Short, 70, 6},
    {"$SURFTYPE", Form::Short, 70, 6},
    {"$SURFTAB1", Form::Short, 70, 6},
    {"$SURFTAB2", Form::Short, 70, 6},
    {"$SPLINETYPE", Form::Short, 70, 6},
    {"$SHADEDGE", Form::Short, 70, 3},
    {"$SHADEDIF", Form::Short, 70, 70},
    {"$UNITMODE", Form::Short},
    {"$MAXACTVP", Form::Short, 70, 64},
    {"$ISOLINES", Form::Short, 70, 4},
    {"$CMLJUST", Form::Short},
    {"$TEXTQLTY", Form::Short, 70, 50},
    {"$LTSCALE", Form::Real, 40, 1},
    {"$TEXTSIZE", Form::Real, 40, 2.5},
    {"$TRACEWID", Form::Real, 40, 1},
    {"$SKETCHINC", Form::Real, 40, 1},
    {"$FILLETRAD", Form::Real, 40},
    {"$THICKNESS", Form::Real, 40},
    {"$ANGBASE", Form::Real, 50},
    {"$PDSIZE", Form::Real, 40},
    {"$PLINEWID", Form::Real, 40},
    {"$USERR1", Form::Real, 40},
    {"$USERR2", Form::Real, 40},
    {"$USERR3", Form::Real, 40},
    {"$USERR4", Form::Real, 40},
    {"$USERR5", Form::Real, 40},
    {"$CHAMFERA", Form::Real, 40},
    {"$CHAMFERB", Form::Real, 40},
    {"$CHAMFERC", Form::Real, 40},
    {"$CHAMFERD", Form::Real, 40},
    {"$FACETRES", Form::Real, 40, 0.5},
    {"$CMLSCALE", Form::Real, 40, 20},
    {"$CELTSCALE", Form::Real, 40, 1},
    {"$MENU", Form::Text, 1},
    {"$TDCREATE", Form::Date, 40},
    {"$TDUPDATE", Form::Date, 40},
    {"$TDINDWG", Form::Date, 40},
    {"$TDUSRTIMER", Form::Date, 40},
    {"$CECOLOR", Form::Short, 62, 256},
};

constexpr Field behindSeed[] = {
    {"$CLAYER", Form::Record, 8, 0, "LAYER"},        {"$TEXTSTYLE", Form::Record, 7, 0, "STYLE"},
    {"$CELTYPE", Form::Record, 6, 0, "LTYPE"},       {"$DIMSTYLE", Form::Record, 2, 0, "DIMSTYLE"},
    {"$CMLSTYLE", Form::Record, 2, 0, "MLINESTYLE"}, {"$PSVPSCALE", Form::Real, 40},
};

// Both spaces have these, the paper space with a P before the name.
constexpr Field ofSpace[] = {
    {"INSBASE", Form::Point},
    {"EXTMIN", Form::Point},
    {"EXTMAX", Form::Point},
    {"LIMMIN", Form::FlatPoint},
    {"LIMMAX", Form::FlatPoint},
    {"ELEVATION", Form::Real, 40},
    {"UCSORG", Form::Point},
    {"UCSXDIR", Form::Point},
    {"UCSYDIR", Form::Point},
    {"UCSNAME", Form::Record, 2, 0, "UCS"},
    {"UCSORTHOREF", Form::Record, 2, 0, "UCS"},
    {"UCSORTHOVIEW", Form::Short},
    {"UCSBASE", Form::Record, 2, 0, "UCS"},
    {"UCSORGTOP", Form::Point},
    {"UCSORGBOTTOM", Form::Point},
    {"UCSORGLEFT", Form::Point},
    {"UCSORGRIGHT", Form::Point},
    {"UCSORGFRONT", Form::Point},
    {"UCSORGBACK", Form::Point},
};

constexpr Field behindDimensions[] = {
    {"$DIMTXSTY", Form::Record, 7, 0, "STYLE"},
    {"$DIMLDRBLK", Form::Record, 1, 0, "BLOCK_RECORD"},
    {"$DIMBLK", Form::Record, 1, 0, "BLOCK_RECORD"},
    {"$DIMBLK1", Form::Record, 1, 0, "BLOCK_RECORD"},
    {"$DIMBLK2", Form::Record, 1, 0, "BLOCK_RECORD"},
    {"$DIMLWD", Form::Short, 70, -2},
    {"$DIMLWE", Form::Short, 70, -2},
};

constexpr Root controls[] = {
    Root::BlockControl,          Root::LayerControl,          Root::StyleControl,    Root::LinetypeControl,
    Root::ViewControl,           Root::SystemControl,         Root::ViewportControl, Root::ApplicationControl,
    Root::DimensionStyleControl, Root::ViewportHeaderControl,
};

// Transfers the section in one go; the direction is that of the bits.
class SectionTransfer
{
public:
    SectionTransfer(BitTransfer& bits, HeaderSection& section, RecordNames& names)
        : m_bits(bits), m_section(section), m_variables(section.variables), m_names(names)
    {}

    void run()
    {
        unknownNumbers();
        fields(beforeSeed);
        m_bits.plainHandle(m_section.handleSeed, Reference::Own);
        fields(behindSeed);
        fieldsOfSpace("$P");
        fieldsOfSpace("$");
        for (const DimensionVariable& each : dimensionVariables()) {
            dimensionVariable(each);
        }
        fields(behindDimensions);
        for (const Root each : controls) {
            root(each, Reference::HardOwner);
        }
        root(Root::GroupDictionary, Reference::HardPointer);
        root(Root::MultilineStyleDictionary, Reference::HardPointer);
        root(Root::NamedObjects, Reference::HardOwner);
        stacking();
        text({"$HYPERLINKBASE", Form::Text, 1});
        text({"$STYLESHEET", Form::Text, 1});
        root(Root::LayoutDictionary, Reference::HardPointer);
        root(Root::PlotSettingsDictionary, Reference::HardPointer);
        root(Root::PlotStyleDictionary, Reference::HardPointer);
        packedFlags();
        ending();
    }

private:
    // What nobody has found a meaning for is always the same.
    void unknownNumbers()
    {
        double first = 412148564080.0;
        double unit = 1;
        m_bits.real(first);
        for (int i = 0; i < 3; ++i) {
            m_bits.real(unit);
        }
        std::string unitName = "m";
        std::string none;
        m_bits.text(unitName);
        for (int i = 0; i < 3; ++i) {
            m_bits.text(none);
        }
        int number = 24;
        int zero = 0;
        m_bits.longNumber(number);
        m_bits.longNumber(zero);
        Handle currentViewport = 0;
        m_bits.plainHandle(currentViewport, Reference::HardPointer);
    }

    void fields(std::span<const Field> list)
    {
        for (const Field& each : list) {
            field(each);
        }
    }

    void fieldsOfSpace(const std::string& prefix)
    {
        for (Field each : ofSpace) {
            const std::string name = prefix + std::string(each.name);
            each.name = name;
            field(each);
        }
    }

    void field(const Field& each)
    {
        switch (each.form) {
        case Form::Bit:
        case Form::Short:
            whole(each);
            break;
        case Form::Real:
            real(each);
            break;
        case Form::Text:
            text(each);
            break;
        case Form::Point:
        case Form::FlatPoint:
            point(each);
            break;
        case Form::Date:
            date(each);
            break;
        case Form::Record:
            record(each);
            break;
        }
    }

    void whole(const Field& each)
    {
        int value = m_variables.integer(each.name, static_cast<int>(each.usual));
        if (each.form == Form::Bit) {
            bool bit = value != 0;
            m_bits.bit(bit);
            value = bit ? 1 : 0;
        } else {
            m_bits.shortNumber(value);
        }
        if (m_bits.reading()) {
            m_variables.setInteger(each.name, value, each.code);
        }
    }

    // Angles are in degrees in DXF.
    void real(const Field& each)
    {
        constexpr int angleCode = 50;
        constexpr double degrees = 57.29577951308232;
        const double factor = each.code == angleCode ? degrees : 1;
        double value = m_variables.real(each.name, each.usual) / factor;
        m_bits.real(value);
        if (m_bits.reading()) {
            m_variables.setReal(each.name, value * factor, each.code);
        }
    }

    void text(const Field& each)
    {
        std::string value = m_variables.text(each.name);
        m_bits.text(value);
        if (m_bits.reading()) {
            m_variables.setText(each.name, value, each.code);
        }
    }

    void point(const Field& each)
    {
        const bool direction = each.name.ends_with("DIR");
        const Vector3 usual{direction && each.name.ends_with("XDIR") ? 1.0 : 0.0,
                            direction && each.name.ends_with("YDIR") ? 1.0 : 0.0, 0};
        Vector3 value = m_variables.point(each.name, usual);
        if (each.form == Form::FlatPoint) {
            m_bits.rawFlatPoint(value);
        } else {
            m_bits.point(value);
        }
        if (m_bits.reading() && each.form == Form::FlatPoint) {
            m_variables.setPoint2(each.name, {value.x, value.y});
        } else if (m_bits.reading()) {
            m_variables.setPoint3(each.name, value);
        }
    }

    void date(const Field& each)
    {
        constexpr double dayMilliseconds = 86'400'000;
        constexpr double mostDays = 100'000'000;
        const double value = m_variables.real(each.name, each.usual);
        const double days = std::clamp(value, 0.0, mostDays);
        int day = static_cast<int>(days);
        int milliseconds = static_cast<int>(std::lround((days - day) * dayMilliseconds));
        m_bits.longNumber(day);
        m_bits.longNumber(milliseconds);
        if (m_bits.reading()) {
            m_variables.setReal(each.name, day + milliseconds / dayMilliseconds, each.code);
        }
    }

    void record(const Field& each)
    {
        Handle handle = m_bits.reading() ? 0 : m_names.find(each.kind, m_variables.text(each.name));
        if (!m_bits.reading() && handle == 0) {
            // The host's own arrows may be named without the line before their blocks' names.
            const std::string name = m_variables.text(each.name);
            handle = each.kind == "BLOCK_RECORD" && !name.empty() ? m_names.find(each.kind, "_" + name)
                                                                  : usualRecord(each.kind);
        }
        m_bits.plainHandle(handle, Reference::HardPointer);
        if (m_bits.reading()) {
            m_variables.setText(each.name, m_names.nameOf(handle), each.code);
        }
    }

    // What is current has to be there, or the host repairs the drawing.
    Handle usualRecord(std::string_view kind) const
    {
        if (kind == "UCS" || kind == "BLOCK_RECORD") {
            return 0; // the world's, or an ordinary arrow
        }
        return m_names.find(kind, kind == "LAYER" ? "0" : kind == "LTYPE" ? "ByLayer" : "Standard");
    }

    void dimensionVariable(const DimensionVariable& each)
    {
        switch (each.form) {
        case ValueForm::Bit:
            whole({each.name, Form::Bit, 70, each.usual});
            break;
        case ValueForm::Short:
            whole({each.name, Form::Short, 70, each.usual});
            break;
        case ValueForm::Real:
            real({each.name, Form::Real, 40, each.usual});
            break;
        case ValueForm::Text:
            text({each.name, Form::Text, 1});
            break;
        }
    }

    void root(Root which, Reference kind) { m_bits.plainHandle(m_section.roots[which], kind); }

    // How fractions are stacked, which DXF does not tell.
    void stacking()
    {
        int alignment = 1;
        int percent = 70;
        m_bits.shortNumber(alignment);
        m_bits.shortNumber(percent);
    }

    struct PackedFlag
    {
        std::string_view name;
        int code;
        int shift;
        int mask;
        bool turnedRound; // the bit says no
        int usual;
    };

    void packedFlags()
    {
        constexpr PackedFlag flags[] = {
            {"$ENDCAPS", 280, 5, 3, false, 0},     {"$JOINSTYLE", 280, 7, 3, false, 0},
            {"$LWDISPLAY", 290, 9, 1, true, 0},    {"$XEDIT", 290, 10, 1, true, 1},
            {"$EXTNAMES", 290, 11, 1, false, 1},   {"$PSTYLEMODE", 290, 13, 1, false, 1},
            {"$OLESTARTUP", 290, 14, 1, false, 0},
        };
        constexpr int lineweightMask = 0x1F;
        int packed = lineweightNumber(m_variables.integer("$CELWEIGHT", -1));
        for (const PackedFlag& each : flags) {
            const int value = m_variables.integer(each.name, each.usual) & each.mask;
            packed |= (each.turnedRound ? value ^ each.mask : value) << each.shift;
        }
        m_bits.longNumber(packed);
        if (!m_bits.reading()) {
            return;
        }
        m_variables.setInteger("$CELWEIGHT", lineweightOf(packed & lineweightMask), 370);
        for (const PackedFlag& each : flags) {
            const int value = packed >> each.shift & each.mask;
            m_variables.setInteger(each.name, each.turnedRound ? value ^ each.mask : value, each.code);
        }
    }

    void ending()
    {
        constexpr int plotStyleByHandle = 3;
        whole({"$INSUNITS", Form::Short});
        whole({"$CEPSNTYPE", Form::Short, 380});
        if (m_variables.integer("$CEPSNTYPE") == plotStyleByHandle) {
            Handle style = parseHandle(m_variables.text("$CEPSNID")).value_or(0);
            m_bits.plainHandle(style, Reference::HardPointer);
            if (m_bits.reading()) {
                m_variables.setText("$CEPSNID", formatHandle(style), 390);
            }
        }
        text({"$FINGERPRINTGUID", Form::Text, 2});
        text({"$VERSIONGUID", Form::Text, 2});
        root(Root::PaperSpace, Reference::HardPointer);
        root(Root::ModelSpace, Reference::HardPointer);
        root(Root::ByLayer, Reference::HardPointer);
        root(Root::ByBlock, Reference::HardPointer);
        root(Root::Continuous, Reference::HardPointer);
    }

    BitTransfer& m_bits;
    HeaderSection& m_section;
    HeaderVariables& m_variables;
    RecordNames& m_names;
};

} // namespace

HeaderSection readHeaderSection(std::string_view content, const TextEncoding& encoding, RecordNames& names)
{
    const BitReader reader(content, what);
    BitTransfer bits(reader, reader, 0, encoding);
    HeaderSection section;
    SectionTransfer(bits, section, names).run();
    return section;
}

Roots readRoots(std::string_view content, const TextEncoding& encoding)
{
    RecordNames none;
    return readHeaderSection(content, encoding, none).roots;
}

std::string writeHeaderSection(const HeaderSection& section, const TextEncoding& encoding, RecordNames& names)
{
    BitTransfer bits(0, encoding);
    HeaderSection copy = section;
    SectionTransfer(bits, copy, names).run();
    BitWriter& writer = bits.writtenData();
    // Four numbers that are always nothing.
    for (int i = 0; i < 4; ++i) {
        writer.shortNumber(0);
    }
    return writer.takeBytes();
}

} // namespace drawing::dwg
