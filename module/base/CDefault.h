#pragma once

/// The settings that outlast the module, in the registry under HKEY_CURRENT_USER\Software\Orvolabs\HVA6\ProgramDefault.
/// One object, made at start-up and deleted at the stop, both within a CTempMFC: it reads all values, and writes them
/// back. What a value means is not looked at, and one that makes no sense is carried over as it is. Most values belong
/// to other editions of the program, and are only kept.
class CDefault
{
public:
    CDefault();
    /// Writes nothing if the class library has no application object any more.
    virtual ~CDefault();
    CDefault(const CDefault&) = delete;
    CDefault& operator=(const CDefault&) = delete;

    /// The value of an integer, or its default as long as nothing was read.
    static int GetInteger(const wchar_t* name);
    static void SetInteger(const wchar_t* name, int value);
};

/// Section of the registry under which all of the module's settings lie.
inline constexpr const wchar_t* SettingsSection = L"ProgramDefault";

/// Not 0: the toolbar is shown.
inline constexpr const wchar_t* ShowToolbarSetting = L"m_ShowToolbar";
inline constexpr const wchar_t* FlatToolbarSetting = L"FlatToolbar";
