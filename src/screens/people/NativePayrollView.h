#pragma once

#include "screens/people/NativePayrollLineModel.h"
#include "screens/people/NativePeopleSection.h"
#include "screens/people/TarnPayrollOverview.h"
#include "screens/people/TarnPeopleRequests.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>
#include <QVariantList>

#include <functional>

class TarnAPI;

// The payroll section's state, an owner's: one pay period (the current one
// until another is chosen) with its lines, total, status and notes; the
// actions its status allows (approve, reopen, mark paid, adjustments added
// and removed); notes saved against the version they were read at; and the
// period exported to a CSV file the person chose. A period without lines is
// said so in `errorText` and no file is written.
//
// Every change answers the period as it now is, which is shown; a refusal
// reads the period again and keeps the service's text in `errorText`.
class NativePayrollView : public NativePeopleSection {
    Q_OBJECT
    Q_PROPERTY(NativePayrollLineModel *lines READ lines CONSTANT)
    Q_PROPERTY(int lineCount READ lineCount NOTIFY overviewChanged)
    Q_PROPERTY(QVariantList periods READ periods NOTIFY overviewChanged)
    Q_PROPERTY(QString periodStart READ periodStart NOTIFY overviewChanged)
    Q_PROPERTY(QString status READ status NOTIFY overviewChanged)
    Q_PROPERTY(QString notes READ notes NOTIFY overviewChanged)
    Q_PROPERTY(QString totalText READ totalText NOTIFY overviewChanged)
    Q_PROPERTY(QStringList allowedActions READ allowedActions NOTIFY overviewChanged)
    Q_PROPERTY(bool canAdjust READ canAdjust NOTIFY overviewChanged)
    Q_PROPERTY(QString exportedTo READ exportedTo NOTIFY exportedToChanged)

public:
    explicit NativePayrollView(TarnAPI &api, QObject *parent = nullptr);
    ~NativePayrollView() override;

    [[nodiscard]] NativePayrollLineModel *lines() const { return m_lines; }
    // For the page: a list view's own count can lag behind its rows being removed.
    [[nodiscard]] int lineCount() const { return m_lines->rowCount(); }
    [[nodiscard]] QVariantList periods() const;
    [[nodiscard]] QString periodStart() const { return m_overview.period.start; }
    [[nodiscard]] QString status() const { return m_overview.period.status; }
    [[nodiscard]] QString notes() const { return m_overview.notes; }
    [[nodiscard]] QString totalText() const;
    // The period's own actions its status allows: "approve", "reopen", "mark-paid".
    [[nodiscard]] QStringList allowedActions() const;
    // Adjustments are added and removed while the period is open.
    [[nodiscard]] bool canAdjust() const;
    [[nodiscard]] QString exportedTo() const { return m_exportedTo; }

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void choosePeriod(const QString &start);
    // "approve", "reopen" or "mark-paid".
    Q_INVOKABLE void act(const QString &action);
    // The amount as typed ("12.50", "-40"); a deduction is negative.
    Q_INVOKABLE void addAdjustment(const QString &personId, const QString &label, const QString &amount);
    Q_INVOKABLE void removeAdjustment(const QString &id);
    Q_INVOKABLE void saveNotes(const QString &notes);
    // The file the person chose in the save dialog.
    Q_INVOKABLE void exportTo(const QUrl &file);
    void clear();

Q_SIGNALS:
    void overviewChanged();
    void exportedToChanged();

private:
    QCoro::Task<> load(std::optional<QString> period);
    QCoro::Task<> change(std::function<QCoro::Task<TarnPayrollOverview>()> call);
    QCoro::Task<> exportTask(QString period, QString filePath);
    void show(const TarnPayrollOverview &overview);

    TarnAPI &m_api;
    NativePayrollLineModel *m_lines;
    TarnPayrollOverview m_overview;
    QString m_exportedTo;
    // Answers for a period left behind are dropped.
    int m_shown = 0;
};
