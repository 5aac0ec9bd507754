#pragma once

#include <string>

namespace desk::script {

/// Whether this process holds no more than a desk at rest should: for runs that work it at random. Everything is called
/// on the windows' thread.
class Soundness
{
public:
    /// What the process holds now counts as what it should.
    Soundness();

    /// While nothing runs, nothing is open and no button is held. Empty if all is well, otherwise what is not, in
    /// words.
    std::wstring lookAtRest() const;
    /// The same at any other time: the host's rules alone.
    static std::wstring look();
    /// Whether it is a breach that the module may be brought to by erasing what it works on.
    static bool isTolerated(const std::string& breach);

private:
    int m_gdiObjects;
    int m_windows;
};

} // namespace desk::script
