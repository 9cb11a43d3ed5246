#include "TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace TestFiles {

QString appDir()
{
    return QCoreApplication::applicationDirPath();
}

bool writeFile(const QString &absolutePath, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(absolutePath).absolutePath());
    QFile file(absolutePath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(contents) == contents.size();
}

bool writeAppFile(const QString &relativePath, const QByteArray &contents)
{
    return writeFile(appDir() + relativePath, contents);
}

bool removeAppPath(const QString &relativePath)
{
    const QString path = appDir() + relativePath;
    if (QFileInfo(path).isDir())
        return QDir(path).removeRecursively();
    return !QFile::exists(path) || QFile::remove(path);
}

QString useFreshSettings(const QString &name)
{
    const QString path = appDir() + QStringLiteral("/settings/") + name;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile::remove(path);
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(path));
    return path;
}

} // namespace TestFiles
