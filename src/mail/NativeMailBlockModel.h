#pragma once

#include "mail/MailBlockRow.h"
#include "mail/NativeMailView.h"
#include "shell/NativeKeyedListModel.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QTimer>

// The blocks of one message of the open thread, or of its quoted history,
// as rows for one delegate per kind. Made by each message's delegate; it
// follows the message's document as it is parsed again. A long message's
// rows are handed out a screenful at a time, one step per turn of the event
// loop: making thousands of delegates at once would hold the window for
// hundreds of milliseconds before its first frame.
class NativeMailBlockModel : public NativeKeyedListModel<MailBlockRow> {
    Q_OBJECT
    Q_PROPERTY(NativeMailView *view READ view WRITE setView NOTIFY sourceChanged)
    Q_PROPERTY(QString messageId READ messageId WRITE setMessageId NOTIFY sourceChanged)
    Q_PROPERTY(bool quoted READ quoted WRITE setQuoted NOTIFY sourceChanged)

public:
    explicit NativeMailBlockModel(QObject *parent = nullptr);

    [[nodiscard]] NativeMailView *view() const { return m_view; }
    void setView(NativeMailView *view);
    [[nodiscard]] QString messageId() const { return m_messageId; }
    void setMessageId(const QString &id);
    [[nodiscard]] bool quoted() const { return m_quoted; }
    void setQuoted(bool quoted);

Q_SIGNALS:
    void sourceChanged();

private:
    void reload();
    void showMore();
    // With "url": where the mail image provider serves each one.
    [[nodiscard]] QVariantList imagesWithURLs(const QVariantList &images) const;

    QPointer<NativeMailView> m_view;
    QString m_messageId;
    bool m_quoted = false;
    QList<MailBlockRow> m_all;
    QTimer m_more;
};
