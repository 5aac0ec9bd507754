// The host's list of applications in the registry: which modules are loaded when, and which commands they have.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standin/arx/appinfo.h"

namespace standin {

struct Application
{
    std::wstring name;
    std::wstring modulePath;
    std::wstring description;
    AcadApp::LoadReasons reasons = AcadApp::LoadReasons(0);
};

std::optional<Application> readApplication(const std::wstring& name);
AcadApp::ErrorStatus writeApplication(const Application& application);
AcadApp::ErrorStatus writeApplicationCommand(const std::wstring& name, const std::wstring& globalName,
                                             const std::wstring& localName);
std::vector<Application> allApplications();
/// The application that names the command and may be loaded for it.
std::optional<Application> applicationForCommand(const std::wstring& command);

} // namespace standin
