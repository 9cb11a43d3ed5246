#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#include <cstdlib>

namespace {
const char kSource[] = LD_SOURCE("common/CommonUtils");
const QLatin1String kPdfSuffix("pdf");
const QLatin1String kHtmlSuffix("html");
} // namespace

// The helper scripts ship beside the application: one for the PDF manual, one for everything
// else. The address goes to the shell as it stands, and "&" lets the script run in the background.
bool CommonUtils::OpenUrl(QString strUrl)
{
    const bool bPdf = strUrl.endsWith(kPdfSuffix);
    const QUrl url =
        (bPdf || strUrl.endsWith(kHtmlSuffix)) ? QUrl::fromLocalFile(strUrl) : QUrl(strUrl);
    const QString strScript =
        GetPluginLibraryPath() + (bPdf ? QLatin1String("/sbin/velmora-open-usermanual-pdf")
                                       : QLatin1String("/sbin/velmora-open-usermanual"));
    const QString strCommand = strScript + QLatin1Char(' ') + strUrl + QLatin1Char('&');

    if (!QFile::exists(strScript)) {
        qCDebug(lcCommon, "%s: the script file  is not found ...",
                LogLine::prefix(kSource, "OpenUrl").constData());
        return QDesktopServices::openUrl(url);
    }
    if (std::system(strCommand.toLocal8Bit().constData()) == -1) {
        qCDebug(lcCommon, "%s:  open  url  failure ...",
                LogLine::prefix(kSource, "OpenUrl").constData());
        return false;
    }
    return true;
}
