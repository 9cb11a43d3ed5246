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

namespace {

// The operator's "customize" element and the "splash" after it; the reason says what decided.
void readOperatorSplash(QXmlStreamReader &reader, const QString &strOperator, bool &bSplash,
                        QString &reason)
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
    if (!bFound) {
        reason += QStringLiteral("; no customize section for operator \"%1\"").arg(strOperator);
        return;
    }

    // The search for "splash" runs on past the end of this "customize" element, so a later
    // element's value can be taken when this one has none.
    if (!readToNextStart(reader, "splash")) {
        reason += QStringLiteral("; operator \"%1\" has no splash element").arg(strOperator);
        return;
    }
    bSplash = readSplashValue(reader);
    reason = QStringLiteral("operator \"%1\" says %2").arg(strOperator, bSplash ? "true" : "false");
    // An operator customization bound to a device never shows the splash.
    if (bSplash && !strDevice.isEmpty()) {
        bSplash = false;
        reason +=
            QStringLiteral(", but its customization is bound to device \"%1\"").arg(strDevice);
    }
}

} // namespace

Startup::SplashDecision Startup::decideSplash(const QString &appDir, const QString &strOperator)
{
    SplashDecision decision{true, QStringLiteral("function section has no splash element")};
    XmlReading::FileReader reader(appDir + QStringLiteral("/plugins/XFramePlugin/Config.xml"));
    // Neither a missing nor an unreadable file is logged here: no splash is the answer.
    if (reader.open(lcStartup(), QByteArray(), QByteArray()) != XmlReading::FileReader::Opened)
        return {false, QStringLiteral("no main-frame configuration file")};

    if (readToNextStart(reader, "function")) {
        while (!reader.atEnd()) {
            reader.readNext();
            if (isEndOf(reader, "function"))
                break;
            if (isStartOf(reader, "splash")) {
                decision.splash = readSplashValue(reader);
                decision.reason = QStringLiteral("function section says %1")
                                      .arg(decision.splash ? "true" : "false");
                break;
            }
        }
    }
    if (strOperator != QLatin1String("common"))
        readOperatorSplash(reader, strOperator, decision.splash, decision.reason);
    else
        decision.reason += QStringLiteral("; operator \"common\" consults no operator section");
    return decision;
}

bool Startup::haveSplashScreen()
{
    const bool bSplash = decideSplash(CommonUtils::GetPluginLibraryPath(),
                                      CommonUtils::GetSettings(QStringLiteral("customize"),
                                                               QStringLiteral("operator")))
                             .splash;
    qCDebug(lcStartup, "%s: splash=%d",
            LogLine::prefix(kStartupSource, "haveSplashScreen").constData(), int(bSplash));
    return bSplash;
}

void Startup::operatorHaveSplashScreen(QXmlStreamReader &reader, QString strOperator, bool &bSplash)
{
    QString reason;
    readOperatorSplash(reader, strOperator, bSplash, reason);
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
