#include "CommonUtils.h"
#include "TestFiles.h"

#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

enum Action { First, Second, Third, CloseButton, Escape };

// Runs ShowMessage (or ShowMessageEx) with Yes, Cancel and No buttons and acts on the box once it
// is open; -1 when argument 10 still holds the frame afterwards.
int show(bool ex, Action action, QDialog *&seenFrame, bool &closeShown)
{
    QDialog *pDialog = nullptr;
    QTimer::singleShot(0, [&] {
        seenFrame = pDialog;
        QVERIFY(pDialog);
        auto *pBox = pDialog->findChild<QMessageBox *>();
        auto *pClose = pDialog->findChild<QAbstractButton *>("Core_ButtonClose");
        closeShown = !pClose->isHidden();
        for (QAbstractButton *pButton : pBox->buttons())
            if (action <= Third && pButton->text() == QStringList({"Yes", "No", "Cancel"})[action])
                pButton->click();
        if (action == CloseButton)
            pClose->click();
        if (action == Escape)
            QTest::keyClick(pBox, Qt::Key_Escape);
    });
    const auto function = ex ? &CommonUtils::ShowMessageEx : &CommonUtils::ShowMessage;
    const int result = function(QMessageBox::Question, nullptr, "Title", "Do it?", "IDS_YES",
                                "IDS_CANCEL", "IDS_NO", false, Qt::Dialog, &pDialog, "", true);
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

    // Ok for the first button, No for the second, Cancel otherwise; ShowMessageEx never shows
    // the close button it is asked for.
    void result_data()
    {
        QTest::addColumn<bool>("ex");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("expected");
        QTest::newRow("first button") << false << int(First) << int(QMessageBox::Ok);
        QTest::newRow("second button") << false << int(Second) << int(QMessageBox::No);
        QTest::newRow("third button") << false << int(Third) << int(QMessageBox::Cancel);
        QTest::newRow("frame close") << false << int(CloseButton) << int(QMessageBox::Cancel);
        QTest::newRow("escape") << false << int(Escape) << int(QMessageBox::Cancel);
        QTest::newRow("ex, first button") << true << int(First) << int(QMessageBox::Ok);
    }
    void result()
    {
        QFETCH(bool, ex);
        QFETCH(int, action);
        QDialog *pFrame = nullptr;
        bool closeShown = ex;
        QTEST(show(ex, Action(action), pFrame, closeShown), "expected");
        QVERIFY(pFrame);
        QCOMPARE(closeShown, !ex);
    }
};

QTEST_MAIN(tst_MessageBox)
#include "tst_messagebox.moc"
