#pragma once

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>

#include "app/project_file.h"
#include "tests/app/files.h"

namespace tidewell {

/// A folder with one project file, written and read with the library's own JSON.
class ProjectFolder : public testing::Test {
  protected:
    QString path(const QString& name = "a.tidewellproj") const { return folder_.filePath(name); }

    void write(const QByteArray& bytes) const { writeFile(path(), bytes); }
    QByteArray bytes() const { return readFile(path()); }

    QJsonObject object() const {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(bytes(), &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
        return document.object();
    }

    ReadProject read(const QByteArray& text) const {
        write(text);
        return readProject(path(), nullptr);
    }

    QTemporaryDir folder_;
};

template <class Data>
QJsonValue json(const Data& data) {
    return QJsonValue::fromVariant(QVariant(data));
}

/// A cache as a list of nodes, each with what it holds.
template <class Data>
QVariantList pairs(const QHash<int, Data>& cache) {
    QMap<int, QVariant> sorted;
    for (auto entry = cache.begin(); entry != cache.end(); ++entry) {
        sorted.insert(entry.key(), entry.value());
    }
    QVariantList list;
    for (auto entry = sorted.begin(); entry != sorted.end(); ++entry) {
        list += {entry.key(), entry.value()};
    }
    return list;
}

/// All that a project holds, flat.
inline QVariantMap flat(const ProjectData& data) {
    QVariantList metas;
    for (int node = 0; node < data.results.tree.nodeCount(); ++node) {
        metas.append(data.results.tree.meta(node));
    }
    QVariantList actions;
    for (int node = 0; node < data.results.tree.actionListCount(); ++node) {
        actions.append(QVariant(data.results.tree.actions(node)));
    }
    return {{"project", data.project},
            {"hasResults", data.hasResults},
            {"lastUiCfg", data.lastUiCfg},
            {"summary", data.results.summary},
            {"pot", data.results.startingPot},
            {"iterations", data.results.iterations},
            {"exploitability", data.results.exploitability},
            {"evOop", data.results.evOop},
            {"evIp", data.results.evIp},
            {"rootActions", data.results.rootActions},
            {"metas", metas},
            {"actions", actions},
            {"strategy", pairs(data.caches.handStrategy)},
            {"stats", pairs(data.caches.actionStats)},
            {"combos", pairs(data.caches.handCombos)},
            {"buckets", pairs(data.caches.handBuckets)},
            {"oop", pairs(data.caches.seatHandCombos[0])},
            {"ip", pairs(data.caches.seatHandCombos[1])},
            {"locks", data.nodeLocks}};
}

}  // namespace tidewell
