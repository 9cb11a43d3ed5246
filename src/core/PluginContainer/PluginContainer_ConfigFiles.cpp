// The two readers: the plugin library file and the customization file.
#include "PluginContainer.h"

#include "ConfigObserver.h"
#include "ContainerLog.h"
#include "common/XmlReading.h"

#include <QMutexLocker>

using XmlReading::isEndOf;
using XmlReading::isStartOf;

namespace {

bool isTrue(const QString &text)
{
    return text == QLatin1String("true");
}

// "./Foo.dll" and ".\Foo.dll" name the library; only the first ".\" and the first ".dll" go.
QString libraryUrl(QString url)
{
    const int dotBackslash = url.indexOf(QLatin1String(".\\"));
    if (dotBackslash >= 0)
        url.remove(dotBackslash, 2);
    const int dll = url.indexOf(QLatin1String(".dll"));
    if (dll >= 0)
        url.remove(dll, 4);
    return url;
}

// Both files are logged alike when they cannot be opened.
bool openConfigFile(XmlReading::FileReader &xml)
{
    const QByteArray name = LogLine::arg(xml.fileName());
    return xml.open(lcPlugins(), "File " + name + " does not exist",
                    "Failed to open file " + name) == XmlReading::FileReader::Opened;
}

} // namespace

bool PluginContainer::populatePluginInfo(QString fileName)
{
    QMutexLocker locker(&m_mutex);
    XmlReading::FileReader xml(fileName);
    if (!openConfigFile(xml))
        return false;

    for (;;) {
        // An error inside a record also ends the document; it is reported, not taken for success.
        if (xml.atEnd() && !xml.hasError())
            return true;
        if (xml.hasError())
            break;
        xml.readNext();
        if (xml.hasError())
            break;
        if (xml.name() == QLatin1String("mainplugin")) {
            m_strMainPlugin = xml.readElementText();
            qCDebug(lcPlugins, "%s: m_strMainPlugin = %s",
                    LogLine::prefix(kContainerSource, "populatePluginInfo").constData(),
                    LogLine::arg(m_strMainPlugin).constData());
        } else if (isStartOf(xml, "plugin")) {
            PluginInfo *info = readPluginElement(xml);
            if (info) {
                m_pHashPlugins->insert(info->Clsid(), info);
                m_pListPlugins->append(info);
            } else {
                qCDebug(lcPlugins, "%s: pPluginInfo is NULL",
                        LogLine::prefix(kContainerSource, "populatePluginInfo").constData());
            }
        }
    }
    qCDebug(
        lcPlugins, "%s",
        XmlReading::errorLine(xml, "Error:  %1  in file  %4  at line  %2 ,column  %3 ", fileName)
            .constData());
    return false;
}

// The "static" element closes the record; the "plugin" end tag does not. A plugin without
// "static" therefore takes in the children of the plugins after it.
PluginInfo *PluginContainer::readPluginElement(QXmlStreamReader &xml)
{
    QString name, clsid, url;
    int type = 0;
    bool active = false, isStatic = false, settingTitle = false;

    while (!xml.atEnd()) {
        if (xml.isStartElement()) {
            const QStringRef element = xml.name();
            if (element == QLatin1String("name")) {
                name = xml.readElementText();
            } else if (element == QLatin1String("clsid")) {
                clsid = xml.readElementText();
            } else if (element == QLatin1String("url")) {
                url = libraryUrl(xml.readElementText());
            } else if (element == QLatin1String("active")) {
                active = isTrue(xml.readElementText());
            } else if (element == QLatin1String("type")) {
                type = xml.readElementText().toInt();
            } else if (element == QLatin1String("static")) {
                isStatic = isTrue(xml.readElementText());
                xml.readNext();
                break;
            } else if (element == QLatin1String("setting_title")) {
                settingTitle = isTrue(xml.readElementText());
            }
        }
        xml.readNext();
    }
    return new PluginInfo(name, clsid, url, type, active, isStatic, settingTitle, false);
}

void PluginContainer::populatePluginsConfig(QString fileName)
{
    XmlReading::FileReader xml(fileName);
    if (!openConfigFile(xml))
        return;

    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.hasError())
            break;
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("common")) {
            readCommonElement(xml);
        } else if (xml.name() == QLatin1String("device")) {
            readDeviceElements(xml.attributes().value(QLatin1String("name")).toString(), xml);
        } else if (xml.name() == QLatin1String("customize")) {
            if (m_pObserver)
                m_pObserver->operatorSectionSeen(XmlReading::attribute(xml, "name"));
            // Another operator's section is passed over; its children then mean nothing here.
            if (xml.attributes().value(QLatin1String("name")) == m_strCustomizeName)
                readCustomizeElements(xml);
        }
    }
    if (xml.hasError())
        qCDebug(lcPlugins, "%s",
                XmlReading::errorLine(xml, "Error: %1  in file  %4  at line  %2 , column  %3 ",
                                      fileName)
                    .constData());
}

void PluginContainer::readCommonElement(QXmlStreamReader &xml)
{
    while (!xml.atEnd() && !isEndOf(xml, "common")) {
        if (isStartOf(xml, "item")) {
            noteEntry(xml, "common", QString());
            const QStringRef clsid = xml.attributes().value(QLatin1String("clsid"));
            if (isPluginInList(clsid.toString())) {
                m_pSetCommon->insert(clsid.toString());
                addToDisEnableList(QStringLiteral("common"), m_pEnableList, clsid, true);
            }
        }
        xml.readNext();
    }
}

// A device section ends with the end of its "plugin" child, not with "device".
void PluginContainer::readDeviceElements(QString deviceName, QXmlStreamReader &xml)
{
    while (!xml.atEnd() && !isEndOf(xml, "plugin")) {
        if (isStartOf(xml, "add") || isStartOf(xml, "remove"))
            noteEntry(xml, "device", deviceName);
        if (isStartOf(xml, "add")) {
            addToDisEnableList(deviceName, m_pEnableList,
                               xml.attributes().value(QLatin1String("clsid")), true);
        } else if (isStartOf(xml, "remove")) {
            addToDisEnableList(deviceName, m_pDisableList,
                               xml.attributes().value(QLatin1String("clsid")), false);
        }
        xml.readNext();
    }
}

void PluginContainer::readCustomizeElements(QXmlStreamReader &xml)
{
    while (!xml.atEnd() && !isEndOf(xml, "plugin")) {
        if (isStartOf(xml, "add") || isStartOf(xml, "remove"))
            noteEntry(xml, "customize", m_strCustomizeName);
        if (isStartOf(xml, "add")) {
            const QString clsid = xml.attributes().value(QLatin1String("clsid")).toString();
            if (isPluginInList(clsid)) {
                qCDebug(lcPlugins, "readCustomizeElements: %s will be enabled by default",
                        LogLine::arg(clsid).constData());
                m_pSetCommon->insert(clsid);
            }
        } else if (isStartOf(xml, "remove")) {
            const QString clsid = xml.attributes().value(QLatin1String("clsid")).toString();
            qCDebug(lcPlugins, "readCustomizeElements: %s will be removed",
                    LogLine::arg(clsid).constData());
            removePluginInfo(clsid);
        }
        xml.readNext();
    }
}

void PluginContainer::addToDisEnableList(QString owner, QMultiHash<QString, QString> *list,
                                         QStringRef clsid, bool enable)
{
    const QString id = clsid.toString();
    if (isPluginInList(id)) {
        qCDebug(lcPlugins, "readDeviceElements: %s: %s need to enable %s plugin",
                LogLine::arg(owner).constData(), enable ? "Enabling" : "Disabling",
                LogLine::arg(id).constData());
        list->insert(owner, id);
    } else {
        qCDebug(lcPlugins, "readDeviceElements: %s: have to %s %s, but not in list",
                LogLine::arg(owner).constData(), enable ? "enable" : "disable",
                LogLine::arg(id).constData());
    }
}

void PluginContainer::noteEntry(const QXmlStreamReader &xml, const char *section,
                                const QString &owner)
{
    if (!m_pObserver)
        return;
    const QString clsid = XmlReading::attribute(xml, "clsid");
    m_pObserver->entryRead(QLatin1String(section), owner, xml.name().toString(), clsid,
                           isPluginInList(clsid), xml.lineNumber());
}
