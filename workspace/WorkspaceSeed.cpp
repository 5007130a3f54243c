#include "workspace/WorkspaceSeed.h"

#include "workspace/WorkspaceStore.h"

using namespace Qt::StringLiterals;

namespace WorkspaceSeed {

QStringList allApps()
{
    return { u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Books"_s, u"Payments"_s, u"Payroll"_s, u"Kiln"_s,
        u"Website"_s, u"Clients"_s, u"Calls"_s, u"Market Scan"_s, u"Overview"_s, u"Schedule"_s, u"Mail"_s };
}

QString ownerId()
{
    return u"p-maren"_s;
}

QList<WorkspacePerson> people()
{
    const auto person
        = [](QString id, QString name, QString email, QString role, bool owner, bool booksOwner, QStringList apps) {
              return WorkspacePerson { .id = std::move(id),
                  .name = std::move(name),
                  .email = std::move(email),
                  .role = std::move(role),
                  .owner = owner,
                  .books_owner = booksOwner,
                  .apps = std::move(apps),
                  .background = std::nullopt,
                  .accent = std::nullopt,
                  .text_size = std::nullopt };
          };
    return {
        person(u"p-maren"_s, u"Maren Holt"_s, u"maren@halvard.example"_s, u"admin"_s, true, true, allApps()),
        person(u"p-tomas"_s, u"Tomas Reyes"_s, u"tomas@halvard.example"_s, u"manager"_s, false, true,
            { u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Books"_s, u"Calls"_s, u"Mail"_s, u"Schedule"_s,
                u"Clients"_s, u"Overview"_s }),
        person(u"p-priya"_s, u"Priya Nair"_s, u"priya@halvard.example"_s, u"member"_s, false, false,
            { u"Home"_s, u"Sales"_s, u"Docs"_s, u"Mail"_s, u"Schedule"_s, u"Calls"_s, u"Support"_s }),
        person(u"p-jonah"_s, u"Jonah Whitfield"_s, u"jonah@halvard.example"_s, u"support"_s, false, false,
            { u"Home"_s, u"Support"_s, u"Calls"_s, u"Mail"_s }),
        person(u"p-sam"_s, u"Sam Okoro"_s, u"sam@halvard.example"_s, u"designer"_s, false, false,
            { u"Home"_s, u"Mail"_s, u"Schedule"_s, u"Website"_s, u"Market Scan"_s, u"Kiln"_s, u"Docs"_s }),
        person(u"p-ada"_s, u"Ada Lindqvist"_s, u"ada@halvard.example"_s, u"contractor"_s, false, false,
            { u"Sales"_s, u"Docs"_s }),
    };
}

bool plant(WorkspaceStore &store)
{
    if (!store.beginSeed())
        return false;
    const QList<WorkspacePerson> all = people();
    for (qsizetype i = 0; i < all.size(); ++i)
        store.addPerson(all.at(i), static_cast<int>(i));
    return store.finishSeed();
}

} // namespace WorkspaceSeed
