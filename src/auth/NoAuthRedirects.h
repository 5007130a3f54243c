#pragma once

class QNetworkAccessManager;
class QNetworkRequest;

// The code exchange follows no redirect at all: its answer must come from
// the address it was sent to, or it is not an answer.
namespace NoAuthRedirects {

void apply(QNetworkAccessManager &transport);
void apply(QNetworkRequest &request);

} // namespace NoAuthRedirects
