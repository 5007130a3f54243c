#pragma once

#include "shell/NativeKeyedListModel.h"
#include "shell/TarnOpenRecord.h"
#include "shell/TarnShell.h"

#include <QList>
#include <QString>

class TarnNavigation;

// The command search (Ctrl+K): a list of every place the person may open,
// filtered as they type, with one highlighted place that Enter opens. Its
// open state is the navigation's `searchOpen`, so any screen can open or
// close it. Records other parts find for the query (customers by name)
// follow the places; choosing one opens its place with the record open.
class NativeCommandSearch : public NativeKeyedListModel<TarnShell::Place> {
    Q_OBJECT
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    // A record found for a query, and the place that shows it.
    struct Found {
        TarnShell::Place place;
        TarnOpenRecord record;
    };

    explicit NativeCommandSearch(TarnNavigation &navigation, QObject *parent = nullptr);

    [[nodiscard]] QString query() const { return m_query; }
    // -1 when nothing matches.
    [[nodiscard]] int currentIndex() const { return m_currentIndex; }

    void setQuery(const QString &query);
    void setCurrentIndex(int index);

    // Opens the search afresh (an empty query, the first place highlighted),
    // or closes it when it is open.
    Q_INVOKABLE void toggle();
    Q_INVOKABLE void close();
    // Moves the highlight by `step`, stopping at either end.
    Q_INVOKABLE void move(int step);
    // Goes to the place at `index` (the highlighted one for -1) and closes the
    // search. A settings page opens the settings window instead. False when
    // there is nothing there.
    Q_INVOKABLE bool activate(int index = -1);

    // Records found for `query`, listed while it is still the query; an
    // answer for an older query is dropped.
    void setFound(const QString &query, const QList<Found> &found);

Q_SIGNALS:
    void queryChanged();
    void currentIndexChanged();

private:
    void refresh();

    TarnNavigation &m_navigation;
    QString m_query;
    QList<Found> m_found;
    int m_currentIndex = -1;
};
