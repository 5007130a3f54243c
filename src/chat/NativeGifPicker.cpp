#include "chat/NativeGifPicker.h"

#include "chat/ChatGifCommand.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeGifModel::NativeGifModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "gifId", [](const ChatGifRow &r) { return r.gif.id; } },
            { "title", [](const ChatGifRow &r) { return r.gif.title; } },
            { "gifWidth", [](const ChatGifRow &r) { return r.gif.width; } },
            { "gifHeight", [](const ChatGifRow &r) { return r.gif.height; } },
            { "preview", [](const ChatGifRow &r) { return r.preview; } },
        },
        parent)
{
}

NativeGifPicker::NativeGifPicker(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_results(new NativeGifModel(this))
{
}

void NativeGifPicker::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}

void NativeGifPicker::clear()
{
    ++m_generation;
    m_query.clear();
    m_message.clear();
    m_configured = true;
    m_results->setRows({});
    setBusy(false);
    Q_EMIT resultsChanged();
}

void NativeGifPicker::search(const QString &query)
{
    m_query = query;
    Q_EMIT resultsChanged();
    setBusy(true);
    searchTask(query, ++m_generation);
}

QCoro::Task<> NativeGifPicker::searchTask(QString query, int generation)
{
    const QPointer<NativeGifPicker> self(this);
    TarnGifSearch found;
    try {
        QString q = query;
        found = co_await TarnChatCalls::gifs(m_api, std::move(q));
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation) {
            setBusy(false);
            Q_EMIT failed(error);
        }
        co_return;
    }
    if (!self || generation != m_generation)
        co_return;
    m_configured = found.configured;
    m_message = found.message.value_or(QString());
    QList<ChatGifRow> rows;
    for (const TarnGif &gif : std::as_const(found.results))
        rows.append({ gif, {} });
    m_results->setRows(rows);
    Q_EMIT resultsChanged();
    // Previews one after the other; a new search stops them.
    for (const TarnGif &gif : std::as_const(found.results)) {
        QByteArray bytes;
        try {
            QString id = gif.id;
            bytes = co_await TarnChatCalls::gifData(m_api, std::move(id), true);
        } catch (const TarnAPIError &) {
            // A preview that does not come leaves its tile blank.
            continue;
        }
        if (!self || generation != m_generation)
            co_return;
        QList<ChatGifRow> shown = m_results->rows();
        for (ChatGifRow &row : shown) {
            if (row.gif.id == gif.id)
                row.preview = u"data:image/gif;base64,"_s + QString::fromLatin1(bytes.toBase64());
        }
        m_results->setRows(shown);
    }
    setBusy(false);
}

void NativeGifPicker::pick(const QString &gifId)
{
    for (const ChatGifRow &row : m_results->rows()) {
        if (row.gif.id == gifId) {
            setBusy(true);
            pickTask(row.gif);
            return;
        }
    }
}

QCoro::Task<> NativeGifPicker::pickTask(TarnGif gif)
{
    const QPointer<NativeGifPicker> self(this);
    QByteArray bytes;
    try {
        QString id = gif.id;
        bytes = co_await TarnChatCalls::gifData(m_api, std::move(id), false);
    } catch (const TarnAPIError &error) {
        if (self) {
            setBusy(false);
            Q_EMIT failed(error);
        }
        co_return;
    }
    if (!self)
        co_return;
    setBusy(false);
    Q_EMIT picked(ChatGifCommand::fileName(gif.title), bytes);
}
