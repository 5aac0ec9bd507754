#include "standin/arx/command_stack.h"

#include "standin/arx/rx_define.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcEdCommand, AcRxObject)
ACRX_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject)

namespace standin {

namespace {
bool given(const ACHAR* text)
{
    return text && *text;
}
} // namespace

CommandStack& commandStack()
{
    static CommandStack stack;
    return stack;
}

Acad::ErrorStatus CommandStack::addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                                           Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext*, int, HINSTANCE,
                                           AcEdCommand** made)
{
    if (!given(group) || !given(globalName) || !given(localName) || !function)
        return Acad::eInvalidInput;
    for (const auto& present : m_commands) {
        if (sameText(present->group, group) &&
            (sameText(present->global, globalName) || sameText(present->local, localName)))
            return Acad::eDuplicateKey;
    }
    auto command = std::make_unique<Command>();
    command->group = group;
    command->global = globalName;
    command->local = localName;
    command->flags = flags;
    command->function = function;
    if (made)
        *made = command.get();
    m_commands.push_back(std::move(command));
    return Acad::eOk;
}

Acad::ErrorStatus CommandStack::removeGroup(const ACHAR* group)
{
    if (!given(group))
        return Acad::eInvalidInput;
    return removeIf([&](const Command& command) { return sameText(command.group, group); }) ? Acad::eOk
                                                                                            : Acad::eKeyNotFound;
}

Acad::ErrorStatus CommandStack::removeCmd(const ACHAR* group, const ACHAR* globalName)
{
    if (!given(group) || !given(globalName))
        return Acad::eInvalidInput;
    return removeIf([&](const Command& command) {
        return sameText(command.group, group) && sameText(command.global, globalName);
    })
               ? Acad::eOk
               : Acad::eKeyNotFound;
}

AcEdCommand* CommandStack::lookupCmd(const ACHAR* name) const
{
    if (!given(name))
        return nullptr;
    const bool byGlobal = *name == L'_';
    const std::wstring_view wanted = name + (byGlobal ? 1 : 0);
    for (const auto& command : m_commands) {
        if (sameText(byGlobal ? command->global : command->local, wanted))
            return command.get();
    }
    return nullptr;
}

} // namespace standin
