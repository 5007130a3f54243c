#include "shell/NativeCommandSearch.h"

#include "shell/TarnNavigation.h"

#include <algorithm>

NativeCommandSearch::NativeCommandSearch(TarnNavigation &navigation, QObject *parent)
    : NativeKeyedListModel(
        {
            { "key", &TarnShell::Place::key },
            { "label", &TarnShell::Place::label },
            { "detail", &TarnShell::Place::detail },
            { "symbol", &TarnShell::Place::symbol },
        },
        parent)
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
    const int clamped = rowCount() == 0 ? -1 : std::clamp(index, 0, rowCount() - 1);
    if (m_currentIndex == clamped)
        return;
    m_currentIndex = clamped;
    Q_EMIT currentIndexChanged();
}

void NativeCommandSearch::setFound(const QString &query, const QList<Found> &found)
{
    if (query != m_query)
        return;
    m_found = found;
    QList<TarnShell::Place> rows = m_navigation.matchingPlaces(m_query);
    for (const Found &record : found)
        rows.append(record.place);
    setRows(rows);
    if (m_currentIndex < 0 && rowCount() > 0)
        setCurrentIndex(0);
}

void NativeCommandSearch::refresh()
{
    m_found.clear();
    setRows(m_navigation.matchingPlaces(m_query));
    // A new query starts again from the best match.
    const int best = rowCount() == 0 ? -1 : 0;
    if (m_currentIndex != best) {
        m_currentIndex = best;
        Q_EMIT currentIndexChanged();
    }
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
    if (rowCount() > 0)
        setCurrentIndex(m_currentIndex + step);
}

bool NativeCommandSearch::activate(int index)
{
    const int chosen = index < 0 ? m_currentIndex : index;
    if (chosen < 0 || chosen >= rowCount())
        return false;
    const TarnShell::Place place = rows().at(chosen);
    bool opened = false;
    if (TarnShell::inSettings(place.destination)) {
        m_navigation.setAppearanceOpen(true);
        opened = true;
    } else {
        opened = m_navigation.open(place.destination);
        const auto found = std::find_if(
            m_found.cbegin(), m_found.cend(), [&place](const Found &record) { return record.place.key == place.key; });
        if (opened && found != m_found.cend())
            m_navigation.setOpenRecord(found->record);
    }
    if (opened)
        close();
    return opened;
}
