#include "app/update/installer_download.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <algorithm>
#include <utility>

#include "app/update/web_request.h"

namespace tidewell {
namespace {

constexpr qint64 bufferSize = 256 * 1024;  // bytes of a transfer that wait in memory
constexpr qsizetype beginningSize = 16;

}  // namespace

bool looksLikeInstaller(const QByteArray& beginning) {
#ifdef Q_OS_WIN
    return beginning.startsWith("MZ") || beginning.startsWith(QByteArray::fromHex("d0cf11e0"));
#else
    return beginning.startsWith(
               "\x7f"
               "ELF") ||
           beginning.startsWith("#!") || beginning.startsWith("!<arch>\n");
#endif
}

InstallerDownload::InstallerDownload(Wanted wanted, Limits limits, QObject* parent)
    : QObject(parent), wanted_(std::move(wanted)), limits_(limits) {
    idle_.setSingleShot(true);
    connect(&idle_, &QTimer::timeout, this, [this] {
        const auto seconds = std::chrono::ceil<std::chrono::seconds>(limits_.idle).count();
        fail(tr("nothing has arrived for %n second(s)", nullptr, static_cast<int>(seconds)));
    });
}

InstallerDownload::~InstallerDownload() {
    dropReply(reply_, this);
}

bool InstallerDownload::start(QNetworkAccessManager& network, const QString& parentFolder) {
    // Made for its owner alone, under a name that did not exist: nobody else can put a file or a
    // link where the installer goes, nor change it between here and its start.
    folder_ =
        std::make_unique<QTemporaryDir>(QDir(parentFolder).filePath("tidewell-update-XXXXXX"));
    if (!folder_->isValid()) return false;
    path_ = folder_->filePath(wanted_.fileName);
    file_.setFileName(path_ + ".part");
    // Without a buffer: one would be written on closing, and what fails there goes unnoticed.
    if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                    QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
        return false;
    }
    QNetworkRequest request = webRequest(wanted_.url);
    request.setRawHeader("Accept", "*/*");
    request.setRawHeader("Accept-Encoding", "identity");  // bytes as they are announced
    reply_ = network.get(request);
    reply_->setReadBufferSize(bufferSize);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &InstallerDownload::readHead);
    connect(reply_, &QNetworkReply::readyRead, this, &InstallerDownload::takeReceived);
    connect(reply_, &QNetworkReply::downloadProgress, this, &InstallerDownload::progressed);
    connect(reply_, &QNetworkReply::finished, this, &InstallerDownload::end);
    idle_.start(limits_.idle);
    return true;
}

void InstallerDownload::keep() {
    if (folder_) folder_->setAutoRemove(false);
}

// May come more than once.
void InstallerDownload::readHead() {
    httpStatus_ = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (httpStatus_ != 200) return;  // the reply ends with an error, or goes on elsewhere
    bool told = false;
    const qint64 length = reply_->rawHeader("Content-Length").toLongLong(&told);
    announced_ = told && length >= 0 ? length : -1;
    if (reply_->rawHeader("Content-Type").toLower().startsWith("text/html")) {
        return fail(tr("the server sends a web page in place of the installer"));
    }
    if (announced_ < 0 && wanted_.size < 0 && wanted_.sha256.isEmpty()) {
        return fail(tr("the server does not tell how long the file is"));
    }
    if (announced_ >= 0 && wanted_.size >= 0 && announced_ != wanted_.size) {
        return fail(tr("the file has another size than the release"));
    }
    if (std::max(announced_, wanted_.size) > limits_.bytes) {
        fail(tr("the file is larger than an installer may be"));
    }
}

void InstallerDownload::takeReceived() {
    while (reply_ && reply_->bytesAvailable() > 0) {
        const QByteArray bytes = reply_->read(bufferSize);
        if (bytes.isEmpty()) break;
        received_ += bytes.size();
        if ((announced_ >= 0 && received_ > announced_) ||
            (wanted_.size >= 0 && received_ > wanted_.size)) {
            return fail(tr("more has arrived than was announced"));
        }
        if (received_ > limits_.bytes) {
            return fail(tr("the file is larger than an installer may be"));
        }
        if (file_.write(bytes) != bytes.size()) {
            return fail(file_.errorString());
        }
        hash_.addData(bytes);
        if (beginning_.size() < beginningSize) {
            beginning_ += bytes.left(beginningSize - beginning_.size());
        }
        idle_.start(limits_.idle);
    }
}

void InstallerDownload::end() {
    takeReceived();
    if (!reply_) return;  // that has failed
    if (reply_->error() != QNetworkReply::NoError) return fail(reply_->errorString());
    if (httpStatus_ != 200) return fail(tr("the server answers with HTTP %1").arg(httpStatus_));
    if (endsWell() && putInPlace()) finish();
}

bool InstallerDownload::endsWell() {
    const qint64 length = announced_ >= 0 ? announced_ : wanted_.size;
    QString reason;
    if (received_ == 0) {
        reason = tr("the file is empty");
    } else if (length >= 0 && received_ != length) {
        reason = tr("the transfer ended after %1 of %2 bytes").arg(received_).arg(length);
    } else if (!wanted_.sha256.isEmpty() && hash_.result() != wanted_.sha256) {
        reason = tr("the checksum is not that of the release");
    } else if (wanted_.sha256.isEmpty() && !looksLikeInstaller(beginning_)) {
        reason = tr("what has arrived is no installer");
    } else {
        return true;
    }
    fail(reason);
    return false;
}

bool InstallerDownload::putInPlace() {
    const bool written = file_.error() == QFileDevice::NoError;
    file_.close();
    if (written && file_.rename(path_)) {
        stored_ = true;
        return true;
    }
    finalizeFailed_ = true;
    fail(file_.errorString());
    return false;
}

void InstallerDownload::fail(const QString& reason) {
    error_ = reason;
    file_.close();
    folder_.reset();
    finish();
}

void InstallerDownload::finish() {
    idle_.stop();
    dropReply(reply_, this);
    emit finished();
}

}  // namespace tidewell
