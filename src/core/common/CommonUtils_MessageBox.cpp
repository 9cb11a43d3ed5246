#include "CommonUtils.h"

#include "Change.h"
#include "ExtendDialog.h"
#include "LDKMessageBoxEx.h"
#include "TitleBar.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <new>

namespace {

// What tells the four message functions apart.
struct BoxKind
{
    bool bFixedBox; // an LDKMessageBoxEx of this size, masked, without close button
    QSize size;
    const char *frameName;
    Qt::WindowModality modality;
    bool bFixedPolicy;
    bool bIcon;
};

const BoxKind kShowMessage{false, QSize(), nullptr, Qt::ApplicationModal, true, true};
const BoxKind kCustomize{false, QSize(), nullptr, Qt::WindowModal, false, true};
const BoxKind kShowEx{true, QSize(294, 80), "DevMgr_SimLockPromptDlg", Qt::WindowModal, true, true};
const BoxKind kPhotoEdit{true, QSize(220, 80), "MessageBoxForPhotoedit", Qt::WindowModal,
                         true, false};
const char kPromptMask[] = "./plugins/DeviceMgrUIPlugin/SimLockPromptMask.bmp";

struct BoxTexts
{
    QString title, text, yesId, rejectId, noId, defaultId;
};

LdMessageBox *createBox(const BoxKind &kind, ExtendDialog *pFrame)
{
    if (!kind.bFixedBox)
        return new LdMessageBox(pFrame);
    auto *pBox = new LDKMessageBoxEx(pFrame);
    pBox->m_iWidth = kind.size.width();
    pBox->m_iHeight = kind.size.height();
    // Qt 5 lays the text label out at column 2 (column 1 holds a spacer); it is the label that
    // the style sheet addresses.
    if (auto *pLabel = pBox->findChild<QLabel *>(QStringLiteral("qt_msgbox_label")))
        pLabel->setObjectName(QStringLiteral("LDKMessageBoxEx_MsgWidget"));
    pFrame->setObjectName(QLatin1String(kind.frameName));
    pFrame->LoadMaskBitmap(QLatin1String(kPromptMask));
    return pBox;
}

int buttonResult(QMessageBox *pBox, QPushButton *pFirst, QPushButton *pSecond)
{
    QAbstractButton *pClicked = pBox->clickedButton();
    if (pClicked && pClicked == pFirst)
        return QMessageBox::Ok;
    if (pClicked && pClicked == pSecond)
        return QMessageBox::No;
    return QMessageBox::Cancel;
}

int runBox(const BoxKind &kind, QMessageBox::Icon icon, QWidget *pParent, const BoxTexts &texts,
           bool bBeep, QFlags<Qt::WindowType> flags, QDialog **ppDialog, bool bShowClose)
{
    if (!pParent)
        pParent = CommonUtils::GetMainWindow();
    auto *pFrame = new (std::nothrow)
        ExtendDialog(pParent, flags, ExtendDialog::WIDGET_TYPE_CENTRE, kind.bFixedBox);
    if (!pFrame)
        return QMessageBox::Cancel;
    if (ppDialog)
        *ppDialog = pFrame;
    LdMessageBox *pBox = createBox(kind, pFrame);
    pFrame->AddMainWidget(pBox);
    pFrame->setWindowFlags(flags);
    if (TitleBar *pBar = pFrame->GetTileBar())
        pBar->EnableCloseButton(bShowClose && !kind.bFixedBox);
    if (flags & Qt::WindowStaysOnTopHint)
        pBox->setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    pFrame->setWindowTitle(texts.title);
    if (kind.bIcon)
        pBox->setIcon(icon);
    // The leading blank is the text's left margin.
    pBox->setText(QLatin1Char(' ') + texts.text);
    if (bBeep)
        QApplication::beep();
    QPushButton *pFirst =
        CommonUtils::addMessageboxButton(texts.yesId, texts.defaultId, QMessageBox::YesRole, pBox);
    QPushButton *pSecond =
        CommonUtils::addMessageboxButton(texts.noId, texts.defaultId, QMessageBox::NoRole, pBox);
    QPushButton *pThird = CommonUtils::addMessageboxButton(texts.rejectId, texts.defaultId,
                                                           QMessageBox::RejectRole, pBox);
    for (QPushButton *pButton : {pFirst, pSecond, pThird}) {
        if (pButton && kind.bFixedBox)
            pButton->setFocusPolicy(Qt::NoFocus);
    }
    QObject::connect(pBox, &LdMessageBox::changeSize, pFrame, &ExtendDialog::changeSize);
    QObject::connect(pBox, &QMessageBox::buttonClicked, pFrame, &QWidget::close);
    pFrame->setWindowModality(kind.modality);
    if (kind.bFixedPolicy)
        pFrame->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    pFrame->exec();
    if (ppDialog)
        *ppDialog = nullptr;
    const int result = buttonResult(pBox, pFirst, pSecond);
    delete pBox;
    delete pFrame;
    return result;
}

} // namespace

QPushButton *CommonUtils::addMessageboxButton(QString strTextId, QString strDefaultId,
                                              QMessageBox::ButtonRole role, QMessageBox *pBox)
{
    if (!pBox || strTextId.isEmpty())
        return nullptr;
    QPushButton *pButton =
        pBox->addButton(Change::tr(strTextId, QStringLiteral("XFramePlugin")), role);
    if (!strDefaultId.isNull() && strTextId == strDefaultId)
        pBox->setDefaultButton(pButton);
    return pButton;
}

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                             QString strText, QString strYesId, QString strRejectId,
                             QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                             QDialog **ppDialog, QString strDefaultId, bool bShowClose)
{
    return runBox(kShowMessage, icon, pParent,
                  {strTitle, strText, strYesId, strRejectId, strNoId, strDefaultId}, bBeep, flags,
                  ppDialog, bShowClose);
}

int CommonUtils::ShowMessageCustomize(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                                      QString strText, QString strYesId, QString strRejectId,
                                      QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                                      QDialog **ppDialog, QString strDefaultId, bool bShowClose)
{
    return runBox(kCustomize, icon, pParent,
                  {strTitle, strText, strYesId, strRejectId, strNoId, strDefaultId}, bBeep, flags,
                  ppDialog, bShowClose);
}

int CommonUtils::ShowMessageEx(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                               QString strText, QString strYesId, QString strRejectId,
                               QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                               QDialog **ppDialog, QString strDefaultId, bool)
{
    return runBox(kShowEx, icon, pParent,
                  {strTitle, strText, strYesId, strRejectId, strNoId, strDefaultId}, bBeep, flags,
                  ppDialog, false);
}

int CommonUtils::ShowMessageForPhotoEdit(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                                         QString strText, QString strYesId, QString strRejectId,
                                         QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                                         QDialog **ppDialog, QString strDefaultId, bool)
{
    return runBox(kPhotoEdit, icon, pParent,
                  {strTitle, strText, strYesId, strRejectId, strNoId, strDefaultId}, bBeep, flags,
                  ppDialog, false);
}
