#include "standin/desk/view_history.h"

namespace desk {
namespace {

constexpr std::size_t keptViews = 50;

} // namespace

void ViewHistory::change(const std::function<void(ViewTransform&)>& change)
{
    const ViewTransform former = m_present;
    change(m_present);
    if (m_present == former)
        return;
    m_former.push_back(former);
    if (m_former.size() > keptViews)
        m_former.erase(m_former.begin());
    m_windows.viewChanged();
}

void ViewHistory::previous()
{
    if (m_former.empty())
        return;
    m_present.set(m_former.back().centre(), m_former.back().height());
    m_former.pop_back();
    m_windows.viewChanged();
}

void ViewHistory::restart(Vec2 centre, double height)
{
    m_present.set(centre, height);
    m_former.clear();
}

} // namespace desk
