// What is wrong with an application directory's configuration, found without loading a plugin.
#include "ConfigInspector.h"

#include "Change/LanguageFilePath.h"
#include "ConfigTrace.h"
#include "common/CoreLogging.h"
#include "common/XmlReading.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

namespace {

// Matches no "customize" section: XML attribute values cannot hold this character.
const QString kNoOperator = QStringLiteral("\x01");
const QString kPluginsFile = QStringLiteral("config/pluginslib.xml");
const QString kCustomizationFile = QStringLiteral("config/PluginsConfig.xml");

class ProblemList
{
public:
    explicit ProblemList(const QString &appDir)
        : m_dir(appDir)
    {}
    void add(const QString &file, const QString &message, qint64 line = 0, qint64 column = 0)
    {
        m_problems.append({m_dir.relativeFilePath(file), line, column, message});
    }
    QString path(const QString &relative) const { return m_dir.filePath(relative); }
    QList<ConfigInspector::Problem> take() { return std::move(m_problems); }

private:
    QDir m_dir;
    QList<ConfigInspector::Problem> m_problems;
};

// Every XML file of config/ and plugins/, language files included, read to its end.
void checkWellFormed(const QString &appDir, ProblemList &problems)
{
    for (const char *folder : {"config", "plugins"}) {
        QDirIterator it(appDir + QLatin1Char('/') + QLatin1String(folder),
                        {QStringLiteral("*.xml"), QStringLiteral("*.lang")}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = it.next();
            QFile device(file);
            if (!device.open(QIODevice::ReadOnly)) {
                problems.add(file, QStringLiteral("cannot be read: ") + device.errorString());
                continue;
            }
            QXmlStreamReader xml(&device);
            while (!xml.atEnd())
                xml.readNext();
            if (xml.hasError())
                problems.add(file, QStringLiteral("XML error: ") + xml.errorString(),
                             xml.lineNumber(), xml.columnNumber() + 1);
        }
    }
}

void checkRecords(const InspectedContainer &container, const QString &appDir, ProblemList &problems)
{
    const QString pluginsFile = problems.path(kPluginsFile);
    QHash<QString, QStringList> byClsid, byName;
    for (const PluginInfo *info : container.records()) {
        byClsid[info->Clsid()].append(info->Name());
        byName[info->Name()].append(info->Clsid());
        if (info->Clsid().isEmpty() || info->Name().isEmpty() || info->Url().isEmpty())
            problems.add(
                pluginsFile,
                QStringLiteral("plugin \"%1\" lacks a name, clsid or url").arg(info->Name()));
        if (container.libraryFile(*info).isEmpty())
            problems.add(pluginsFile, QStringLiteral("plugin %1: no library lib%2*.so in %3")
                                          .arg(info->Name(), info->Url(), appDir));
    }
    const auto reportShared = [&](const QHash<QString, QStringList> &owners, const char *what) {
        for (auto it = owners.cbegin(); it != owners.cend(); ++it) {
            if (it.value().size() > 1)
                problems.add(pluginsFile, QStringLiteral("%1 %2 is used by %3 records: %4")
                                              .arg(QLatin1String(what), it.key())
                                              .arg(it.value().size())
                                              .arg(it.value().join(QLatin1String(", "))));
        }
    };
    reportShared(byClsid, "clsid");
    reportShared(byName, "name");
    if (!byName.contains(container.mainPlugin()))
        problems.add(
            pluginsFile,
            QStringLiteral("main plugin \"%1\" has no record").arg(container.mainPlugin()));
}

// Languages are those the main plugin has files for; every plugin needs the same ones.
void checkLanguageFiles(const InspectedContainer &container, const QString &appDir,
                        ProblemList &problems)
{
    const QString main = container.mainPlugin();
    const QStringList mainFiles = QDir(appDir + QStringLiteral("/plugins/") + main)
                                      .entryList({main + QStringLiteral("_*.lang")}, QDir::Files);
    QStringList languages;
    for (const QString &file : mainFiles)
        languages.append(file.mid(main.size() + 1, file.size() - main.size() - 6));
    if (languages.isEmpty())
        languages.append(QStringLiteral("en-us"));
    for (const PluginInfo *info : container.records()) {
        for (const QString &language : qAsConst(languages)) {
            const QString file = languageFilePath(appDir, info->Name(), language);
            if (!QFileInfo::exists(file))
                problems.add(file, QStringLiteral("plugin %1 has no %2 language file")
                                       .arg(info->Name(), language));
        }
    }
}

void checkCustomizationEntries(const ConfigTrace &trace, ProblemList &problems)
{
    const QString file = problems.path(kCustomizationFile);
    for (const ConfigTrace::Entry &entry : trace.entries) {
        if (entry.known)
            continue;
        const QString where = entry.section == QLatin1String("common")
                                  ? QStringLiteral("common section")
                                  : QStringLiteral("%1 \"%2\"").arg(entry.section, entry.owner);
        problems.add(file,
                     QStringLiteral("%1: \"%2\" names unknown clsid \"%3\"")
                         .arg(where, entry.action, entry.clsid),
                     entry.line);
    }
}

// Toolbar files name the plugins their buttons serve and the icons they show.
void checkToolBarFile(const QString &file, const QString &folder, const QStringList &pluginNames,
                      ProblemList &problems)
{
    XmlReading::FileReader xml(file);
    if (xml.open(lcXml(), QByteArray(), QByteArray()) != XmlReading::FileReader::Opened)
        return;
    while (XmlReading::readToNextStart(xml, "item")) {
        const QString plugin = XmlReading::attribute(xml, "pluginname");
        if (!plugin.isEmpty() && !pluginNames.contains(plugin))
            problems.add(file, QStringLiteral("button names unknown plugin \"%1\"").arg(plugin),
                         xml.lineNumber());
        for (const char *icon : {"enabled", "disabled"}) {
            const QString image = XmlReading::attribute(xml, icon);
            if (!image.isEmpty() && !QFileInfo::exists(folder + QLatin1Char('/') + image))
                problems.add(file, QStringLiteral("icon \"%1\" is missing").arg(image),
                             xml.lineNumber());
        }
    }
}

// Menu and toolbar files live in the folder of the plugin that shows them.
void checkMenusAndToolBars(const InspectedContainer &container, const QString &appDir,
                           ProblemList &problems)
{
    QStringList pluginNames;
    for (const PluginInfo *info : container.records())
        pluginNames.append(info->Name());
    const QDir plugins(appDir + QStringLiteral("/plugins"));
    for (const QString &folder : plugins.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QDir dir(plugins.filePath(folder));
        for (const QString &name : dir.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
            const QString file = dir.filePath(name);
            XmlReading::FileReader xml(file);
            if (xml.open(lcXml(), QByteArray(), QByteArray()) != XmlReading::FileReader::Opened ||
                !xml.readNextStartElement())
                continue;
            const bool toolBar = xml.name() == QLatin1String("toolbar");
            if (!toolBar && xml.name() != QLatin1String("nexodoc"))
                continue;
            if (!pluginNames.contains(folder))
                problems.add(file, QStringLiteral("%1 file in the folder of unknown plugin \"%2\"")
                                       .arg(toolBar ? "toolbar" : "menu", folder));
            if (toolBar)
                checkToolBarFile(file, dir.path(), pluginNames, problems);
        }
    }
}

} // namespace

QList<ConfigInspector::Problem> ConfigInspector::check() const
{
    ProblemList problems(m_appDir);
    if (!QFileInfo(m_appDir).isDir()) {
        problems.add(m_appDir, m_appDir + QStringLiteral(" is not a directory"));
        return problems.take();
    }
    checkWellFormed(m_appDir, problems);
    bool missing = false;
    for (const QString &file : {kPluginsFile, kCustomizationFile}) {
        if (!QFileInfo::exists(problems.path(file))) {
            problems.add(problems.path(file), QStringLiteral("missing"));
            missing = true;
        }
    }
    if (missing)
        return problems.take();

    // Every record as the file has it: no operator section takes any out.
    ConfigTrace trace;
    InspectedContainer container(m_appDir, kNoOperator, &trace);
    checkRecords(container, m_appDir, problems);
    checkLanguageFiles(container, m_appDir, problems);
    checkCustomizationEntries(trace, problems);
    checkMenusAndToolBars(container, m_appDir, problems);

    // Each operator's section is read only for that operator.
    for (const QString &op : qAsConst(trace.operatorSections)) {
        ConfigTrace operatorTrace;
        InspectedContainer operatorContainer(m_appDir, op, &operatorTrace);
        QList<ConfigTrace::Entry> own;
        for (const ConfigTrace::Entry &entry : qAsConst(operatorTrace.entries)) {
            if (entry.section == QLatin1String("customize"))
                own.append(entry);
        }
        operatorTrace.entries = own;
        checkCustomizationEntries(operatorTrace, problems);
    }
    return problems.take();
}
