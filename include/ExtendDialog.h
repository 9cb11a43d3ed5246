#ifndef LINKDECK_EXTENDDIALOG_H
#define LINKDECK_EXTENDDIALOG_H

#include "CoreGlobal.h"

#include <QBitmap>
#include <QDialog>
#include <QMessageBox>

class QFrame;
class QLayout;
class TitleBar;

// Base of the application's dialogs. When the main frame asks for custom chrome (or no main
// frame answers), the dialog is frameless and draws its own: a TitleBar across the top, a frame
// widget "Core_ExtendDialogFrame" for the skin, the content inside a border, and corners cut to
// a 7-pixel radius or a shape taken from a mask bitmap. While its close button is disabled it
// holds the keyboard, swallows Escape and refuses Alt-based closing.
class CORE_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT
public:
    enum enWidgetType {
        WIDGET_TYPE_NORMAL = 0,
        WIDGET_TYPE_RESIZE_MAIN = 1, // the content widget follows the dialog's size
        WIDGET_TYPE_TITLEBAR = 3,    // what the dialog's own title bar is given
        WIDGET_TYPE_CENTRE = 4       // centred on the main window whenever shown
    };

    explicit ExtendDialog(QWidget *parent = nullptr, QFlags<Qt::WindowType> flags = {},
                          enWidgetType type = WIDGET_TYPE_NORMAL, bool useMaskBitmap = false);

    QWidget *GetMainWidget() const { return m_pMainWidget; }
    bool IsCusTitle() const { return m_bCusTitle; }
    TitleBar *GetTileBar() const { return m_pTitleBar; }
    bool IsCloseEnabled() const { return m_bCloseEnabled; }

    void AddMainWidget(QWidget *widget);
    // Installs the layout inside the border (hides QWidget::setLayout).
    void setLayout(QLayout *layout);
    void setTtileBar(QFlags<Qt::WindowType> flags);
    // With custom chrome only the title bar's buttons follow the flags.
    void setWindowFlags(QFlags<Qt::WindowType> flags);
    void setWindowTitle(const QString &title);
    void EnableCloseButton(bool enable);
    // A bitmap that cannot be read is logged and the previous shape stays.
    void LoadMaskBitmap(QString path);
    void getFrameValue();
    void getCornerRegion(QRegion &topLeft, QRegion &topRight, QRegion &bottomLeft,
                         QRegion &bottomRight);

signals:
    void dlgCloseEvent();

public slots:
    // Takes a content size (as LdMessageBox reports it): with custom chrome the dialog grows by
    // its border so that the content stays whole.
    void changeSize(QSize size);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QFrame *m_pFrame = nullptr;
    TitleBar *m_pTitleBar = nullptr;
    QWidget *m_pMainWidget = nullptr;
    enWidgetType m_enWidgetType;
    bool m_bCusTitle = true;
    int m_iTitleHeight = 29;
    int m_iFrameWidth = 3;
    bool m_bCloseEnabled = true;
    bool m_bUseMaskBitmap;
    QBitmap m_bmpMask;
};

// The message box that the CommonUtils message functions put into an ExtendDialog: it reports
// its size changes so that the dialog takes its size, and leaves Escape to the dialog.
class CORE_EXPORT LdMessageBox : public QMessageBox
{
    Q_OBJECT
public:
    explicit LdMessageBox(QWidget *parent = nullptr);

signals:
    void changeSize(QSize size);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

#endif // LINKDECK_EXTENDDIALOG_H
