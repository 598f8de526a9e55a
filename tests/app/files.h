#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QString>

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Empty for what is no file.
inline QByteArray readFile(const QString& path) {
    QFile file(path);
    const bool isFile = QFileInfo(file).isFile();  // a pipe would wait
    return isFile && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
