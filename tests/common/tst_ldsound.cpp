#include "LdSound.h"
#include "LogCapture.h"
#include "TestFiles.h"

#include <QFile>
#include <QtTest>

namespace {

const QString kSource = "../../src/core/common/LdSoundLinux: ";
// A fake player: records its arguments, ends at once for a "quick" file, else plays until
// terminated.
const QByteArray kScript = "#!/bin/sh\necho \"$#:$1\" > \"$FAKE_APLAY_ARGS\"\n"
                           "case \"$1\" in *quick*) exit 0 ;; esac\nexec /bin/sleep 30\n";

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_LdSound : public QObject
{
    Q_OBJECT

    const QByteArray m_path = qgetenv("PATH");
    const QString m_args = TestFiles::appDir() + "/aplay-args";

private slots:
    void initTestCase() { qputenv("FAKE_APLAY_ARGS", QFile::encodeName(m_args)); }
    void cleanup() { qputenv("PATH", m_path); }

    void play_data()
    {
        QTest::addColumn<QString>("player"); // "script", or "none" on the path
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("lines");

        const QStringList stopped{"Play: started = 1", "IsPlaying: true", "Stop: Killing process",
                                  "Stop: returning 1"};
        const QStringList failed{"Play: started = 0", "IsPlaying: not playing",
                                 "Stop: returning 0"};
        const QString script = "script", wav = "a.wav";
        QTest::newRow("plays until stopped") << script << QString("/tmp/my alarm.wav") << stopped;
        QTest::newRow("ends by itself")
            << script << QString("quick.wav")
            << QStringList{"Play: started = 1", "IsPlaying: not playing", "Stop: returning 0"};
        QTest::newRow("no player on the path") << QString("none") << wav << failed;
    }
    void play()
    {
        QFETCH(QString, player);
        QFETCH(QString, file);
        QFETCH(QStringList, lines);
        const QString bin = TestFiles::appDir() + "/fakebin";
        QVERIFY(TestFiles::removeAppPath("/fakebin") && TestFiles::removeAppPath("/aplay-args"));
        QVERIFY(TestFiles::writeAppFile("/fakebin/none", QByteArray()));
        QVERIFY(player == "none" || TestFiles::writeAppFile("/fakebin/aplay", kScript));
        QVERIFY(player != "script" ||
                QFile::setPermissions(bin + "/aplay", QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", QFile::encodeName(bin));

        LdSound sound("unused.wav");
        sound.SetSoundFile(file);
        QSignalSpy finished(&sound, &LdSound::finished);
        LogCapture log;
        const bool started = sound.Play();
        if (started)
            QTRY_COMPARE(readFile(m_args), "1:" + file.toLocal8Bit() + "\n");
        if (file.startsWith("quick"))
            QTRY_COMPARE(finished.count(), 1);
        const bool playing = sound.IsPlaying();
        QCOMPARE(sound.Stop(), playing);
        QTRY_COMPARE(finished.count(), started ? 1 : 0);
        QCOMPARE(log.texts().filter(kSource).replaceInStrings(kSource, QString()), lines);
    }
};

QTEST_MAIN(tst_LdSound)
#include "tst_ldsound.moc"
