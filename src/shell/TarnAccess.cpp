#include "shell/TarnAccess.h"

#include "service/TarnSession.h"

using namespace Qt::StringLiterals;

TarnAccess TarnAccess::fromSession(const TarnSession &session, const QString &ownerAddress)
{
    return {
        .apps = session.apps,
        .owner = session.owner.value_or(false),
        .booksOwner = session.books_owner.value_or(false),
        .role = session.role,
        .email = session.email,
        .ownerAddress = ownerAddress,
    };
}

bool TarnAccess::has(const QString &app) const
{
    const auto listed = [&] { return !apps || apps->contains(app); };
    if (app.isEmpty())
        return true;
    // Money apps need the flag as well as the app: a list that names them
    // is not enough on its own, and an absent list does not grant them.
    if (app == "Books"_L1)
        return booksOwner && listed();
    if (app == "Payroll"_L1 || app == "Payments"_L1)
        return owner && listed();
    return listed();
}

bool TarnAccess::reviewsBlockedWork() const
{
    // Deliberately one hard-wired reviewer rather than every admin.
    return role == u"admin"_s && !ownerAddress.isEmpty() && email.toLower() == ownerAddress.toLower();
}
