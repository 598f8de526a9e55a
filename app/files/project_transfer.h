#pragma once

#include <QString>
#include <QUrl>
#include <functional>

#include "app/files/project_file.h"

namespace tidewell {

/// Called now and then while a file is written or read, 0 to 1.
using FileProgress = std::function<void(double)>;

/// Saves a project, beside the event loop where that may take long. What went wrong, for a person;
/// empty when it is saved. The log tells more. `complete` adds what is to be worked out first; it
/// may be empty, and is called on another thread.
QString saveProjectFile(const QString& path, ProjectData data,
                        const std::function<void(ProjectData&)>& complete,
                        const FileProgress& onProgress);

/// Loads a project, a large file beside the event loop. The error is for a person.
ReadProject loadProjectFile(const QUrl& url, const FileProgress& onProgress);

/// Whether a project with results stands there, as far as can be told at once; in doubt it does.
bool holdsResults(const QString& path);

}  // namespace tidewell
