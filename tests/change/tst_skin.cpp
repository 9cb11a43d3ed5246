#include "Change.h"
#include "LDKStyle.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <QApplication>
#include <QPushButton>
#include <QtTest>

class tst_Skin : public QObject
{
    Q_OBJECT

private slots:
    void missingFileKeepsStyleSheet()
    {
        qApp->setStyleSheet("QWidget { color: red; }");
        QStyle *before = QApplication::style();
        const QString missing = TestFiles::appDir() + "/skin/none.qss";
        LogCapture log;
        QVERIFY(!Change::ChangSkin(qApp, missing));
        QCOMPARE(
            log.texts(),
            QStringList{
                "../../src/core/Change/Change: ChangSkin: File does not exist or failed to open " +
                missing});
        QCOMPARE(log.lines().first().type, QtDebugMsg);
        QCOMPARE(qApp->styleSheet(), QString("QWidget { color: red; }"));
        QCOMPARE(QApplication::style(), before);
    }

    void appliesStyleAndSheet()
    {
        const QByteArray sheet = "QPushButton#Core_ButtonClose { background: #123456; }";
        QVERIFY(TestFiles::writeAppFile("/skin/IDS_SKIN_DEFAULT.qss", sheet));
        QVERIFY(Change::ChangSkin(qApp, TestFiles::appDir() + "/skin/IDS_SKIN_DEFAULT.qss"));
        QCOMPARE(qApp->styleSheet(), QString::fromUtf8(sheet));
        // A style sheet wraps the installed style; the metrics show that ours is underneath.
        QCOMPARE(QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent), 13);
        QVERIFY(qobject_cast<LDKStyle *>(QApplication::style()) ||
                QApplication::style()->inherits("QStyleSheetStyle"));
    }

    void repeatedSkinChangesReplaceTheStyle()
    {
        QVERIFY(TestFiles::writeAppFile("/skin/a.qss", "QLabel { color: blue; }"));
        for (int i = 0; i < 3; ++i)
            QVERIFY(Change::ChangSkin(qApp, TestFiles::appDir() + "/skin/a.qss"));
        QPushButton button("x");
        button.show();
        QCOMPARE(button.style()->pixelMetric(QStyle::PM_ScrollBarSliderMin), 15);
    }
};

QTEST_MAIN(tst_Skin)
#include "tst_skin.moc"
