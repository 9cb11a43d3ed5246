#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"

#include <QDialog>

namespace {

const char kSource[] = LD_SOURCE("common/CommonUtils");

void logNoMainWindow(const char *function)
{
    qCDebug(lcCommon, "%s: m_pwidgetParent is NULL",
            LogLine::prefix(kSource, function).constData());
}

} // namespace

QPoint CommonUtils::GetCentrePoint()
{
    const QWidget *pWindow = GetMainWindow();
    if (!pWindow) {
        logNoMainWindow("GetCentrePoint");
        return QPoint(0, 0);
    }
    const QRect geometry = pWindow->geometry();
    // Integer division truncates toward zero, also left of or above the screen's origin.
    return QPoint((geometry.left() + geometry.right()) / 2,
                  (geometry.top() + geometry.bottom()) / 2);
}

// Deliberately unguarded: without a main window the dialog goes to the left of and above (0, 0).
void CommonUtils::MoveCentre(QDialog *pDialog)
{
    if (!pDialog)
        return;
    const QPoint centre = GetCentrePoint();
    pDialog->move(centre.x() - pDialog->width() / 2, centre.y() - pDialog->height() / 2);
}

// Deliberately in the main window's own coordinates: its position is not added.
void CommonUtils::MoveRelatedCentre(QDialog *pDialog)
{
    qCDebug(lcCommon, "%s Enter", LogLine::stampedPrefix(kSource, "MoveRelatedCentre").constData());
    const QWidget *pWindow = GetMainWindow();
    if (!pWindow) {
        logNoMainWindow("MoveRelatedCentre");
    } else if (!pDialog) {
        qCDebug(lcCommon, "%s: no dialog",
                LogLine::prefix(kSource, "MoveRelatedCentre").constData());
    } else {
        pDialog->move((pWindow->width() - pDialog->width()) / 2,
                      (pWindow->height() - pDialog->height()) / 2);
    }
    qCDebug(lcCommon, "%s: Exit", LogLine::prefix(kSource, "MoveRelatedCentre").constData());
}
