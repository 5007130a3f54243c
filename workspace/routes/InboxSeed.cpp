#include "workspace/routes/InboxSeed.h"

#include "workspace/routes/InboxStore.h"

#include <QDateTime>
#include <QList>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

struct Entry {
    int minutesAgo;
    char direction; // 'i'nbound, 'o'utbound or 'd'raft
    QString author;
    QString body;
    QString attachment {};
};

struct Thread {
    QString kind;
    QString address;
    QString client;
    QString owner;
    QList<Entry> entries;
    bool done = false;
    int snoozeMinutes = 0; // from now; negative is already due
};

constexpr int hour = 60;
constexpr int day = 24 * hour;

} // namespace

namespace InboxSeed {

void plant(InboxStore &inbox, QSqlDatabase db)
{
    db.transaction();
    // The terminal's clients keep their ids; the inbox knows how to reach them.
    const struct {
        QString id, name, phone, email;
    } clients[] = {
        { u"c-brightwater"_s, u"Brightwater Dental"_s, u"+1 555 0111"_s, u"front@brightwater.example"_s },
        { u"c-oakline"_s, u"Oakline Studio"_s, u"+1 555 0112"_s, u"hello@oakline.example"_s },
        { u"c-fernhill"_s, u"Fernhill Bakery"_s, u"+1 555 0113"_s, u"orders@fernhill.example"_s },
        { u"c-marlow"_s, u"Marlow & Sons"_s, u"+1 555 0114"_s, u"office@marlow.example"_s },
        { u"c-tidewater"_s, u"Tidewater Yoga"_s, u"+1 555 0115"_s, u"studio@tidewater.example"_s },
        { u"c-harbor"_s, u"Harbor Vet Clinic"_s, u"+1 555 0116"_s, QString() },
        { u"c-quill"_s, u"Quill & Ink"_s, u"+1 555 0117"_s, QString() },
        { u"c-northfield"_s, u"Northfield Gym"_s, u"+1 555 0118"_s, QString() },
        { u"c-copper"_s, u"Copper Kettle Cafe"_s, QString(), u"team@copperkettle.example"_s },
    };
    if (!inbox.hasClients()) {
        for (const auto &client : clients)
            inbox.addClient(client.id, client.name, client.phone, client.email);
    }

    const QList<Thread> threads = {
        { u"text"_s, u"+1 555 0111"_s, u"c-brightwater"_s, {},
            { { 20, 'i', {}, u"Hi, can we move Thursday's delivery to Friday morning?"_s } } },
        { u"text"_s, u"+1 555 0112"_s, u"c-oakline"_s, u"p-tomas"_s,
            { { 5 * hour, 'i', {}, u"Are the oak shelves back in stock?"_s },
                { 3 * hour, 'o', u"p-tomas"_s, u"They are! Shall I hold two for you?"_s } } },
        { u"text"_s, u"+1 555 0113"_s, u"c-fernhill"_s, u"p-maren"_s,
            { { 26 * hour, 'i', {}, u"The invoice total looks higher than we agreed."_s, u"invoice-photo.jpg"_s },
                { 25 * hour, 'd', u"p-maren"_s, u"Sorry about that, I'm checking with @Tomas now."_s } } },
        { u"text"_s, u"+1 555 0142"_s, {}, {}, { { 2 * hour, 'i', {}, u"Hello, do you ship to Portland?"_s } } },
        { u"email"_s, u"office@marlow.example"_s, u"c-marlow"_s, u"p-priya"_s,
            { { 4 * day, 'i', {}, u"Could you send last month's statement again?"_s },
                { 3 * day, 'o', u"p-priya"_s, u"Sent it over just now."_s },
                { 3 * day - hour, 'i', {}, u"Got it, thank you!"_s } },
            true },
        { u"text"_s, u"+1 555 0115"_s, u"c-tidewater"_s, u"p-jonah"_s,
            { { 30 * hour, 'i', {}, u"Can someone call me about the studio mats next week?"_s },
                { 29 * hour, 'o', u"p-jonah"_s, u"Of course, I'll call you on Monday."_s } },
            false, 20 * hour },
        { u"web"_s, u"lena@example.net"_s, {}, {},
            { { 6 * hour, 'i', {}, u"Contact form: I'd like a quote for twelve chairs."_s } } },
        { u"text"_s, u"+1 555 0116"_s, u"c-harbor"_s, u"p-tomas"_s,
            { { 2 * day, 'i', {}, u"Is our standing order still on for this week?"_s } }, false, -hour },
        { u"text"_s, u"+1 555 0117"_s, u"c-quill"_s, u"p-maren"_s,
            { { 3 * day, 'i', {}, u"The print proofs look great, one small change on page 3."_s,
                  u"proof-page-3.pdf"_s },
                { 3 * day - 2 * hour, 'o', u"p-maren"_s, u"Thanks! Passing this to the studio."_s } } },
        { u"text"_s, u"+1 555 0118"_s, u"c-northfield"_s, {},
            { { 6 * day, 'i', {}, u"Thanks for the quick install yesterday."_s },
                { 6 * day - 30, 'o', u"p-jonah"_s, u"Glad it went well!"_s } },
            true },
        { u"text"_s, u"+1 555 0177"_s, {}, u"p-jonah"_s,
            { { 4 * day, 'i', {}, u"Do you repair chairs you didn't make?"_s },
                { 4 * day - hour, 'o', u"p-jonah"_s, u"We do, send us a photo and we'll quote."_s } } },
        { u"email"_s, u"team@copperkettle.example"_s, u"c-copper"_s, {},
            { { 5 * day, 'i', {}, u"We'd like to order four more bar stools like last time."_s } } },
    };
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const auto ago = [now](int minutes) { return now - qint64(minutes) * 60'000; };
    for (const Thread &thread : threads) {
        const QString id = inbox.addThread(
            thread.kind, thread.address, thread.client, thread.owner, ago(thread.entries.first().minutesAgo));
        for (const Entry &entry : thread.entries) {
            const QString direction = entry.direction == 'i' ? u"inbound"_s : u"outbound"_s;
            const QString entryId = inbox.addEntry(
                id, direction, entry.body, entry.author, entry.direction == 'd', ago(entry.minutesAgo));
            if (!entry.attachment.isEmpty())
                inbox.addAttachment(entryId, entry.attachment, u"ready"_s);
        }
        inbox.setThreadState(
            id, thread.done, thread.snoozeMinutes == 0 ? 0 : now + qint64(thread.snoozeMinutes) * 60'000);
    }
    db.commit();
}

} // namespace InboxSeed
