#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <atomic>
#include <functional>
#include <string_view>

#include "app/results/solve_results.h"
#include "session/node_record.h"

namespace tidewell {

/// What a project file holds.
struct ProjectData {
    QVariantMap project;  ///< the front end's own state, opaque here
    bool hasResults = false;
    SolveResults results;              ///< written with `hasResults` only
    kestrel_app::NodeRecords records;  ///< as `results`
    QVariantList
        nodeLocks;  ///< maps of `nodeIndex`, `hand`, `actionIndex`, `actionProb`, `actionProbs`
    QVariantMap lastUiCfg;  ///< the settings of the last solve
};

/// Hands the JSON document of a project to `write`, piece by piece. False when something in it is
/// nested too deep for a file. `progress` runs from 0 to 1; may be null. Any thread.
bool writeProjectText(const std::function<void(std::string_view)>& write, const ProjectData& data,
                      std::atomic<double>* progress);

/// About how long the file of a project gets, in bytes.
qint64 writtenBytes(const ProjectData& data);

/// Writes a project as one JSON document, as a stream, and replaces the file only when all of it
/// has been written. Returns what went wrong, in English, or nothing. `progress` as above. Any
/// thread.
QString writeProject(const QString& path, const ProjectData& data, std::atomic<double>* progress);

struct ReadProject {
    QString error;  ///< why the file was refused, in English; empty when it was not
    ProjectData data = {};
    qint64 invalidAt = 0;  ///< the byte, counted from 1, that "Invalid JSON" is about; else 0
    QString damage = {};   ///< what is wrong with its tree, and at which node; else empty
};

/// Reads a project file as a stream. Refused are, in this order: "Failed to open file", "Invalid
/// JSON", "Unrecognized project format", "Unsupported project version", and a damaged one: with
/// nodes and actions that do not make a tree, or numbers in it that are out of range. Elsewhere
/// values of a wrong type read as if they were missing: empty, 0 or false, and a figure that is no
/// number, such as null, as not known. Locks without a node and a hand, and answers without a node,
/// are passed over. Any thread.
ReadProject readProject(const QString& path, std::atomic<double>* progress);

}  // namespace tidewell
