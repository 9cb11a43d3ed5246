#include "NexoSim.h"
#include "TestFiles.h"

#include <QtTest>

class tst_SdkCellBroadcast : public QObject
{
    Q_OBJECT

private slots:
    // The message set wins over the settings file's; cut to the buffer and always terminated.
    void message_data()
    {
        QTest::addColumn<QByteArray>("set"); // null: NexoSim_SetCellBroadcast(NULL)
        QTest::addColumn<QByteArray>("settingsFile");
        QTest::addColumn<int>("size");
        QTest::addColumn<long>("status");
        QTest::addColumn<QByteArray>("text");
        const QByteArray cbs = "[simulator]\ncbs=Flood warning\n";
        QTest::newRow("none") << QByteArray() << QByteArray() << 64 << long(NEXO_ERR_NOT_FOUND)
                              << QByteArray();
        QTest::newRow("set") << QByteArray("Storm") << QByteArray() << 64 << 0L
                             << QByteArray("Storm");
        QTest::newRow("set wins") << QByteArray("Storm") << cbs << 64 << 0L << QByteArray("Storm");
        QTest::newRow("from the settings")
            << QByteArray("") << cbs << 64 << 0L << QByteArray("Flood warning");
        QTest::newRow("cut to fit")
            << QByteArray("Storm") << QByteArray() << 4 << 0L << QByteArray("Sto");
        QTest::newRow("one byte") << QByteArray("Storm") << QByteArray() << 1 << 0L << QByteArray();
        QTest::newRow("no room") << QByteArray("Storm") << QByteArray() << 0
                                 << long(NEXO_ERR_INVALID_ARGUMENT) << QByteArray("x");
    }
    void message()
    {
        QFETCH(QByteArray, set);
        QFETCH(QByteArray, settingsFile);
        QFETCH(int, size);
        QFETCH(long, status);
        QFETCH(QByteArray, text);
        const QString settings =
            TestFiles::useFreshSettings(QString("cbs_%1.ini").arg(QTest::currentDataTag()));
        if (!settingsFile.isEmpty())
            QVERIFY(TestFiles::writeFile(settings, settingsFile));
        NexoSim_SetCellBroadcast(set.isNull() ? nullptr : set.constData());
        char buffer[64] = "x";
        QCOMPARE(NexoSim_GetCellBroadcast(buffer, size), status);
        QCOMPARE(QByteArray(buffer), text);
        QCOMPARE(NexoSim_GetCellBroadcast(nullptr, 64), long(NEXO_ERR_INVALID_ARGUMENT));
    }
};

QTEST_GUILESS_MAIN(tst_SdkCellBroadcast)
#include "tst_sdkcellbroadcast.moc"
