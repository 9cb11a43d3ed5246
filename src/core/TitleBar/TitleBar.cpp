#include "TitleBar.h"
#include "TitleBarSource.h"

#include "CommonUtils.h"
#include "Ticker.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr char kMainFrameWindow[] = "XFramePlugin_MainFrameWindow";

QToolButton *makeButton(QWidget *parent, int size, const char *objectName)
{
    auto *pButton = new QToolButton(parent);
    pButton->setFixedSize(size, size);
    pButton->setObjectName(QLatin1String(objectName));
    pButton->setFocusPolicy(Qt::NoFocus);
    return pButton;
}

} // namespace

TitleBar::TitleBar(QWidget *parent, int type)
    : QFrame(nullptr)
    , m_iType(type)
{
    setParent(parent);
    buildControls();
    buildLayout();
    if (parent)
        connect(m_pBtnClose, &QToolButton::clicked, parent, &QWidget::close);
    connect(m_pBtnMinimize, &QToolButton::clicked, this, &TitleBar::showSmall);
    connect(m_pBtnMaximize, &QToolButton::clicked, this, &TitleBar::showMaxRestore);
    connect(m_pBtnRestore, &QToolButton::clicked, this, &TitleBar::showMaxRestore);
    setFocusPolicy(Qt::NoFocus);
}

void TitleBar::buildControls()
{
    m_pBtnMinimize = makeButton(this, 19, "Core_ButtonMinimize");
    m_pBtnMaximize = makeButton(this, 21, "Core_ButtonMaximize");
    m_pBtnRestore = makeButton(this, 21, "Core_ButtonRestore");
    m_pBtnClose = makeButton(this, 19, "Core_ButtonClose");
    m_pLabelIcon = new QLabel(this);
    m_pLabelIcon->setObjectName(QStringLiteral("Core_LabelTitleIcon"));
    m_pLabelIcon->setMinimumHeight(16);
    setCusTitleBarIcon(QString(), 16, 16);
    m_pLabelTitle = new QLabel(QStringLiteral("Link Deck "), this);
    m_pLabelTitle->setObjectName(QStringLiteral("Core_LabelTitle"));
    m_pLabelTitle->setMinimumSize(30, 15);
    m_pTicker = new Ticker(this);
    m_pLayout = new QHBoxLayout;
}

void TitleBar::buildLayout()
{
    m_pLayout->setContentsMargins(1, 0, 11, 1);
    m_pLayout->addWidget(m_pLabelIcon);
    m_pLayout->addSpacing(2);
    m_pLayout->addWidget(m_pLabelTitle);
    if (parentWidget() && parentWidget()->objectName() == QLatin1String(kMainFrameWindow)) {
        m_pLayout->addStretch();
        // A broadcast is often longer than the bar: the ticker takes the room the title leaves
        // instead of squeezing the title to its minimum.
        m_pTicker->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        m_pLayout->addWidget(m_pTicker, 1);
        m_pLayout->addSpacing(3);
        m_pTicker->setObjectName(QStringLiteral("Core_CBSLabel_MainFrame"));
    } else {
        // Outside the layout the ticker only keeps its text; hidden, it neither covers the icon
        // nor runs its timer.
        m_pTicker->setObjectName(QStringLiteral("Core_CBSLabel"));
        m_pTicker->hide();
        m_pLayout->addStretch();
    }
    m_pLayout->addWidget(m_pBtnMinimize);
    m_pLayout->addSpacing(2);
    m_pLayout->addWidget(m_pBtnRestore);
    m_pLayout->addWidget(m_pBtnMaximize);
    m_pLayout->addSpacing(3);
    m_pLayout->addWidget(m_pBtnClose);
    setLayout(m_pLayout);
    m_pBtnRestore->hide();
    m_bMaximized = false;
}

void TitleBar::SetWindowTitle(const QString &title)
{
    if (!m_pLabelTitle) {
        qCDebug(lcChrome, "%s : title label is null",
                LogLine::listPrefix(kTitleBarSource, "SetWindowTitle").constData());
        return;
    }
    m_pLabelTitle->setText(QLatin1Char(' ') + title);
    m_pLabelTitle->show();
}

void TitleBar::TitleBarShowCBS(const QString &text)
{
    if (!m_pTicker)
        return;
    qCDebug(lcChrome, "%s : set CBS Content",
            LogLine::listPrefix(kTitleBarSource, "TitleBarShowCBS").constData());
    m_pTicker->setText(text + QStringLiteral("          "));
}

void TitleBar::setCusTitleBarIcon(QString path, int width, int height)
{
    if (!m_pLabelIcon)
        return;
    if (path.isEmpty())
        path =
            CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/XFramePlugin/TitleIcon");
    const QPixmap image(path);
    m_pLabelIcon->setPixmap(image.isNull() ? QPixmap()
                                           : image.scaled(width, height, Qt::KeepAspectRatio,
                                                          Qt::SmoothTransformation));
}

void TitleBar::EnableIcon(bool bEnable)
{
    if (m_pLabelIcon)
        m_pLabelIcon->setVisible(bEnable);
}

void TitleBar::EnableMaximizeButton(bool bEnable)
{
    if (QToolButton *pCurrent = m_bMaximized ? m_pBtnRestore : m_pBtnMaximize)
        pCurrent->setVisible(bEnable);
    m_bMaxEnabled = bEnable;
}

void TitleBar::EnableMinimizeButton(bool bEnable)
{
    if (m_pBtnMinimize)
        m_pBtnMinimize->setVisible(bEnable);
}

void TitleBar::EnableCloseButton(bool bEnable)
{
    if (m_pBtnClose)
        m_pBtnClose->setVisible(bEnable);
}

void TitleBar::GrayoutCloseButton(bool bEnable)
{
    if (m_pBtnClose)
        m_pBtnClose->setEnabled(bEnable);
}

bool TitleBar::IsCloseButtonEnable() const
{
    return m_pBtnClose && m_pBtnClose->isEnabled() && !m_pBtnClose->isHidden();
}

void TitleBar::HideAllControl()
{
    for (QWidget *pWidget :
         {static_cast<QWidget *>(m_pLabelIcon), static_cast<QWidget *>(m_pLabelTitle),
          static_cast<QWidget *>(m_pBtnRestore), static_cast<QWidget *>(m_pBtnMaximize),
          static_cast<QWidget *>(m_pBtnMinimize), static_cast<QWidget *>(m_pBtnClose)}) {
        if (pWidget)
            pWidget->hide();
    }
}

void TitleBar::ShowAllControl()
{
    for (QWidget *pWidget :
         {static_cast<QWidget *>(m_pLabelIcon), static_cast<QWidget *>(m_pLabelTitle),
          static_cast<QWidget *>(m_bMaximized ? m_pBtnRestore : m_pBtnMaximize),
          static_cast<QWidget *>(m_pBtnMinimize), static_cast<QWidget *>(m_pBtnClose)}) {
        if (pWidget)
            pWidget->show();
    }
}

bool TitleBar::ShowWindow(QRect &rect)
{
    setFixedHeight(rect.height());
    setGeometry(rect);
    setMouseTracking(true);
    return true;
}

void TitleBar::showSystemMenu(const QPoint &)
{
    // No system menu is offered; the press only ends any pending one.
    m_bSysMenu = false;
}

void TitleBar::closeEvent(QCloseEvent *event)
{
    QFrame::closeEvent(event);
}
