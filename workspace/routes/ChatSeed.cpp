#include "workspace/routes/ChatSeed.h"

#include "workspace/routes/ChatStore.h"

#include <QDateTime>
#include <QHash>
#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QStringList everyone { u"p-maren"_s, u"p-tomas"_s, u"p-priya"_s, u"p-jonah"_s, u"p-sam"_s, u"p-ada"_s };

struct Channel {
    QString name;
    bool isPrivate;
    QStringList members;
    QStringList lines;
    // What the channel talks about, for the lines made below.
    QStringList topics;
};

// Said about one of a channel's topics. With the channel's own lines they
// give every message of the demo's few days a different text.
const QStringList &shapes()
{
    static const QStringList list { u"Quick update on %1: done for today."_s, u"Has anyone had a look at %1?"_s,
        u"I'll take %1 this afternoon."_s, u"%1 is moving, should be wrapped up by Thursday."_s,
        u"Added my notes on %1 to the shared folder."_s, u"Who's on %1 next week?"_s,
        u"Small snag with %1, looking into it now."_s, u"Good news on %1 👍"_s, u"Can we push %1 to Monday?"_s,
        u"Thanks for jumping on %1 so fast!"_s, u"Still waiting to hear back about %1."_s,
        u"Made real progress on %1 this morning."_s, u"%1: two more things and we're there."_s,
        u"Let's go through %1 at the stand-up."_s, u"I moved %1 up the list, it's blocking the rest."_s,
        u"Does %1 still need a second opinion?"_s };
    return list;
}

// The channel's lines and one line per topic and shape, in an order of the
// generator's choosing; a channel that says more than that starts over.
QStringList linesOf(const Channel &channel, QRandomGenerator &random)
{
    QStringList out = channel.lines;
    for (const QString &topic : channel.topics) {
        for (const QString &shape : shapes()) {
            QString line = shape.arg(topic);
            line[0] = line.at(0).toUpper();
            out.append(line);
        }
    }
    std::shuffle(out.begin(), out.end(), random);
    return out;
}

const QList<Channel> &channels()
{
    static const QList<Channel> list {
        { u"general"_s, false, everyone,
            { u"Morning all! Coffee machine on the second floor is fixed."_s,
                u"Reminder: the office closes early on Friday for the inventory count."_s,
                u"Who took the good stapler? 😅"_s, u"Welcome Ada, glad to have you on the docs work!"_s,
                u"The new price list is live on the website."_s,
                u"Lunch order goes out at 11:45, add yourself to the sheet."_s,
                u"Heads-up: the card terminal update runs tonight at 22:00."_s,
                u"Thanks everyone for the quick turnaround on the Lindqvist order."_s,
                u"Parking spots 4 and 5 are reserved for the delivery van tomorrow."_s,
                u"Quarterly numbers are in the Books overview."_s },
            { u"the inventory count"_s, u"the new shelf labels"_s, u"the kitchen rota"_s, u"the Friday newsletter"_s,
                u"the office move plan"_s, u"the summer schedule"_s, u"the first-aid training"_s,
                u"the supplier visit"_s, u"the team lunch"_s, u"the printer contract"_s } },
        { u"sales"_s, false, { u"p-maren"_s, u"p-tomas"_s, u"p-priya"_s, u"p-ada"_s },
            { u"Northwind asked for a quote on 40 chairs, I'll draft it today."_s,
                u"Can someone double-check the discount on invoice 1042?"_s,
                u"Call with Brightside went well, they want samples."_s,
                u"Pipeline review at 3 pm, bring your top five."_s, u"Closed the Ostergaard deal 🎉"_s,
                u"Updated the proposal template with the new terms."_s,
                u"The trade fair booth is confirmed for March."_s, u"Follow-up sent, waiting on their procurement."_s },
            { u"the Northwind quote"_s, u"the Brightside samples"_s, u"invoice 1042"_s, u"the trade fair booth"_s } },
        { u"support"_s, false, { u"p-maren"_s, u"p-jonah"_s, u"p-tomas"_s },
            { u"Ticket from Harbour Café: the receipt printer drops the logo."_s,
                u"Replied to the three refund requests from the weekend."_s,
                u"Known issue: delivery notes show the old address; fix is queued."_s,
                u"Customer called about order #5531 — it shipped yesterday."_s, u"Inbox is at zero 🙌"_s,
                u"Can I get a second pair of eyes on a tricky chargeback?"_s },
            { u"the receipt printer ticket"_s, u"the weekend refunds"_s, u"the delivery-note fix"_s } },
        { u"design"_s, false, { u"p-maren"_s, u"p-sam"_s, u"p-priya"_s },
            { u"New shop banner drafts are up, feedback welcome."_s,
                u"I prefer the second palette, warmer and easier to read."_s,
                u"Photographer booked for Tuesday's product shoot."_s, u"Exported the icons at 1x and 2x."_s,
                u"Let's keep the serif only for headings."_s },
            { u"the shop banner"_s, u"the product shoot"_s, u"the icon set"_s } },
        { u"leadership"_s, true, { u"p-maren"_s, u"p-tomas"_s },
            { u"Budget draft for next quarter is ready for review."_s, u"Let's talk hiring plans on Thursday."_s,
                u"Rent renewal terms came in, slightly better than expected."_s },
            { u"the hiring plan"_s, u"the rent renewal"_s } },
    };
    return list;
}

const QList<QPair<QString, QStringList>> &directRooms()
{
    static const QList<QPair<QString, QStringList>> list {
        { u"p-tomas"_s,
            { u"Do you have five minutes before the pipeline review?"_s, u"Sure, call me."_s,
                u"Sent you the revised numbers."_s, u"Looks good, ship it."_s } },
        { u"p-priya"_s,
            { u"Could you look over the Brightside proposal?"_s, u"On it, comments by noon."_s,
                u"Thanks! The pricing table is on page 3."_s } },
        { u"p-jonah"_s, { u"The chargeback is resolved, customer refunded."_s, u"Great work, thank you."_s } },
    };
    return list;
}

qint64 hoursAgo(double hours)
{
    return QDateTime::currentMSecsSinceEpoch() - qint64(hours * 3600 * 1000);
}

} // namespace

namespace ChatSeed {

bool plant(ChatStore &chat)
{
    // Fixed, so every demo workspace tells the same story.
    QRandomGenerator random(20241124);
    QHash<QString, QString> rooms;
    QHash<QString, QStringList> said;
    const auto post = [&chat](const QString &room, const QString &author, const QString &body, double hours,
                          std::optional<QString> parent = std::nullopt, QList<ChatStore::File> files = {}) {
        ChatStore::NewMessage message { .room = room,
            .author = author,
            .body = body,
            .nonce = std::nullopt,
            .parentId = std::move(parent),
            .files = std::move(files),
            .createdAtMs = hoursAgo(hours) };
        const ChatStore::Result<QJsonObject> sent = chat.send(message);
        return std::holds_alternative<QJsonObject>(sent) ? std::get<QJsonObject>(sent).value("id"_L1).toString()
                                                         : QString();
    };

    for (const Channel &channel : channels()) {
        const ChatStore::Result<QString> created
            = chat.createChannel(channel.members.first(), channel.name, channel.isPrivate, channel.members);
        if (!std::holds_alternative<QString>(created))
            return false;
        const QString room = std::get<QString>(created);
        rooms.insert(channel.name, room);
        // A few days of talk, in bursts: one person often writes several lines.
        const int count = channel.name == "general"_L1 ? 160 : int(channel.lines.size()) * 9;
        double hours = 96;
        QString author = channel.members.first();
        const QStringList lines = linesOf(channel, random);
        for (int i = 0; i < count; ++i) {
            hours -= random.bounded(96.0 / count * 1.9);
            if (random.bounded(3) == 0)
                author = channel.members.at(random.bounded(int(channel.members.size())));
            const QString id = post(room, author, lines.at(i % lines.size()), std::max(hours, 0.2));
            if (id.isEmpty())
                return false;
            said[channel.name].append(id);
        }
        // Everyone has read everything but the owner, who is a few behind.
        for (const QString &member : channel.members)
            (void)chat.markRead(member, room, member == "p-maren"_L1 ? count - 4 : count);
    }

    // A thread with replies and reactions, a saved message, a deleted one
    // and attachments.
    const QString general = rooms.value(u"general"_s);
    const QString question
        = post(general, u"p-maren"_s, u"Should we print new shelf labels before Friday's inventory count?"_s, 0.16);
    const bool planted = !question.isEmpty()
        && !post(general, u"p-priya"_s, u"Agreed, and the new labels look great."_s, 0.15, question).isEmpty()
        && !post(general, u"p-sam"_s, u"I can print more on Monday."_s, 0.14, question).isEmpty()
        && !post(general, u"p-tomas"_s, u"Thanks both!"_s, 0.13, question).isEmpty();
    if (!planted)
        return false;
    for (const QString &person : { u"p-priya"_s, u"p-sam"_s, u"p-jonah"_s })
        (void)chat.react(person, general, question, u"👍"_s, true);
    (void)chat.react(u"p-tomas"_s, general, question, u"🎉"_s, true);
    const QString sales = rooms.value(u"sales"_s);
    const QString closed = said.value(u"sales"_s).last();
    (void)chat.react(u"p-priya"_s, sales, closed, u"🎉"_s, true);
    (void)chat.save(u"p-maren"_s, sales, closed, true);

    const QString oops = post(general, u"p-tomas"_s, u"Wrong channel, sorry"_s, 0.1);
    (void)chat.edit(u"p-tomas"_s, general, oops, std::nullopt, 1);

    const QByteArray banner = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"120\" height=\"40\">"
                              "<rect width=\"120\" height=\"40\" fill=\"#e9a23b\"/></svg>\n";
    if (post(rooms.value(u"design"_s), u"p-sam"_s, u"Banner draft attached."_s, 0.08, std::nullopt,
            { { u"banner-draft.svg"_s, banner } })
            .isEmpty())
        return false;
    const QByteArray pipeline = "client,stage,value\nNorthwind,quote,18400\nBrightside,samples,7200\n";
    if (post(sales, u"p-tomas"_s, u"This week's pipeline."_s, 0.07, std::nullopt, { { u"pipeline.csv"_s, pipeline } })
            .isEmpty())
        return false;

    for (const auto &[other, lines] : directRooms()) {
        const ChatStore::Result<QString> created = chat.createDirectRoom(u"p-maren"_s, other);
        if (!std::holds_alternative<QString>(created))
            return false;
        const QString room = std::get<QString>(created);
        double hours = 30;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            hours -= 2.5;
            if (post(room, i % 2 == 0 ? other : u"p-maren"_s, lines.at(i), hours).isEmpty())
                return false;
        }
    }
    return true;
}

} // namespace ChatSeed
