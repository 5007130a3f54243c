#include "shell/NativeCommandSearch.h"

#include "shell/TarnNavigation.h"

NativeCommandSearch::NativeCommandSearch(TarnNavigation &navigation, QObject *parent)
    : QObject(parent)
    , m_navigation(navigation)
{
    connect(&m_navigation, &TarnNavigation::accessChanged, this, &NativeCommandSearch::refresh);
    refresh();
}

void NativeCommandSearch::setQuery(const QString &query)
{
    if (m_query == query)
        return;
    m_query = query;
    Q_EMIT queryChanged();
    refresh();
}

void NativeCommandSearch::setCurrentIndex(int index)
{
    const int clamped = m_results.isEmpty() ? -1 : std::clamp(index, 0, int(m_results.size()) - 1);
    if (m_currentIndex == clamped)
        return;
    m_currentIndex = clamped;
    Q_EMIT currentIndexChanged();
}

void NativeCommandSearch::refresh()
{
    m_results = m_navigation.matchingPlaces(m_query);
    Q_EMIT resultsChanged();
    // A new query starts again from the best match.
    m_currentIndex = m_results.isEmpty() ? -1 : 0;
    Q_EMIT currentIndexChanged();
}

void NativeCommandSearch::toggle()
{
    if (m_navigation.searchOpen()) {
        close();
        return;
    }
    if (!m_navigation.hasAccess())
        return;
    setQuery({});
    setCurrentIndex(0);
    m_navigation.setSearchOpen(true);
}

void NativeCommandSearch::close()
{
    m_navigation.setSearchOpen(false);
}

void NativeCommandSearch::move(int step)
{
    if (!m_results.isEmpty())
        setCurrentIndex(m_currentIndex + step);
}

bool NativeCommandSearch::activate(int index)
{
    const int chosen = index < 0 ? m_currentIndex : index;
    if (chosen < 0 || chosen >= m_results.size())
        return false;
    const TarnShell::Place place = m_results.at(chosen);
    bool opened = false;
    if (TarnShell::inSettings(place.destination)) {
        m_navigation.setAppearanceOpen(true);
        opened = true;
    } else {
        opened = m_navigation.open(place.destination);
    }
    if (opened)
        close();
    return opened;
}
