#include "standin/arx/appinfo.h"

#include "standin/arx/application_list.h"

namespace {
std::wstring textOf(const ACHAR* text)
{
    return text ? text : L"";
}
} // namespace

void AcadAppInfo::setAppName(const ACHAR* name)
{
    m_appName = textOf(name);
}

void AcadAppInfo::setModuleName(const ACHAR* path)
{
    m_moduleName = textOf(path);
}

void AcadAppInfo::setAppDesc(const ACHAR* description)
{
    m_description = textOf(description);
}

void AcadAppInfo::setLoadReason(AcadApp::LoadReasons reason)
{
    m_loadReason = reason;
}

AcadApp::ErrorStatus AcadAppInfo::readFromRegistry()
{
    const auto application = standin::readApplication(m_appName);
    if (!application)
        return AcadApp::eRegistryEntryNotFound;
    m_moduleName = application->modulePath;
    m_description = application->description;
    m_loadReason = application->reasons;
    return AcadApp::eOk;
}

AcadApp::ErrorStatus AcadAppInfo::writeToRegistry(bool machineWide, bool noUserEntry)
{
    if (machineWide || noUserEntry)
        return AcadApp::eRegistryOpenError;
    return standin::writeApplication({m_appName, m_moduleName, m_description, m_loadReason});
}

AcadApp::ErrorStatus AcadAppInfo::writeCommandNameToRegistry(const ACHAR* globalName, const ACHAR* localName)
{
    return standin::writeApplicationCommand(m_appName, textOf(globalName), textOf(localName));
}
