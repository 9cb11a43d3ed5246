// Stand-in for the framed message boxes: a plain window-modal QMessageBox with the same buttons,
// roles and results. It goes when CommonUtils_MessageBox.cpp provides the real function.
#include "CommonUtils.h"

#include "Change.h"

#include <QPushButton>

namespace {

void addButton(QMessageBox &box, const QString &id, QMessageBox::ButtonRole role)
{
    if (!id.isEmpty())
        box.addButton(Change::tr(id, QStringLiteral("XFramePlugin")), role)
            ->setFocusPolicy(Qt::NoFocus);
}

} // namespace

int CommonUtils::ShowMessageForPhotoEdit(QMessageBox::Icon, QWidget *pParent, QString strTitle,
                                         QString strText, QString strYesId, QString strRejectId,
                                         QString strNoId, bool, QFlags<Qt::WindowType>,
                                         QDialog **ppDialog, QString, bool)
{
    QMessageBox box(pParent ? pParent : GetMainWindow());
    box.setWindowTitle(strTitle);
    box.setText(QLatin1Char(' ') + strText);
    addButton(box, strYesId, QMessageBox::YesRole);
    addButton(box, strNoId, QMessageBox::NoRole);
    addButton(box, strRejectId, QMessageBox::RejectRole);
    box.setWindowModality(Qt::WindowModal);
    box.exec();
    if (ppDialog)
        *ppDialog = nullptr;
    const QMessageBox::ButtonRole role = box.buttonRole(box.clickedButton());
    if (role == QMessageBox::YesRole)
        return QMessageBox::Ok;
    return role == QMessageBox::NoRole ? QMessageBox::No : QMessageBox::Cancel;
}
