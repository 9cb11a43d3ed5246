#include "PluginSet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
bool writeFile(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(contents) == contents.size();
}

bool copyFresh(const QString &from, const QString &to)
{
    QFile::remove(to);
    return QFile::copy(from, to);
}
} // namespace

PluginSet::PluginSet(const QString &root, int count)
    : m_directory(root + QStringLiteral("/set") + QString::number(count))
    , m_count(count)
{}

// Padded numbers keep every url's name filter ("lib" + url + "*") to its own file.
QString PluginSet::url(int index)
{
    return QStringLiteral("BenchPlugin%1").arg(index, 4, 10, QLatin1Char('0'));
}

QString PluginSet::clsid(int index)
{
    return QStringLiteral("B0000000-0000-4000-8000-%1").arg(index, 12, 10, QLatin1Char('0'));
}

QString PluginSet::executable() const
{
    return m_directory + QStringLiteral("/bench_pluginload");
}
QString PluginSet::pluginsFile() const
{
    return m_directory + QStringLiteral("/config/pluginslib.xml");
}
QString PluginSet::configFile() const
{
    return m_directory + QStringLiteral("/config/PluginsConfig.xml");
}

QStringList PluginSet::libraries() const
{
    QStringList paths;
    for (int i = 0; i < m_count; ++i)
        paths.append(m_directory + QStringLiteral("/lib") + url(i) + QStringLiteral(".so"));
    return paths;
}

QByteArray PluginSet::pluginsXml() const
{
    QByteArray xml =
        "<?xml version=\"1.0\"?>\n<plugins>\n  <mainplugin>" + url(0).toUtf8() + "</mainplugin>\n";
    for (int i = 0; i < m_count; ++i) {
        xml += "  <plugin><name>" + url(i).toUtf8() + "</name><clsid>" + clsid(i).toUtf8() +
               "</clsid><url>" + url(i).toUtf8() +
               "</url><active>true</active><type>1</type><setting_title>false</setting_title>"
               "<static>false</static></plugin>\n";
    }
    return xml + "</plugins>\n";
}

QByteArray PluginSet::configXml() const
{
    QByteArray xml = "<?xml version=\"1.0\"?>\n<config>\n  <common>\n";
    for (int i = 0; i < m_count; ++i)
        xml += "    <item clsid=\"" + clsid(i).toUtf8() + "\"/>\n";
    return xml + "  </common>\n</config>\n";
}

bool PluginSet::create(const QString &pluginLibrary, const QString &benchExecutable) const
{
    QDir(m_directory).removeRecursively();
    if (!QDir().mkpath(m_directory) || !copyFresh(benchExecutable, executable()))
        return false;
    QFile::setPermissions(executable(), QFileInfo(benchExecutable).permissions());
    for (const QString &library : libraries()) {
        if (!copyFresh(pluginLibrary, library))
            return false;
    }
    return writeFile(pluginsFile(), pluginsXml()) && writeFile(configFile(), configXml());
}
