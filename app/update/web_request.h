#pragma once

#include <QNetworkRequest>
#include <QPointer>

class QNetworkReply;
class QObject;
class QUrl;

namespace tidewell {

/// Follows redirections, but none from https to http nor to anything that is not of the web.
QNetworkRequest webRequest(const QUrl& url);

/// Ends a request without a word of it reaching its listener any more; null for none.
void dropReply(QPointer<QNetworkReply>& reply, const QObject* listener);

}  // namespace tidewell
