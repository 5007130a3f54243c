#pragma once

#include "chat/TarnGif.h"
#include "service/TarnAPIError.h"
#include "shell/NativeKeyedListModel.h"

#include <QByteArray>
#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>

class TarnAPI;

// One GIF offered by the picker, with its preview once it has come.
struct ChatGifRow {
    TarnGif gif;
    // A data URL of the preview's bytes, empty until they arrive.
    QString preview;

    friend bool operator==(const ChatGifRow &, const ChatGifRow &) = default;
};

inline const QString &chatGifKey(const ChatGifRow &row)
{
    return row.gif.id;
}

class NativeGifModel : public NativeKeyedListModel<ChatGifRow, &chatGifKey> {
    Q_OBJECT

public:
    explicit NativeGifModel(QObject *parent = nullptr);
};

// The GIF picker "/gif QUERY" opens: it searches the service's GIFs, shows
// their small previews, and on a pick fetches the full GIF and hands it
// over, named after its title. Without a GIF provider it shows the
// service's message instead of results.
class NativeGifPicker : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString query READ query NOTIFY resultsChanged)
    Q_PROPERTY(NativeGifModel *results READ results CONSTANT)
    Q_PROPERTY(bool configured READ configured NOTIFY resultsChanged)
    Q_PROPERTY(QString message READ message NOTIFY resultsChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)

public:
    explicit NativeGifPicker(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] QString query() const { return m_query; }
    [[nodiscard]] NativeGifModel *results() const { return m_results; }
    [[nodiscard]] bool configured() const { return m_configured; }
    [[nodiscard]] QString message() const { return m_message; }
    [[nodiscard]] bool busy() const { return m_busy; }

    Q_INVOKABLE void search(const QString &query);
    Q_INVOKABLE void pick(const QString &gifId);
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void resultsChanged();
    void busyChanged();
    // The full GIF, ready to be sent as a message's one attachment.
    void picked(const QString &fileName, const QByteArray &data);
    void failed(const TarnAPIError &error);

private:
    QCoro::Task<> searchTask(QString query, int generation);
    QCoro::Task<> pickTask(TarnGif gif);
    void setBusy(bool busy);

    TarnAPI &m_api;
    NativeGifModel *m_results;
    QString m_query;
    bool m_configured = true;
    QString m_message;
    bool m_busy = false;
    int m_generation = 0;
};
