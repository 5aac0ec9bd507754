// The editor's reactors and how they are told.
#pragma once

#include <algorithm>
#include <vector>

#include "standin/arx/aced.h"

namespace standin {

class Editor final : public AcEditor
{
public:
    void addReactor(AcEditorReactor* reactor) override;
    void removeReactor(AcEditorReactor* reactor) override;

    /// Calls each reactor that was there at the beginning and still is: reactors may come and go meanwhile.
    template <class Call> void tell(Call call)
    {
        const std::vector<AcEditorReactor*> present = m_reactors;
        for (AcEditorReactor* reactor : present) {
            if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end())
                call(*reactor);
        }
    }
    const std::vector<AcEditorReactor*>& reactors() const { return m_reactors; }
    /// For reactors whose code is about to go.
    void dropReactor(AcEditorReactor* reactor) { std::erase(m_reactors, reactor); }

private:
    std::vector<AcEditorReactor*> m_reactors;
};

Editor& editor();

} // namespace standin
