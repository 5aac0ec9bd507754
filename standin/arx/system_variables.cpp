// System variables: of the view, of the drawing, of the program.
#include <cmath>
#include <functional>
#include <map>

#include "standin/arx/acedads.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/object_store.h"
#include "standin/arx/text.h"

namespace standin {

namespace {

struct Variable
{
    short type; // RTSHORT, RTREAL, RTPOINT, RT3DPOINT or RTSTR
    std::function<VariableValue()> get;
    std::function<bool(const VariableValue&)> set; // none for a variable that can only be read
};

// Sums up what the variables need to know; without a desk or a drawing there are stand-in values.
ViewState view()
{
    return deskServices() ? deskServices()->viewState() : ViewState{};
}

drawing::HeaderVariables* header()
{
    AcDbDatabase* database = drawingDatabase();
    return database ? &database->state().document.header : nullptr;
}

VariableValue shortValue(int value)
{
    return std::int16_t(value);
}

// An integer that drawing files keep in their header.
Variable headerInteger(const char* name, int fallback)
{
    return {RTSHORT, [=] { return shortValue(header() ? header()->integer(name, fallback) : fallback); },
            [=](const VariableValue& value) {
                if (!header())
                    return false;
                const int number = std::get<std::int16_t>(value);
                if (header()->integer(name, fallback) == number)
                    return true;
                header()->setInteger(name, number);
                drawingDatabase()->state().changes.note();
                if (deskServices())
                    deskServices()->redraw();
                return true;
            }};
}

// A number of the program's own, which no drawing keeps.
Variable programInteger(int initial)
{
    auto value = std::make_shared<std::int16_t>(std::int16_t(initial));
    return {RTSHORT, [=] { return shortValue(*value); },
            [=](const VariableValue& given) {
                *value = std::get<std::int16_t>(given);
                return true;
            }};
}

bool setCurrentLayer(const VariableValue& value)
{
    const std::string name = toUtf8(std::get<std::wstring>(value));
    AcDbDatabase* database = drawingDatabase();
    const drawing::Layer* layer = database ? database->state().document.findLayer(name) : nullptr;
    if (!layer)
        return false;
    if (header()->text("$CLAYER", "0") != layer->recordName) {
        header()->setText("$CLAYER", layer->recordName, 8);
        database->state().changes.note();
    }
    return true;
}

VariableValue drawingName()
{
    const std::filesystem::path path = drawingPath();
    return path.empty() ? std::wstring(L"Drawing1.dxf") : path.filename().wstring();
}

VariableValue drawingFolder()
{
    const std::filesystem::path path = drawingPath();
    if (!path.empty())
        return (path.parent_path() / L"").make_preferred().wstring();
    std::error_code error;
    return (std::filesystem::current_path(error) / L"").make_preferred().wstring();
}

std::map<std::wstring, Variable> makeVariables()
{
    std::map<std::wstring, Variable> variables;
    variables[L"SCREENSIZE"] = {RTPOINT,
                                [] {
                                    return DrawingPoint{double(view().width), double(view().height), 0};
                                },
                                {}};
    variables[L"VIEWCTR"] = {RT3DPOINT, [] { return view().centre; }, {}};
    variables[L"VIEWSIZE"] = {RTREAL, [] { return view().viewHeight; }, {}};
    variables[L"TILEMODE"] = headerInteger("$TILEMODE", 1);
    variables[L"INSUNITS"] = headerInteger("$INSUNITS", 0);
    variables[L"MEASUREMENT"] = headerInteger("$MEASUREMENT", 1);
    variables[L"LUNITS"] = headerInteger("$LUNITS", 2);
    variables[L"LUPREC"] = headerInteger("$LUPREC", 4);
    variables[L"CMDECHO"] = programInteger(1);
    variables[L"CLAYER"] = {RTSTR,
                            [] { return header() ? fromUtf8(header()->text("$CLAYER", "0")) : std::wstring(L"0"); },
                            setCurrentLayer};
    variables[L"DWGNAME"] = {RTSTR, drawingName, {}};
    variables[L"DWGPREFIX"] = {RTSTR, drawingFolder, {}};
    return variables;
}

const Variable* findVariable(const std::wstring& name)
{
    static const std::map<std::wstring, Variable> variables = makeVariables();
    const auto found = variables.find(upperCase(name));
    return found == variables.end() ? nullptr : &found->second;
}

std::optional<VariableValue> valueOf(const resbuf& list)
{
    switch (list.restype) {
    case RTSHORT:
        return list.resval.rint;
    case RTREAL:
        return list.resval.rreal;
    case RTPOINT:
    case RT3DPOINT:
        return DrawingPoint{list.resval.rpoint[0], list.resval.rpoint[1], list.resval.rpoint[2]};
    case RTSTR:
        return std::wstring(list.resval.rstring);
    default:
        return std::nullopt;
    }
}

ACHAR* copyForCaller(const std::wstring& text)
{
    auto* copy = new ACHAR[text.size() + 1];
    std::copy_n(text.c_str(), text.size() + 1, copy);
    return copy;
}

} // namespace

std::optional<VariableValue> systemVariable(const std::wstring& name)
{
    const Variable* variable = findVariable(name);
    if (!variable)
        return std::nullopt;
    return variable->get();
}

bool setSystemVariable(const std::wstring& name, const VariableValue& value)
{
    const Variable* variable = findVariable(name);
    return variable && variable->set && variable->get().index() == value.index() && variable->set(value);
}

} // namespace standin

int acedGetVar(const ACHAR* name, resbuf* result)
{
    using namespace standin;
    const Variable* variable = name && result ? findVariable(name) : nullptr;
    if (!variable)
        return RTERROR;
    result->rbnext = nullptr;
    result->restype = variable->type;
    const VariableValue value = variable->get();
    if (const auto* number = std::get_if<std::int16_t>(&value)) {
        result->resval.rint = *number;
    } else if (const auto* real = std::get_if<double>(&value)) {
        result->resval.rreal = *real;
    } else if (const auto* point = std::get_if<DrawingPoint>(&value)) {
        result->resval.rpoint[0] = point->x;
        result->resval.rpoint[1] = point->y;
        result->resval.rpoint[2] = point->z;
    } else {
        result->resval.rstring = copyForCaller(std::get<std::wstring>(value));
    }
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value)
{
    if (!name || !value || !standin::findVariable(name))
        return RTERROR;
    const auto given = standin::valueOf(*value);
    return given && standin::setSystemVariable(name, *given) ? RTNORM : RTREJ;
}
