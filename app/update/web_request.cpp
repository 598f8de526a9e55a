#include "app/update/web_request.h"

#include <QNetworkReply>
#include <QObject>
#include <QUrl>

namespace tidewell {

QNetworkRequest webRequest(const QUrl& url) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    return request;
}

void dropReply(QPointer<QNetworkReply>& pending, const QObject* listener) {
    QNetworkReply* const reply = pending;
    pending.clear();
    if (reply == nullptr) return;
    QObject::disconnect(reply, nullptr, listener, nullptr);
    if (reply->isRunning()) reply->abort();
    reply->deleteLater();
}

}  // namespace tidewell
