#include "mail/NativeMailComposer.h"

#include "mail/TarnMailCalls.h"
#include "service/TarnAPIError.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

QStringList addresses(const QString &field)
{
    static const QRegularExpression separators(u"[,;\\n]+"_s);
    static const QRegularExpression spaces(u"\\s+"_s);
    QStringList out;
    for (const QString &part : field.split(separators, Qt::SkipEmptyParts)) {
        // "Name <address>" as pasted from elsewhere; else addresses apart.
        const qsizetype open = part.lastIndexOf(u'<');
        if (open >= 0)
            out.append(part.mid(open + 1).remove(u'>').trimmed());
        else
            out += part.split(spaces, Qt::SkipEmptyParts);
    }
    return out;
}

QString newKey()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace

NativeMailComposer::NativeMailComposer(TarnAPI &api, std::function<qint64()> clock, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_clock(std::move(clock))
{
    m_undoTimer.setSingleShot(true);
    m_undoTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_undoTimer, &QTimer::timeout, this, &NativeMailComposer::undoPeriodEnded);
}

qint64 NativeMailComposer::now() const
{
    return m_clock ? m_clock() : QDateTime::currentMSecsSinceEpoch();
}

QString NativeMailComposer::sendHint() const
{
    return u"Send (Ctrl+Enter). It queues for ten seconds so you can undo."_s;
}

void NativeMailComposer::setTo(const QString &to)
{
    if (to != m_to) {
        m_to = to;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setCc(const QString &cc)
{
    if (cc != m_cc) {
        m_cc = cc;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setBcc(const QString &bcc)
{
    if (bcc != m_bcc) {
        m_bcc = bcc;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setSubject(const QString &subject)
{
    if (subject != m_draft.subject) {
        m_draft.subject = subject;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setText(const QString &text)
{
    if (text != m_draft.text) {
        m_draft.text = text;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setFrom(const QString &from)
{
    const std::optional<QString> chosen
        = from.isEmpty() || (!m_accounts.isEmpty() && from == m_accounts.first()) ? std::nullopt : std::optional(from);
    if (chosen != m_draft.from) {
        m_draft.from = chosen;
        Q_EMIT draftChanged();
    }
}

void NativeMailComposer::setAccounts(const QStringList &accounts)
{
    if (accounts != m_accounts) {
        m_accounts = accounts;
        Q_EMIT accountsChanged();
    }
}

QVariantList NativeMailComposer::files() const
{
    QVariantList out;
    for (const MailDraftFile &file : m_draft.attachments)
        out.append(QVariantMap { { u"id"_s, file.id }, { u"name"_s, file.name }, { u"size"_s, file.data.size() } });
    return out;
}

void NativeMailComposer::setOpen(bool open)
{
    if (open != m_open) {
        m_open = open;
        Q_EMIT openChanged();
    }
}

void NativeMailComposer::setSending(bool sending)
{
    if (sending != m_sending) {
        m_sending = sending;
        Q_EMIT sendingChanged();
    }
}

void NativeMailComposer::setQueued(std::optional<Queued> queued)
{
    const bool changed = queued.has_value() != m_queued.has_value();
    m_queued = std::move(queued);
    if (m_queued)
        m_undoTimer.start(std::chrono::milliseconds(qMax<qint64>(0, m_queued->sendsAtMs - now())));
    else
        m_undoTimer.stop();
    if (changed)
        Q_EMIT undoChanged();
}

void NativeMailComposer::setStatus(const QString &status, const QString &error)
{
    if (status != m_status || error != m_error) {
        m_status = status;
        m_error = error;
        Q_EMIT statusChanged();
    }
}

void NativeMailComposer::start(const TarnMailSend &prefill)
{
    // A new message while another waits to go out: that one goes out, and
    // undoing it could no longer give its draft back without taking this one.
    setQueued(std::nullopt);
    m_draft = prefill;
    m_draft.idempotencyKey = newKey();
    m_to = m_draft.to.join(", "_L1);
    m_cc = m_draft.cc.join(", "_L1);
    m_bcc = m_draft.bcc.join(", "_L1);
    setStatus({}, {});
    Q_EMIT draftChanged();
    setOpen(true);
}

void NativeMailComposer::compose()
{
    start({});
}

void NativeMailComposer::discard()
{
    setOpen(false);
    setStatus({}, {});
}

void NativeMailComposer::clear()
{
    discard();
    setQueued(std::nullopt);
    m_draft = {};
    m_to.clear();
    m_cc.clear();
    m_bcc.clear();
    setAccounts({});
    Q_EMIT draftChanged();
}

bool NativeMailComposer::attach(const MailDraftFile &file)
{
    QList<MailDraftFile> next = m_draft.attachments;
    next.append(file);
    if (!TarnMailSend::attachmentsFit(next)) {
        setStatus({}, QString(TarnMailCalls::attachmentLimitText));
        return false;
    }
    m_draft.attachments = next;
    setStatus({}, {});
    Q_EMIT draftChanged();
    return true;
}

bool NativeMailComposer::attachPath(const QString &path)
{
    QFile file(path);
    // Checked before reading: a file past the limit is never read whole.
    if (file.size() > TarnMailSend::maxTotalBytes) {
        setStatus({}, QString(TarnMailCalls::attachmentLimitText));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        setStatus({}, u"“%1” could not be read."_s.arg(QFileInfo(path).fileName()));
        return false;
    }
    return attach({ newKey(), QFileInfo(path).fileName(), file.readAll() });
}

bool NativeMailComposer::attachFiles(const QList<QUrl> &files)
{
    for (const QUrl &file : files)
        if (!attachPath(file.toLocalFile()))
            return false;
    return true;
}

void NativeMailComposer::removeFile(const QString &id)
{
    const qsizetype removed = m_draft.attachments.removeIf([&id](const MailDraftFile &file) { return file.id == id; });
    if (removed > 0)
        Q_EMIT draftChanged();
}

void NativeMailComposer::send()
{
    if (m_sending || m_queued)
        return;
    TarnMailSend mail = m_draft;
    mail.to = addresses(m_to);
    mail.cc = addresses(m_cc);
    mail.bcc = addresses(m_bcc);
    if (mail.to.isEmpty() && mail.cc.isEmpty() && mail.bcc.isEmpty()) {
        setStatus({}, QString(noRecipientText));
        Q_EMIT finished();
        return;
    }
    if (mail.to.isEmpty())
        mail.to.append(mail.cc.isEmpty() ? mail.bcc.takeFirst() : mail.cc.takeFirst());
    sendTask(std::move(mail));
}

QCoro::Task<> NativeMailComposer::sendTask(TarnMailSend mail)
{
    const QPointer<NativeMailComposer> self(this);
    const QString key = mail.idempotencyKey;
    setSending(true);
    setStatus({}, {});
    try {
        QCoro::Task<TarnMailQueued> call = TarnMailCalls::send(m_api, std::move(mail));
        const TarnMailQueued queued = co_await std::move(call);
        if (!self || key != m_draft.idempotencyKey)
            co_return;
        setSending(false);
        setOpen(false);
        setQueued(Queued { queued.sendId, queued.sendsAtMs });
        setStatus(u"Sending…"_s, {});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        // The draft and its key stay, so sending again is a retry.
        setSending(false);
        setStatus({}, error.text());
    }
    Q_EMIT finished();
}

void NativeMailComposer::undo()
{
    if (!m_queued || m_sending)
        return;
    if (now() >= m_queued->sendsAtMs) {
        undoPeriodEnded();
        setStatus(QString(undoEndedText), {});
        Q_EMIT finished();
        return;
    }
    undoTask(m_queued->sendId);
}

QCoro::Task<> NativeMailComposer::undoTask(QString sendId)
{
    const QPointer<NativeMailComposer> self(this);
    setSending(true);
    try {
        QCoro::Task<TarnMailCancelled> call = TarnMailCalls::cancelSend(m_api, sendId);
        const TarnMailCancelled cancelled = co_await std::move(call);
        if (!self)
            co_return;
        setSending(false);
        if (cancelled.cancelled) {
            // Back to the draft as it was, with its key.
            setQueued(std::nullopt);
            setStatus({}, {});
            setOpen(true);
        } else {
            undoPeriodEnded();
            setStatus(QString(undoEndedText), {});
        }
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        setSending(false);
        setStatus(m_status, error.text());
    }
    Q_EMIT finished();
}

void NativeMailComposer::undoPeriodEnded()
{
    if (!m_queued)
        return;
    setQueued(std::nullopt);
    // The next draft is another message.
    m_draft = {};
    m_to.clear();
    m_cc.clear();
    m_bcc.clear();
    setStatus({}, {});
    Q_EMIT draftChanged();
    Q_EMIT sent();
}
