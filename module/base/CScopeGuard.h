#pragma once

#include <utility>

/// Calls `Undo` at the end of its scope, however that is left, unless it was dismissed. `Undo` does not throw.
template <typename Undo> class CScopeGuard
{
public:
    explicit CScopeGuard(Undo undo) : m_undo(std::move(undo)) {}
    ~CScopeGuard()
    {
        if (m_bArmed)
            m_undo();
    }
    CScopeGuard(const CScopeGuard&) = delete;
    CScopeGuard& operator=(const CScopeGuard&) = delete;

    void Dismiss() { m_bArmed = false; }

private:
    Undo m_undo;
    bool m_bArmed = true;
};
