#pragma once

// A test's whole world on disk: a map of path -> bytes, written below a temporary folder, and a tree of files
// read back as such a map.

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QString>
#include <QTemporaryDir>
#include <QtTest>

#include <string_view>

using FileMap = QMap<QString, QByteArray>;

inline std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

/// 300 of these pieces, some of them at a line's end, in an order that `seed` decides.
inline QByteArray mixture(const QByteArray (&pieces)[16], quint32 *seed)
{
    QByteArray bytes;
    for (int i = 0; i < 300; ++i) {
        *seed = *seed * 1664525 + 1013904223;
        bytes += pieces[(*seed >> 16) % 16];
        if (*seed >> 28 > 9)
            bytes += '\n';
    }
    return bytes;
}

/// Writes each file below `root`, with the folders it needs; fails the test on an error.
inline void writeFiles(const QString &root, const FileMap &files)
{
    for (auto file = files.constBegin(); file != files.constEnd(); ++file) {
        const QString path = root + QLatin1Char('/') + file.key();
        QVERIFY2(QDir().mkpath(QFileInfo(path).path()), qPrintable(path));
        QFile out(path);
        QVERIFY2(out.open(QIODevice::WriteOnly), qPrintable(path));
        QCOMPARE(out.write(file.value()), qint64(file.value().size()));
    }
}

/// Every file below `root`, hidden ones too, by its path relative to `root`.
inline FileMap readFiles(const QString &root)
{
    FileMap files;
    QDirIterator walk(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(QDir(root).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}
