#pragma once

#include "screens/people/NativeHRRecordModel.h"
#include "screens/people/NativePeopleSection.h"
#include "screens/people/TarnHRRecord.h"
#include "screens/people/TarnPeopleRequests.h"

#include <QCoroTask>
#include <QString>
#include <QStringList>
#include <QVariantMap>

class TarnAPI;

// The HR section's state: the team's records by name, one chosen to read
// beside them, and an owner's change to it, checked by `HRRules` before it
// is sent and saved against the version it was read at. Everyone sees the
// team; contact details and changes are an owner's.
//
// The records are read when the section appears and after every change; a
// refusal (someone saved first, or not an owner) shows the records as the
// service has them with its text in `errorText`.
class NativeHRView : public NativePeopleSection {
    Q_OBJECT
    Q_PROPERTY(NativeHRRecordModel *records READ records CONSTANT)
    Q_PROPERTY(QString selectedId READ selectedId WRITE select NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(bool canEdit READ canEdit NOTIFY selectionChanged)
    Q_PROPERTY(QStringList employments READ employments CONSTANT)

public:
    explicit NativeHRView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeHRView() override;

    [[nodiscard]] NativeHRRecordModel *records() const { return m_records; }
    [[nodiscard]] QString selectedId() const { return m_selected; }
    // The chosen person's row by role name; the first person's until one is chosen.
    [[nodiscard]] QVariantMap selected() const { return m_records->recordOf(m_selected); }
    [[nodiscard]] bool canEdit() const;
    [[nodiscard]] QStringList employments() const;

    Q_INVOKABLE void refresh();
    void select(const QString &personId);
    Q_INVOKABLE void save(const QString &personId, const QString &jobTitle, const QString &employment,
        const QString &startedOn, const QString &phone, const QString &emergencyContact);
    void clear();

Q_SIGNALS:
    void selectionChanged();

private:
    QCoro::Task<> load();

    TarnAPI &m_api;
    NativeHRRecordModel *m_records;
    QString m_selected;
    // Answers from before a sign-out are dropped.
    int m_generation = 0;
};
