// Names of files for the codecs.
#pragma once

#include <string>

#include "standin/export.h"

namespace Atil {
class HALVORAN_STANDIN_API StringBuffer
{
public:
    enum CharacterType
    {
        kASCII = 0,
        kUTF_8 = 1,
        kUTF_16 = 2
    };

    /// The text is copied; its length is in bytes and includes the terminator.
    StringBuffer(int lengthInBytes, const void* text, CharacterType type);

    std::wstring text() const { return m_text; }

private:
    std::wstring m_text;
};

class HALVORAN_STANDIN_API FileSpecifier
{
public:
    enum DescriptorType
    {
        kFilePath = 0
    };

    FileSpecifier(const StringBuffer& name, DescriptorType type);

    const std::wstring& path() const { return m_path; }

private:
    std::wstring m_path;
};
} // namespace Atil
