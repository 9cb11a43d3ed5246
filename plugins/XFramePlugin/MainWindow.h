#ifndef LINKDECK_XFRAMEPLUGIN_MAINWINDOW_H
#define LINKDECK_XFRAMEPLUGIN_MAINWINDOW_H

#include <QMainWindow>
#include <QStringList>
#include <QTimer>

class QListWidget;

// The application's main window. Plugins contribute to its status bar; the window lists the
// plugins that are loaded right now.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *pParent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    // Fills the list of loaded plugins from the container.
    void refreshPluginList();

private:
    void setupCentralArea();
    // The window's chrome: status bar now; the menu bar, tray menu and toolbar built from the
    // plugin's XML files are added here as well.
    void setupChrome();

    QListWidget *m_pPluginList = nullptr;
    QStringList m_shownPlugins;
    QTimer m_refreshTimer;
};

#endif // LINKDECK_XFRAMEPLUGIN_MAINWINDOW_H
