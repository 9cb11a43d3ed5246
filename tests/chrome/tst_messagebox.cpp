#include "CommonUtils.h"
#include "TestFiles.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

using ShowFunction = int (*)(QMessageBox::Icon, QWidget *, QString, QString, QString, QString,
                             QString, bool, QFlags<Qt::WindowType>, QDialog **, QString, bool);
const ShowFunction kFunctions[] = {&CommonUtils::ShowMessage, &CommonUtils::ShowMessageCustomize,
                                   &CommonUtils::ShowMessageEx,
                                   &CommonUtils::ShowMessageForPhotoEdit};
enum Action { First, Second, Third, CloseButton, Escape, CallerClose };
const char kExName[] = "DevMgr_SimLockPromptDlg";

// What the open box looked like.
struct Seen
{
    QDialog *frame = nullptr;
    QString text, defaultButton, frameName, labelName;
    bool closeShown = false;
    QSize boxSize;
};

void act(QDialog *pFrame, QMessageBox *pBox, Action action)
{
    const QList<QAbstractButton *> buttons = pBox->buttons();
    for (QAbstractButton *pButton : buttons) {
        if (action <= Third && pButton->text() == QStringList({"Yes", "No", "Cancel"})[action])
            pButton->click();
    }
    if (action == CloseButton)
        pFrame->findChild<QAbstractButton *>("Core_ButtonClose")->click();
    if (action == Escape)
        QTest::keyClick(pBox, Qt::Key_Escape);
    if (action == CallerClose)
        pFrame->close();
}

// Runs a function with Yes, Cancel and No buttons and acts on the box once it is open; the
// frame comes from argument 10.
int show(int function, Action action, Seen &seen, const QString &defaultId = QString(),
         bool showClose = true)
{
    QDialog *pDialog = nullptr;
    QTimer::singleShot(0, [&seen, &pDialog, action] {
        seen.frame = pDialog;
        auto *pBox = pDialog->findChild<QMessageBox *>();
        seen.text = pBox->text();
        seen.defaultButton = pBox->defaultButton() ? pBox->defaultButton()->text() : QString();
        seen.frameName = pDialog->objectName();
        if (auto *pLabel = pBox->findChild<QLabel *>("LDKMessageBoxEx_MsgWidget"))
            seen.labelName = pLabel->objectName();
        seen.closeShown = !pDialog->findChild<QWidget *>("Core_ButtonClose")->isHidden();
        seen.boxSize = pBox->size();
        act(pDialog, pBox, action);
    });
    const int result = kFunctions[function](QMessageBox::Question, nullptr, "Title", "Do it?",
                                            "IDS_YES", "IDS_CANCEL", "IDS_NO", false, Qt::Dialog,
                                            &pDialog, defaultId, showClose);
    return pDialog ? -1 : result;
}

} // namespace

class tst_MessageBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(TestFiles::writeAppFile(
            "/plugins/XFramePlugin/XFramePlugin_en-us.lang",
            "<language><item name=\"IDS_YES\">Yes</item><item name=\"IDS_NO\">No</item>"
            "<item name=\"IDS_CANCEL\">Cancel</item></language>"));
    }

    // Ok for the first button, No for the second, Cancel otherwise; argument 10 null after;
    // the look each function gives the box.
    void result_data()
    {
        for (const char *column : {"function", "action", "expected", "showClose", "closeShown"})
            QTest::addColumn<int>(column);
        QTest::addColumn<QString>("defaultId");
        QTest::addColumn<QString>("defaultButton");
        QTest::addColumn<QString>("frameName");
        QTest::addColumn<QSize>("boxSize");
        const int ok = QMessageBox::Ok, no = QMessageBox::No, cancel = QMessageBox::Cancel;
        const auto row = [](const char *name, int function, Action action, int expected,
                            bool closes, const char *defaultId = "", const char *defaultButton = "",
                            const char *frame = "", QSize box = QSize()) {
            QTest::newRow(name) << function << int(action) << expected
                                << int(function >= 2 || closes) << int(closes) << QString(defaultId)
                                << QString(defaultButton) << QString(frame) << box;
        };
        const QSize ex(294, 80);
        row("first button", 0, First, ok, true, "IDS_NO", "No");
        row("second button", 0, Second, no, true);
        row("third button", 0, Third, cancel, true);
        row("frame close", 0, CloseButton, cancel, true);
        row("escape", 0, Escape, cancel, true);
        row("caller closes", 0, CallerClose, cancel, true);
        row("customize, no close asked", 1, Second, no, false);
        row("ex ignores close", 2, First, ok, false, "IDS_CANCEL", "Cancel", kExName, ex);
        row("ex, escape", 2, Escape, cancel, false, "", "", kExName, ex);
        row("photo", 3, Second, no, false, "IDS_YES", "Yes", "MessageBoxForPhotoedit", {220, 80});
    }
    void result()
    {
        QFETCH(int, function);
        QFETCH(int, action);
        QFETCH(int, showClose);
        QFETCH(QString, defaultId);
        QFETCH(QSize, boxSize);
        Seen seen;
        QTEST(show(function, Action(action), seen, defaultId, showClose), "expected");
        QCOMPARE(seen.text, QStringLiteral(" Do it?"));
        QTEST(int(seen.closeShown), "closeShown");
        QTEST(seen.defaultButton, "defaultButton");
        QTEST(seen.frameName, "frameName");
        QCOMPARE(seen.boxSize == boxSize, boxSize.isValid());
        QCOMPARE(seen.labelName.isEmpty(), !boxSize.isValid());
    }

    void addButtonRefuses()
    {
        QMessageBox box;
        QVERIFY(!CommonUtils::addMessageboxButton("IDS_YES", "", QMessageBox::YesRole, nullptr));
        QVERIFY(!CommonUtils::addMessageboxButton("", "", QMessageBox::YesRole, &box));
        QVERIFY(CommonUtils::addMessageboxButton("IDS_YES", QString(), QMessageBox::YesRole, &box));
        QCOMPARE(box.defaultButton(), nullptr);
    }
};

QTEST_MAIN(tst_MessageBox)
#include "tst_messagebox.moc"
