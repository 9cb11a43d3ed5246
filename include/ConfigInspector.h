#ifndef LINKDECK_CONFIGINSPECTOR_H
#define LINKDECK_CONFIGINSPECTOR_H

#include "CoreGlobal.h"

#include <QList>
#include <QString>
#include <QStringList>

// What an application directory's configuration does, worked out by the container's own readers
// and rules: which plugins a given operator and device get and which rule decided each, and what
// is wrong with the files. Nothing is loaded, no device is asked and no setting is written.
class CORE_EXPORT ConfigInspector
{
public:
    // One rule that set a plugin's flag, in the order the container applied them.
    struct RuleStep
    {
        QString rule; // "common section", "operator \"x\"", "device \"x\" add", ...
        bool enable;
    };
    struct Plugin
    {
        QString name;
        QString clsid;
        QString url;
        int type = 0;
        bool active = false;
        bool isStatic = false;
        bool enabled = false;
        QString libraryFile;   // the first file loading would try; empty when there is none
        QString languageFile;  // the file for the report's language; empty when it is missing
        QList<RuleStep> steps; // empty: no rule names it, so it stays off
    };
    struct Report
    {
        QString appDir;
        QString operatorName;
        QString device;
        QString language;
        QString mainPlugin;
        QList<Plugin> plugins;         // in the plugin library file's order
        QStringList removedByOperator; // clsids the operator's section took out of the registry
        QStringList ruleOrder;         // the rules as they were applied
        bool splash = false;
        QString splashReason;
    };
    struct Problem
    {
        QString file; // relative to the application directory
        qint64 line = 0;
        qint64 column = 0;
        QString message;
    };

    explicit ConfigInspector(QString appDir);

    // The state a start with this operator customization name and this device reaches once the
    // device is known (an empty device: none, or one without a section).
    Report inspect(const QString &operatorName, const QString &device,
                   const QString &language) const;
    // Every problem of the directory; empty when it is clean.
    QList<Problem> check() const;

private:
    QString m_appDir;
};

#endif // LINKDECK_CONFIGINSPECTOR_H
