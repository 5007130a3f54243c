#include "shell/TarnShellTables.h"

#include <array>

using namespace Qt::StringLiterals;

namespace TarnShellTables {

namespace {

using S = TarnScreen;

constexpr std::array screenRows {
    Screen { S::chat, "chat"_L1, "Messages"_L1, "Home"_L1, false, {} },
    Screen { S::agent, "agent"_L1, "Pilo"_L1, "Home"_L1, false, "Pilo"_L1 },
    // The page name is the section itself: "Sales" is the work plan's.
    Screen { S::sales, "sales"_L1, "Sales"_L1, "Sales"_L1, false, {} },
    Screen { S::support, "support"_L1, "Support"_L1, "Support"_L1, false, "Support"_L1 },
    Screen { S::workPlan, "workplan"_L1, "Work plan"_L1, "Sales"_L1, false, "Sales"_L1 },
    Screen { S::documents, "documents"_L1, "Documents"_L1, "Docs"_L1, false, "Docs"_L1 },
    Screen { S::payments, "payments"_L1, "Payments"_L1, "Payments"_L1, false, "Payments"_L1 },
    Screen { S::kiln, "kiln"_L1, "Kiln"_L1, "Kiln"_L1, false, "Kiln"_L1 },
    Screen { S::owner, "owner"_L1, "Dashboard"_L1, {}, true, "Dashboard"_L1 },
    Screen { S::company, "company"_L1, "Company"_L1, {}, false, "Tools"_L1 },
    Screen { S::websites, "websites"_L1, "Websites"_L1, "Website"_L1, false, "Website"_L1 },
    Screen { S::portals, "portals"_L1, "Portals"_L1, "Clients"_L1, false, "Clients"_L1 },
    // Customer texts arrive on the numbers the team calls from, so the shared
    // inbox is a section of calls and follows "Calls".
    Screen { S::calls, "calls"_L1, "Calls"_L1, "Calls"_L1, false, "Calls"_L1 },
    Screen { S::marketScan, "marketscan"_L1, "Market Scan"_L1, "Market Scan"_L1, false, "Market Scan"_L1 },
    Screen { S::overview, "overview"_L1, "Overview"_L1, "Overview"_L1, false, "Overview"_L1 },
    Screen { S::schedule, "schedule"_L1, "Calendar"_L1, "Schedule"_L1, false, "Calendar"_L1 },
    Screen { S::mail, "mail"_L1, "Email"_L1, "Mail"_L1, false, "Email"_L1 },
    // HR and the time clock are everyone's; only the Payroll section has a gate.
    Screen { S::people, "people"_L1, "People"_L1, {}, false, "People"_L1 },
};

constexpr bool inEnumOrder()
{
    for (std::size_t i = 0; i < screenRows.size(); ++i) {
        if (static_cast<std::size_t>(screenRows.at(i).screen) != i)
            return false;
    }
    return screenRows.back().screen == S::people;
}
static_assert(inEnumOrder(), "one screen row per TarnScreen, in its order");

TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

} // namespace

std::span<const Screen> screens()
{
    return screenRows;
}

const Screen &screen(TarnScreen screen)
{
    return screenRows.at(static_cast<std::size_t>(screen));
}

const QList<Item> &items()
{
    static const QList<Item> rows {
        { u""_s, u"pilo"_s, u"Pilo"_s, u"sparkles"_s, at(S::agent), {} },
        { u""_s, u"owner"_s, u"Dashboard"_s, u"gauge.with.dots.needle.67percent"_s, at(S::owner), {} },
        { u""_s, u"overview"_s, u"Overview"_s, u"rectangle.3.group"_s, at(S::overview, u"Team"_s), {} },
        { u"Communication"_s, u"home"_s, u"Messages"_s, u"message"_s, at(S::chat), {} },
        { u"Communication"_s, u"calls"_s, u"Calls"_s, u"phone"_s, at(S::calls), {} },
        { u"Communication"_s, u"mail"_s, u"Email"_s, u"envelope"_s, at(S::mail), {} },
        { u"Communication"_s, u"schedule"_s, u"Calendar"_s, u"calendar"_s, at(S::schedule, u"Calendar"_s), {} },
        { u"Work"_s, u"sales"_s, u"Sales"_s, u"briefcase"_s, at(S::sales),
            u"Find leads, keep customers moving and follow up on time."_s },
        { u"Work"_s, u"workplan"_s, u"Work plan"_s, u"checklist"_s, at(S::workPlan),
            u"This week's plan for you and the team."_s },
        { u"Work"_s, u"support"_s, u"Support"_s, u"lifepreserver"_s, at(S::support),
            u"Client maintenance, recurring work and tracked time."_s },
        { u"Work"_s, u"docs"_s, u"Documents"_s, u"doc.text"_s, at(S::documents),
            u"Worksheets, agreements, proposals and envelopes for signing."_s },
        { u"Work"_s, u"portals"_s, u"Portals"_s, u"person.2.crop.square.stack"_s, at(S::portals), {} },
        { u"Work"_s, u"websites"_s, u"Websites"_s, u"globe"_s, at(S::websites), {} },
        { u"Work"_s, u"marketscan"_s, u"Market Scan"_s, u"scope"_s, at(S::marketScan), {} },
        { u"Work"_s, u"kiln"_s, u"Kiln"_s, u"flame"_s, at(S::kiln), {} },
        { u"Money"_s, u"finance"_s, u"Books"_s, u"book.closed"_s, at(S::documents, u"Dashboard"_s),
            u"The company's books: transactions, invoices, expenses and bank rows."_s },
        { u"Money"_s, u"payments"_s, u"Payments"_s, u"creditcard"_s, at(S::payments),
            u"Card and offline payments, refunds and saved cards."_s },
        { u"Company"_s, u"people"_s, u"People"_s, u"person.crop.rectangle.stack"_s, at(S::people),
            u"Team records, the time clock and payroll."_s },
        { u"Company"_s, u"company"_s, u"Company"_s, u"building.2"_s, at(S::company), {} },
    };
    return rows;
}

const QList<Child> &children()
{
    static const QList<Child> rows {
        { u"pilo"_s, {}, u"newchat"_s, u"New chat"_s, u"square.and.pencil"_s, u"Ask Pilo to do something"_s, {} },
        { u"pilo"_s, {}, u"history"_s, u"History"_s, u"clock.arrow.circlepath"_s, u"Your earlier requests to Pilo"_s,
            {} },
        { u"pilo"_s, {}, u"blocked"_s, u"Blocked work"_s, u"exclamationmark.triangle"_s,
            u"Requests Pilo could not finish alone"_s, {} },
        { u"overview"_s, {}, u"team"_s, u"Team"_s, u"person.3"_s, u"Who is working on what"_s, {} },
        { u"overview"_s, {}, u"boards"_s, u"Product boards"_s, u"square.grid.2x2"_s, u"Products and their stages"_s,
            {} },
        { u"overview"_s, {}, u"fulfilment"_s, u"Fulfilment"_s, u"shippingbox"_s, u"Orders on their way to customers"_s,
            {} },
        { u"calls"_s, {}, u"callbook"_s, u"Calls"_s, u"phone"_s, u"Recent and upcoming calls"_s, {} },
        { u"calls"_s, {}, u"inbox"_s, u"Inbox"_s, u"tray"_s, u"Customer texts for the whole team"_s, {} },
        { u"calls"_s, {}, u"recordings"_s, u"Recordings"_s, u"waveform"_s, u"Recorded calls"_s, {} },
        { u"schedule"_s, {}, u"calendar"_s, u"Calendar"_s, u"calendar"_s, u"Your events and meetings"_s, {} },
        { u"schedule"_s, {}, u"booking"_s, u"Booking links"_s, u"link"_s, u"Links customers book time with"_s, {} },
        { u"sales"_s, {}, u"leads"_s, u"Lead Generation"_s, u"magnifyingglass"_s, u"New prospects to reach"_s,
            { u"Find ten companies like our best clients"_s, u"Which leads have not heard from us this week?"_s } },
        { u"sales"_s, {}, u"customers"_s, u"Customers"_s, u"person.2"_s, u"Every customer and their history"_s,
            { u"Summarise what changed with my customers this month"_s,
                u"Draft follow-ups for customers waiting on us"_s } },
        { u"sales"_s, {}, u"pipeline"_s, u"Pipeline"_s, u"list.bullet.rectangle"_s, u"Customers by stage"_s,
            { u"Which deals have been stuck in one stage too long?"_s } },
        { u"support"_s, {}, u"maintenance"_s, u"Maintenance"_s, u"wrench.and.screwdriver"_s,
            u"Client maintenance tasks"_s,
            { u"What maintenance work is overdue?"_s, u"Group today's requests by client"_s } },
        { u"support"_s, {}, u"recurring"_s, u"Recurring"_s, u"repeat"_s, u"Work that repeats on a schedule"_s,
            { u"Plan next week's recurring work"_s } },
        { u"support"_s, {}, u"time"_s, u"Time"_s, u"timer"_s, u"Tracked and logged time"_s,
            { u"How much time went to each client this month?"_s } },
        { u"docs"_s, u"Documents"_s, u"worksheets"_s, u"Worksheets"_s, u"doc.plaintext"_s, u"Templates to start from"_s,
            { u"Start a worksheet for a new client"_s } },
        { u"docs"_s, u"Documents"_s, u"agreements"_s, u"Agreements"_s, u"doc.text"_s,
            u"Contracts and signed documents"_s, { u"Which agreements renew this quarter?"_s } },
        { u"docs"_s, u"Documents"_s, u"proposals"_s, u"Proposals"_s, u"doc.richtext"_s,
            u"Proposals sent to prospects"_s, {} },
        { u"docs"_s, u"Signing"_s, u"envelopes"_s, u"Envelopes"_s, u"signature"_s, u"Documents out for signature"_s,
            { u"Which envelopes are still waiting for a signature?"_s } },
        { u"finance"_s, u"Books"_s, u"books"_s, u"Dashboard"_s, u"chart.pie"_s, u"Income and expenses by month"_s,
            { u"How did this month compare with last month?"_s } },
        { u"finance"_s, u"Books"_s, u"transactions"_s, u"Transactions"_s, u"arrow.left.arrow.right"_s,
            u"Money in and out"_s, {} },
        { u"finance"_s, u"Books"_s, u"invoices"_s, u"Invoices"_s, u"doc.text.magnifyingglass"_s,
            u"Customer invoices and what is still owed"_s, {} },
        { u"finance"_s, u"Books"_s, u"expenses"_s, u"Expenses"_s, u"cart"_s, u"Spending by account"_s, {} },
        { u"finance"_s, u"Books"_s, u"reports"_s, u"Reports"_s, u"chart.bar.doc.horizontal"_s,
            u"Profit and loss, balance sheet"_s, { u"Prepare the month-end reconciliation"_s } },
        { u"finance"_s, u"Bank"_s, u"bankfeed"_s, u"Bank feed"_s, u"building.columns"_s,
            u"Balances and rows from the bank"_s, { u"Which bank rows still need a category?"_s } },
        { u"people"_s, {}, u"hr"_s, u"HR"_s, u"person.text.rectangle"_s, u"Team records"_s,
            { u"Who is out this week?"_s, u"Draft a welcome note for a new hire"_s } },
        { u"people"_s, {}, u"timeclock"_s, u"Time clock"_s, u"clock"_s, u"Clock-ins and hours"_s,
            { u"Who forgot to clock out yesterday?"_s } },
        { u"people"_s, {}, u"payroll"_s, u"Payroll"_s, u"dollarsign.circle"_s, u"Pay runs and adjustments"_s,
            { u"What changed since the last pay run?"_s } },
    };
    return rows;
}

const QList<Tile> &tiles()
{
    static const QList<Tile> rows {
        { u"home"_s,
            { u"chat"_s, u"New chat"_s, u"square.and.pencil"_s, at(S::agent, u"New chat"_s),
                { u"What should I work on first today?"_s, u"Summarise what I missed in chat since yesterday"_s,
                    u"Draft a reply to my newest email"_s } } },
        { u"home"_s,
            { u"images"_s, u"Images"_s, u"photo.on.rectangle.angled"_s, std::nullopt,
                { u"Make a header image for our next newsletter"_s, u"Turn a photo into a square social post"_s } } },
        { u"home"_s,
            { u"prospects"_s, u"Prospects"_s, u"person.badge.plus"_s, at(S::sales, u"Lead Generation"_s),
                { u"Find companies like our best clients"_s, u"Which leads have not heard from us this week?"_s } } },
        { u"home"_s,
            { u"clients"_s, u"Clients"_s, u"person.2"_s, at(S::portals),
                { u"Which client portals have open alerts?"_s, u"Draft this month's report for a client"_s } } },
        { u"home"_s,
            { u"operations"_s, u"Operations"_s, u"gearshape.2"_s, at(S::support),
                { u"What maintenance work is overdue?"_s, u"Plan next week's recurring work"_s } } },
        { u"home"_s,
            { u"marketing"_s, u"Marketing"_s, u"chart.line.uptrend.xyaxis"_s, at(S::marketScan),
                { u"What changed in our market this month?"_s, u"Suggest three topics for the website"_s } } },
        { u"payments"_s,
            { u"received"_s, u"Received"_s, u"creditcard"_s, at(S::payments),
                { u"How much came in this month?"_s, u"Which refunds are waiting for a decision?"_s } } },
        { u"payments"_s,
            { u"invoices"_s, u"Open invoices"_s, u"doc.text.magnifyingglass"_s, at(S::documents, u"Invoices"_s),
                { u"Which invoices are overdue?"_s } } },
        { u"workplan"_s,
            { u"plan"_s, u"This week"_s, u"checklist"_s, at(S::workPlan),
                { u"What is left on my plan this week?"_s, u"Move unfinished work to next week"_s } } },
        { u"workplan"_s,
            { u"team"_s, u"Team"_s, u"person.3"_s, std::nullopt, { u"Who has room for more work this week?"_s } } },
    };
    return rows;
}

const QList<TarnAdminArea> &adminAreas()
{
    static const QList<TarnAdminArea> rows {
        { u"account"_s, u"My account"_s, {}, false, false, u"person.crop.circle"_s, at(S::company, u"My account"_s),
            u"Your name and sign-in"_s },
        { u"appearance"_s, u"Appearance"_s, {}, false, true, u"paintpalette"_s, at(S::company, u"Appearance"_s), {} },
        { u"team"_s, u"Team & access"_s, {}, true, false, u"person.badge.key"_s, at(S::company, u"Team & access"_s),
            {} },
        { u"connections"_s, u"Connections"_s, {}, true, false, u"link"_s, at(S::company, u"Connections"_s),
            u"Google and bank connections"_s },
        // The handbook is documents; the thought board feeds planning.
        { u"sops"_s, u"SOPs"_s, u"Docs"_s, false, false, u"book"_s, at(S::company, u"SOPs"_s),
            u"How the company does things"_s },
        { u"thoughts"_s, u"Thought board"_s, u"Overview"_s, false, false, u"lightbulb"_s,
            at(S::company, u"Thought board"_s), u"Ideas for what comes next"_s },
    };
    return rows;
}

} // namespace TarnShellTables
