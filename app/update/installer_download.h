#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace tidewell {

/// One transfer of an installer to a file that nobody else can read or write: in a folder of its
/// own that is made for it, and that goes with the object unless `keep` was called.
///
/// Nothing that the server says is trusted. What arrives goes to the disk as it comes, with a few
/// hundred kilobytes in memory. The transfer ends without a file when nothing arrives for a while,
/// when more comes than was announced, wanted or allowed, when less has come at the end, when the
/// digest is another, and when there is nothing to compare the length or the content with.
class InstallerDownload : public QObject {
    Q_OBJECT

  public:
    struct Wanted {
        QUrl url;           ///< of http or https
        QString version;    ///< that the installer is of
        QString fileName;   ///< a plain name
        qint64 size = -1;   ///< in bytes; -1 if that is not known
        QByteArray sha256;  ///< raw; empty if that is not known

        bool operator==(const Wanted&) const = default;
    };

    struct Limits {
        std::chrono::milliseconds idle{30000};  ///< between two arrivals
        qint64 bytes = qint64{2} << 30;         ///< of a whole installer
    };

    InstallerDownload(Wanted wanted, Limits limits, QObject* parent = nullptr);
    /// Gives up a transfer that is under way; takes the file along.
    ~InstallerDownload() override;

    /// Makes folder and file below `parentFolder` and starts; to be called once. False, and nothing
    /// starts, if the file cannot be made.
    bool start(QNetworkAccessManager& network, const QString& parentFolder);

    const Wanted& wanted() const { return wanted_; }
    bool running() const { return !reply_.isNull(); }
    bool stored() const { return stored_; }                  ///< whole, checked and at its path
    QString error() const { return error_; }                 ///< of one that failed
    bool finalizeFailed() const { return finalizeFailed_; }  ///< all came, but could not be kept
    int httpStatus() const { return httpStatus_; }
    QString path() const { return path_; }
    qint64 received() const { return received_; }    ///< bytes
    qint64 announced() const { return announced_; }  ///< bytes; -1 while not known

    /// What the stored file was compared with besides its length.
    bool checkedDigest() const { return stored_ && !wanted_.sha256.isEmpty(); }

    /// The file outlives the object.
    void keep();

  signals:
    void progressed();
    void finished();

  private:
    void readHead();
    void takeReceived();
    void end();
    void fail(const QString& reason);
    void finish();
    bool endsWell();
    bool putInPlace();

    const Wanted wanted_;
    const Limits limits_;
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    QFile file_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    QByteArray beginning_;  // the first bytes, which tell what kind of file it is
    QTimer idle_;
    QPointer<QNetworkReply> reply_;
    int httpStatus_ = 0;
    qint64 received_ = 0;
    qint64 announced_ = -1;
    bool stored_ = false;
    bool finalizeFailed_ = false;
    QString error_;
};

/// Whether a file that begins so can be a program or package of this system; a page of a web server
/// cannot.
bool looksLikeInstaller(const QByteArray& beginning);

}  // namespace tidewell
