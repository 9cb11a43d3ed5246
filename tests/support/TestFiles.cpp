#include "TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace TestFiles {

QString appDir()
{
    return QCoreApplication::applicationDirPath();
}

bool writeFile(const QString &absolutePath, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(absolutePath).absolutePath());
    QFile file(absolutePath);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

bool writeAppFile(const QString &relativePath, const QByteArray &contents)
{
    return writeFile(appDir() + relativePath, contents);
}

bool removeAppPath(const QString &relativePath)
{
    const QString path = appDir() + relativePath;
    return QFileInfo(path).isDir() ? QDir(path).removeRecursively()
                                   : !QFile::exists(path) || QFile::remove(path);
}

QString useFreshSettings(const QString &name)
{
    const QString path = appDir() + QStringLiteral("/settings/") + name;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile::remove(path);
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(path));
    return path;
}

QString xmlError(const QByteArray &xml, const QString &format)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return format.arg(reader.errorString()).arg(reader.lineNumber()).arg(reader.columnNumber());
}

} // namespace TestFiles
