#ifndef LINKDECK_BENCH_PLUGINSET_H
#define LINKDECK_BENCH_PLUGINSET_H

#include <QString>
#include <QStringList>

// A generated application directory with N copies of the trivial plugin under distinct names,
// the two configuration files that switch all of them on, and a copy of the bench executable so
// that a child started from there has it as its application directory.
class PluginSet
{
public:
    PluginSet(const QString &root, int count);

    bool create(const QString &pluginLibrary, const QString &executable) const;

    QString directory() const { return m_directory; }
    QString executable() const;
    QString pluginsFile() const;
    QString configFile() const;
    // Absolute paths of the plugin libraries, in plugin order.
    QStringList libraries() const;

    static QString url(int index);
    static QString clsid(int index);

private:
    QByteArray pluginsXml() const;
    QByteArray configXml() const;

    QString m_directory;
    int m_count;
};

#endif // LINKDECK_BENCH_PLUGINSET_H
