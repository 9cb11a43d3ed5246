#include "MainWindowTitle.h"

#include "NexoSim.h"
#include "TitleBar.h"

#include <QEvent>
#include <QLayout>
#include <QToolButton>

namespace {

// Cell broadcasts are rare; a look every second is enough and costs nothing.
constexpr int kCbsPollMs = 1000;
constexpr int kCbsBufferSize = 1024;

QPoint centreIn(const QWidget *pWindow, const QWidget *pButton)
{
    return pButton ? pButton->mapTo(pWindow, pButton->rect().center()) : QPoint(-1, -1);
}

} // namespace

MainWindowTitle::MainWindowTitle(QWidget *pWindow, int titleHeight, int frameWidth)
    : QObject(pWindow)
    , m_pWindow(pWindow)
    , m_iTitleHeight(titleHeight)
{
    if (!pWindow->windowFlags().testFlag(Qt::FramelessWindowHint))
        pWindow->setWindowFlags(pWindow->windowFlags() | Qt::FramelessWindowHint);
    pWindow->setContentsMargins(frameWidth, titleHeight, frameWidth, frameWidth);
    // In mini mode the window shrinks to a 160 x 30 strip that shows only the title bar; the
    // contents' minimum size must not hold it back.
    if (pWindow->layout())
        pWindow->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    m_pBar = new TitleBar(pWindow, 0);
    m_pBar->SetWindowTitle(pWindow->windowTitle());
    placeBar();
    pWindow->installEventFilter(this);

    m_cbsPoll.setInterval(kCbsPollMs);
    connect(&m_cbsPoll, &QTimer::timeout, this, &MainWindowTitle::pollCellBroadcast);
    m_cbsPoll.start();
    pollCellBroadcast();
}

void MainWindowTitle::placeBar()
{
    QRect rect(0, 0, m_pWindow->width(), m_iTitleHeight);
    m_pBar->ShowWindow(rect);
}

bool MainWindowTitle::eventFilter(QObject *pWatched, QEvent *pEvent)
{
    if (pWatched == m_pWindow) {
        if (pEvent->type() == QEvent::Resize)
            placeBar();
        else if (pEvent->type() == QEvent::Show)
            QTimer::singleShot(0, this, &MainWindowTitle::logButtons);
        else if (pEvent->type() == QEvent::WindowTitleChange)
            m_pBar->SetWindowTitle(m_pWindow->windowTitle());
    }
    return QObject::eventFilter(pWatched, pEvent);
}

void MainWindowTitle::pollCellBroadcast()
{
    char buffer[kCbsBufferSize];
    const QString text = NexoSim_GetCellBroadcast(buffer, kCbsBufferSize) == 0
                             ? QString::fromUtf8(buffer)
                             : QString();
    if (text == m_strCbs)
        return;
    m_strCbs = text;
    m_pBar->TitleBarShowCBS(text);
}

void MainWindowTitle::logButtons() const
{
    // Where to click, for tools that drive the window from outside (window coordinates).
    const auto centre = [this](const char *name) {
        return centreIn(m_pWindow, m_pBar->findChild<QToolButton *>(QLatin1String(name)));
    };
    const QPoint minimize = centre("Core_ButtonMinimize");
    const QPoint maximize = centre("Core_ButtonMaximize");
    const QPoint close = centre("Core_ButtonClose");
    qDebug("XFramePlugin: title buttons minimize=%d,%d maximize=%d,%d close=%d,%d", minimize.x(),
           minimize.y(), maximize.x(), maximize.y(), close.x(), close.y());
}
