#include "PluginDirectoryListing.h"

#include <QLibrary>
#include <QRegExp>

#include <algorithm>

namespace {
const QLatin1String kLibraryPrefix("lib");

bool hasWildcard(const QString &text)
{
    return text.contains(QLatin1Char('*')) || text.contains(QLatin1Char('?')) ||
           text.contains(QLatin1Char('['));
}
} // namespace

PluginDirectoryListing::PluginDirectoryListing(const QDir &dir)
    : m_dir(dir)
{
    // Every name any plugin's filter can select begins with "lib".
    m_dir.setNameFilters(QStringList(kLibraryPrefix + QLatin1Char('*')));
    m_entries = m_dir.entryList(QDir::Files, QDir::NoSort);
    m_index.reserve(m_entries.size());
    for (int i = 0; i < m_entries.size(); ++i)
        m_index.append({matchKey(m_entries.at(i)), i});
    std::sort(m_index.begin(), m_index.end(),
              [](const IndexEntry &a, const IndexEntry &b) { return a.key < b.key; });
}

// Directory name filters compare without regard to case unless asked to, letter by letter.
QString PluginDirectoryListing::matchKey(const QString &name)
{
    QString key = name;
    for (QChar &c : key)
        c = c.toLower();
    return key;
}

QStringList PluginDirectoryListing::librariesFor(const QString &url) const
{
    const QString stem = kLibraryPrefix + url;
    QVector<int> positions = hasWildcard(url) ? positionsMatchingWildcard(stem + QLatin1Char('*'))
                                              : positionsWithPrefix(matchKey(stem));
    std::sort(positions.begin(), positions.end());
    QStringList files;
    files.reserve(positions.size());
    for (int position : qAsConst(positions)) {
        const QString file = m_dir.absoluteFilePath(m_entries.at(position));
        if (QLibrary::isLibrary(file))
            files.append(file);
    }
    return files;
}

QVector<int> PluginDirectoryListing::positionsWithPrefix(const QString &prefix) const
{
    auto it = std::lower_bound(
        m_index.cbegin(), m_index.cend(), prefix,
        [](const IndexEntry &entry, const QString &value) { return entry.key < value; });
    QVector<int> positions;
    for (; it != m_index.cend() && it->key.startsWith(prefix); ++it)
        positions.append(it->position);
    return positions;
}

// A url with wildcard characters of its own is rare; it is matched the way the directory's own
// name filter would match it.
QVector<int> PluginDirectoryListing::positionsMatchingWildcard(const QString &pattern) const
{
    const QRegExp filter(pattern, Qt::CaseInsensitive, QRegExp::Wildcard);
    QVector<int> positions;
    for (int i = 0; i < m_entries.size(); ++i) {
        if (filter.exactMatch(m_entries.at(i)))
            positions.append(i);
    }
    return positions;
}
