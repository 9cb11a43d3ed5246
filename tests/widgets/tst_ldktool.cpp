#include "LDK_Tool.h"
#include "TestFiles.h"

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

// Answers the question box once it is up with the button of the role.
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
                pButton->click();
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
    }

    void setPixmap_data()
    {
        QTest::addColumn<QString>("path"); // below the application directory
        QTest::addColumn<QString>("current");

        const QString folder = "/plugins";
        QTest::newRow("existing file") << kPhoto << kPhoto;
        QTest::newRow("empty path gives the default") << QString() << kDefault;
        QTest::newRow("folder path ending in / ignored") << folder + "/" << kPhoto;
        QTest::newRow("existing file ending in \\ ignored") << QString("/odd\\") << kPhoto;
        QTest::newRow("missing file ignored") << kPhoto + "x" << kPhoto;
        QTest::newRow("existing folder without a slash, no picture") << folder << folder;
    }
    // From the photo set to another path: path, picture, signal and delete button.
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
        auto *pDelete = photo.findChild<QPushButton *>("AddrBook_btnDeletePhoto");
        QCOMPARE(pDelete->isVisible(), current != kDefault);
    }

    void deleteQuestion_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<bool>("reset");

        QTest::newRow("yes") << int(QMessageBox::YesRole) << true;
        QTest::newRow("no") << int(QMessageBox::RejectRole) << false;
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
