#include "workspace/routes/PaymentsCardSessions.h"

#include "workspace/routes/BooksSql.h"

#include <QCryptographicHash>
#include <QDate>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QUrl>
#include <QUrlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using namespace BooksSql;

namespace {

QString hashOf(const QString &token)
{
    return QString::fromLatin1(QCryptographicHash::hash(token.toUtf8(), QCryptographicHash::Sha256).toHex());
}

QString newToken()
{
    QByteArray bytes(24, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

bool luhn(QStringView digits)
{
    int sum = 0;
    bool twice = false;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        int digit = digits[i].digitValue();
        if (twice && (digit *= 2) > 9)
            digit -= 9;
        sum += digit;
        twice = !twice;
    }
    return sum % 10 == 0;
}

QString cardType(QStringView number)
{
    const int two = number.left(2).toInt();
    const int three = number.left(3).toInt();
    const int four = number.left(4).toInt();
    if (number.startsWith(u'4'))
        return u"Visa"_s;
    if ((two >= 51 && two <= 55) || (four >= 2221 && four <= 2720))
        return u"Mastercard"_s;
    if (two == 34 || two == 37)
        return u"American Express"_s;
    if (four == 6011 || two == 65 || (three >= 644 && three <= 649))
        return u"Discover"_s;
    return u"Card"_s;
}

struct Typed {
    QString number;
    QString expiry;
    QString cvc;
};

struct Checked {
    QStringList problems;
    QString digits;
    QString expiration;
};

// What the processor's form checks: the number by its check digit, an
// expiry month not yet over, and a security code of the card type's length.
Checked check(const Typed &typed, const QDate &today)
{
    Checked checked;
    checked.digits = QString(typed.number).remove(QRegularExpression(u"[ -]"_s));
    static const QRegularExpression digitsOnly(u"^[0-9]{12,19}$"_s);
    if (!digitsOnly.match(checked.digits).hasMatch() || !luhn(checked.digits))
        checked.problems.append(u"Check the card number."_s);
    static const QRegularExpression expiryShape(u"^(0[1-9]|1[0-2])\\s*/\\s*([0-9]{2}|[0-9]{4})$"_s);
    const QRegularExpressionMatch expiry = expiryShape.match(typed.expiry.trimmed());
    if (!expiry.hasMatch()) {
        checked.problems.append(u"Give the expiry as MM/YY."_s);
    } else {
        const int month = expiry.captured(1).toInt();
        const int year
            = expiry.captured(2).size() == 2 ? 2000 + expiry.captured(2).toInt() : expiry.captured(2).toInt();
        if (QDate(year, month, 1).addMonths(1) <= today)
            checked.problems.append(u"This card has expired."_s);
        checked.expiration = u"%1/%2"_s.arg(month, 2, 10, QChar(u'0')).arg(year % 100, 2, 10, QChar(u'0'));
    }
    const int cvcLength = cardType(checked.digits) == "American Express"_L1 ? 4 : 3;
    static const QRegularExpression cvcShape(u"^[0-9]+$"_s);
    if (typed.cvc.size() != cvcLength || !cvcShape.match(typed.cvc).hasMatch())
        checked.problems.append(u"Give the %1-digit security code."_s.arg(cvcLength));
    return checked;
}

constexpr auto title = "Save a card"_L1;

// The form, with what was typed (never the security code) and what is wrong.
WorkspaceReply form(const QString &token, const Typed &typed, const QStringList &problems)
{
    QString errors;
    for (const QString &problem : problems)
        errors += u"<li>%1</li>"_s.arg(problem.toHtmlEscaped());
    const QString content
        = u"%1<form method=\"post\" action=\"/card-sessions/%2\">"
          "<p><label>Card number<br><input name=\"number\" autocomplete=\"cc-number\" value=\"%3\">"
          "</label></p><p><label>Expiry (MM/YY)<br><input name=\"expiry\" autocomplete=\"cc-exp\""
          " value=\"%4\"></label></p><p><label>Security code<br><input name=\"cvc\""
          " autocomplete=\"cc-csc\"></label></p><p><button type=\"submit\">Save card</button></p>"
          "</form><p class=\"note\">Only the card type, its last four digits and its expiry are"
          " kept.</p>"_s.arg(errors.isEmpty() ? QString() : u"<ul class=\"errors\">%1</ul>"_s.arg(errors),
              QString::fromLatin1(QUrl::toPercentEncoding(token)), typed.number.toHtmlEscaped(),
              typed.expiry.toHtmlEscaped());
    return WorkspaceReply::page(title, content, problems.isEmpty() ? 200 : 400);
}

WorkspaceReply closed(const QString &message, int status)
{
    return WorkspaceReply::page(title, u"<p>%1</p>"_s.arg(message.toHtmlEscaped()), status);
}

struct Session {
    QString id;
    QString clientID;
    QString personID;
    qint64 expiresAt = 0;
    bool completed = false;
    QString cardType;
    QString last4;
    QString expiration;
    QString profileID;
};

constexpr auto sessionColumns
    = "id, client_id, person_id, expires_at, completed_at, card_type, last4, expiration, payment_profile_id"_L1;

std::optional<Session> sessionWhere(const QSqlDatabase &db, QLatin1StringView column, const QString &value)
{
    QSqlQuery q
        = run(db, u"SELECT %1 FROM payment_card_sessions WHERE %2 = ?"_s.arg(sessionColumns, column), { value });
    if (!q.next())
        return std::nullopt;
    return Session { q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toLongLong(),
        !q.value(4).isNull(), q.value(5).toString(), q.value(6).toString(), q.value(7).toString(),
        q.value(8).toString() };
}

bool expired(const Session &session)
{
    return !session.completed && session.expiresAt <= nowMs();
}

WorkspaceReply pageFor(const std::optional<Session> &session)
{
    if (!session)
        return closed(u"This card page does not exist."_s, 404);
    if (expired(*session))
        return closed(u"This card page has expired. Start again from Pilo Tarn."_s, 410);
    return closed(u"The %1 ending %2 is saved. You can close this page."_s.arg(session->cardType, session->last4), 200);
}

} // namespace

namespace PaymentsCardSessions {

WorkspaceReply start(const QSqlDatabase &db, const QString &personID, const QString &host, const QJsonObject &body)
{
    const QString clientID = body.value("client_id"_L1).toString();
    if (single(db, u"SELECT COUNT(*) FROM clients WHERE id = ?"_s, { clientID }) == 0)
        return WorkspaceReply::error(404, u"That client is not in the workspace."_s);
    const QString id = newID("cs-"_L1);
    const QString token = newToken();
    const qint64 expires = nowMs() + lifeMs;
    run(db,
        u"INSERT INTO payment_card_sessions (id, token_hash, client_id, person_id, expires_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, hashOf(token), clientID, personID, expires });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id },
        { u"url"_s, u"https://%1/card-sessions/%2"_s.arg(host, token) }, { u"expires_at"_s, isoTime(expires) } });
}

WorkspaceReply finish(const QSqlDatabase &db, const QString &personID, const QString &id)
{
    std::optional<Session> session = sessionWhere(db, "id"_L1, id);
    if (!session || session->personID != personID)
        return WorkspaceReply::error(404, u"That card session does not exist."_s);
    if (expired(*session))
        return WorkspaceReply::json(QJsonObject { { u"status"_s, u"expired"_s } });
    if (!session->completed)
        return WorkspaceReply::json(QJsonObject { { u"status"_s, u"open"_s } });
    if (session->profileID.isEmpty()) {
        session->profileID = newID("pp-"_L1);
        QSqlDatabase writer = db;
        writer.transaction();
        run(db,
            u"INSERT INTO payment_cards (payment_profile_id, client_id, card_type, last4, expiration)"
            " VALUES (?, ?, ?, ?, ?)"_s,
            { session->profileID, session->clientID, session->cardType, session->last4, session->expiration });
        run(db, u"UPDATE payment_card_sessions SET payment_profile_id = ? WHERE id = ?"_s, { session->profileID, id });
        writer.commit();
    }
    const QJsonObject card { { u"payment_profile_id"_s, session->profileID }, { u"card_type"_s, session->cardType },
        { u"last4"_s, session->last4 }, { u"expiration"_s, session->expiration }, { u"saved"_s, true } };
    return WorkspaceReply::json(QJsonObject { { u"status"_s, u"completed"_s }, { u"card"_s, card } });
}

WorkspaceReply page(const QSqlDatabase &db, const QString &token)
{
    const std::optional<Session> session = sessionWhere(db, "token_hash"_L1, hashOf(token));
    if (!session || session->completed || expired(*session))
        return pageFor(session);
    return form(token, {}, {});
}

WorkspaceReply submit(const QSqlDatabase &db, const QString &token, const QByteArray &posted)
{
    const std::optional<Session> session = sessionWhere(db, "token_hash"_L1, hashOf(token));
    if (!session || session->completed || expired(*session))
        return pageFor(session);
    // A form encodes a space as "+".
    const QUrlQuery fields(QString::fromUtf8(QByteArray(posted).replace('+', ' ')));
    const auto field = [&fields](const QString &key) { return fields.queryItemValue(key, QUrl::FullyDecoded); };
    const Typed typed { field(u"number"_s), field(u"expiry"_s), field(u"cvc"_s) };
    const Checked checked = check(typed, QDate::currentDate());
    if (!checked.problems.isEmpty())
        return form(token, typed, checked.problems);
    run(db,
        u"UPDATE payment_card_sessions SET card_type = ?, last4 = ?, expiration = ?, completed_at = ? WHERE id = ?"_s,
        { cardType(checked.digits), checked.digits.right(4), checked.expiration, nowMs(), session->id });
    return pageFor(sessionWhere(db, "id"_L1, session->id));
}

WorkspaceReply expire(const QSqlDatabase &db, const QString &idOrToken)
{
    if (!run(db, u"UPDATE payment_card_sessions SET expires_at = ? WHERE id = ? OR token_hash = ?"_s,
            { nowMs() - 1, idOrToken, hashOf(idOrToken) })
             .numRowsAffected())
        return WorkspaceReply::error(404, u"That card session does not exist."_s);
    return WorkspaceReply::ok();
}

} // namespace PaymentsCardSessions
