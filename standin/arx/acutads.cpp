#include "standin/arx/acutads.h"

#include <cstdarg>
#include <cstring>

#include "standin/arx/text.h"

namespace {

enum class ValueKind
{
    unknown,
    none,
    text,
    shortInteger,
    longInteger,
    real,
    point,
    name
};

// Which member of a value holds, by RT code or DXF group code.
ValueKind kindOf(int type)
{
    switch (type) {
    case RTNONE:
        return ValueKind::none;
    case RTSTR:
    case RTDXF0:
        return ValueKind::text;
    case RTSHORT:
        return ValueKind::shortInteger;
    case RTLONG:
        return ValueKind::longInteger;
    case RTREAL:
        return ValueKind::real;
    case RTPOINT:
    case RT3DPOINT:
        return ValueKind::point;
    case RTENAME:
    case RTPICKS:
        return ValueKind::name;
    default:
        break;
    }
    if ((type >= 0 && type <= 9) || (type >= 410 && type <= 419))
        return ValueKind::text;
    if (type >= 10 && type <= 39)
        return ValueKind::point;
    if (type >= 40 && type <= 59)
        return ValueKind::real;
    if (type >= 60 && type <= 79)
        return ValueKind::shortInteger;
    if (type >= 90 && type <= 99)
        return ValueKind::longInteger;
    return ValueKind::unknown;
}

ACHAR* copyText(const std::wstring& text)
{
    auto* copy = new ACHAR[text.size() + 1];
    std::memcpy(copy, text.c_str(), (text.size() + 1) * sizeof(ACHAR));
    return copy;
}

} // namespace

resbuf* acutNewRb(int type)
{
    const int stored = type == RTDXF0 ? 0 : type;
    return new resbuf{nullptr, short(stored), {}};
}

int acutRelRb(resbuf* list)
{
    while (list) {
        resbuf* next = list->rbnext;
        if (kindOf(list->restype) == ValueKind::text)
            delete[] list->resval.rstring;
        delete list;
        list = next;
    }
    return RTNORM;
}

void acutDelString(ACHAR*& text)
{
    delete[] text;
    text = nullptr;
}

resbuf* acutBuildList(int type, ...)
{
    resbuf* first = nullptr;
    resbuf** link = &first;
    std::va_list arguments;
    va_start(arguments, type);
    for (int code = type; code != RTNONE && code != 0; code = va_arg(arguments, int)) {
        const ValueKind kind = kindOf(code);
        if (kind == ValueKind::unknown) {
            acutRelRb(first);
            first = nullptr;
            break;
        }
        resbuf* value = acutNewRb(code);
        *link = value;
        link = &value->rbnext;
        switch (kind) {
        case ValueKind::text:
            value->resval.rstring = copyText(standin::readArgument(va_arg(arguments, const ACHAR*)));
            break;
        case ValueKind::shortInteger:
            value->resval.rint = short(va_arg(arguments, int));
            break;
        case ValueKind::longInteger:
            value->resval.rlong = va_arg(arguments, int);
            break;
        case ValueKind::real:
            value->resval.rreal = va_arg(arguments, double);
            break;
        case ValueKind::point:
            std::memcpy(value->resval.rpoint, va_arg(arguments, const double*), sizeof value->resval.rpoint);
            break;
        case ValueKind::name:
            std::memcpy(value->resval.rlname, va_arg(arguments, const std::int64_t*), sizeof value->resval.rlname);
            break;
        case ValueKind::unknown:
        case ValueKind::none:
            break;
        }
    }
    va_end(arguments);
    return first;
}
