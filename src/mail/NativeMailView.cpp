#include "mail/NativeMailView.h"

#include "mail/MailComposeRules.h"
#include "mail/MailParse.h"
#include "mail/TarnMailCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QFuture>
#include <QPointer>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

constexpr int searchDelayMs = 300;

std::optional<TarnMailAction> actionNamed(const QString &kind)
{
    using K = TarnMailAction::Kind;
    static const QHash<QString, K> kinds { { u"done"_s, K::Done }, { u"trash"_s, K::Trash },
        { u"untrash"_s, K::Untrash }, { u"unread"_s, K::Unread }, { u"inbox"_s, K::Inbox }, { u"pin"_s, K::Pin },
        { u"unpin"_s, K::Unpin } };
    const auto kindIt = kinds.constFind(kind);
    if (kindIt == kinds.constEnd())
        return std::nullopt;
    return TarnMailAction::simple(*kindIt);
}

QString recipientsLine(const TarnMailMessage &message)
{
    QStringList to;
    for (const TarnMailPerson &person : message.to)
        to.append(person.displayName());
    QString line = u"To "_s + to.join(", "_L1);
    if (message.cc && !message.cc->isEmpty()) {
        QStringList cc;
        for (const TarnMailPerson &person : *message.cc)
            cc.append(person.displayName());
        line += u" · Cc "_s + cc.join(", "_L1);
    }
    return line;
}

} // namespace

NativeMailView::NativeMailView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_threads(new NativeMailThreadModel(this))
    , m_messages(new NativeMailMessageModel(this))
    , m_composer(new NativeMailComposer(api, {}, this))
    , m_images(new NativeMailImages(api, this))
{
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setInterval(searchDelayMs);
    connect(&m_searchDelay, &QTimer::timeout, this, &NativeMailView::refresh);
}

NativeMailView::~NativeMailView() = default;

QString NativeMailView::emptyText() const
{
    if (!m_shownSearch.isEmpty())
        return u"No conversations match “"_s + m_shownSearch + u"”"_s;
    return QString(emptyListText);
}

void NativeMailView::setLoading(bool loading)
{
    if (loading != m_loading) {
        m_loading = loading;
        Q_EMIT loadingChanged();
    }
}

void NativeMailView::setError(const QString &text)
{
    if (text != m_error) {
        m_error = text;
        Q_EMIT errorTextChanged();
    }
}

void NativeMailView::setView(const QString &view)
{
    if (view == m_view && m_search.isEmpty())
        return;
    m_view = view;
    m_search.clear();
    m_threads->setRows({});
    setSelected(std::nullopt);
    refresh();
}

void NativeMailView::setSearchText(const QString &text)
{
    if (text == m_search)
        return;
    m_search = text;
    Q_EMIT listChanged();
    m_searchDelay.start();
}

void NativeMailView::connectMailbox()
{
    connectTask();
}

QCoro::Task<> NativeMailView::connectTask()
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailConnectStart> call = TarnMailCalls::connectStart(m_api);
        const TarnMailConnectStart start = co_await std::move(call);
        if (self)
            Q_EMIT connectStarted(QUrl(start.url));
    } catch (const TarnAPIError &error) {
        if (self)
            setError(error.text());
    }
}

void NativeMailView::finishConnecting(const QString &error)
{
    setError(error);
    if (error.isEmpty())
        refresh();
}

void NativeMailView::appear()
{
    refresh();
}

void NativeMailView::disappear()
{
    m_searchDelay.stop();
}

void NativeMailView::refresh()
{
    m_searchDelay.stop();
    loadTask(++m_listGeneration);
}

QCoro::Task<> NativeMailView::loadTask(int generation)
{
    const QPointer<NativeMailView> self(this);
    const QString search = m_search.trimmed();
    const QString view = m_view;
    setLoading(true);
    try {
        QCoro::Task<TarnMailStatus> call = TarnMailCalls::status(m_api);
        const TarnMailStatus status = co_await std::move(call);
        if (!self || generation != m_listGeneration)
            co_return;
        const bool first = !m_statusKnown || status.configured != m_connected;
        m_statusKnown = true;
        m_connected = status.configured;
        m_email = status.email;
        Q_EMIT statusChanged();
        if (!m_connected) {
            setLoading(false);
            Q_EMIT listLoaded();
            co_return;
        }
        if (first) {
            draftsTask();
            if (status.organize)
                labelsTask();
            QCoro::Task<TarnMailAccounts> accountsCall = TarnMailCalls::accounts(m_api);
            const TarnMailAccounts accounts = co_await std::move(accountsCall);
            if (!self)
                co_return;
            QStringList emails;
            for (const TarnMailPerson &account : accounts.accounts)
                emails.append(account.email);
            m_composer->setAccounts(emails);
        }
        QCoro::Task<TarnMailInbox> pageCall
            = search.isEmpty() ? TarnMailCalls::inbox(m_api, view) : TarnMailCalls::search(m_api, search);
        const TarnMailInbox page = co_await std::move(pageCall);
        if (!self || generation != m_listGeneration)
            co_return;
        m_shownSearch = search;
        m_cursor = page.nextCursor;
        m_loadFailed = false;
        setError({});
        showPage(page.sections, false);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_listGeneration)
            co_return;
        m_loadFailed = m_threads->rowCount() == 0;
        setError(error.text());
        Q_EMIT listChanged();
    }
    setLoading(false);
    Q_EMIT listLoaded();
}

void NativeMailView::loadMore()
{
    if (m_cursor && !m_loadingMore && !m_loading)
        moreTask(m_listGeneration);
}

QCoro::Task<> NativeMailView::moreTask(int generation)
{
    const QPointer<NativeMailView> self(this);
    m_loadingMore = true;
    Q_EMIT loadingChanged();
    try {
        QCoro::Task<TarnMailInbox> call = TarnMailCalls::inbox(m_api, m_view, m_cursor);
        const TarnMailInbox page = co_await std::move(call);
        if (!self || generation != m_listGeneration)
            co_return;
        m_cursor = page.nextCursor;
        showPage(page.sections, true);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        setError(error.text());
    }
    m_loadingMore = false;
    Q_EMIT loadingChanged();
    Q_EMIT listLoaded();
}

void NativeMailView::showPage(const QList<TarnMailSection> &sections, bool append)
{
    const QStringList before = m_threads->ids();
    QList<MailThreadRow> rows = append ? m_threads->rows() : QList<MailThreadRow>();
    QSet<QString> present;
    for (const MailThreadRow &row : std::as_const(rows))
        present.insert(row.key);
    // A thread that moved between pages while paging is listed once.
    for (const TarnMailSection &section : sections)
        for (const TarnMailCard &card : section.threads)
            if (!present.contains(card.id)) {
                present.insert(card.id);
                rows.append({ card.id, section.title, card });
            }
    m_threads->setRows(rows);
    Q_EMIT listChanged();
    if (m_selected && !present.contains(*m_selected))
        setSelected(TarnMailAction::nextSelection(m_selected, before, m_threads->ids()));
}

void NativeMailView::setSelected(const std::optional<QString> &id)
{
    if (id == m_selected)
        return;
    m_selected = id;
    Q_EMIT selectionChanged();
    closeThread();
    if (m_selected)
        threadTask(*m_selected, m_threadGeneration);
}

void NativeMailView::closeThread()
{
    ++m_threadGeneration;
    cancelLink();
    m_thread.reset();
    m_documents.clear();
    m_messages->setRows({});
    m_threadLoading = false;
    Q_EMIT threadChanged();
    Q_EMIT replyDraftsChanged();
}

void NativeMailView::select(const QString &threadId)
{
    setSelected(threadId.isEmpty() ? std::nullopt : std::optional(threadId));
}

void NativeMailView::moveSelection(int step)
{
    const QStringList ids = m_threads->ids();
    if (ids.isEmpty())
        return;
    const qsizetype at = m_selected ? ids.indexOf(*m_selected) : -1;
    const qsizetype next = at < 0 ? 0 : qBound<qsizetype>(0, at + step, ids.size() - 1);
    select(ids.at(next));
}

QCoro::Task<> NativeMailView::threadTask(QString id, int generation)
{
    const QPointer<NativeMailView> self(this);
    m_threadLoading = true;
    Q_EMIT threadChanged();
    try {
        QCoro::Task<TarnMailThreadResponse> call = TarnMailCalls::thread(m_api, id);
        const TarnMailThreadResponse response = co_await std::move(call);
        if (!self || generation != m_threadGeneration)
            co_return;
        m_thread = response.thread;
        m_threadLoading = false;
        QList<MailMessageRow> rows;
        for (const TarnMailMessage &message : m_thread->messages) {
            QVariantList files;
            for (const TarnMailAttachment &file : message.attachments)
                files.append(QVariantMap { { u"id"_s, file.id }, { u"name"_s, file.name }, { u"size"_s, file.size },
                    { u"mime"_s, file.mime.value_or(QString()) } });
            rows.append({ .key = message.id,
                .fromName = message.from.displayName(),
                .fromEmail = message.from.email,
                .recipients = recipientsLine(message),
                .date = message.date,
                .attachments = files });
        }
        m_messages->setRows(rows);
        QHash<QString, QList<TarnMailHTML::AttachmentRef>> attachments;
        for (const TarnMailMessage &message : m_thread->messages)
            for (const TarnMailAttachment &file : message.attachments)
                attachments[message.id].append({ file.id, file.name });
        m_images->setThread(m_thread->id, attachments);
        // Opening reads it; the list says so without asking again.
        QList<MailThreadRow> cards = m_threads->rows();
        for (MailThreadRow &row : cards)
            if (row.key == id)
                row.card.unread = false;
        m_threads->setRows(cards);
        Q_EMIT threadChanged();
        Q_EMIT replyDraftsChanged();
        for (const TarnMailMessage &message : m_thread->messages)
            startParse(message, false);
        if (m_thread->messages.isEmpty())
            Q_EMIT threadParsed();
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_threadGeneration)
            co_return;
        m_threadLoading = false;
        setError(error.text());
        Q_EMIT threadChanged();
    }
}

void NativeMailView::startParse(const TarnMailMessage &message, bool full)
{
    const MailParseInput input { message.id, message.html, message.text, message.snippet };
    const int generation = m_threadGeneration;
    QFuture<TarnMailDocument> future = MailParse::documentOnPool(input, full);
    // Runs here, on this object's thread, and not at all once it is gone.
    future.then(this, [this, generation, id = message.id, full](const TarnMailDocument &document) {
        if (generation != m_threadGeneration)
            return;
        m_documents.insert(id, document);
        QStringList remote;
        for (const QUrl &url : document.remoteImageURLs())
            remote.append(url.toString(QUrl::FullyEncoded));
        m_images->sign(remote);
        m_messages->update(id, [&](MailMessageRow &row) {
            row.parsing = false;
            row.full = full;
            row.truncated = document.truncated && !full;
            row.hasQuoted = !document.quoted.isEmpty();
            row.blockedTrackers = document.blockedTrackers;
            ++row.revision;
        });
        Q_EMIT documentChanged(id);
        for (const MailMessageRow &row : m_messages->rows())
            if (row.parsing)
                return;
        Q_EMIT threadParsed();
    });
}

const TarnMailDocument *NativeMailView::document(const QString &messageId) const
{
    const auto it = m_documents.constFind(messageId);
    return it == m_documents.constEnd() ? nullptr : &*it;
}

const TarnMailMessage *NativeMailView::message(const QString &id) const
{
    if (!m_thread)
        return nullptr;
    for (const TarnMailMessage &message : m_thread->messages)
        if (message.id == id)
            return &message;
    return nullptr;
}

void NativeMailView::showEntireMessage(const QString &messageId)
{
    const TarnMailMessage *found = message(messageId);
    const MailMessageRow *row = m_messages->row(messageId);
    if (!found || !row || row->full || row->parsing)
        return;
    m_messages->update(messageId, [](MailMessageRow &r) { r.parsing = true; });
    startParse(*found, true);
}

void NativeMailView::toggleQuoted(const QString &messageId)
{
    m_messages->update(messageId, [](MailMessageRow &row) { row.quotedShown = !row.quotedShown; });
}

QString NativeMailView::imageFailureText(int failed)
{
    if (failed <= 0)
        return {};
    return failed == 1 ? u"1 image could not be loaded."_s : u"%1 images could not be loaded."_s.arg(failed);
}

void NativeMailView::openLink(const QString &link)
{
    const LinkDecision decision = TarnMailHTML::linkDecision(QUrl(link, QUrl::StrictMode));
    if (decision.kind() == LinkDecision::Kind::Open)
        Q_EMIT openExternally(decision.url());
    if (decision.kind() == LinkDecision::Kind::Confirm && decision.url() != m_pendingLink) {
        m_pendingLink = decision.url();
        Q_EMIT pendingLinkChanged();
    }
}

void NativeMailView::confirmLink()
{
    const QUrl target = m_pendingLink;
    cancelLink();
    if (!target.isEmpty())
        Q_EMIT openExternally(target);
}

void NativeMailView::cancelLink()
{
    if (!m_pendingLink.isEmpty()) {
        m_pendingLink.clear();
        Q_EMIT pendingLinkChanged();
    }
}

void NativeMailView::saveAttachment(const QString &messageId, const QString &attachmentId, const QUrl &file)
{
    if (m_thread && file.isLocalFile())
        saveTask(m_thread->id, messageId, attachmentId, file);
}

QCoro::Task<> NativeMailView::saveTask(QString threadId, QString messageId, QString attachmentId, QUrl file)
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailDownloadedFile> call = TarnMailCalls::attachment(m_api, threadId, messageId, attachmentId);
        const TarnMailDownloadedFile downloaded = co_await std::move(call);
        if (!self)
            co_return;
        const std::optional<QByteArray> data = downloaded.data();
        QSaveFile out(file.toLocalFile());
        if (!data || !out.open(QIODevice::WriteOnly) || out.write(*data) != data->size() || !out.commit()) {
            setError(u"“%1” could not be saved."_s.arg(downloaded.name));
            Q_EMIT actionFinished();
            co_return;
        }
        setError({});
        Q_EMIT attachmentSaved(file);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        setError(error.text());
    }
    Q_EMIT actionFinished();
}

void NativeMailView::act(const QString &kind)
{
    const std::optional<TarnMailAction> action = actionNamed(kind);
    if (action && m_selected)
        actionTask(*action, *m_selected);
}

void NativeMailView::snooze(qint64 untilMs)
{
    if (m_selected)
        actionTask(TarnMailAction::snooze(untilMs), *m_selected);
}

void NativeMailView::setLabel(const QString &labelId, bool applied)
{
    if (m_selected)
        actionTask(TarnMailAction::label(labelId, applied), *m_selected);
}

QCoro::Task<> NativeMailView::actionTask(TarnMailAction action, QString threadId)
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailOK> call = TarnMailCalls::perform(m_api, action, threadId);
        co_await std::move(call);
        if (!self)
            co_return;
        const QStringList before = m_threads->ids();
        QList<MailThreadRow> rows = m_threads->rows();
        const bool leaves = action.leaves(m_shownSearch.isEmpty() ? m_view : QString());
        rows.removeIf([&](const MailThreadRow &row) { return leaves && row.key == threadId; });
        for (MailThreadRow &row : rows) {
            if (row.key != threadId)
                continue;
            if (action.kind() == TarnMailAction::Kind::Pin || action.kind() == TarnMailAction::Kind::Unpin)
                row.card.pinned = action.kind() == TarnMailAction::Kind::Pin;
            if (action.kind() == TarnMailAction::Kind::Unread)
                row.card.unread = true;
        }
        m_threads->setRows(rows);
        Q_EMIT listChanged();
        setError({});
        if (leaves)
            setSelected(TarnMailAction::nextSelection(m_selected, before, m_threads->ids()));
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        setError(error.text());
    }
    Q_EMIT actionFinished();
}

void NativeMailView::reply(bool all)
{
    if (m_thread && !m_thread->messages.isEmpty())
        m_composer->start(MailComposeRules::reply(*m_thread, m_thread->messages.last(), m_email, all));
}

void NativeMailView::forward()
{
    if (m_thread && !m_thread->messages.isEmpty())
        m_composer->start(MailComposeRules::forward(*m_thread, m_thread->messages.last()));
}

QVariantList NativeMailView::replyDrafts() const
{
    QVariantList out;
    if (!m_thread)
        return out;
    for (const TarnMailReplyDraft &draft : m_drafts)
        if (draft.threadId == m_thread->id)
            out.append(QVariantMap { { u"id"_s, draft.id }, { u"draft"_s, draft.draft },
                { u"preview"_s, draft.preview }, { u"from"_s, draft.from.displayName() } });
    return out;
}

QCoro::Task<> NativeMailView::draftsTask()
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailReplyDrafts> call = TarnMailCalls::replyDrafts(m_api);
        const TarnMailReplyDrafts drafts = co_await std::move(call);
        if (!self)
            co_return;
        m_drafts = drafts.enabled ? drafts.drafts : QList<TarnMailReplyDraft>();
        Q_EMIT replyDraftsChanged();
    } catch (const TarnAPIError &error) {
        if (self)
            setError(error.text());
    }
}

QVariantList NativeMailView::labels() const
{
    QVariantList out;
    for (const TarnMailLabel &label : m_labels)
        out.append(QVariantMap { { u"id"_s, label.id }, { u"name"_s, label.name } });
    return out;
}

QCoro::Task<> NativeMailView::labelsTask()
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailLabels> call = TarnMailCalls::labels(m_api);
        const TarnMailLabels labels = co_await std::move(call);
        if (!self)
            co_return;
        m_labels = labels.labels;
        Q_EMIT labelsChanged();
    } catch (const TarnAPIError &error) {
        if (self)
            setError(error.text());
    }
}

void NativeMailView::useReplyDraft(const QString &draftId)
{
    for (const TarnMailReplyDraft &draft : std::as_const(m_drafts)) {
        const TarnMailMessage *answered = message(draft.messageId);
        if (draft.id != draftId || !answered)
            continue;
        TarnMailSend prefill = MailComposeRules::reply(*m_thread, *answered, m_email, false);
        prefill.text = draft.draft;
        m_composer->start(prefill);
    }
}

void NativeMailView::skipReplyDraft(const QString &draftId)
{
    draftActionTask(draftId, true, {});
}

void NativeMailView::instructReplyDraft(const QString &draftId, const QString &instruction)
{
    draftActionTask(draftId, false, instruction);
}

QCoro::Task<> NativeMailView::draftActionTask(QString id, bool skip, QString instruction)
{
    const QPointer<NativeMailView> self(this);
    try {
        QCoro::Task<TarnMailOKReply> call = TarnMailCalls::actOnReplyDraft(m_api, id, skip, instruction);
        co_await std::move(call);
        if (!self)
            co_return;
        QCoro::Task<> reload = draftsTask();
        co_await std::move(reload);
    } catch (const TarnAPIError &error) {
        if (self)
            setError(error.text());
    }
    if (self)
        Q_EMIT actionFinished();
}

void NativeMailView::clear()
{
    ++m_listGeneration;
    m_searchDelay.stop();
    m_statusKnown = false;
    m_connected = false;
    m_email.clear();
    m_search.clear();
    m_shownSearch.clear();
    m_cursor.reset();
    m_loadFailed = false;
    m_drafts.clear();
    m_labels.clear();
    m_threads->setRows({});
    setSelected(std::nullopt);
    closeThread();
    m_composer->clear();
    setError({});
    setLoading(false);
    Q_EMIT statusChanged();
    Q_EMIT listChanged();
    Q_EMIT replyDraftsChanged();
    Q_EMIT labelsChanged();
}
