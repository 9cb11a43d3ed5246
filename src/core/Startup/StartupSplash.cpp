// The splash screen: whether the main frame's configuration wants one, showing it, and handing it
// over to the main frame.
#include "Startup.h"

#include "CommonUtils.h"
#include "StartupSource.h"
#include "common/CoreLogging.h"
#include "common/XmlReading.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QSplashScreen>
#include <QXmlStreamReader>

QSplashScreen *Startup::m_pSplashScreen = nullptr;
QElapsedTimer Startup::m_pSplashStartAt;

namespace {

using XmlReading::isEndOf;
using XmlReading::isStartOf;
using XmlReading::readToNextStart;

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
    XmlReading::FileReader reader(CommonUtils::GetPluginLibraryPath() +
                                  QStringLiteral("/plugins/XFramePlugin/Config.xml"));
    // Neither a missing nor an unreadable file is logged here: no splash is the answer.
    if (reader.open(lcStartup(), QByteArray(), QByteArray()) != XmlReading::FileReader::Opened) {
        bSplash = false;
    } else {
        if (readToNextStart(reader, "function")) {
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
    }
    qCDebug(lcStartup, "%s: splash=%d",
            LogLine::prefix(kStartupSource, "haveSplashScreen").constData(), int(bSplash));
    return bSplash;
}

void Startup::operatorHaveSplashScreen(QXmlStreamReader &reader, QString strOperator, bool &bSplash)
{
    QString strDevice;
    bool bFound = false;
    while (!bFound && readToNextStart(reader, "customize")) {
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
    if (!readToNextStart(reader, "splash"))
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
