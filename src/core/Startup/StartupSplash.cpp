// The splash screen: whether the main frame's configuration wants one, showing it, and handing it
// over to the main frame.
#include "Startup.h"

#include "CommonUtils.h"
#include "StartupSource.h"
#include "common/CoreLogging.h"

#include <QCoreApplication>
#include <QFile>
#include <QPixmap>
#include <QSplashScreen>
#include <QXmlStreamReader>

QSplashScreen *Startup::m_pSplashScreen = nullptr;
QElapsedTimer Startup::m_pSplashStartAt;

namespace {

bool isStartOf(const QXmlStreamReader &reader, const char *name)
{
    return reader.isStartElement() && reader.name() == QLatin1String(name);
}

bool isEndOf(const QXmlStreamReader &reader, const char *name)
{
    return reader.isEndElement() && reader.name() == QLatin1String(name);
}

// Advances to the next start element of that name; false at the end of the document.
bool readToStartOf(QXmlStreamReader &reader, const char *name)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (isStartOf(reader, name))
            return true;
    }
    return false;
}

// Only the exact text "true" switches the splash on.
bool readSplashValue(QXmlStreamReader &reader)
{
    return reader.readElementText() == QLatin1String("true");
}

} // namespace

QSplashScreen *Startup::GetSplashScreen(int &elapsed)
{
    elapsed = m_pSplashStartAt.isValid() ? int(m_pSplashStartAt.elapsed()) : 0;
    QSplashScreen *pSplash = m_pSplashScreen;
    m_pSplashScreen = nullptr;
    return pSplash;
}

bool Startup::haveSplashScreen()
{
    bool bSplash = true;
    QFile file(CommonUtils::GetPluginLibraryPath() +
               QStringLiteral("/plugins/XFramePlugin/Config.xml"));
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) {
        bSplash = false;
    } else {
        QXmlStreamReader reader(&file);
        if (readToStartOf(reader, "function")) {
            while (!reader.atEnd()) {
                reader.readNext();
                if (isEndOf(reader, "function"))
                    break;
                if (isStartOf(reader, "splash")) {
                    bSplash = readSplashValue(reader);
                    break;
                }
            }
        }
        const QString strOperator =
            CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("operator"));
        if (strOperator != QLatin1String("common"))
            operatorHaveSplashScreen(reader, strOperator, bSplash);
        file.close();
    }
    qCDebug(lcStartup, "%s: splash=%d",
            LogLine::prefix(kStartupSource, "haveSplashScreen").constData(), int(bSplash));
    return bSplash;
}

void Startup::operatorHaveSplashScreen(QXmlStreamReader &reader, QString strOperator, bool &bSplash)
{
    QString strDevice;
    bool bFound = false;
    while (!bFound && readToStartOf(reader, "customize")) {
        const QXmlStreamAttributes attributes = reader.attributes();
        if (attributes.value(QLatin1String("name")) == strOperator) {
            strDevice = attributes.value(QLatin1String("device")).toString();
            bFound = true;
        }
    }
    if (!bFound)
        return;

    // The search for "splash" runs on past the end of this "customize" element, so a later
    // element's value can be taken when this one has none.
    if (!readToStartOf(reader, "splash"))
        return;
    bSplash = readSplashValue(reader);
    // An operator customization bound to a device never shows the splash.
    if (bSplash && !strDevice.isEmpty())
        bSplash = false;
}

void Startup::showSplashScreen()
{
    const QString appDir = CommonUtils::GetPluginLibraryPath();
    // Image-format plugins shipped beside the plugins decode the splash image.
    QCoreApplication::addLibraryPath(appDir + QStringLiteral("/plugins"));
    const QPixmap pixmap(appDir + QStringLiteral("/plugins/XFramePlugin/splash"));

    m_pSplashScreen = new QSplashScreen(pixmap, Qt::WindowStaysOnTopHint);
    if (m_pSplashScreen) {
        m_pSplashScreen->setVisible(true);
        m_pSplashStartAt.start();
    } else {
        qCDebug(lcStartup, "%s: create splash screen failed",
                LogLine::prefix(kStartupSource, "showSplashScreen").constData());
    }
}
