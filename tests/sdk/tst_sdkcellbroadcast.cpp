#include "NexoSim.h"
#include "TestFiles.h"

#include <QtTest>

// The message set wins over the settings file's; cut to the buffer and always terminated.
class tst_SdkCellBroadcast : public QObject
{
    Q_OBJECT

private slots:
    void message_data()
    {
        QTest::addColumn<QByteArray>("set"); // null: NexoSim_SetCellBroadcast(NULL)
        QTest::addColumn<bool>("inSettings");
        QTest::addColumn<int>("size");
        QTest::addColumn<long>("status");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << QByteArray() << false << 64 << long(NEXO_ERR_NOT_FOUND)
                              << QByteArray("");
        QTest::newRow("set wins") << QByteArray("Storm") << true << 64 << 0L << QByteArray("Storm");
        QTest::newRow("from the settings")
            << QByteArray("") << true << 64 << 0L << QByteArray("Flood");
        QTest::newRow("cut to fit") << QByteArray("Storm") << false << 4 << 0L << QByteArray("Sto");
        QTest::newRow("no room") << QByteArray("Storm") << false << 0
                                 << long(NEXO_ERR_INVALID_ARGUMENT) << QByteArray("x");
    }
    void message()
    {
        QFETCH(QByteArray, set);
        QFETCH(bool, inSettings);
        QFETCH(int, size);
        const QString settings = TestFiles::useFreshSettings(QTest::currentDataTag());
        if (inSettings)
            QVERIFY(TestFiles::writeFile(settings, "[simulator]\ncbs=Flood\n"));
        NexoSim_SetCellBroadcast(set.isNull() ? nullptr : set.constData());
        char buffer[64] = "x";
        QTEST(NexoSim_GetCellBroadcast(buffer, size), "status");
        QTEST(QByteArray(buffer), "text");
        QCOMPARE(NexoSim_GetCellBroadcast(nullptr, 64), long(NEXO_ERR_INVALID_ARGUMENT));
    }
};

QTEST_GUILESS_MAIN(tst_SdkCellBroadcast)
#include "tst_sdkcellbroadcast.moc"
