#pragma once

#include <array>
#include <memory>

#include "platform/platform.h"

/// The pens of rasterizing: a line width for each colour index from 1 to 254, in hundredths of a millimetre. Kept in
/// the settings and in .pen files: text without a header, a whole number a line, the repeated end left out.
class CPenList
{
public:
    static constexpr int Count = 254;

    /// From the settings of that section; 0.18 mm for all pens where there are none, or the name is empty.
    CPenList(const CString& section, double scale);
    virtual ~CPenList();
    CPenList(const CPenList&) = delete;
    CPenList& operator=(const CPenList&) = delete;

    /// Of the pen for the colour `index` + 1, with the scale, to the nearest; an index above the last pen means it.
    int Width(int index) const;

    /// False, with nothing changed, if the settings have none. A table that breaks off has 0.20 mm in its missing
    /// parts.
    bool LoadSettings(const CString& section);
    /// Three hexadecimal digits a pen. Widths that don't fit into them shift all that follow; they always have.
    void StoreSettings(const CString& section) const;

    /// Without a name the user is asked, and 0 means that he gave up; else 1. What is no number reads as 0, and the
    /// last line holds for all pens that follow; a file without lines changes nothing. Throws CFileException*.
    int ReadFile(CString name);
    /// The same for writing. A file that stands there stays whole if the writing fails.
    int WriteFile(CString name);

    std::array<int, Count> m_widths; // hundredths of a millimetre

private:
    bool AskForName(std::unique_ptr<CFileDialog>& dialog, bool open, CString& name);

    double m_dScale;
    // Kept from question to question, so that each remembers its folder.
    std::unique_ptr<CFileDialog> m_pOpenDialog;
    std::unique_ptr<CFileDialog> m_pSaveDialog;
};
