#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QVariantMap>

/// The terminal program, for documents to be compared with.
class Terminal : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Its result for a spot, with the statistics of the node behind a line; empty without one.
    Q_INVOKABLE QVariantMap solve(const QVariantMap& spot, const QString& line) const {
        QProcess program;
        program.setStandardErrorFile(QProcess::nullDevice());
        program.start(QStringLiteral(TIDEWELL_SOLVE_PATH),
                      {"-", "--stats", "--node", line, "--json", "-"});
        program.write(QJsonDocument(QJsonObject::fromVariantMap(spot)).toJson());
        program.closeWriteChannel();
        constexpr int patience = 60000;
        program.waitForFinished(patience);
        return QJsonDocument::fromJson(program.readAllStandardOutput()).object().toVariantMap();
    }
};
