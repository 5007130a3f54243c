#include "workspace/routes/CompanySeed.h"

#include "workspace/routes/CompanyStore.h"

#include <QDateTime>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 dayMs = 24LL * 60 * 60 * 1000;

struct Sop {
    QString title;
    QString category;
    QString author;
    int daysAgo;
    QString body;
};

struct Post {
    QString title;
    QString author;
    int daysAgo;
    QString body;
    QString decision; // empty: waiting
    bool readByOwner;
};

const QList<Sop> &sops()
{
    static const QList<Sop> rows {
        { u"Answering the phone"_s, u"Customers"_s, u"p-maren"_s, 40,
            u"Pick up by the third ring. Say the company's name and yours. If the caller is a customer, open "
            "their record before you answer their question, and log the call's outcome when you hang up."_s },
        { u"A new customer's first week"_s, u"Customers"_s, u"p-tomas"_s, 12,
            u"Day one: a welcome mail with the kickoff date. Day two: the kickoff call, notes in the record. "
            "By Friday: the first deliverable's date agreed and a support task for it on the board."_s },
        { u"Handling a complaint"_s, u"Customers"_s, u"p-jonah"_s, 25,
            u"Thank them, restate the problem in their words, and promise a time for the next answer — not a "
            "fix. Open an urgent support task and tell Maren the same day."_s },
        { u"Sending an invoice"_s, u"Money"_s, u"p-maren"_s, 60,
            u"Invoices go out on the first working day of the month, net 14. Check the hours logged on the "
            "customer's support tasks against the quote before sending."_s },
        { u"Chasing a late payment"_s, u"Money"_s, u"p-tomas"_s, 33,
            u"Day 3 after due: a friendly reminder. Day 10: a call. Day 21: Maren decides whether work pauses."_s },
        { u"Expenses and receipts"_s, u"Money"_s, u"p-maren"_s, 90,
            u"Photograph every receipt the day you spend it and attach it to the bank row in the books."_s },
        { u"Starting a support task"_s, u"Delivery"_s, u"p-jonah"_s, 8,
            u"Every piece of work is a task on the support board with a customer, a due date and an assignee. "
            "Start the timer when you start; a task without logged time is not done."_s },
        { u"Handing work over"_s, u"Delivery"_s, u"p-priya"_s, 19,
            u"Write where it stands, what is left and who the customer talks to, as a comment on the task, "
            "then reassign it. Never hand over by chat alone."_s },
        { u"Weekly review"_s, u"Team"_s, u"p-maren"_s, 5,
            u"Friday 15:00: everyone brings their finished and stuck work. Ideas go on the thought board "
            "before the meeting, not during it."_s },
        { u"Time off"_s, u"Team"_s, u"p-maren"_s, 120,
            u"Ask two weeks ahead for anything longer than two days; put it on the shared schedule once "
            "agreed."_s },
        { u"Giving someone access"_s, u"Team"_s, u"p-maren"_s, 2,
            u"New people start with Home, Mail and Schedule. Add apps in Team & access as their work needs "
            "them; they see the change the next time their session refreshes."_s },
    };
    return rows;
}

const QList<Post> &posts()
{
    static const QList<Post> rows {
        { u"A customer newsletter each quarter"_s, u"p-sam"_s, 1,
            u"Four short stories of work we finished, with the customers' permission. I can design a "
            "template this week."_s,
            {}, false },
        { u"Fixed-price website care plan"_s, u"p-priya"_s, 3,
            u"Three customers asked for a monthly price instead of hours. A plan with a set number of "
            "changes would make our income steadier."_s,
            {}, true },
        { u"Move support calls to the afternoon"_s, u"p-jonah"_s, 6,
            u"Mornings are for focused work; the calls cluster after lunch anyway."_s, u"later"_s, true },
        { u"Referral discount"_s, u"p-tomas"_s, 9,
            u"Ten percent off the next invoice for a customer who brings us another. Fernhill Bakery "
            "already sent two."_s,
            u"adopt"_s, true },
        { u"Our own office plants subscription"_s, u"p-ada"_s, 14, u"Plants make the room nicer."_s, u"decline"_s,
            true },
        { u"Templates for quotes"_s, u"p-tomas"_s, 2,
            u"Half of every quote is the same text. A few templates in the handbook would save an hour a "
            "week."_s,
            {}, false },
    };
    return rows;
}

} // namespace

namespace CompanySeed {

void plant(CompanyStore &company, QSqlDatabase db)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    db.transaction();
    for (const Sop &sop : sops())
        company.addSop(sop.title, sop.category, sop.body, sop.author, now - sop.daysAgo * dayMs);
    for (const Post &post : posts()) {
        const QString id = company.addPost(post.title, post.body, post.author, now - post.daysAgo * dayMs);
        company.setRead(id, post.author);
        if (post.readByOwner)
            company.setRead(id, u"p-maren"_s);
        if (!post.decision.isEmpty())
            company.setDecision(id, post.decision, u"p-maren"_s);
    }
    db.commit();
}

} // namespace CompanySeed
