#include "auth/NoAuthRedirects.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

void NoAuthRedirects::apply(QNetworkAccessManager &transport)
{
    transport.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

void NoAuthRedirects::apply(QNetworkRequest &request)
{
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
}
