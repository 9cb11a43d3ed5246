#include "Change.h"
#include "LDK_Tool.h"
#include "TestFiles.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

namespace {

const QString kDefault = "/plugins/AddrBookUIPlugin/DefaultPhoto.png";

QString app(const QString &relative)
{
    return relative.isEmpty() ? relative : TestFiles::appDir() + relative;
}

void writeImage(const QString &relative, int width)
{
    QImage image(width, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(QDir().mkpath(QFileInfo(app(relative)).path()) && image.save(app(relative), "PNG"));
}

// Answers the question box once it is up: with the button of the role, or by closing it.
void answerWhenShown(int role)
{
    QTimer::singleShot(20, [role] {
        QWidget *pModal = QApplication::activeModalWidget();
        if (!pModal)
            return answerWhenShown(role);
        auto *pBox = qobject_cast<QMessageBox *>(pModal);
        pBox = pBox ? pBox : pModal->findChild<QMessageBox *>();
        for (QAbstractButton *pButton : pBox->buttons())
            if (pBox->buttonRole(pButton) == role)
                return pButton->click();
        pModal->close();
    });
}

} // namespace

class tst_LdkTool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        writeImage(kDefault, 9);
        writeImage("/photo.png", 5);
        writeImage("/odd\\", 4);
        QVERIFY(TestFiles::writeAppFile("/plugins/AddrBookUIPlugin/AddrBookUIPlugin_en-us.lang",
                                        "<language><item name=\"IDS_TIPS_ADD_IMAGE\">Add</item>"
                                        "</language>"));
    }

    // Clicks on a label (enabled or not), on a check box's text or box, and a label opening a
    // combo box's list.
    void clicks_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("clicked");

        QTest::newRow("label never enabled") << "label" << 0;
        QTest::newRow("label enabled") << "enabled label" << 1;
        QTest::newRow("check box text toggles once") << "check text" << 1;
        QTest::newRow("check box itself toggles once") << "check box" << 1;
        QTest::newRow("label opens a combo box's list") << "combo" << 1;
    }
    void clicks()
    {
        QFETCH(QString, target);
        QFETCH(int, clicked);
        QWidget window;
        MouseClickedWidget label("text", &window);
        CheckBoxClick check("Remember", &window);
        ComboBox combo(&window);
        combo.addItems({"a", "b"});
        window.show();
        label.SetMouseEnable(target != "label");
        if (target == "combo")
            connect(&label, &MouseClickedWidget::onClicked, &combo, &ComboBox::onMousePressed);
        QSignalSpy labelClicks(&label, &MouseClickedWidget::onClicked);
        QSignalSpy checkClicks(&check, &CheckBoxClick::onClicked);
        QSignalSpy hover(&label, &MouseClickedWidget::showLine),
            leave(&label, &MouseClickedWidget::revertType);

        auto *pText = check.findChild<MouseClickedWidget *>();
        QWidget *pTarget = &label;
        if (target.startsWith("check"))
            pTarget = target == "check text" ? static_cast<QWidget *>(pText) : &check;
        QEvent enter(QEvent::Enter), leaving(QEvent::Leave);
        QApplication::sendEvent(&label, &enter);
        QApplication::sendEvent(&label, &leaving);
        QTest::mouseClick(pTarget, Qt::LeftButton, {}, QPoint(3, 3));

        QCOMPARE(target.startsWith("check") ? checkClicks.count() : labelClicks.count(), clicked);
        QCOMPARE(check.isChecked(), target.startsWith("check"));
        QCOMPARE(combo.view()->isVisible(), target == "combo");
        QCOMPARE(label.cursor().shape(),
                 target == "label" ? Qt::ArrowCursor : Qt::PointingHandCursor);
        QCOMPARE(hover.count() + leave.count(), 2);
        QVERIFY(check.text().isEmpty() && pText->text() == "Remember");
    }

    void setPixmap_data()
    {
        QTest::addColumn<QString>("path"); // below the application directory
        QTest::addColumn<QString>("current");
        QTest::addColumn<int>("width"); // of the picture shown, 0: none

        QTest::newRow("existing file") << "/photo.png"
                                       << "/photo.png" << 5;
        QTest::newRow("empty path gives the default") << "" << kDefault << 9;
        QTest::newRow("the default path") << kDefault << kDefault << 9;
        QTest::newRow("folder path ending in /") << "/plugins/"
                                                 << "/photo.png" << 5;
        QTest::newRow("existing file ending in \\ ignored") << "/odd\\"
                                                            << "/photo.png" << 5;
        QTest::newRow("missing file") << "/missing.png"
                                      << "/photo.png" << 5;
        QTest::newRow("existing folder without a slash") << "/plugins"
                                                         << "/plugins" << 0;
    }
    void setPixmap()
    {
        QFETCH(QString, path);
        QFETCH(QString, current);
        QFETCH(int, width);
        LDKPhotoWidget photo;
        photo.show();
        QCOMPARE(photo.GetPhotoPath(), app(kDefault));
        photo.SetMouseEnable(true);
        photo.SetPixmap(app("/photo.png"));
        QSignalSpy changes(&photo, &LDKPhotoWidget::photoChange);

        photo.SetPixmap(app(path));
        QCOMPARE(photo.GetPhotoPath(), app(current));
        const bool ignored = current == "/photo.png" && path != current;
        QCOMPARE(changes.count(), ignored ? 0 : 1);
        auto *pLabel = photo.findChild<QLabel *>();
        QCOMPARE(pLabel->pixmap(Qt::ReturnByValue).width(), width);
        QCOMPARE(pLabel->toolTip(), QString("Add"));
        auto *pDelete = photo.findChild<QPushButton *>("AddrBook_btnDeletePhoto");
        QCOMPARE(pDelete->isVisible(), current != kDefault);
    }

    void deleteQuestion_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<bool>("reset");

        QTest::newRow("yes") << int(QMessageBox::YesRole) << true;
        QTest::newRow("no") << int(QMessageBox::RejectRole) << false;
        QTest::newRow("closed") << int(QMessageBox::InvalidRole) << false;
    }
    void deleteQuestion()
    {
        QFETCH(int, role);
        QFETCH(bool, reset);
        LDKPhotoWidget photo;
        photo.SetPixmap(app("/photo.png"));
        QSignalSpy resets(&photo, &LDKPhotoWidget::photoReset);
        QSignalSpy changes(&photo, &LDKPhotoWidget::photoChange);

        answerWhenShown(role);
        photo.onDeleteClicked();
        QCOMPARE(photo.GetPhotoPath(), app(reset ? kDefault : "/photo.png"));
        QCOMPARE(changes.count(), int(reset));
        QCOMPARE(resets.count(), int(reset));
    }
};

QTEST_MAIN(tst_LdkTool)
#include "tst_ldktool.moc"
