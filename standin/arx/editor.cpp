#include "standin/arx/editor.h"

#include "standin/arx/rx_define.h"
#include "standin/arx/strictness.h"

ACRX_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject)
ACRX_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor)
ACRX_DEFINE_MEMBERS(AcEditorReactor2, AcEditorReactor)
ACRX_DEFINE_MEMBERS(AcEditor, AcRxObject)

namespace standin {

Editor& editor()
{
    static Editor theEditor;
    return theEditor;
}

void Editor::addReactor(AcEditorReactor* reactor)
{
    if (!reactor || std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end()) {
        recordBreach("An editor reactor was added twice, or none was given.");
        return;
    }
    m_reactors.push_back(reactor);
}

void Editor::removeReactor(AcEditorReactor* reactor)
{
    if (std::erase(m_reactors, reactor) == 0)
        recordBreach("An editor reactor was removed that was not there.");
}

} // namespace standin
