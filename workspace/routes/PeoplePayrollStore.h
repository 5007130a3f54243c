#pragma once

#include "workspace/WorkspaceReply.h"

#include <QDate>
#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// Payroll over the workspace's SQLite tables: hourly rates
// (`people_payroll_rates`), a period's status and notes
// (`people_payroll_periods`, a row once something changed), adjustments
// (`people_payroll_adjustments`) and every action with who took it and when
// (`people_payroll_log`). Hours are the time clock's closed entries inside
// the period's UTC days. Only an owner with the "Payroll" app may use it.
class PeoplePayrollStore {
public:
    explicit PeoplePayrollStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasRates() const;

    [[nodiscard]] WorkspaceReply overview(const QString &period) const;
    [[nodiscard]] WorkspaceReply act(
        const QString &me, const QString &period, const QString &action, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply saveNotes(const QString &me, const QString &period, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply removeAdjustment(const QString &me, const QString &id);
    [[nodiscard]] WorkspaceReply exportCSV(const QString &period) const;

    // For the demo.
    void setRate(const QString &personId, qint64 centsPerHour);
    void setStatus(QDate start, const QString &status, const QString &notes, const QString &by);
    void addAdjustment(QDate start, const QString &personId, const QString &label, qint64 amount, const QString &by);

private:
    [[nodiscard]] QJsonObject periodJSON(QDate start) const;
    [[nodiscard]] QString status(QDate start) const;
    void log(QDate start, const QString &action, const QString &me);

    WorkspaceStore &m_store;
};
