#include "standin/arx/module_leftovers.h"

#include "standin/arx/code_watch.h"
#include "standin/arx/command_stack.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/editor.h"
#include "standin/arx/object_store.h"
#include "standin/arx/selection_sets.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"
#include "standin/host.h"

namespace standin {

namespace {

std::string nameOf(const Module& module)
{
    return toUtf8(module.file.filename().wstring());
}

void noteLeft(const Module& module, int count, const char* what)
{
    if (count > 0)
        recordBreach(nameOf(module) + " was unloaded and left behind " + std::to_string(count) + ' ' + what + '.');
}

// A reactor belongs to the file that its class's code lies in.
template <class Reactor> bool codedIn(const Module& module, const Reactor* reactor)
{
    return liesIn(*reinterpret_cast<const void* const*>(reactor), module.handle);
}

int dropCommands(const Module& module)
{
    return int(commandStack().removeIf([&](const Command& command) {
        return liesIn(reinterpret_cast<const void*>(command.function), module.handle);
    }));
}

int dropEditorReactors(const Module& module)
{
    int dropped = 0;
    const std::vector<AcEditorReactor*> reactors = editor().reactors();
    for (AcEditorReactor* reactor : reactors) {
        if (codedIn(module, reactor)) {
            editor().dropReactor(reactor);
            ++dropped;
        }
    }
    return dropped;
}

int dropObjectReactors(const Module& module)
{
    int dropped = 0;
    for (const AcDbObject* object : presentObjects()) {
        const std::vector<AcDbObjectReactor*> reactors = object->reactors();
        for (AcDbObjectReactor* reactor : reactors) {
            if (codedIn(module, reactor)) {
                object->removeReactor(reactor);
                ++dropped;
            }
        }
    }
    return dropped;
}

int dropLocks(const Module& module)
{
    const int left = documentLocks() - module.before.documentLocks;
    int toDrop = left;
    for (const auto& document : documentManager().documents()) {
        for (; toDrop > 0 && !document->locks.empty(); --toDrop)
            document->locks.pop_back();
    }
    return left;
}

int dropSets(const Module& module)
{
    const int left = selectionSets() - module.before.selectionSets;
    dropSelectionSets(left);
    return left;
}

} // namespace

Holdings presentHoldings()
{
    return {documentLocks(), openObjects(), selectionSets()};
}

HeldNow heldNow()
{
    const Holdings held = presentHoldings();
    const LeftInSystem calls = presentCalls();
    return {held.documentLocks, held.openObjects, held.selectionSets, calls.timers, calls.hooks};
}

void dropLeftovers(const Module& module)
{
    const LeftInSystem left = endCallsInto(module.handle);
    noteLeft(module, left.timers, "timers");
    noteLeft(module, left.hooks, "hooks");
    noteLeft(module, left.windowClasses, "window classes");
    noteLeft(module, dropCommands(module), "commands");
    noteLeft(module, dropEditorReactors(module), "editor reactors");
    noteLeft(module, dropObjectReactors(module), "object reactors");
    noteLeft(module, dropLocks(module), "document locks");
    noteLeft(module, openObjects() - module.before.openObjects, "open objects");
    noteLeft(module, dropSets(module), "selection sets");
}

// A thread that holds the file itself may outlive the unloading: the file goes when the thread lets go of it.
void freeFile(const Module& module)
{
    const auto [threads, references] = stillRunningIn(module.handle);
    noteLeft(module, threads - references, "threads that do not hold its file");
    noteLeft(module, references - threads, "references to its file without a thread to give them back");
    if (threads <= references)
        FreeLibrary(module.handle);
}

} // namespace standin
