#pragma once

#include "money/TarnBankCSV.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

class TarnAPI;

// The Banking page's statement import: a chosen file is read and checked
// here (size, UTF-8, then every row), previewed as "N rows ready for" the
// bank account, or replaced by the reader's one message with no rows kept;
// importing sends the rows and shows what the service stored and what it
// already had.
class NativeBankImport : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString hint READ hint CONSTANT)
    Q_PROPERTY(QString fileName READ fileName NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(bool refused READ refused NOTIFY changed)
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    Q_PROPERTY(bool importing READ importing NOTIFY changed)
    Q_PROPERTY(QString result READ result NOTIFY changed)

public:
    explicit NativeBankImport(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] static QString hint();
    [[nodiscard]] QString fileName() const { return m_fileName; }
    [[nodiscard]] QString status() const { return m_status; }
    [[nodiscard]] bool refused() const { return m_refused; }
    [[nodiscard]] bool ready() const { return !m_rows.isEmpty() && !m_importing; }
    [[nodiscard]] bool importing() const { return m_importing; }
    [[nodiscard]] QString result() const { return m_result; }
    [[nodiscard]] const QList<TarnBankCSV::Row> &rows() const { return m_rows; }

    // A file from the chooser or dropped on the page, for that bank account.
    Q_INVOKABLE void choose(const QUrl &file, const QString &bankAccountID, const QString &bankAccountName);
    Q_INVOKABLE void send();

Q_SIGNALS:
    void changed();
    // The service stored the rows: the books are loaded again.
    void imported();

private:
    QCoro::Task<> importRows(QString bankID, QList<TarnBankCSV::Row> rows, int generation);
    void refuse(const QString &message);

    TarnAPI &m_api;
    QString m_fileName;
    QString m_bankID;
    QString m_status;
    bool m_refused = false;
    bool m_importing = false;
    QString m_result;
    QList<TarnBankCSV::Row> m_rows;
    // Bumped by every choice: an import's answer for an earlier file is kept
    // out of the new one's preview.
    int m_generation = 0;
};
