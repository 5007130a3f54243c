#include "screens/documents/DocumentRules.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace DocumentRules {

namespace {

constexpr qsizetype recipientLimit = 10;

bool plausibleAddress(const QString &email)
{
    const qsizetype at = email.indexOf(u'@');
    return at > 0 && at == email.lastIndexOf(u'@') && email.indexOf(u'.', at) > at + 1 && !email.endsWith(u'.')
        && !email.contains(u' ');
}

} // namespace

bool inSection(const TarnDocument &document, const QString &section)
{
    if (section == "Envelopes"_L1)
        return document.envelope_id.has_value();
    if (section == "Agreements"_L1)
        return document.kind == "agreement"_L1;
    if (section == "Proposals"_L1)
        return document.kind == "proposal"_L1;
    return document.kind == "worksheet"_L1;
}

bool matchesSearch(const TarnDocument &document, const QString &search)
{
    const QString needle = search.trimmed();
    return needle.isEmpty() || document.title.contains(needle, Qt::CaseInsensitive)
        || document.client_name.value_or(QString()).contains(needle, Qt::CaseInsensitive)
        || document.owner_name.contains(needle, Qt::CaseInsensitive);
}

QString statusLabel(const TarnDocument &document)
{
    const QString envelope = document.envelope_status.value_or(QString());
    if (document.status == "signed"_L1 || envelope == "completed"_L1)
        return u"Signed"_s;
    if (envelope == "declined"_L1)
        return u"Declined"_s;
    if (envelope == "sent"_L1)
        return u"Out for signature"_s;
    if (envelope == "draft"_L1)
        return u"Ready to send"_s;
    return document.status == "draft"_L1 ? u"Draft"_s : u"Final"_s;
}

QString progressLabel(const TarnEnvelope &envelope)
{
    if (envelope.status == "draft"_L1)
        return u"Not sent yet"_s;
    if (envelope.status == "completed"_L1)
        return u"Signed by everyone"_s;
    const auto decliner = std::find_if(envelope.signers.begin(), envelope.signers.end(),
        [](const TarnEnvelopeSigner &s) { return s.status == "declined"_L1; });
    if (envelope.status == "declined"_L1 && decliner != envelope.signers.end())
        return u"Declined by %1"_s.arg(decliner->name);
    const auto signedCount = std::count_if(envelope.signers.begin(), envelope.signers.end(),
        [](const TarnEnvelopeSigner &s) { return s.status == "signed"_L1; });
    const QString progress = u"%1 of %2 signed"_s.arg(signedCount).arg(envelope.signers.size());
    if (std::any_of(envelope.signers.begin(), envelope.signers.end(),
            [](const TarnEnvelopeSigner &s) { return s.status == "expired"_L1; }))
        return progress + u"; the signing link has expired"_s;
    return progress;
}

QString recipientsProblem(const QList<TarnEnvelopeRecipient> &recipients)
{
    if (recipients.isEmpty())
        return u"Add someone to sign."_s;
    if (recipients.size() > recipientLimit)
        return u"An envelope goes to at most %1 signers."_s.arg(recipientLimit);
    QSet<QString> seen;
    for (const TarnEnvelopeRecipient &r : recipients) {
        if (r.name.trimmed().isEmpty())
            return u"Every signer needs a name."_s;
        const QString email = r.email.trimmed().toLower();
        if (!plausibleAddress(email))
            return u"%1 is not an email address."_s.arg(r.email.trimmed());
        if (seen.contains(email))
            return u"%1 is on the envelope twice."_s.arg(email);
        seen.insert(email);
    }
    return {};
}

} // namespace DocumentRules
