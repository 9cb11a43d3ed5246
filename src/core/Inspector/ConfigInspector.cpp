// Which plugins an operator and a device get, and why.
#include "ConfigInspector.h"

#include "Change/LanguageFilePath.h"
#include "ConfigTrace.h"
#include "Startup.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool hasEntry(const ConfigTrace &trace, const char *section, const char *action,
              const QString &clsid)
{
    for (const ConfigTrace::Entry &entry : trace.entries) {
        if (entry.known && entry.clsid == clsid && entry.section == QLatin1String(section) &&
            entry.action == QLatin1String(action))
            return true;
    }
    return false;
}

// The common set holds both the common section's items and the operator's additions.
QString commonSetSources(const ConfigTrace &trace, const QString &clsid, const QString &op)
{
    QStringList sources;
    if (hasEntry(trace, "common", "item", clsid))
        sources << QStringLiteral("common section");
    if (hasEntry(trace, "customize", "add", clsid))
        sources << QStringLiteral("operator \"%1\" add").arg(op);
    return sources.join(QLatin1String(" and "));
}

QString ruleName(const QString &rule, const QString &owner)
{
    if (rule == QLatin1String("common"))
        return QStringLiteral("common section and operator additions");
    return QStringLiteral("device \"%1\" %2").arg(owner, rule);
}

QList<ConfigInspector::RuleStep> stepsFor(const ConfigTrace &trace, const QString &clsid,
                                          const QString &op)
{
    QList<ConfigInspector::RuleStep> steps;
    for (const ConfigTrace::Step &step : trace.steps) {
        if (step.clsid != clsid)
            continue;
        const QString name = step.rule == QLatin1String("common")
                                 ? commonSetSources(trace, clsid, op)
                                 : ruleName(step.rule, step.owner);
        steps.append({name, step.enable});
    }
    return steps;
}

} // namespace

ConfigInspector::ConfigInspector(QString appDir)
    : m_appDir(QDir(appDir).absolutePath())
{}

ConfigInspector::Report ConfigInspector::inspect(const QString &operatorName, const QString &device,
                                                 const QString &language) const
{
    ConfigTrace trace;
    InspectedContainer container(m_appDir, operatorName, &trace);
    container.applyDevice(device);

    Report report;
    report.appDir = m_appDir;
    report.operatorName = operatorName;
    report.device = device;
    report.language = language;
    report.mainPlugin = container.mainPlugin();
    for (const PluginInfo *info : container.records()) {
        Plugin plugin;
        plugin.name = info->Name();
        plugin.clsid = info->Clsid();
        plugin.url = info->Url();
        plugin.type = info->Type();
        plugin.active = info->IsActive();
        plugin.isStatic = info->IsStatic();
        plugin.enabled = info->IsEnabled();
        plugin.libraryFile = container.libraryFile(*info);
        const QString langFile = languageFilePath(m_appDir, info->Name(), language);
        if (QFileInfo::exists(langFile))
            plugin.languageFile = langFile;
        plugin.steps = stepsFor(trace, info->Clsid(), operatorName);
        report.plugins.append(plugin);
    }
    report.removedByOperator = trace.removed;
    for (const auto &rule : qAsConst(trace.rules))
        report.ruleOrder.append(ruleName(rule.first, rule.second));

    const Startup::SplashDecision splash = Startup::decideSplash(m_appDir, operatorName);
    report.splash = splash.splash;
    report.splashReason = splash.reason;
    return report;
}
