#include "DialogPlacement.h"

#include "PluginInterfaces.h"
#include "Startup.h"

#include <QDialog>

namespace DialogPlacement {

QWidget *mainWindow()
{
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    return pService ? pService->GetMainWindow() : nullptr;
}

void moveCentre(QDialog *pDialog)
{
    if (!pDialog)
        return;
    QPoint centre;
    if (QWidget *pMain = mainWindow()) {
        const QRect frame = pMain->geometry();
        centre = QPoint((frame.left() + frame.right()) / 2, (frame.top() + frame.bottom()) / 2);
    }
    pDialog->move(centre - QPoint(pDialog->width() / 2, pDialog->height() / 2));
}

} // namespace DialogPlacement
