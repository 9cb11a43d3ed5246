#include "ExtendDialog.h"
#include "ExtendDialogSource.h"

#include "PluginInterfaces.h"
#include "Startup.h"
#include "TitleBar.h"

#include <QFrame>
#include <QLayout>

namespace {

constexpr Qt::WindowFlags kChromeHints = Qt::CustomizeWindowHint | Qt::FramelessWindowHint;
constexpr int kTitleBarLeft = 3;
constexpr int kTitleBarHeight = 24;

} // namespace

ExtendDialog::ExtendDialog(QWidget *parent, QFlags<Qt::WindowType> flags, enWidgetType type,
                           bool useMaskBitmap)
    : QDialog(nullptr)
    , m_enWidgetType(type)
    , m_bUseMaskBitmap(useMaskBitmap)
{
    setParent(parent);
    getFrameValue();
    if (m_bCusTitle) {
        m_pFrame = new QFrame(this);
        QDialog::setWindowFlags(Qt::Dialog | kChromeHints);
        setTtileBar(flags);
        if (!m_bUseMaskBitmap)
            m_pFrame->setObjectName(QStringLiteral("Core_ExtendDialogFrame"));
    } else {
        QDialog::setWindowFlags((flags & ~kChromeHints) | Qt::Dialog);
    }
}

void ExtendDialog::getFrameValue()
{
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    if (!pService)
        return;
    m_bCusTitle = pService->IsCustomTitleBar();
    if (!m_bCusTitle)
        return;
    m_iTitleHeight = pService->GetTitleHeight();
    m_iFrameWidth = pService->GetFrameWidth();
}

void ExtendDialog::setTtileBar(QFlags<Qt::WindowType> flags)
{
    if (!m_pTitleBar)
        m_pTitleBar = new TitleBar(this, WIDGET_TYPE_TITLEBAR);
    if (flags & Qt::CustomizeWindowHint)
        m_pTitleBar->HideAllControl();
    else
        m_pTitleBar->ShowAllControl();
    m_pTitleBar->EnableMinimizeButton(flags & Qt::WindowMinimizeButtonHint);
    m_pTitleBar->EnableMaximizeButton(flags & Qt::WindowMaximizeButtonHint);
    m_pTitleBar->EnableCloseButton(flags & Qt::WindowCloseButtonHint);
    m_pTitleBar->EnableIcon(false);
    QRect barRect(kTitleBarLeft, 0, width(), kTitleBarHeight);
    m_pTitleBar->ShowWindow(barRect);
}

void ExtendDialog::setWindowFlags(QFlags<Qt::WindowType> flags)
{
    if (m_bCusTitle && (flags & Qt::WindowStaysOnTopHint)) {
        qCWarning(lcChrome, "%s : Qt::WindowStaysOnTopHint set",
                  LogLine::listPrefix(kExtendDialogSource, "setWindowFlags").constData());
        QDialog::setWindowFlags(windowFlags() | Qt::WindowStaysOnTopHint);
    }
    const QFlags<Qt::WindowType> merged = (flags & ~kChromeHints) | windowFlags();
    if (m_bCusTitle)
        setTtileBar(merged);
    else
        QDialog::setWindowFlags(merged);
}

void ExtendDialog::setWindowTitle(const QString &title)
{
    if (m_bCusTitle && m_pTitleBar)
        m_pTitleBar->SetWindowTitle(title);
    else
        QDialog::setWindowTitle(title);
}

void ExtendDialog::AddMainWidget(QWidget *widget)
{
    m_pMainWidget = widget;
    if (!widget)
        return;
    widget->setParent(this);
    widget->setWindowFlags(Qt::FramelessWindowHint);
    widget->move(m_bCusTitle ? QPoint(m_iFrameWidth, m_iTitleHeight) : QPoint(0, 0));
}

void ExtendDialog::setLayout(QLayout *layout)
{
    if (!layout)
        return;
    layout->setGeometry(QRect(QPoint(m_iFrameWidth, m_iTitleHeight),
                              QPoint(width() - 1 - m_iFrameWidth, height() - 1 - m_iFrameWidth)));
    QDialog::setLayout(layout);
}

void ExtendDialog::changeSize(QSize size)
{
    // The content sits inside the border; a dialog of the content's bare size would cut off its
    // bottom and right by the title height and the frame width.
    if (m_bCusTitle)
        size += QSize(2 * m_iFrameWidth, m_iTitleHeight + m_iFrameWidth);
    resize(size);
}

void ExtendDialog::EnableCloseButton(bool enable)
{
    if (!m_pTitleBar)
        return;
    m_bCloseEnabled = enable;
    m_pTitleBar->GrayoutCloseButton(enable);
    const QByteArray prefix = LogLine::listPrefix(kExtendDialogSource, "EnableCloseButton");
    if (enable) {
        qCDebug(lcChrome, "%s : releaseKeyboard() called", prefix.constData());
        releaseKeyboard();
    } else {
        qCDebug(lcChrome, "%s : grabKeyboard() call", prefix.constData());
        grabKeyboard();
    }
}
