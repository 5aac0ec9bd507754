// Message maps: which member function handles which message. The macros go into a class's declaration and source file.
#pragma once

#include "standin/afx/afx_base.h"

class CCmdTarget;

/// A window message, or a command on its way along the chain of command targets.
struct AFX_MESSAGE
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    UINT id;          // of a command or notification
    void* extra;      // CCmdUI* of an update, AFX_NOTIFY* of a notification
    LRESULT* pResult; // what a notification's sender gets
};

using AFX_HANDLER = LRESULT (*)(CCmdTarget* target, const AFX_MESSAGE& message);

/// nCode is 0 for window messages. The last entry of a map has no handler.
struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;
    int nCode;
    UINT nID;
    UINT nLastID;
    AFX_HANDLER pfn;
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI (-1)

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static const AFX_MSGMAP* GetThisMessageMap();                                                                      \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                                  \
    {                                                                                                                  \
        return GetThisMessageMap();                                                                                    \
    }                                                                                                                  \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                                    \
    {                                                                                                                  \
        using ThisClass [[maybe_unused]] = theClass;                                                                   \
        using TheBaseClass = baseClass;                                                                                \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                              \
    {                                                                                                                  \
        0, 0, 0, 0, nullptr                                                                                            \
    }                                                                                                                  \
    }                                                                                                                  \
    ;                                                                                                                  \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                                         \
    return &map;                                                                                                       \
    }

// One entry: `body` uses `self`, the object, and `event`, the AFX_MESSAGE, and returns an LRESULT.
#define AFX_MAP_ENTRY(message, code, id, lastId, body)                                                                 \
    {message, code, id, lastId, [](CCmdTarget* afxTarget, [[maybe_unused]] const AFX_MESSAGE& event) -> LRESULT {      \
         [[maybe_unused]] ThisClass* self = static_cast<ThisClass*>(afxTarget);                                        \
         body                                                                                                          \
     }},
#define AFX_WINDOW_ENTRY(message, body) AFX_MAP_ENTRY(message, 0, 0, 0, body)
// Gives a handler named with or without its class its exact type.
#define AFX_CALL(signature, memberFxn) (self->*static_cast<signature>(memberFxn))

#define ON_MESSAGE(message, memberFxn)                                                                                 \
    AFX_WINDOW_ENTRY(message,                                                                                          \
                     return AFX_CALL(LRESULT(ThisClass::*)(WPARAM, LPARAM), memberFxn)(event.wParam, event.lParam);)
// The number of the message is in a variable, as RegisterWindowMessage gives it.
#define ON_REGISTERED_MESSAGE(variable, memberFxn) ON_MESSAGE(variable, memberFxn)

#define ON_COMMAND(commandId, memberFxn)                                                                               \
    AFX_MAP_ENTRY(WM_COMMAND, CN_COMMAND, static_cast<UINT>(commandId), static_cast<UINT>(commandId),                  \
                  AFX_CALL(void (ThisClass::*)(), memberFxn)();                                                        \
                  return TRUE;)
#define ON_COMMAND_RANGE(firstId, finalId, memberFxn)                                                                  \
    AFX_MAP_ENTRY(WM_COMMAND, CN_COMMAND, static_cast<UINT>(firstId), static_cast<UINT>(finalId),                      \
                  AFX_CALL(void (ThisClass::*)(UINT), memberFxn)(event.id);                                            \
                  return TRUE;)
// The handler returns whether it took the command.
#define ON_COMMAND_EX(commandId, memberFxn)                                                                            \
    AFX_MAP_ENTRY(WM_COMMAND, CN_COMMAND, static_cast<UINT>(commandId), static_cast<UINT>(commandId),                  \
                  return AFX_CALL(BOOL(ThisClass::*)(UINT), memberFxn)(event.id);)
#define ON_UPDATE_COMMAND_UI(commandId, memberFxn)                                                                     \
    AFX_MAP_ENTRY(WM_COMMAND, CN_UPDATE_COMMAND_UI, static_cast<UINT>(commandId), static_cast<UINT>(commandId),        \
                  AFX_CALL(void (ThisClass::*)(CCmdUI*), memberFxn)(static_cast<CCmdUI*>(event.extra));                \
                  return TRUE;)
#define ON_UPDATE_COMMAND_UI_RANGE(firstId, finalId, memberFxn)                                                        \
    AFX_MAP_ENTRY(WM_COMMAND, CN_UPDATE_COMMAND_UI, static_cast<UINT>(firstId), static_cast<UINT>(finalId),            \
                  AFX_CALL(void (ThisClass::*)(CCmdUI*), memberFxn)(static_cast<CCmdUI*>(event.extra));                \
                  return TRUE;)
#define ON_CONTROL(notifyCode, controlId, memberFxn)                                                                   \
    AFX_MAP_ENTRY(WM_COMMAND, static_cast<int>(notifyCode), static_cast<UINT>(controlId),                              \
                  static_cast<UINT>(controlId), AFX_CALL(void (ThisClass::*)(), memberFxn)();                          \
                  return TRUE;)
#define ON_CONTROL_RANGE(notifyCode, firstId, finalId, memberFxn)                                                      \
    AFX_MAP_ENTRY(WM_COMMAND, static_cast<int>(notifyCode), static_cast<UINT>(firstId), static_cast<UINT>(finalId),    \
                  AFX_CALL(void (ThisClass::*)(UINT), memberFxn)(event.id);                                            \
                  return TRUE;)
#define ON_NOTIFY(notifyCode, controlId, memberFxn)                                                                    \
    AFX_MAP_ENTRY(                                                                                                     \
        WM_NOTIFY, static_cast<int>(notifyCode), static_cast<UINT>(controlId), static_cast<UINT>(controlId),           \
        AFX_CALL(void (ThisClass::*)(NMHDR*, LRESULT*), memberFxn)(static_cast<NMHDR*>(event.extra), event.pResult);   \
        return TRUE;)
#define ON_NOTIFY_EX_RANGE(notifyCode, firstId, finalId, memberFxn)                                                    \
    AFX_MAP_ENTRY(WM_NOTIFY, static_cast<int>(notifyCode), static_cast<UINT>(firstId), static_cast<UINT>(finalId),     \
                  return AFX_CALL(BOOL(ThisClass::*)(UINT, NMHDR*, LRESULT*),                                          \
                                  memberFxn)(event.id, static_cast<NMHDR*>(event.extra), event.pResult);)

#define ON_BN_CLICKED(controlId, memberFxn) ON_CONTROL(BN_CLICKED, controlId, memberFxn)
#define ON_BN_DOUBLECLICKED(controlId, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, controlId, memberFxn)
#define ON_EN_CHANGE(controlId, memberFxn) ON_CONTROL(EN_CHANGE, controlId, memberFxn)
#define ON_EN_UPDATE(controlId, memberFxn) ON_CONTROL(EN_UPDATE, controlId, memberFxn)
#define ON_EN_SETFOCUS(controlId, memberFxn) ON_CONTROL(EN_SETFOCUS, controlId, memberFxn)
#define ON_EN_KILLFOCUS(controlId, memberFxn) ON_CONTROL(EN_KILLFOCUS, controlId, memberFxn)
#define ON_CBN_SELCHANGE(controlId, memberFxn) ON_CONTROL(CBN_SELCHANGE, controlId, memberFxn)
#define ON_CBN_EDITCHANGE(controlId, memberFxn) ON_CONTROL(CBN_EDITCHANGE, controlId, memberFxn)
#define ON_CBN_KILLFOCUS(controlId, memberFxn) ON_CONTROL(CBN_KILLFOCUS, controlId, memberFxn)
#define ON_CBN_DROPDOWN(controlId, memberFxn) ON_CONTROL(CBN_DROPDOWN, controlId, memberFxn)
#define ON_CBN_CLOSEUP(controlId, memberFxn) ON_CONTROL(CBN_CLOSEUP, controlId, memberFxn)
#define ON_LBN_SELCHANGE(controlId, memberFxn) ON_CONTROL(LBN_SELCHANGE, controlId, memberFxn)
#define ON_LBN_DBLCLK(controlId, memberFxn) ON_CONTROL(LBN_DBLCLK, controlId, memberFxn)
#define ON_STN_CLICKED(controlId, memberFxn) ON_CONTROL(STN_CLICKED, controlId, memberFxn)

#include "standin/afx/afx_message_map_windows.h"
