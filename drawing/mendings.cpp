#include "drawing/mendings.h"

namespace drawing {

namespace {

// "#" stands for the count; of one, the first form is said.
struct Wording
{
    const char* one;
    const char* many;
};

Wording wordingOf(Mending what)
{
    switch (what) {
    case Mending::EndOfFile:
        return {"The mark at the end of the file is missing.", ""};
    case Mending::SequenceEnd:
        return {"A polyline or block reference had no end mark; it was added.",
                "# polylines or block references had no end mark; it was added."};
    case Mending::AnnouncedAttribute:
        return {"A block reference announced attributes that are missing.",
                "# block references announced attributes that are missing."};
    case Mending::RepeatedHandle:
        return {"An object had the handle of another one; it was given a new handle.",
                "# objects had the handle of another one; they were given new handles."};
    case Mending::UselessHandle:
        return {"An object had a handle beyond all bounds; it was given a new handle.",
                "# objects had handles beyond all bounds; they were given new handles."};
    case Mending::HandleSeed:
        return {"The number for the next handle was of no use; it was counted anew.", ""};
    case Mending::ForeignBlock:
        return {"An entity named a block that is no layout as its owner; it was put into the space that it lies in.",
                "# entities named a block that is no layout as their owner; they were put into the space that they lie "
                "in."};
    case Mending::CodePage:
        return {"A text was read as Western European, because the drawing's code page is unknown.",
                "# texts were read as Western European, because the drawing's code page is unknown."};
    }
    return {};
}

} // namespace

Notes Mendings::sentences() const
{
    Notes result;
    for (const auto& [what, count] : m_counts) {
        const Wording wording = wordingOf(what);
        std::string& sentence = result.emplace_back(count == 1 ? wording.one : wording.many);
        if (sentence.starts_with('#')) {
            sentence.replace(0, 1, std::to_string(count));
        }
    }
    return result;
}

} // namespace drawing
