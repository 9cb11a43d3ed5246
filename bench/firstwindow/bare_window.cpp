// The baseline: a Qt program that shows a main window with a menu bar and a toolbar and prints
// when it is first on screen, timed from the same point as the application's profile (static
// initialisation, before main).
#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include <cstdio>

namespace {

const QElapsedTimer &sinceLoad()
{
    static const QElapsedTimer timer = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return timer;
}
const bool startedAtLoad = (sinceLoad(), true);

class ExposeWatch : public QObject
{
public:
    explicit ExposeWatch(QMainWindow &window)
        : m_window(window)
    {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose && watched == m_window.windowHandle() &&
            m_window.windowHandle()->isExposed()) {
            std::printf("first window shown %.3f\n", sinceLoad().nsecsElapsed() / 1e6);
            std::fflush(stdout);
            qApp->removeEventFilter(this);
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return false;
    }

private:
    QMainWindow &m_window;
};

} // namespace

int main(int argc, char *argv[])
{
    Q_UNUSED(startedAtLoad);
    QApplication app(argc, argv);
    QMainWindow window;
    for (const char *title : {"File", "View", "Help"})
        window.menuBar()->addMenu(QString::fromLatin1(title))->addAction(QStringLiteral("Item"));
    QToolBar *toolBar = window.addToolBar(QStringLiteral("Tools"));
    for (const char *action : {"Detect", "Call", "About", "Search"})
        toolBar->addAction(QString::fromLatin1(action));
    ExposeWatch watch(window);
    app.installEventFilter(&watch);
    window.resize(640, 480);
    window.show();
    return app.exec();
}
