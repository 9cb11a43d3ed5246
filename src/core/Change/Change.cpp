#include "Change.h"

#include "CommonUtils.h"
#include "LDKStyle.h"
#include "LanguageFilePath.h"
#include "LanguageText.h"
#include "common/CoreLogging.h"
#include "common/LogLine.h"
#include "common/NexoString.h"
#include "common/XmlReading.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QMutexLocker>
#include <QXmlStreamReader>

namespace {
const char kSource[] = LD_SOURCE("Change/Change");
QString s_langName = QStringLiteral("en-us");
// plugin name -> (text identifier -> text)
QHash<QString, QHash<QString, QString>> s_translations;

// The "item" elements of a language file into the plugin's table; false on an XML error.
bool readItems(QXmlStreamReader &reader, const QString &plugin)
{
    QHash<QString, QString> &texts = s_translations[plugin];
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement ||
            reader.name() != QLatin1String("item"))
            continue;
        const QString id = XmlReading::attribute(reader, "name");
        const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
        texts.insert(id, LanguageText::clean(text, s_langName));
    }
    if (reader.hasError()) {
        qCWarning(lcLanguage, "%s: %s: XML error at line %lld: %s",
                  LogLine::prefix(kSource, "readXmlFile").constData(),
                  LogLine::arg(plugin).constData(), reader.lineNumber(),
                  LogLine::arg(reader.errorString()).constData());
        return false;
    }
    return true;
}
} // namespace

QMutex g_mutex;

QString Change::GetSettingDefaultLang()
{
    // Read directly and without looking at the status: a missing setting gives an empty name.
    NEXO_CHAR16 *value = nullptr;
    NEXO_GetSettings(NexoString::of(QStringLiteral("language")),
                     NexoString::of(QStringLiteral("active")), &value);
    const QString stored = NexoString::take(value);
    s_langName = stored.right(stored.length() - 1);
    return s_langName;
}

void Change::SetSettingDefaultLang(QString) {}

void Change::SetLangName(const QString &name)
{
    QMutexLocker locker(&g_mutex);
    s_langName = name;
    const QList<QString> loadedPlugins = s_translations.keys();
    for (const QString &plugin : loadedPlugins)
        LoadLangFile(plugin);
    const QString stored = QLatin1Char('_') + name;
    NEXO_SetSettings(NexoString::of(QStringLiteral("language")),
                     NexoString::of(QStringLiteral("active")), NexoString::of(stored));
}

QString Change::GetLangName()
{
    return s_langName;
}

bool Change::LoadLangFile(QString plugin)
{
    const QString path = languageFilePath(CommonUtils::GetPluginLibraryPath(), plugin, s_langName);
    qCDebug(lcLanguage, "%s: loading %s", LogLine::prefix(kSource, "LoadLangFile").constData(),
            LogLine::arg(path).constData());
    XmlReading::FileReader reader(path);
    switch (
        reader.open(lcLanguage(), "File " + LogLine::arg(path) + " does not exist", QByteArray())) {
    case XmlReading::FileReader::Missing:
        return false;
    case XmlReading::FileReader::Unopened:
        qCWarning(lcLanguage, "%s: cannot open %s: %s",
                  LogLine::prefix(kSource, "LoadLangFile").constData(),
                  LogLine::arg(path).constData(), LogLine::arg(reader.fileError()).constData());
        return false;
    case XmlReading::FileReader::Opened:
        break;
    }
    return readItems(reader, plugin);
}

bool Change::readXmlFile(QIODevice *device, QString plugin)
{
    if (!device)
        return false;

    QXmlStreamReader reader(device);
    return readItems(reader, plugin);
}

QString Change::tr(QString id, QString plugin)
{
    QMutexLocker locker(&g_mutex);
    // The lookup leaves empty entries behind; an empty text makes the next lookup read the file
    // again, so a file installed later is still found.
    QString text = s_translations[plugin][id];
    if (text.isEmpty()) {
        LoadLangFile(plugin);
        text = s_translations[plugin][id];
    }
    return text;
}

bool Change::ChangSkin(QApplication *app, const QString &styleSheetFile)
{
    QFile file(styleSheetFile);
    if (!file.exists() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCDebug(lcLanguage, "%s: File does not exist or failed to open %s",
                LogLine::prefix(kSource, "ChangSkin").constData(),
                LogLine::arg(styleSheetFile).constData());
        return false;
    }
    QApplication::setStyle(new LDKStyle);
    const QString styleSheet = QString::fromUtf8(file.readAll());
    file.close();
    if (app)
        app->setStyleSheet(styleSheet);
    else
        qApp->setStyleSheet(styleSheet);
    return true;
}

QString Change::GetSettingDefaultSkin()
{
    return QString();
}

void Change::SetSettingDefaultSkin(QString) {}
