#ifndef LINKDECK_LDK_TOOL_H
#define LINKDECK_LDK_TOOL_H

#include "CoreGlobal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMouseEvent>
#include <QString>
#include <QWidget>

class QPixmap;
class QPushButton;
class QVBoxLayout;

// A label that reports hovering always and clicks once its mouse handling is enabled.
class CORE_EXPORT MouseClickedWidget : public QLabel
{
    Q_OBJECT
public:
    explicit MouseClickedWidget(QWidget *pParent = nullptr);
    MouseClickedWidget(QString strText, QWidget *pParent = nullptr);

    // Enabled: clicks are reported and the cursor is a pointing hand.
    void SetMouseEnable(bool bEnable);

signals:
    void onClicked(QMouseEvent *pEvent);
    void showLine();
    void revertType();

protected:
    void enterEvent(QEvent *pEvent) override;
    void leaveEvent(QEvent *pEvent) override;
    void mouseReleaseEvent(QMouseEvent *pEvent) override;

private:
    bool m_bMouseEnable = false;
};

// A check box whose text is a clickable label: clicking the text toggles the box as well.
class CORE_EXPORT CheckBoxClick : public QCheckBox
{
    Q_OBJECT
public:
    explicit CheckBoxClick(QWidget *pParent = nullptr);
    CheckBoxClick(QString strText, QWidget *pParent = nullptr);

    void Init();
    // The text goes to the label; the check box's own text stays empty.
    void setText(QString const &strText);

signals:
    void onClicked(QMouseEvent *pEvent);

public slots:
    // A release on the box or on its text: toggles and reports the click.
    void mouseReleaseEvent(QMouseEvent *pEvent) override;

private:
    MouseClickedWidget *m_pLabel;
    QVBoxLayout *m_pLayout;
};

// A combo box whose list another widget's click can open.
class CORE_EXPORT ComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit ComboBox(QWidget *pParent = nullptr);

public slots:
    void onMousePressed(QMouseEvent *pEvent);
};

// A contact photo with a delete button that asks first and falls back to the default picture.
class CORE_EXPORT LDKPhotoWidget : public QWidget
{
    Q_OBJECT
public:
    explicit LDKPhotoWidget(QWidget *pParent = nullptr);
    ~LDKPhotoWidget() override;

    void SetToDefalut();
    QString GetPhotoPath() const { return m_strPhotoPath; }
    // Enabled: clicks are reported, the picture and its delete button are shown.
    void SetMouseEnable(bool bEnable);

signals:
    void onClicked();
    void photoChange();
    void photoReset(QString strPixPath);

public slots:
    // An empty path means the default picture; a folder-like or missing path changes nothing.
    void SetPixmap(QString strPixPath);
    void onDeleteClicked();

protected:
    void mouseReleaseEvent(QMouseEvent *pEvent) override;

private:
    bool m_bMouseEnable = false;
    QPixmap *m_pPixmap = nullptr;
    QPushButton *m_pBtnDelete = nullptr;
    QLabel *m_pLabel = nullptr;
    QString m_strPhotoPath;
    QString m_strDefaultPath;
};

#endif // LINKDECK_LDK_TOOL_H
