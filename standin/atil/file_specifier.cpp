#include "standin/atil/file_specifier.h"

#include <cstring>

#include "standin/text.h"

namespace Atil {

namespace {

template <class Character> std::basic_string<Character> copyText(int lengthInBytes, const void* text)
{
    std::basic_string<Character> copy(std::size_t(lengthInBytes) / sizeof(Character), Character(0));
    std::memcpy(copy.data(), text, copy.size() * sizeof(Character));
    copy.resize(std::char_traits<Character>::length(copy.c_str()));
    return copy;
}

} // namespace

StringBuffer::StringBuffer(int lengthInBytes, const void* text, CharacterType type)
{
    if (!text || lengthInBytes <= 0)
        return;
    m_text = type == kUTF_16 ? copyText<wchar_t>(lengthInBytes, text)
                             : standin::fromUtf8(copyText<char>(lengthInBytes, text));
}

FileSpecifier::FileSpecifier(const StringBuffer& name, DescriptorType) : m_path(name.text()) {}

} // namespace Atil
