#pragma once

#include "money/TarnBooks.h"
#include "money/TarnBooksPages.h"
#include "money/TarnPaymentRecords.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

class TarnAPI;

// The Dashboard page: money in and money out for the twelve months ending
// this month as chart bars (from the books report of each month, the
// workspace's payments standing in where the books show no income), their
// totals, the unpaid bills and a note on the linked bank accounts.
class NativeBooksDashboard : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(QAbstractListModel *bars READ bars CONSTANT)
    Q_PROPERTY(double largestBar READ largestBar NOTIFY changed)
    Q_PROPERTY(QStringList chartMonths READ chartMonths NOTIFY changed)
    Q_PROPERTY(QVariantList chartIn READ chartIn NOTIFY changed)
    Q_PROPERTY(QVariantList chartOut READ chartOut NOTIFY changed)
    Q_PROPERTY(double chartTop READ chartTop NOTIFY changed)
    Q_PROPERTY(int chartTicks READ chartTicks NOTIFY changed)
    Q_PROPERTY(QString chartLabelFormat READ chartLabelFormat NOTIFY changed)
    Q_PROPERTY(QString moneyIn READ moneyIn NOTIFY changed)
    Q_PROPERTY(QString moneyOut READ moneyOut NOTIFY changed)
    Q_PROPERTY(QString unpaidBills READ unpaidBills NOTIFY changed)
    Q_PROPERTY(QString bankNote READ bankNote NOTIFY changed)

public:
    static constexpr int monthCount = 12;

    struct Bar {
        // month and kind: one bar per month and direction.
        QString key;
        QString month;
        QString label;
        QString kind;
        qint64 cents = 0;
        friend bool operator==(const Bar &, const Bar &) = default;
    };

    // The value axis of the chart: bars are drawn in `unit` dollars (1, or
    // 1,000 once the largest bar reaches $10,000, so that labels stay short),
    // from 0 to `top` with `ticks` evenly spaced labels, each a round number.
    struct ChartScale {
        double top = 1;
        int ticks = 2;
        double unit = 1;
        QString labelFormat;
        friend bool operator==(const ChartScale &, const ChartScale &) = default;
    };
    [[nodiscard]] static ChartScale scaleFor(qint64 largestCents);

    explicit NativeBooksDashboard(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QAbstractListModel *bars() { return &m_bars; }
    [[nodiscard]] double largestBar() const;
    [[nodiscard]] QStringList chartMonths() const;
    // In the axis unit, as the chart's bar sets take them.
    [[nodiscard]] QVariantList chartIn() const;
    [[nodiscard]] QVariantList chartOut() const;
    [[nodiscard]] ChartScale chartScale() const { return scaleFor(static_cast<qint64>(largestBar())); }
    [[nodiscard]] double chartTop() const { return chartScale().top; }
    [[nodiscard]] int chartTicks() const { return chartScale().ticks; }
    [[nodiscard]] QString chartLabelFormat() const { return chartScale().labelFormat; }
    [[nodiscard]] QString moneyIn() const;
    [[nodiscard]] QString moneyOut() const;
    [[nodiscard]] QString unpaidBills() const;
    [[nodiscard]] QString bankNote() const { return m_bankNote; }

    // The overview and the workspace's payments (none for a person without
    // the terminal); loads the months' reports ending with `today`'s month.
    void show(const TarnBooks &books, const QList<TarnPayment> &payments, QDate today);

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QVariantList chartValues(const QString &kind) const;
    QCoro::Task<> loadReports(QList<QString> months, int generation);

    TarnAPI &m_api;
    QList<TarnPayment> m_payments;
    QList<TarnBooksPages::MonthSummary> m_summaries;
    TarnBooksPages::UnpaidBills m_unpaid;
    NativeKeyedListModel<Bar, &Bar::key> m_bars;
    QString m_bankNote;
    bool m_loading = false;
    QString m_error;
    int m_generation = 0;
};
