#include "ConfigInspector.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kPhases[] = {"container construction", "configuration files", "device wait",
                           "main-frame plugin",      "first window shown",  "start-up loading"};

// The shipped configuration, plugin folders and plugin libraries (linked, not copied).
void copyApplicationDirectory(const QString &to)
{
    const QDir from(LINKDECK_APP_DIR);
    for (const char *folder : {"config", "plugins"}) {
        QDirIterator it(from.filePath(folder), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString target = to + '/' + from.relativeFilePath(it.next());
            QDir().mkpath(QFileInfo(target).path());
            QVERIFY(QFile::copy(it.filePath(), target));
        }
    }
    for (const QString &library : from.entryList({"lib*Plugin.so"}, QDir::Files))
        QVERIFY(QFile::link(from.filePath(library), to + '/' + library));
}

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run runApp(const QStringList &arguments, const QString &settings)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("LINKDECK_SETTINGS", settings);
    env.insert("QT_LOGGING_RULES", "linkdeck.core.plugins.debug=true");
    env.remove("QT_MESSAGE_PATTERN");
    process.setProcessEnvironment(env);
    process.start(LINKDECK_APP_PATH, arguments);
    Run run;
    if (process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

// The container only ever switches a flag through updatePluginInfo, which logs each switch.
QSet<QString> enabledInLog(const QString &log)
{
    QSet<QString> enabled;
    const QRegularExpression line("^updatePluginInfo: (Enabling|Disabling) (\\S+) plugin$",
                                  QRegularExpression::MultilineOption);
    for (auto it = line.globalMatch(log); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (match.captured(1) == "Enabling")
            enabled.insert(match.captured(2));
        else
            enabled.remove(match.captured(2));
    }
    return enabled;
}

// Replaces the first occurrence; an empty "from" creates the file with "to" as its contents.
void plant(const QString &file, const QString &from, const QString &to)
{
    QFile f(file);
    QString text;
    if (!from.isEmpty()) {
        QVERIFY(f.open(QIODevice::ReadOnly));
        text = QString::fromUtf8(f.readAll());
        f.close();
        const int at = text.indexOf(from);
        QVERIFY2(at >= 0, qPrintable(from));
        text.replace(at, from.size(), to);
    } else {
        QDir().mkpath(QFileInfo(file).path());
        text = to;
    }
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text.toUtf8());
}

} // namespace

class tst_Inspector : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void explainAgreesWithARealStart_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("device");
        for (const char *op : {"common", "nordtel"}) {
            for (const char *device : {"", "E3372", "K5160"})
                QTest::newRow(qPrintable(QString("%1 %2").arg(op, device))) << op << device;
        }
    }
    void explainAgreesWithARealStart()
    {
        QFETCH(QString, op);
        QFETCH(QString, device);
        const QString settings = m_dir.filePath(QTest::currentDataTag() + QString(".ini"));
        QStringList deviceArgs;
        if (!device.isEmpty())
            deviceArgs << "--device" << device;

        const Run explain =
            runApp(QStringList{"--explain", "--json", "--operator", op} + deviceArgs, settings);
        QCOMPARE(explain.exitCode, 0);
        QVERIFY2(!QFile::exists(settings), "inspecting wrote the settings");
        QSet<QString> explained, explainedNames;
        const QJsonArray plugins =
            QJsonDocument::fromJson(explain.out.toUtf8())["plugins"].toArray();
        for (const QJsonValue &plugin : plugins) {
            if (plugin["enabled"].toBool()) {
                explained.insert(plugin["clsid"].toString());
                explainedNames.insert(plugin["name"].toString());
            }
        }
        QVERIFY(!explained.isEmpty());

        const Run start = runApp(
            QStringList{"--operator", op, "--no-splash", "--profile", "--quit-after", "2000"} +
                deviceArgs,
            settings);
        QCOMPARE(start.exitCode, 0);
        QCOMPARE(enabledInLog(start.err), explained);

        // Every shipped plugin starts with the application, so the profile lists exactly the
        // enabled ones, and every phase.
        const QString table = start.out.mid(start.out.indexOf("Start-up profile"));
        for (const QString &phase : kPhases)
            QVERIFY2(table.contains(QRegularExpression("\n" + phase + " +[0-9]")),
                     qPrintable(phase + " missing in\n" + table));
        QSet<QString> profiled;
        const QString pluginRows = table.mid(table.indexOf("\nplugin "));
        const QRegularExpression row("^(\\w+Plugin) +[0-9.]+ +[0-9.]+ +[0-9.]+$",
                                     QRegularExpression::MultilineOption);
        for (auto it = row.globalMatch(pluginRows); it.hasNext();)
            profiled.insert(it.next().captured(1));
        QCOMPARE(profiled, explainedNames);
    }

    void explainNamesTheDecidingRule_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("plugin");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QStringList>("steps");
        QTest::newRow("common") << "common"
                                << ""
                                << "XFramePlugin" << true << QStringList{"common section: on"};
        QTest::newRow("no rule") << "common"
                                 << "K5160"
                                 << "NotifyPlugin" << false << QStringList{};
        QTest::newRow("device adds")
            << "common"
            << "E3372"
            << "NotifyPlugin" << true << QStringList{"device \"E3372\" add: on"};
        QTest::newRow("device removes after common")
            << "nordtel"
            << "K5160"
            << "StatusBarMgrPlugin" << false
            << QStringList{"common section: on", "device \"K5160\" remove: off"};
        QTest::newRow("operator adds, device adds again")
            << "nordtel"
            << "E3372"
            << "NotifyPlugin" << true
            << QStringList{"operator \"nordtel\" add: on", "device \"E3372\" add: on"};
    }
    void explainNamesTheDecidingRule()
    {
        QFETCH(QString, op);
        QFETCH(QString, device);
        QFETCH(QString, plugin);
        QFETCH(bool, enabled);
        QFETCH(QStringList, steps);
        const ConfigInspector::Report report =
            ConfigInspector(LINKDECK_APP_DIR).inspect(op, device, "en-us");
        for (const ConfigInspector::Plugin &p : report.plugins) {
            if (p.name != plugin)
                continue;
            QCOMPARE(p.enabled, enabled);
            QStringList seen;
            for (const ConfigInspector::RuleStep &step : p.steps)
                seen << step.rule + (step.enable ? ": on" : ": off");
            QCOMPARE(seen, steps);
            QVERIFY(!p.libraryFile.isEmpty() && !p.languageFile.isEmpty());
        }
        // Inspecting loads nothing.
        QFile maps("/proc/self/maps");
        QVERIFY(maps.open(QIODevice::ReadOnly));
        QVERIFY(!maps.readAll().contains("Plugin.so"));
    }

    void splashDecision_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<bool>("splash");
        QTest::addColumn<QString>("reason");
        QTest::newRow("operator common") << "common" << true << "consults no operator section";
        QTest::newRow("operator section") << "nordtel" << true << "operator \"nordtel\" says true";
        QTest::newRow("bound to a device")
            << "nordtel-k5160" << false << "bound to device \"K5160\"";
        QTest::newRow("no section") << "other" << true << "no customize section";
    }
    void splashDecision()
    {
        QFETCH(QString, op);
        QFETCH(bool, splash);
        QFETCH(QString, reason);
        const ConfigInspector::Report report =
            ConfigInspector(LINKDECK_APP_DIR).inspect(op, QString(), "en-us");
        QCOMPARE(report.splash, splash);
        QVERIFY2(report.splashReason.contains(reason), qPrintable(report.splashReason));
    }

    void checkFindsPlantedProblem_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("problemFile");
        QTest::addColumn<QString>("message");
        const QString lib = "config/pluginslib.xml", custom = "config/PluginsConfig.xml";
        const QString toolbar = "plugins/XFramePlugin/ToolBar.xml";
        const QString lang = "plugins/NotifyPlugin/NotifyPlugin_de-de.lang";
        QTest::newRow("broken XML") << lang << "</language>"
                                    << "</languag>" << lang << "XML error: ";
        QTest::newRow("duplicate clsid")
            << lib << "58A0343A-93DB-4ea2-92B4-C51589629381"
            << "C986A689-A5F6-4215-84BD-39BA626F1F57" << lib
            << "clsid C986A689-A5F6-4215-84BD-39BA626F1F57 is used by 2 records";
        QTest::newRow("duplicate name")
            << lib << "<name>CallUIPlugin"
            << "<name>NotifyPlugin" << lib << "name NotifyPlugin is used by 2 records";
        QTest::newRow("device entry")
            << custom << "C986A689"
            << "0BAD0BAD" << custom << "device \"E3372\": \"add\" names unknown clsid";
        QTest::newRow("other operator's entry")
            << custom << "<customize name=\"nordtel\">"
            << "<customize name=\"x\"><plugin><remove clsid=\"GONE\"/></plugin></customize>"
               "<customize name=\"nordtel\">"
            << custom << "customize \"x\": \"remove\" names unknown clsid \"GONE\"";
        QTest::newRow("library") << lib << ".\\CallUIPlugin.dll"
                                 << "CallPlugin" << lib
                                 << "plugin CallUIPlugin: no library libCallPlugin*.so";
        QTest::newRow("language file")
            << lang << ""
            << "" << lang << "plugin NotifyPlugin has no de-de language file";
        QTest::newRow("toolbar plugin")
            << toolbar << "\"CallUIPlugin\""
            << "\"CallPlugin\"" << toolbar << "button names unknown plugin \"CallPlugin\"";
        QTest::newRow("toolbar icon")
            << toolbar << "tb_call.png"
            << "tb_gone.png" << toolbar << "icon \"images/tb_gone.png\" is missing";
        QTest::newRow("menu of no plugin") << "plugins/Ghost/Menu.xml"
                                           << ""
                                           << "<nexodoc/>"
                                           << "plugins/Ghost/Menu.xml"
                                           << "menu file in the folder of unknown plugin \"Ghost\"";
    }
    void checkFindsPlantedProblem()
    {
        QFETCH(QString, file);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, problemFile);
        QFETCH(QString, message);
        QTemporaryDir appDir;
        copyApplicationDirectory(appDir.path());
        if (from.isEmpty() && to.isEmpty())
            QVERIFY(QFile::remove(appDir.filePath(file)));
        else
            plant(appDir.filePath(file), from, to);

        QStringList found;
        for (const ConfigInspector::Problem &problem : ConfigInspector(appDir.path()).check()) {
            if (problem.file == problemFile && problem.message.contains(message))
                return;
            found << problem.file + ": " + problem.message;
        }
        QFAIL(qPrintable("not found; found:\n" + found.join('\n')));
    }

    // Integrators run it in their CI: exit status and one line per problem.
    void checkConfigCommand()
    {
        QTemporaryDir appDir;
        copyApplicationDirectory(appDir.path());
        const QString settings = m_dir.filePath("check.ini");
        Run run = runApp({"--check-config", appDir.path()}, settings);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QString());

        plant(appDir.filePath("config/PluginsConfig.xml"), "<common>",
              "<common><item clsid=\"X\"/>");
        QVERIFY(QFile::remove(appDir.filePath("plugins/CallUIPlugin/CallUIPlugin_en-us.lang")));
        run = runApp({"--check-config", appDir.path()}, settings);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.out.split('\n', Qt::SkipEmptyParts),
                 QStringList({"plugins/CallUIPlugin/CallUIPlugin_en-us.lang: plugin "
                              "CallUIPlugin has no en-us language file",
                              "config/PluginsConfig.xml:6: common section: \"item\" names "
                              "unknown clsid \"X\""}));
        QVERIFY(!QFile::exists(settings));
    }
};

QTEST_GUILESS_MAIN(tst_Inspector)
#include "tst_inspector.moc"
