#include "CommonUtils.h"
#include "ExtendDialog.h"
#include "ExtendDialogSource.h"

#include "TitleBar.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QKeyEvent>

namespace {

constexpr int kTitleBarInset = 3;
constexpr int kTitleBarHeight = 24;

} // namespace

void ExtendDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    const QSize size = event->size();
    if (!m_bCusTitle && m_pMainWidget) {
        m_pMainWidget->resize(size);
        return;
    }
    if (m_pFrame)
        m_pFrame->resize(size);
    if (m_pTitleBar)
        m_pTitleBar->resize(size.width() - kTitleBarInset, kTitleBarHeight);
    if (m_enWidgetType == WIDGET_TYPE_RESIZE_MAIN && m_pMainWidget)
        m_pMainWidget->resize(size.width() - 2 * m_iFrameWidth,
                              size.height() - m_iFrameWidth - m_iTitleHeight);
    CommonUtils::MoveCentre(this);
}

void ExtendDialog::showEvent(QShowEvent *event)
{
    const QByteArray prefix = LogLine::listPrefix(kExtendDialogSource, "showEvent");
    qCDebug(lcChrome, "%s : entered", prefix.constData());
    if (m_enWidgetType == WIDGET_TYPE_CENTRE)
        CommonUtils::MoveCentre(this);
    if (!m_bCloseEnabled && QWidget::keyboardGrabber() != this) {
        qCDebug(lcChrome, "%s : grabKeyBoard() called", prefix.constData());
        grabKeyboard();
    }
    QDialog::showEvent(event);
}

void ExtendDialog::hideEvent(QHideEvent *event)
{
    qCDebug(lcChrome, "%s : releaseKeyboard() called",
            LogLine::listPrefix(kExtendDialogSource, "hideEvent").constData());
    releaseKeyboard();
    QDialog::hideEvent(event);
}

void ExtendDialog::keyPressEvent(QKeyEvent *event)
{
    if (m_pTitleBar && !m_bCloseEnabled) {
        qCDebug(lcChrome, "key press %d", event->key());
        if (event->key() == Qt::Key_Escape) {
            qCDebug(lcChrome, "%s : Escape key pressed",
                    LogLine::listPrefix(kExtendDialogSource, "keyPressEvent").constData());
            return;
        }
    }
    QDialog::keyPressEvent(event);
}

void ExtendDialog::closeEvent(QCloseEvent *event)
{
    const QByteArray prefix = LogLine::listPrefix(kExtendDialogSource, "closeEvent");
    if (m_bCloseEnabled) {
        if (m_pTitleBar)
            m_pTitleBar->ReleaseOccupy();
    } else if (QApplication::keyboardModifiers() == Qt::AltModifier) {
        qCDebug(lcChrome, "%s : close event ignored", prefix.constData());
        event->ignore();
        return;
    }
    qCDebug(lcChrome, "%s : releaseKeyboard() call", prefix.constData());
    releaseKeyboard();
    qCDebug(lcChrome, "%s : emit dlgCloseEvent ()", prefix.constData());
    emit dlgCloseEvent();
    QDialog::closeEvent(event);
}
