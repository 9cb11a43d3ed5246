#ifndef LINKDECK_COMMONUTILS_H
#define LINKDECK_COMMONUTILS_H

#include "CoreGlobal.h"

#include <QList>
#include <QMessageBox>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QVector>

class IDeviceMgr;
class ILayout;
class QDialog;
class QPushButton;
class QThread;
class QWidget;

// Message-separator switch read by the menu builder; true until changed.
CORE_EXPORT extern bool gSeparator;

// One row of a caller-supplied unit table for speed and traffic strings. A row applies to values
// strictly greater than ullThreshold; the label is strUnitName unless strTrKey names a translation.
struct TagUnits
{
    QString strUnitName;
    qint32 iDivisor = 1;
    quint64 ullThreshold = 0;
    QString strTrKey;
};

// Static helpers shared by the core and every plugin.
class CORE_EXPORT CommonUtils
{
public:
    // Settings store of the device-service library. SetSettings returns true when the library
    // reports a non-zero status (callers rely on that sense).
    static QString GetSettings(QString group, QString key);
    static bool SetSettings(QString group, QString key, QString value);

    static bool GetSMSSeperatorConfigValue();
    static void SetSMSSeperatorConfigValue(bool value);

    static bool IsShuttingDown();
    static void SetShutDownFlag();
    static void ResetShutDownFlag();

    // The application directory, root of every path of the core.
    static QString GetPluginLibraryPath();

    // Worker threads register on start and deregister on exit so that shut-down can wait.
    static void ThreadCountInc(QString strClass, QString strFunction);
    static int ThreadCountDec(QString strClass, QString strFunction);
    static void WaitThreadsStop();
    static void WaitForThreadToStop(QThread *pThread, unsigned int unMaxWait);

    // ---- Text: hyperlinks, URL opening, formatting, measuring --------------------------------
    // A character counts as ASCII when QChar::toLatin1 gives a non-zero value (everything up to
    // U+00FF except NUL).

    // Rich text for a label: blanks become "&nbsp;", angle brackets are escaped and e-mail, www,
    // http, https and ftp addresses are wrapped in anchors.
    static QString ParseAndCreateHyperLinks(QString strText);
    static QString createLinkForHttpAndFtp(QString strWord);
    static bool CheckForEmailAddr(QString strText);
    static bool CheckForWebAddr(QString strText);
    static bool CheckForHttpAddr(QString strText);
    static bool isNonAsciiCharPresent(QString strText);
    // Maximal runs of ASCII and non-ASCII characters, in order (one empty run for "").
    static QStringList SplitAsciiAndUnicodeString(QString strText);
    // The whole text as the only element (none for ""); bFlag is always cleared.
    static QStringList SplitAsciiString(QString strText, bool &bFlag);
    static QString addSpaceToNewLine(QString strText);
    // Runs the helper script below the application directory, or the desktop's handler without it.
    static bool OpenUrl(QString strUrl);

    static QString SpeedUnitToString(QVector<TagUnits> units, QString strPluginName);
    static QString SpeedFluxToString(QVector<TagUnits> units, unsigned long long ullValue,
                                     QString strPluginName);
    // Puts a directional override mark behind brackets, commas and quotes that follow a
    // left-to-right or right-to-left letter, so they stay beside it.
    static void ParanthesisCorrection(QString &strText);
    // The first reference receives the width, the second the height (callers rely on this order).
    static void GetApplicationStringHeightAndWidth(QString strText, int &iFirst, int &iSecond);
    static int GetWidgetStringHeightAndWidth(QWidget *pWidget, QString strText, int &iFirst,
                                             int &iSecond);
    static bool IsCurLangIsEnglish();

    // ---- Plugin shortcuts and window placement -----------------------------------------------
    // The common plugins through the container; null (or empty, false) when it or they are
    // missing. The main frame is asked with interface number 4113, the others with 4097.
    static QWidget *GetMainWindow();
    static IDeviceMgr *GetDeviceMgrPlugin();
    static ILayout *GetLayoutPlugin();
    // Type-0 plugins other than the main frame and the six fixed helper plugins.
    static QList<QString> GetUIEmbedPlugibList();
    static bool IsPluginAvailable(QString clsid);
    static void MakeCall(QString strNumber);

    // The main window's centre, (0, 0) without one.
    static QPoint GetCentrePoint();
    // Centres the dialog on GetCentrePoint(), also when that is (0, 0).
    static void MoveCentre(QDialog *pDialog);
    // Centres the dialog in the main window's own coordinates (its position is not added).
    static void MoveRelatedCentre(QDialog *pDialog);

    // The skin style sheet's lines joined without line breaks; empty without the file.
    static QString GetQStyleString();
    // Gives the widget the name ("_Ru" appended outside English) and the skin style sheet, so
    // that rules for the name apply.
    static void setObjectNameExForLDK(QWidget *pWidget, QString strName);

    // ---- Message boxes ------------------------------------------------------------------------
    // A box inside an ExtendDialog with up to three buttons labelled by text identifiers of
    // XFramePlugin (an empty identifier leaves the button out): first (yes), third (reject) and
    // second (no), in this argument order. Blocks until closed and returns QMessageBox::Ok for the
    // first button, QMessageBox::No for the second and QMessageBox::Cancel for anything else
    // (third button, the frame's close button, Escape, no frame). ppDialog holds the frame while
    // the box is open and null after. A null parent means the main window.
    static int ShowMessage(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                           QString strText, QString strYesId, QString strRejectId, QString strNoId,
                           bool bBeep, QFlags<Qt::WindowType> flags, QDialog **ppDialog = nullptr,
                           QString strDefaultId = QString(), bool bShowClose = true);
    // As ShowMessage, window-modal.
    static int ShowMessageCustomize(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                                    QString strText, QString strYesId, QString strRejectId,
                                    QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                                    QDialog **ppDialog = nullptr, QString strDefaultId = QString(),
                                    bool bShowClose = true);
    // A 294 x 80 prompt "DevMgr_SimLockPromptDlg" shaped by the device manager's mask bitmap;
    // never a close button, buttons take no focus.
    static int ShowMessageEx(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                             QString strText, QString strYesId, QString strRejectId,
                             QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                             QDialog **ppDialog = nullptr, QString strDefaultId = QString(),
                             bool bShowClose = false);
    // As ShowMessageEx, 220 x 80, "MessageBoxForPhotoedit", without an icon.
    static int ShowMessageForPhotoEdit(QMessageBox::Icon icon, QWidget *pParent, QString strTitle,
                                       QString strText, QString strYesId, QString strRejectId,
                                       QString strNoId, bool bBeep, QFlags<Qt::WindowType> flags,
                                       QDialog **ppDialog = nullptr,
                                       QString strDefaultId = QString(), bool bShowClose = false);
    // Adds a button labelled with the translated identifier, the default one when the identifier
    // equals strDefaultId; null for a null box or an empty identifier.
    static QPushButton *addMessageboxButton(QString strTextId, QString strDefaultId,
                                            QMessageBox::ButtonRole role, QMessageBox *pBox);
};

#endif // LINKDECK_COMMONUTILS_H
