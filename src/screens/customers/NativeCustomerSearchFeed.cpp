#include "screens/customers/NativeCustomerSearchFeed.h"

#include "screens/customers/CustomerRules.h"
#include "screens/customers/TarnCustomerCalls.h"
#include "service/TarnAPIError.h"
#include "shell/NativeCommandSearch.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeCustomerSearchFeed::NativeCustomerSearchFeed(TarnAPI &api, NativeCommandSearch &search, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_search(search)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(delayMs);
    connect(&m_search, &NativeCommandSearch::queryChanged, this, [this] {
        if (m_search.query().trimmed().size() >= shortestQuery)
            m_delay.start();
        else
            m_delay.stop();
    });
    connect(&m_delay, &QTimer::timeout, this, [this] { searchTask(m_search.query()); });
}

QCoro::Task<> NativeCustomerSearchFeed::searchTask(QString query)
{
    const QPointer<NativeCustomerSearchFeed> self(this);
    const QString text = query.trimmed();
    TarnCustomerList list;
    try {
        list = co_await TarnCustomerCalls::clientSearch(m_api, text);
    } catch (const TarnAPIError &) {
        co_return;
    }
    if (!self)
        co_return;
    QList<NativeCommandSearch::Found> found;
    for (const TarnCustomerSummary &customer : std::as_const(list.clients)) {
        found.append({ .place = { .key = u"customer:"_s + customer.id,
                           .label = customer.name,
                           .detail = u"Customers · "_s + CustomerRules::stageLabel(customer.stage),
                           .symbol = u"person.crop.circle"_s,
                           .destination = { .screen = TarnScreen::sales, .section = u"Customers"_s } },
            .record = { .id = customer.id, .name = customer.name, .siblings = {} } });
    }
    m_search.setFound(query, found);
    Q_EMIT offered(query);
}
