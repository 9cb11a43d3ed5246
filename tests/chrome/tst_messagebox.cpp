#include "CommonUtils.h"
#include "ExtendDialog.h"
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
enum Function { Plain, Customize, Ex, PhotoEdit };
enum Action { First, Second, Third, CloseButton, Escape, CallerClose };

// What the open box looked like.
struct Seen
{
    QDialog *frame = nullptr;
    QString text, defaultButton, frameName, labelName;
    bool closeShown = false;
    QSize boxSize;
};

QPushButton *buttonWithText(QMessageBox *pBox, const QString &text)
{
    const QList<QAbstractButton *> buttons = pBox->buttons();
    for (QAbstractButton *pButton : buttons) {
        if (pButton->text() == text)
            return qobject_cast<QPushButton *>(pButton);
    }
    return nullptr;
}

void act(QDialog *pFrame, QMessageBox *pBox, Action action)
{
    switch (action) {
    case First:
    case Second:
    case Third:
        buttonWithText(pBox, QStringList{"Yes", "No", "Cancel"}[action])->click();
        break;
    case CloseButton:
        pFrame->findChild<QAbstractButton *>("Core_ButtonClose")->click();
        break;
    case Escape:
        QTest::keyClick(pBox, Qt::Key_Escape);
        break;
    case CallerClose:
        pFrame->close();
        break;
    }
}

// Runs the function with Yes, Cancel and No buttons and acts on the box once it is open.
int show(Function function, Action action, Seen &seen, QDialog **ppDialog,
         const QString &defaultId = QString(), bool showClose = true)
{
    QTimer::singleShot(0, [&seen, ppDialog, action] {
        seen.frame = *ppDialog;
        auto *pBox = seen.frame->findChild<QMessageBox *>();
        seen.text = pBox->text();
        seen.defaultButton = pBox->defaultButton() ? pBox->defaultButton()->text() : QString();
        seen.frameName = seen.frame->objectName();
        if (auto *pLabel = pBox->findChild<QLabel *>("LDKMessageBoxEx_MsgWidget"))
            seen.labelName = pLabel->objectName();
        seen.closeShown = !seen.frame->findChild<QWidget *>("Core_ButtonClose")->isHidden();
        seen.boxSize = pBox->size();
        act(seen.frame, pBox, action);
    });
    return kFunctions[function](QMessageBox::Question, nullptr, "Title", "Do it?", "IDS_YES",
                                "IDS_CANCEL", "IDS_NO", false, Qt::Dialog, ppDialog, defaultId,
                                showClose);
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

    void result_data()
    {
        QTest::addColumn<int>("function");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("expected");
        QTest::newRow("first button") << int(Plain) << int(First) << int(QMessageBox::Ok);
        QTest::newRow("second button") << int(Plain) << int(Second) << int(QMessageBox::No);
        QTest::newRow("third button") << int(Plain) << int(Third) << int(QMessageBox::Cancel);
        QTest::newRow("frame close") << int(Plain) << int(CloseButton) << int(QMessageBox::Cancel);
        QTest::newRow("escape") << int(Plain) << int(Escape) << int(QMessageBox::Cancel);
        QTest::newRow("caller closes")
            << int(Plain) << int(CallerClose) << int(QMessageBox::Cancel);
        QTest::newRow("customize, second") << int(Customize) << int(Second) << int(QMessageBox::No);
        QTest::newRow("ex, first") << int(Ex) << int(First) << int(QMessageBox::Ok);
        QTest::newRow("ex, escape") << int(Ex) << int(Escape) << int(QMessageBox::Cancel);
        QTest::newRow("photo, second") << int(PhotoEdit) << int(Second) << int(QMessageBox::No);
    }
    void result()
    {
        QFETCH(int, function);
        QFETCH(int, action);
        QFETCH(int, expected);
        Seen seen;
        QDialog *pDialog = nullptr;
        QCOMPARE(show(Function(function), Action(action), seen, &pDialog), expected);
        QVERIFY(seen.frame);
        QCOMPARE(pDialog, nullptr);
        QCOMPARE(seen.text, QStringLiteral(" Do it?"));
    }

    void appearance_data()
    {
        QTest::addColumn<int>("function");
        QTest::addColumn<bool>("showCloseArgument");
        QTest::addColumn<QString>("defaultId");
        QTest::addColumn<bool>("closeShown");
        QTest::addColumn<QString>("defaultButton");
        QTest::addColumn<QString>("frameName");
        QTest::addColumn<QSize>("boxSize");
        QTest::newRow("close asked") << int(Plain) << true << "IDS_NO" << true << "No"
                                     << "" << QSize();
        QTest::newRow("close not asked") << int(Customize) << false << "" << false << ""
                                         << "" << QSize();
        QTest::newRow("ex ignores close") << int(Ex) << true << "IDS_CANCEL" << false << "Cancel"
                                          << "DevMgr_SimLockPromptDlg" << QSize(294, 80);
        QTest::newRow("photo") << int(PhotoEdit) << true << "IDS_YES" << false << "Yes"
                               << "MessageBoxForPhotoedit" << QSize(220, 80);
    }
    void appearance()
    {
        QFETCH(int, function);
        QFETCH(bool, showCloseArgument);
        QFETCH(QString, defaultId);
        QFETCH(bool, closeShown);
        QFETCH(QString, defaultButton);
        QFETCH(QString, frameName);
        QFETCH(QSize, boxSize);
        Seen seen;
        QDialog *pDialog = nullptr;
        show(Function(function), First, seen, &pDialog, defaultId, showCloseArgument);
        QCOMPARE(seen.closeShown, closeShown);
        QCOMPARE(seen.defaultButton, defaultButton);
        QCOMPARE(seen.frameName, frameName);
        if (boxSize.isValid()) {
            QCOMPARE(seen.boxSize, boxSize);
            QCOMPARE(seen.labelName, QStringLiteral("LDKMessageBoxEx_MsgWidget"));
        }
    }

    void addButtonRefuses()
    {
        QMessageBox box;
        QVERIFY(!CommonUtils::addMessageboxButton("IDS_YES", "", QMessageBox::YesRole, nullptr));
        QVERIFY(!CommonUtils::addMessageboxButton("", "", QMessageBox::YesRole, &box));
        QPushButton *pButton =
            CommonUtils::addMessageboxButton("IDS_YES", QString(), QMessageBox::YesRole, &box);
        QVERIFY(pButton);
        QCOMPARE(pButton->text(), QStringLiteral("Yes"));
        QCOMPARE(box.buttonRole(pButton), QMessageBox::YesRole);
        QCOMPARE(box.defaultButton(), nullptr);
    }
};

QTEST_MAIN(tst_MessageBox)
#include "tst_messagebox.moc"
