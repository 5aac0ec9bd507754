// The registered commands.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standin/arx/accmd.h"

namespace standin {

class Command final : public AcEdCommand
{
public:
    const ACHAR* globalName() const override { return global.c_str(); }
    const ACHAR* localName() const override { return local.c_str(); }
    Adesk::Int32 commandFlags() const override { return flags; }
    AcRxFunctionPtr functionAddr() const override { return function; }

    std::wstring group;
    std::wstring global;
    std::wstring local;
    Adesk::Int32 flags = 0;
    AcRxFunctionPtr function = nullptr;
};

class CommandStack final : public AcEdCommandStack
{
public:
    Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                                 Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext* context, int functionCode,
                                 HINSTANCE resources, AcEdCommand** made) override;
    Acad::ErrorStatus removeGroup(const ACHAR* group) override;
    Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) override;
    AcEdCommand* lookupCmd(const ACHAR* name) const override;

    const std::vector<std::unique_ptr<Command>>& commands() const { return m_commands; }
    /// Drops the commands whose handlers the test names; how many there were.
    template <class Test> std::size_t removeIf(Test test)
    {
        return std::erase_if(m_commands, [&](const auto& command) { return test(*command); });
    }

private:
    std::vector<std::unique_ptr<Command>> m_commands;
};

CommandStack& commandStack();

} // namespace standin
