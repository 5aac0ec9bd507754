// The code pages as iconv has them.

#include <iconv.h>
#include <mutex>

#include "drawing/code_pages.h"

namespace drawing {

namespace {

// One direction of a conversion.
class Conversion
{
public:
    Conversion(const std::string& to, const std::string& from) : m_handle(iconv_open(to.c_str(), from.c_str())) {}
    ~Conversion()
    {
        if (usable()) {
            iconv_close(m_handle);
        }
    }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    // iconv's answer for failure is an invalid pointer.
    bool usable() const { return m_handle != reinterpret_cast<iconv_t>(-1); } // NOLINT(performance-no-int-to-ptr)

    /// All of `input` converted; empty if that can't be done.
    std::string convert(std::string_view input)
    {
        const std::lock_guard guard(m_mutex);
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        char output[16];
        char* in = const_cast<char*>(input.data());
        char* out = output;
        std::size_t inLeft = input.size();
        std::size_t outLeft = sizeof output;
        constexpr auto failed = static_cast<std::size_t>(-1);
        // Some conversions hold a character back until they know what follows it.
        if (iconv(m_handle, &in, &inLeft, &out, &outLeft) == failed ||
            iconv(m_handle, nullptr, nullptr, &out, &outLeft) == failed) {
            return {};
        }
        return {output, out};
    }

private:
    iconv_t m_handle;
    std::mutex m_mutex;
};

std::string nameOf(int number)
{
    constexpr int macintosh = 10000;
    constexpr int iso8859 = 28590;
    if (number > iso8859) {
        return "ISO-8859-" + std::to_string(number - iso8859);
    }
    return number == macintosh ? "MACINTOSH" : "CP" + std::to_string(number);
}

class IconvCodePage final : public CodePage
{
public:
    explicit IconvCodePage(int number) : m_decode("UTF-32LE", nameOf(number)), m_encode(nameOf(number), "UTF-32LE") {}

    bool usable() const { return m_decode.usable() && m_encode.usable(); }

protected:
    std::optional<char32_t> decodeOne(std::string_view bytes) const override
    {
        const std::string units = m_decode.convert(bytes);
        if (units.size() != 4) {
            return std::nullopt;
        }
        char32_t character = 0;
        for (unsigned i = 0; i < 4; ++i) {
            character |= static_cast<char32_t>(static_cast<unsigned char>(units[i])) << 8 * i;
        }
        return character;
    }
    std::string encodeOne(char32_t character) const override
    {
        std::string units;
        for (unsigned i = 0; i < 4; ++i) {
            units += static_cast<char>(character >> 8 * i);
        }
        return m_encode.convert(units);
    }

private:
    mutable Conversion m_decode;
    mutable Conversion m_encode;
};

} // namespace

std::shared_ptr<const CodePage> openCodePage(int number)
{
    auto page = std::make_shared<IconvCodePage>(number);
    return page->usable() ? page : nullptr;
}

} // namespace drawing
