#include "Inspection.h"

#include "AppOptions.h"
#include "Change.h"
#include "CommonUtils.h"
#include "ConfigInspector.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

namespace {

using Report = ConfigInspector::Report;
using Plugin = ConfigInspector::Plugin;

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString found(const QString &file)
{
    return file.isEmpty() ? QStringLiteral("missing") : QStringLiteral("found");
}

QString decidedBy(const Plugin &plugin)
{
    if (plugin.steps.isEmpty())
        return QStringLiteral("no rule switches it on");
    return plugin.steps.constLast().rule;
}

// What a real start would use: the command line, else the settings, else the defaults.
Report inspect(const AppOptions &options)
{
    const QString op =
        options.operatorName.isEmpty()
            ? CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("operator"))
            : options.operatorName;
    QString language = options.language;
    if (language.isEmpty())
        language = Change::GetSettingDefaultLang();
    if (language.isEmpty())
        language = QStringLiteral("en-us");
    const QString appDir =
        options.inspectedDir.isEmpty() ? CommonUtils::GetPluginLibraryPath() : options.inspectedDir;
    return ConfigInspector(appDir).inspect(op, options.devices.value(0), language);
}

QJsonObject reportHeader(const Report &report)
{
    return {{"appdir", report.appDir},
            {"operator", report.operatorName},
            {"device", report.device},
            {"language", report.language},
            {"mainplugin", report.mainPlugin},
            {"removed_by_operator", QJsonArray::fromStringList(report.removedByOperator)}};
}

QJsonObject pluginJson(const Plugin &plugin, bool withSteps)
{
    QJsonObject object{{"name", plugin.name},           {"clsid", plugin.clsid},
                       {"type", plugin.type},           {"static", plugin.isStatic},
                       {"active", plugin.active},       {"enabled", plugin.enabled},
                       {"library", plugin.libraryFile}, {"language_file", plugin.languageFile}};
    if (withSteps) {
        QJsonArray steps;
        for (const ConfigInspector::RuleStep &step : plugin.steps)
            steps.append(QJsonObject{{"rule", step.rule}, {"enable", step.enable}});
        object.insert("steps", steps);
        object.insert("decided_by", decidedBy(plugin));
    }
    return object;
}

QJsonObject reportJson(const Report &report, bool explain)
{
    QJsonObject object = reportHeader(report);
    QJsonArray plugins;
    for (const Plugin &plugin : report.plugins)
        plugins.append(pluginJson(plugin, explain));
    object.insert("plugins", plugins);
    if (explain) {
        object.insert("rule_order", QJsonArray::fromStringList(report.ruleOrder));
        object.insert("splash",
                      QJsonObject{{"shown", report.splash}, {"reason", report.splashReason}});
    }
    return object;
}

void printHeader(QTextStream &out, const Report &report)
{
    out << "Application directory: " << report.appDir << '\n'
        << "Operator: \"" << report.operatorName << "\"  Device: \"" << report.device
        << "\"  Language: " << report.language << '\n';
}

void printRemoved(QTextStream &out, const Report &report)
{
    for (const QString &clsid : report.removedByOperator)
        out << "Removed by operator \"" << report.operatorName << "\": " << clsid << '\n';
}

void printList(QTextStream &out, const Report &report)
{
    printHeader(out, report);
    out << qSetFieldWidth(20) << Qt::left << "name" << qSetFieldWidth(38) << "clsid"
        << qSetFieldWidth(6) << "type" << qSetFieldWidth(8) << "static"
        << "active" << qSetFieldWidth(9) << "enabled"
        << "library" << qSetFieldWidth(0) << "language" << '\n';
    for (const Plugin &p : report.plugins) {
        out << qSetFieldWidth(20) << p.name << qSetFieldWidth(38) << p.clsid << qSetFieldWidth(6)
            << p.type << qSetFieldWidth(8) << yesNo(p.isStatic) << yesNo(p.active)
            << qSetFieldWidth(9) << yesNo(p.enabled) << found(p.libraryFile) << qSetFieldWidth(0)
            << found(p.languageFile) << '\n';
    }
    printRemoved(out, report);
}

void printExplanation(QTextStream &out, const Report &report)
{
    printHeader(out, report);
    out << "Rules applied, in order:\n";
    for (int i = 0; i < report.ruleOrder.size(); ++i)
        out << "  " << i + 1 << ". " << report.ruleOrder.at(i) << '\n';
    for (const Plugin &p : report.plugins) {
        out << p.name << " (" << p.clsid << "): " << (p.enabled ? "enabled" : "disabled")
            << ", decided by " << decidedBy(p) << '\n';
        for (const ConfigInspector::RuleStep &step : p.steps)
            out << "    " << step.rule << ": " << (step.enable ? "on" : "off") << '\n';
    }
    printRemoved(out, report);
    out << "Splash: " << (report.splash ? "shown" : "not shown") << " (" << report.splashReason
        << ")\n";
}

int checkConfig(QTextStream &out, const AppOptions &options)
{
    const QString appDir =
        options.inspectedDir.isEmpty() ? CommonUtils::GetPluginLibraryPath() : options.inspectedDir;
    const QList<ConfigInspector::Problem> problems = ConfigInspector(appDir).check();
    if (options.json) {
        QJsonArray list;
        for (const ConfigInspector::Problem &problem : problems)
            list.append(QJsonObject{{"file", problem.file},
                                    {"line", problem.line},
                                    {"column", problem.column},
                                    {"message", problem.message}});
        out << QJsonDocument(QJsonObject{{"appdir", appDir}, {"problems", list}}).toJson();
    } else {
        for (const ConfigInspector::Problem &problem : problems) {
            out << problem.file;
            if (problem.line > 0)
                out << ':' << problem.line;
            if (problem.column > 0)
                out << ':' << problem.column;
            out << ": " << problem.message << '\n';
        }
    }
    return problems.isEmpty() ? 0 : 1;
}

} // namespace

int runInspection(const AppOptions &options)
{
    QTextStream out(stdout);
    if (options.inspection == AppOptions::Inspection::CheckConfig)
        return checkConfig(out, options);

    const bool explain = options.inspection == AppOptions::Inspection::Explain;
    const Report report = inspect(options);
    if (options.json)
        out << QJsonDocument(reportJson(report, explain)).toJson();
    else if (explain)
        printExplanation(out, report);
    else
        printList(out, report);
    return 0;
}
