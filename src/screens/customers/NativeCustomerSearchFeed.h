#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QTimer>

class NativeCommandSearch;
class TarnAPI;

// Feeds customers into the command search: a moment after the query
// settles, the customers it finds are offered after the places, each
// opening the register's Customers section with that customer's profile.
// A failed search offers none; the places stay as they are.
class NativeCustomerSearchFeed : public QObject {
    Q_OBJECT

public:
    static constexpr int delayMs = 200;
    // Shorter queries match too much to be worth asking about.
    static constexpr int shortestQuery = 2;

    NativeCustomerSearchFeed(TarnAPI &api, NativeCommandSearch &search, QObject *parent = nullptr);

Q_SIGNALS:
    // A search's answer was offered (for tests).
    void offered(const QString &query);

private:
    QCoro::Task<> searchTask(QString query);

    TarnAPI &m_api;
    NativeCommandSearch &m_search;
    QTimer m_delay;
};
