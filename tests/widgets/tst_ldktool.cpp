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

const QString kDefault = "/plugins/AddrBookUIPlugin/DefaultPhoto.png", kPhoto = "/photo.png";

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
        writeImage(kPhoto, 5);
        writeImage("/odd\\", 4);
        QVERIFY(TestFiles::writeAppFile("/plugins/AddrBookUIPlugin/AddrBookUIPlugin_en-us.lang",
                                        "<language><item name=\"IDS_TIPS_ADD_IMAGE\">Add</item>"
                                        "</language>"));
    }

    // Clicks on a label (enabled or not), on a check box's text or box, and a label opening a
    // combo box's list.
    void clicks_data()
    {
        QTest::addColumn<QString>("target"); // only "label" is left disabled

        QTest::newRow("label never enabled") << "label";
        QTest::newRow("label enabled") << "enabled label";
        QTest::newRow("check box text toggles once") << "check text";
        QTest::newRow("check box itself toggles once") << "check box";
        QTest::newRow("label opens a combo box's list") << "combo";
    }
    void clicks()
    {
        QFETCH(QString, target);
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
        QSignalSpy hover(&label, &MouseClickedWidget::showLine);
        QSignalSpy leave(&label, &MouseClickedWidget::revertType);
        QEvent enter(QEvent::Enter), leaving(QEvent::Leave);
        QApplication::sendEvent(&label, &enter);
        QApplication::sendEvent(&label, &leaving);

        auto *pText = check.findChild<MouseClickedWidget *>();
        const bool onCheck = target.startsWith("check");
        QWidget *pTarget =
            onCheck ? (target == "check text" ? static_cast<QWidget *>(pText) : &check) : &label;
        QTest::mouseClick(pTarget, Qt::LeftButton, {}, QPoint(3, 3));
        QCOMPARE((onCheck ? checkClicks : labelClicks).count(), target == "label" ? 0 : 1);
        QCOMPARE(check.isChecked(), onCheck);
        QCOMPARE(combo.view()->isVisible(), target == "combo");
        QCOMPARE(label.cursor().shape(),
                 target == "label" ? Qt::ArrowCursor : Qt::PointingHandCursor);
        QVERIFY(hover.count() == 1 && leave.count() == 1);
        QVERIFY(check.text().isEmpty() && pText->text() == "Remember");
    }

    void setPixmap_data()
    {
        QTest::addColumn<QString>("path"); // below the application directory
        QTest::addColumn<QString>("current");

        const QString folder = "/plugins";
        QTest::newRow("existing file") << kPhoto << kPhoto;
        QTest::newRow("empty path gives the default") << QString() << kDefault;
        QTest::newRow("the default path") << kDefault << kDefault;
        QTest::newRow("folder path ending in / ignored") << folder + "/" << kPhoto;
        QTest::newRow("existing file ending in \\ ignored") << QString("/odd\\") << kPhoto;
        QTest::newRow("missing file ignored") << kPhoto + "x" << kPhoto;
        QTest::newRow("existing folder without a slash, no picture") << folder << folder;
    }
    // From the photo set to another path: path, picture, signal, tool tip and delete button.
    void setPixmap()
    {
        QFETCH(QString, path);
        QFETCH(QString, current);
        LDKPhotoWidget photo;
        photo.show();
        QCOMPARE(photo.GetPhotoPath(), app(kDefault));
        photo.SetMouseEnable(true);
        photo.SetPixmap(app(kPhoto));
        QSignalSpy changes(&photo, &LDKPhotoWidget::photoChange);

        photo.SetPixmap(app(path));
        QCOMPARE(photo.GetPhotoPath(), app(current));
        QCOMPARE(changes.count(), current == kPhoto && path != current ? 0 : 1);
        const int width = current == kPhoto ? 5 : current == kDefault ? 9 : 0;
        QCOMPARE(photo.findChild<QLabel *>()->pixmap(Qt::ReturnByValue).width(), width);
        QCOMPARE(photo.findChild<QLabel *>()->toolTip(), QString("Add"));
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
        photo.SetPixmap(app(kPhoto));
        QSignalSpy resets(&photo, &LDKPhotoWidget::photoReset);
        QSignalSpy changes(&photo, &LDKPhotoWidget::photoChange);

        answerWhenShown(role);
        photo.onDeleteClicked();
        QCOMPARE(photo.GetPhotoPath(), app(reset ? kDefault : kPhoto));
        QCOMPARE(changes.count(), int(reset));
        QCOMPARE(resets.count(), int(reset));
    }
};

QTEST_MAIN(tst_LdkTool)
#include "tst_ldktool.moc"
