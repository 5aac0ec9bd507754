// The calls that go straight through to the desk.
#include "standin/arx/desk_services.h"

#include <cstdarg>
#include <sstream>

#include "standin/afx/afx_string.h"
#include "standin/arx/acedads.h"
#include "standin/arx/acutads.h"
#include "standin/arx/rxmfcapi.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

namespace standin {

namespace {
DeskServices* current = nullptr;
} // namespace

DeskServices* deskServices()
{
    return current;
}

void setDeskServices(DeskServices* services)
{
    current = services;
}

} // namespace standin

CMDIFrameWnd* acedGetAcadFrame()
{
    return standin::current ? standin::current->frame() : nullptr;
}

CView* acedGetAcadDwgView()
{
    return standin::current ? standin::current->drawingView() : nullptr;
}

Adesk::Boolean acedPostCommand(const ACHAR* text)
{
    if (!standin::current || !text)
        return false;
    standin::current->postCommandText(text);
    return true;
}

int acedAlert(const ACHAR* text)
{
    if (!standin::current || !text)
        return RTERROR;
    standin::current->alert(text);
    return RTNORM;
}

int acutPrintf(const ACHAR* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    if (!standin::current)
        return RTERROR;
    std::wistringstream lines(static_cast<LPCWSTR>(text));
    for (std::wstring line; std::getline(lines, line);) {
        if (!line.empty())
            standin::current->print(line);
    }
    return RTNORM;
}

int acedCommand(int type, ...)
{
    std::vector<standin::CommandArgument> command;
    bool known = true;
    std::va_list arguments;
    va_start(arguments, type);
    for (int code = type; known && code != RTNONE && code != 0; code = va_arg(arguments, int)) {
        switch (code) {
        case RTSTR:
            command.emplace_back(standin::readArgument(va_arg(arguments, const ACHAR*)));
            break;
        case RTREAL:
            command.emplace_back(va_arg(arguments, double));
            break;
        case RTSHORT:
        case RTLONG:
            command.emplace_back(va_arg(arguments, int));
            break;
        case RTPOINT: {
            const auto* point = va_arg(arguments, const double*);
            command.emplace_back(standin::DrawingPoint{point[0], point[1], 0});
            break;
        }
        case RT3DPOINT: {
            const auto* point = va_arg(arguments, const double*);
            command.emplace_back(standin::DrawingPoint{point[0], point[1], point[2]});
            break;
        }
        default:
            known = false;
        }
    }
    va_end(arguments);
    if (!known || command.empty() || !standin::current)
        return RTERROR;
    return standin::current->runDeskCommand(command) ? RTNORM : RTERROR;
}
