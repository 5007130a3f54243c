#pragma once

#include "money/TarnBooksRegister.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

class TarnAPI;

// The Expenses page: every expense line of a period's register, newest first
// (a reversal shows as a negative row), and the spend by account, largest
// first. The register is read a hundred entries at a time to its end.
class NativeBooksExpenses : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(QAbstractListModel *rows READ rows CONSTANT)
    Q_PROPERTY(QAbstractListModel *byAccount READ byAccount CONSTANT)

public:
    struct Row {
        QString id;
        QString date;
        QString title;
        QString account;
        QString amount;
        friend bool operator==(const Row &, const Row &) = default;
    };
    struct Group {
        QString label;
        int count = 0;
        QString amount;
        friend bool operator==(const Group &, const Group &) = default;
    };

    explicit NativeBooksExpenses(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QAbstractListModel *rows() { return &m_rows; }
    [[nodiscard]] QAbstractListModel *byAccount() { return &m_groups; }

    Q_INVOKABLE void load(const QString &start, const QString &end);

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> readRegister(QString start, QString end, int generation);

    TarnAPI &m_api;
    NativeKeyedListModel<Row, &Row::id> m_rows;
    NativeKeyedListModel<Group, &Group::label> m_groups;
    bool m_loading = false;
    QString m_error;
    int m_generation = 0;
};
