#ifndef LINKDECK_PLUGINDIRECTORYLISTING_H
#define LINKDECK_PLUGINDIRECTORYLISTING_H

#include <QDir>
#include <QString>
#include <QStringList>
#include <QVector>

// One reading of the plugin directory, answering for any url which files the name filter
// "lib" + url + "*" selects, in the directory's own order, exactly as listing the directory with
// that filter would. Reading a directory costs about as much as loading a plugin, so a loading
// pass reads it once and asks this for every plugin.
class PluginDirectoryListing
{
public:
    explicit PluginDirectoryListing(const QDir &dir);

    // Absolute paths of the files the filter "lib" + url + "*" selects that are shared
    // libraries by name (QLibrary::isLibrary), in directory order: the files loading tries.
    QStringList librariesFor(const QString &url) const;

private:
    struct IndexEntry
    {
        QString key; // the name as the filter compares it (letters in lower case)
        int position;
    };

    static QString matchKey(const QString &name);
    QVector<int> positionsWithPrefix(const QString &prefix) const;
    QVector<int> positionsMatchingWildcard(const QString &pattern) const;

    QDir m_dir;
    QStringList m_entries;       // directory order
    QVector<IndexEntry> m_index; // sorted by key
};

#endif // LINKDECK_PLUGINDIRECTORYLISTING_H
