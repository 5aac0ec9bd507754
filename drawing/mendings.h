#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace drawing {

/// Plain English sentences.
using Notes = std::vector<std::string>;

/// What a reader mends in a file that does not keep to the rules.
enum class Mending
{
    EndOfFile,          // the mark at the file's end is missing
    SequenceEnd,        // the mark behind vertices or attributes is missing
    AnnouncedAttribute, // a block reference announces attributes and has none
    RepeatedHandle,     // another object has the handle
    UselessHandle,      // too high to leave room for new ones
    HandleSeed,         // no handle, or too high
    ForeignBlock,       // an entity of the drawing names a block as its owner that is no layout's
    CodePage,           // unknown
};

/// Counts what was mended in one file.
class Mendings
{
public:
    void add(Mending what) { ++m_counts[what]; }

    /// One plain English sentence for each kind of mending that there was.
    Notes sentences() const;

private:
    std::map<Mending, std::size_t> m_counts;
};

} // namespace drawing
