#include "standin/afx/state.h"

namespace afx {

namespace {

// A plain pointer: a thread that the library did not start keeps its state until the process ends.
thread_local ThreadState* currentState = nullptr;

} // namespace

ThreadState& threadState()
{
    if (!currentState)
        currentState = new ThreadState;
    return *currentState;
}

void deleteTemporaryObjects()
{
    CWnd::DeleteTempMap();
    CMenu::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
}

void endThreadState()
{
    if (!currentState)
        return;
    deleteTemporaryObjects();
    delete currentState;
    currentState = nullptr;
}

ProcessState& processState()
{
    // Never destroyed: static objects of other modules may outlive any order of destruction chosen here.
    static ProcessState* state = new ProcessState;
    return *state;
}

} // namespace afx

AFX_THREAD_STATE* AfxGetThreadState()
{
    return &afx::threadState();
}
