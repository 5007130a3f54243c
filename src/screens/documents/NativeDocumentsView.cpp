#include "screens/documents/NativeDocumentsView.h"

#include "screens/documents/DocumentRules.h"
#include "screens/documents/TarnDocumentCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QClipboard>
#include <QCoroTimer>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QPointer>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int noticeMs = 3'000;

bool expiredTurn(const TarnEnvelope &envelope)
{
    return std::any_of(envelope.signers.begin(), envelope.signers.end(),
        [](const TarnEnvelopeSigner &s) { return s.status == "expired"_L1; });
}

} // namespace

NativeDocumentsView::NativeDocumentsView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_documents(new NativeDocumentModel(this))
    , m_signers(new NativeSignerModel(this))
    , m_preview(new NativePdfPreview(api, this))
{
    m_noticeTimer.setSingleShot(true);
    m_noticeTimer.setInterval(noticeMs);
    connect(&m_noticeTimer, &QTimer::timeout, this, [this] { say({}); });
}

NativeDocumentsView::~NativeDocumentsView() = default;

void NativeDocumentsView::setSection(const QString &section)
{
    if (m_section == section)
        return;
    m_section = section;
    applyFilter();
    Q_EMIT sectionChanged();
}

void NativeDocumentsView::setSearch(const QString &search)
{
    if (m_search == search)
        return;
    m_search = search;
    applyFilter();
    Q_EMIT sectionChanged();
}

QString NativeDocumentsView::emptyText() const
{
    if (!m_search.trimmed().isEmpty())
        return u"Nothing here matches \u201c%1\u201d."_s.arg(m_search.trimmed());
    if (m_section == "Envelopes"_L1)
        return u"No document has been sent for signature yet."_s;
    return u"There are no %1 yet."_s.arg(m_section.toLower());
}

QVariantMap NativeDocumentsView::openEnvelope() const
{
    if (!m_envelope)
        return {};
    const TarnEnvelope &e = *m_envelope;
    return { { u"id"_s, e.id }, { u"title"_s, e.title }, { u"message"_s, e.message }, { u"status"_s, e.status },
        { u"sender"_s, e.sender_name }, { u"progress"_s, DocumentRules::progressLabel(e) },
        { u"linkExpired"_s, e.status == "sent"_L1 && expiredTurn(e) } };
}

bool NativeDocumentsView::canSend() const
{
    return m_envelope
        && (m_envelope->status == "draft"_L1 || (m_envelope->status == "sent"_L1 && expiredTurn(*m_envelope)))
        && !m_busy;
}

QString NativeDocumentsView::signUrl() const
{
    if (!m_envelope)
        return {};
    for (const TarnEnvelopeSigner &s : m_envelope->signers)
        if (s.sign_url)
            return *s.sign_url;
    return {};
}

void NativeDocumentsView::copySigningLink()
{
    const QString url = signUrl();
    if (url.isEmpty())
        return;
    if (QClipboard *clipboard = QGuiApplication::clipboard())
        clipboard->setText(url);
    say(u"Signing link copied"_s);
}

void NativeDocumentsView::openSigningPage()
{
    if (const QString url = signUrl(); !url.isEmpty())
        QDesktopServices::openUrl(QUrl(url));
}

QVariantList NativeDocumentsView::draftRecipients() const
{
    QVariantList out;
    if (m_draft)
        for (const TarnEnvelopeRecipient &r : m_draft->recipients)
            out.append(QVariantMap { { u"name"_s, r.name }, { u"email"_s, r.email } });
    return out;
}

void NativeDocumentsView::setDraftMessage(const QString &message)
{
    if (!m_draft || m_draft->message == message)
        return;
    m_draft->message = message;
    Q_EMIT draftChanged();
}

QString NativeDocumentsView::draftProblem() const
{
    return m_draft ? DocumentRules::recipientsProblem(m_draft->recipients) : QString();
}

void NativeDocumentsView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeDocumentsView::m_generation, ++m_generation, refreshIntervalMs, &NativeDocumentsView::refreshOnce);
    if (m_envelope)
        envelopeTask(m_envelope->id, ++m_envelopeGeneration);
}

void NativeDocumentsView::disappear()
{
    ++m_generation;
    ++m_envelopeGeneration;
}

void NativeDocumentsView::refresh()
{
    refreshOnce();
}

void NativeDocumentsView::clear()
{
    m_preview->close();
    ++m_generation;
    ++m_envelopeGeneration;
    m_all.clear();
    m_documents->setRows({});
    showEnvelope(std::nullopt);
    m_draft.reset();
    m_busy = m_loading = m_loaded = false;
    m_error.clear();
    say({});
    Q_EMIT draftChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeDocumentsView::refreshOnce()
{
    const QPointer<NativeDocumentsView> self(this);
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const QString every;
        const QList<TarnDocument> all = co_await TarnDocumentCalls::legacyDocuments(m_api, every);
        if (!self)
            co_return;
        showDocuments(all);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

void NativeDocumentsView::showDocuments(const QList<TarnDocument> &all)
{
    m_all = all;
    applyFilter();
}

void NativeDocumentsView::applyFilter()
{
    QList<TarnDocument> shown;
    for (const TarnDocument &d : std::as_const(m_all))
        if (DocumentRules::inSection(d, m_section) && DocumentRules::matchesSearch(d, m_search))
            shown.append(d);
    m_documents->setRows(shown);
}

void NativeDocumentsView::openDocument(const QString &documentId)
{
    const auto at = std::find_if(
        m_all.cbegin(), m_all.cend(), [&documentId](const TarnDocument &d) { return d.id == documentId; });
    if (at == m_all.cend())
        return;
    setError({});
    if (at->envelope_id && at->envelope_status != u"completed"_s) {
        m_draft.reset();
        Q_EMIT draftChanged();
        envelopeTask(*at->envelope_id, ++m_envelopeGeneration);
        return;
    }
    if (at->kind == "worksheet"_L1 && !at->envelope_id) {
        setError(u"A worksheet is a template; make an agreement or proposal from it first."_s);
        return;
    }
    if (at->envelope_id) {
        // Signed already: show who signed; a new envelope starts from there.
        envelopeTask(*at->envelope_id, ++m_envelopeGeneration);
        return;
    }
    startDraft(documentId);
}

void NativeDocumentsView::newEnvelope()
{
    if (m_envelope && (m_envelope->status == "completed"_L1 || m_envelope->status == "declined"_L1))
        startDraft(m_envelope->document_id);
}

// By value: the id may be the envelope's own, which closing it destroys.
void NativeDocumentsView::startDraft(QString documentId)
{
    ++m_envelopeGeneration;
    showEnvelope(std::nullopt);
    m_draft = TarnEnvelopeDraft { .document_id = std::move(documentId), .message = {}, .recipients = {} };
    Q_EMIT draftChanged();
}

void NativeDocumentsView::closeEnvelope()
{
    ++m_envelopeGeneration;
    showEnvelope(std::nullopt);
    m_draft.reset();
    Q_EMIT draftChanged();
}

void NativeDocumentsView::addRecipient(const QString &name, const QString &email)
{
    if (!m_draft)
        return;
    m_draft->recipients.append({ name.trimmed(), email.trimmed() });
    Q_EMIT draftChanged();
}

void NativeDocumentsView::removeRecipient(int index)
{
    if (!m_draft || index < 0 || index >= m_draft->recipients.size())
        return;
    m_draft->recipients.removeAt(index);
    Q_EMIT draftChanged();
}

void NativeDocumentsView::moveRecipient(int index, int by)
{
    if (!m_draft)
        return;
    const qsizetype to = index + by;
    if (index < 0 || index >= m_draft->recipients.size() || to < 0 || to >= m_draft->recipients.size())
        return;
    m_draft->recipients.move(index, to);
    Q_EMIT draftChanged();
}

void NativeDocumentsView::createEnvelope()
{
    if (!m_draft || m_busy)
        return;
    const QString problem = draftProblem();
    if (!problem.isEmpty()) {
        setError(problem);
        return;
    }
    createTask(*m_draft);
}

QCoro::Task<> NativeDocumentsView::createTask(TarnEnvelopeDraft draft)
{
    const QPointer<NativeDocumentsView> self(this);
    setBusy(true);
    try {
        const TarnEnvelope made = co_await TarnDocumentCalls::googleSignatureDoc(m_api, draft);
        if (!self)
            co_return;
        m_draft.reset();
        Q_EMIT draftChanged();
        ++m_envelopeGeneration;
        showEnvelope(made);
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    co_await finishAction();
}

void NativeDocumentsView::send()
{
    // A second click while the first is on, or on an envelope that went
    // out (its signer's link alive), sends nothing.
    if (!canSend())
        return;
    sendTask(m_envelope->id);
}

QCoro::Task<> NativeDocumentsView::sendTask(QString id)
{
    const QPointer<NativeDocumentsView> self(this);
    setBusy(true);
    try {
        const TarnEnvelope sent = co_await TarnDocumentCalls::sendEnvelope(m_api, id);
        if (!self)
            co_return;
        if (m_envelope && m_envelope->id == sent.id) {
            showEnvelope(sent);
            envelopeTask(sent.id, ++m_envelopeGeneration);
        }
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    co_await finishAction();
}

// The documents again after a change, as it shows in their list, then the
// action is over.
QCoro::Task<> NativeDocumentsView::finishAction()
{
    const QPointer<NativeDocumentsView> self(this);
    setBusy(false);
    co_await refreshOnce();
    if (!self)
        co_return;
    Q_EMIT actionFinished();
}

QCoro::Task<> NativeDocumentsView::envelopeTask(QString id, int generation)
{
    const QPointer<NativeDocumentsView> self(this);
    while (self && generation == m_envelopeGeneration) {
        QString status;
        try {
            const TarnEnvelope envelope = co_await TarnDocumentCalls::envelope(m_api, id);
            if (!self || generation != m_envelopeGeneration)
                co_return;
            // Completed or declined: the documents' list says so too.
            const bool finished = m_envelope && m_envelope->id == envelope.id && m_envelope->status == "sent"_L1
                && envelope.status != "sent"_L1;
            showEnvelope(envelope);
            status = envelope.status;
            if (finished)
                co_await refreshOnce();
        } catch (const TarnAPIError &error) {
            if (!self || generation != m_envelopeGeneration)
                co_return;
            fail(error);
            co_return;
        }
        if (!self || generation != m_envelopeGeneration || status != "sent"_L1)
            co_return;
        co_await TarnRefreshLoop::pause(signingPollMs);
    }
}

void NativeDocumentsView::showEnvelope(const std::optional<TarnEnvelope> &envelope)
{
    if (m_envelope == envelope)
        return;
    m_envelope = envelope;
    m_signers->setRows(envelope ? envelope->signers : QList<TarnEnvelopeSigner>());
    Q_EMIT envelopeChanged();
}

void NativeDocumentsView::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
    Q_EMIT envelopeChanged();
}

void NativeDocumentsView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeDocumentsView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeDocumentsView::say(const QString &text)
{
    // Said for a few seconds, then cleared.
    if (text.isEmpty())
        m_noticeTimer.stop();
    else
        m_noticeTimer.start();
    if (std::exchange(m_notice, text) != text)
        Q_EMIT noticeChanged();
}
