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
    Form form;
    std::string_view name;
    int code = 70;
    double usual = 0;
    std::string_view kind = {}; // of a record
};

// The variables in the order of the section, in four runs between which stand dimension variables and roots.
constexpr Field beforeSeed[] = {
    {Form::Bit, "$DIMASO", 70, 1},
    {Form::Bit, "$DIMSHO", 70, 1},
    {Form::Bit, "$PLINEGEN"},
    {Form::Bit, "$ORTHOMODE"},
    {Form::Bit, "$REGENMODE", 70, 1},
    {Form::Bit, "$FILLMODE", 70, 1},
    {Form::Bit, "$QTEXTMODE"},
    {Form::Bit, "$PSLTSCALE", 70, 1},
    {Form::Bit, "$LIMCHECK"},
    {Form::Bit, "$USRTIMER", 70, 1},
    {Form::Bit, "$SKPOLY"},
    {Form::Bit, "$ANGDIR"},
    {Form::Bit, "$SPLFRAME"},
    {Form::Bit, "$MIRRTEXT", 70, 1},
    {Form::Bit, "$WORLDVIEW", 70, 1},
    {Form::Bit, "$TILEMODE", 70, 1},
    {Form::Bit, "$PLIMCHECK"},
    {Form::Bit, "$VISRETAIN", 70, 1},
    {Form::Bit, "$DISPSILH"},
    {Form::Bit, "$PELLIPSE"},
    {Form::Short, "$PROXYGRAPHICS", 70, 1},
    {Form::Short, "$TREEDEPTH", 70, 3020},
    {Form::Short, "$LUNITS", 70, 2},
    {Form::Short, "$LUPREC", 70, 4},
    {Form::Short, "$AUNITS"},
    {Form::Short, "$AUPREC"},
    {Form::Short, "$ATTMODE", 70, 1},
    {Form::Short, "$PDMODE"},
    {Form::Short, "$USERI1"},
    {Form::Short, "$USERI2"},
    {Form::Short, "$USERI3"},
    {Form::Short, "$USERI4"},
    {Form::Short, "$USERI5"},
    {Form::Short, "$SPLINESEGS", 70, 8},
    {Form::Short, "$SURFU", 70, 6},
    {Form::Short, "$SURFV", 70, 6},
    {Form::Short, "$SURFTYPE", 70, 6},
    {Form::Short, "$SURFTAB1", 70, 6},
    {Form::Short, "$SURFTAB2", 70, 6},
    {Form::Short, "$SPLINETYPE", 70, 6},
    {Form::Short, "$SHADEDGE", 70, 3},
    {Form::Short, "$SHADEDIF", 70, 70},
    {Form::Short, "$UNITMODE"},
    {Form::Short, "$MAXACTVP", 70, 64},
    {Form::Short, "$ISOLINES", 70, 4},
    {Form::Short, "$CMLJUST"},
    {Form::Short, "$TEXTQLTY", 70, 50},
    {Form::Real, "$LTSCALE", 40, 1},
    {Form::Real, "$TEXTSIZE", 40, 2.5},
    {Form::Real, "$TRACEWID", 40, 1},
    {Form::Real, "$SKETCHINC", 40, 1},
    {Form::Real, "$FILLETRAD", 40},
    {Form::Real, "$THICKNESS", 40},
    {Form::Real, "$ANGBASE", 50},
    {Form::Real, "$PDSIZE", 40},
    {Form::Real, "$PLINEWID", 40},
    {Form::Real, "$USERR1", 40},
    {Form::Real, "$USERR2", 40},
    {Form::Real, "$USERR3", 40},
    {Form::Real, "$USERR4", 40},
    {Form::Real, "$USERR5", 40},
    {Form::Real, "$CHAMFERA", 40},
    {Form::Real, "$CHAMFERB", 40},
    {Form::Real, "$CHAMFERC", 40},
    {Form::Real, "$CHAMFERD", 40},
    {Form::Real, "$FACETRES", 40, 0.5},
    {Form::Real, "$CMLSCALE", 40, 20},
    {Form::Real, "$CELTSCALE", 40, 1},
    {Form::Text, "$MENU", 1},
    {Form::Date, "$TDCREATE", 40},
    {Form::Date, "$TDUPDATE", 40},
    {Form::Date, "$TDINDWG", 40},
    {Form::Date, "$TDUSRTIMER", 40},
    {Form::Short, "$CECOLOR", 62, 256},
};

constexpr Field behindSeed[] = {
    {Form::Record, "$CLAYER", 8, 0, "LAYER"},
    {Form::Record, "$TEXTSTYLE", 7, 0, "STYLE"},
    {Form::Record, "$CELTYPE", 6, 0, "LTYPE"},
    {Form::Record, "$DIMSTYLE", 2, 0, "DIMSTYLE"},
    {Form::Record, "$CMLSTYLE", 2, 0, "MLINESTYLE"},
    {Form::Real, "$PSVPSCALE", 40},
    {Form::Point, "$PINSBASE"},
    {Form::Point, "$PEXTMIN"},
    {Form::Point, "$PEXTMAX"},
    {Form::FlatPoint, "$PLIMMIN"},
    {Form::FlatPoint, "$PLIMMAX"},
    {Form::Real, "$PELEVATION", 40},
    {Form::Point, "$PUCSORG"},
    {Form::Point, "$PUCSXDIR"},
    {Form::Point, "$PUCSYDIR"},
    {Form::Record, "$PUCSNAME", 2, 0, "UCS"},
    {Form::Record, "$PUCSORTHOREF", 2, 0, "UCS"},
    {Form::Short, "$PUCSORTHOVIEW"},
    {Form::Record, "$PUCSBASE", 2, 0, "UCS"},
    {Form::Point, "$PUCSORGTOP"},
    {Form::Point, "$PUCSORGBOTTOM"},
    {Form::Point, "$PUCSORGLEFT"},
    {Form::Point, "$PUCSORGRIGHT"},
    {Form::Point, "$PUCSORGFRONT"},
    {Form::Point, "$PUCSORGBACK"},
    {Form::Point, "$INSBASE"},
    {Form::Point, "$EXTMIN"},
    {Form::Point, "$EXTMAX"},
    {Form::FlatPoint, "$LIMMIN"},
    {Form::FlatPoint, "$LIMMAX"},
    {Form::Real, "$ELEVATION", 40},
    {Form::Point, "$UCSORG"},
    {Form::Point, "$UCSXDIR"},
    {Form::Point, "$UCSYDIR"},
    {Form::Record, "$UCSNAME", 2, 0, "UCS"},
    {Form::Record, "$UCSORTHOREF", 2, 0, "UCS"},
    {Form::Short, "$UCSORTHOVIEW"},
    {Form::Record, "$UCSBASE", 2, 0, "UCS"},
    {Form::Point, "$UCSORGTOP"},
    {Form::Point, "$UCSORGBOTTOM"},
    {Form::Point, "$UCSORGLEFT"},
    {Form::Point, "$UCSORGRIGHT"},
    {Form::Point, "$UCSORGFRONT"},
    {Form::Point, "$UCSORGBACK"},
};

constexpr Field behindDimensions[] = {
    {Form::Record, "$DIMTXSTY", 7, 0, "STYLE"},
    {Form::Record, "$DIMLDRBLK", 1, 0, "BLOCK_RECORD"},
    {Form::Record, "$DIMBLK", 1, 0, "BLOCK_RECORD"},
    {Form::Record, "$DIMBLK1", 1, 0, "BLOCK_RECORD"},
    {Form::Record, "$DIMBLK2", 1, 0, "BLOCK_RECORD"},
    {Form::Short, "$DIMLWD", 70, -2},
    {Form::Short, "$DIMLWE", 70, -2},
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
        text({Form::Text, "$HYPERLINKBASE", 1});
        text({Form::Text, "$STYLESHEET", 1});
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
            m_bits.rawReal(value.x);
            m_bits.rawReal(value.y);
        } else {
            m_bits.real(value.x);
            m_bits.real(value.y);
            m_bits.real(value.z);
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
            whole({Form::Bit, each.name, 70, each.usual});
            break;
        case ValueForm::Short:
            whole({Form::Short, each.name, 70, each.usual});
            break;
        case ValueForm::Real:
            real({Form::Real, each.name, 40, each.usual});
            break;
        case ValueForm::Text:
            text({Form::Text, each.name, 1});
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
        whole({Form::Short, "$INSUNITS"});
        whole({Form::Short, "$CEPSNTYPE", 380});
        if (m_variables.integer("$CEPSNTYPE") == plotStyleByHandle) {
            Handle style = parseHandle(m_variables.text("$CEPSNID")).value_or(0);
            m_bits.plainHandle(style, Reference::HardPointer);
            if (m_bits.reading()) {
                m_variables.setText("$CEPSNID", formatHandle(style), 390);
            }
        }
        text({Form::Text, "$FINGERPRINTGUID", 2});
        text({Form::Text, "$VERSIONGUID", 2});
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
