#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QVariant>

#include <functional>
#include <type_traits>

// A list model over plain rows that takes each new list as a difference by
// key rather than a reset: rows whose key is gone are removed, new keys are
// inserted, kept keys are moved into their new place, and kept rows whose
// value changed get dataChanged. Views keep their delegates, scroll position
// and current item, and a refresh that changes nothing emits nothing.
//
// Row needs operator== and a key unique within one list: its `key` member by
// default, or any member pointer or function of the row given as `keyOf`.
// The roles are given once, by name and how a row answers them; a subclass
// adds what its delegates call and calls setRows() whenever its source
// changes:
//
//     class NativeRoomModel : public NativeKeyedListModel<TarnRoom, &TarnRoom::id> {
//         Q_OBJECT
//     public:
//         NativeRoomModel() : NativeKeyedListModel({ { "name", &TarnRoom::name }, { "unread", &TarnRoom::unread } }) {
//         }
//     };
//
// Runs of neighbouring inserted or removed rows are announced together. The
// cost is linear in the rows for the usual refresh (a few rows come, go or
// change) and quadratic only when many rows change places.
template <typename Row, auto keyOf = &Row::key> class NativeKeyedListModel : public QAbstractListModel {
public:
    // A role: the name delegates declare it by, and a row's value for it.
    struct Role {
        QByteArray name;
        std::function<QVariant(const Row &)> value;
    };

    explicit NativeKeyedListModel(QList<Role> roles, QObject *parent = nullptr)
        : QAbstractListModel(parent)
        , m_roles(std::move(roles))
    {
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        const qsizetype at = role - firstRole;
        if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid) || at < 0
            || at >= m_roles.size())
            return {};
        return m_roles.at(at).value(m_rows.at(index.row()));
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override
    {
        QHash<int, QByteArray> names;
        for (qsizetype at = 0; at < m_roles.size(); ++at)
            names.insert(firstRole + static_cast<int>(at), m_roles.at(at).name);
        return names;
    }

    [[nodiscard]] const QList<Row> &rows() const { return m_rows; }

    void setRows(const QList<Row> &next)
    {
        QSet<Key> wanted;
        for (const Row &row : next)
            wanted.insert(keyFor(row));
        Q_ASSERT_X(wanted.size() == next.size(), "NativeKeyedListModel::setRows", "keys must be unique");

        // From the end, so that the rows ahead keep their indexes.
        for (qsizetype end = m_rows.size(); end > 0;) {
            if (wanted.contains(keyFor(m_rows.at(end - 1)))) {
                --end;
                continue;
            }
            qsizetype first = end - 1;
            while (first > 0 && !wanted.contains(keyFor(m_rows.at(first - 1))))
                --first;
            beginRemoveRows(QModelIndex(), static_cast<int>(first), static_cast<int>(end - 1));
            m_rows.remove(first, end - first);
            endRemoveRows();
            end = first;
        }

        QSet<Key> present;
        for (const Row &row : std::as_const(m_rows))
            present.insert(keyFor(row));
        for (qsizetype i = 0; i < next.size(); ++i) {
            if (!present.contains(keyFor(next.at(i)))) {
                qsizetype last = i;
                while (last + 1 < next.size() && !present.contains(keyFor(next.at(last + 1))))
                    ++last;
                beginInsertRows(QModelIndex(), static_cast<int>(i), static_cast<int>(last));
                for (qsizetype k = i; k <= last; ++k)
                    m_rows.insert(k, next.at(k));
                endInsertRows();
                i = last;
                continue;
            }
            qsizetype from = i;
            while (keyFor(m_rows.at(from)) != keyFor(next.at(i)))
                ++from;
            if (from != i) {
                beginMoveRows(
                    QModelIndex(), static_cast<int>(from), static_cast<int>(from), QModelIndex(), static_cast<int>(i));
                m_rows.move(from, i);
                endMoveRows();
            }
            if (!(m_rows.at(i) == next.at(i))) {
                m_rows[i] = next.at(i);
                const QModelIndex changed = index(static_cast<int>(i));
                Q_EMIT dataChanged(changed, changed);
            }
        }
    }

private:
    static constexpr int firstRole = Qt::UserRole + 1;
    using Key = std::decay_t<std::invoke_result_t<decltype(keyOf), const Row &>>;

    [[nodiscard]] static Key keyFor(const Row &row) { return std::invoke(keyOf, row); }

    QList<Role> m_roles;
    QList<Row> m_rows;
};
