#pragma once

#include "service/TarnJSONObject.h"
#include "service/TarnSession.h"
#include "shell/TarnAccess.h"

#include <QByteArray>
#include <QList>
#include <QString>

// The demo company's people, read from session answers shaped exactly as the
// local workspace sends them (null where a setting was never saved).
namespace DemoPeople {

struct Person {
    QString id;
    TarnAccess access;
};

inline TarnAccess accessFromAnswer(const QByteArray &answer)
{
    return TarnAccess::fromSession(TarnJSON::decode<TarnSession>(answer));
}

inline QList<Person> all()
{
    const auto answer = [](const char *id, const char *email, const char *role, bool owner, bool booksOwner,
                            const char *apps) -> QByteArray {
        return QByteArray(R"({"id":")") + id + R"(","name":"x","email":")" + email + R"(","csrf":"c","apps":[)" + apps
            + R"(],"role":")" + role + R"(","owner":)" + (owner ? "true" : "false") + R"(,"books_owner":)"
            + (booksOwner ? "true" : "false") + R"(,"background":null,"accent":null,"text_size":null})";
    };
    return {
        { QStringLiteral("p-maren"),
            accessFromAnswer(answer("p-maren", "maren@halvard.example", "admin", true, true,
                R"("Home","Sales","Support","Docs","Books","Payments","Payroll","Kiln","Website",)"
                R"("Clients","Calls","Market Scan","Overview","Schedule","Mail","People")")) },
        { QStringLiteral("p-tomas"),
            accessFromAnswer(answer("p-tomas", "tomas@halvard.example", "manager", false, true,
                R"("Home","Sales","Support","Docs","Books","Calls","Mail","Schedule","Clients",)"
                R"("Overview")")) },
        { QStringLiteral("p-priya"),
            accessFromAnswer(answer("p-priya", "priya@halvard.example", "member", false, false,
                R"("Home","Sales","Docs","Mail","Schedule","Calls","Support")")) },
        { QStringLiteral("p-jonah"),
            accessFromAnswer(answer(
                "p-jonah", "jonah@halvard.example", "support", false, false, R"("Home","Support","Calls","Mail")")) },
        { QStringLiteral("p-sam"),
            accessFromAnswer(answer("p-sam", "sam@halvard.example", "designer", false, false,
                R"("Home","Mail","Schedule","Website","Market Scan","Kiln","Docs")")) },
        { QStringLiteral("p-ada"),
            accessFromAnswer(answer("p-ada", "ada@halvard.example", "contractor", false, false, R"("Sales","Docs")")) },
    };
}

inline TarnAccess person(const QString &id)
{
    for (const Person &p : all()) {
        if (p.id == id)
            return p.access;
    }
    qFatal("unknown demo person");
}

} // namespace DemoPeople
