#include "NexoSdk.h"
#include "TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// QString's UTF-16 storage is exactly what the library's NEXO_CHAR16 strings are.
const NEXO_CHAR16 *nexoText(const QString &text)
{
    return reinterpret_cast<const NEXO_CHAR16 *>(text.utf16());
}

long setSetting(const QString &group, const QString &key, const QString &value)
{
    return NEXO_SetSettings(nexoText(group), nexoText(key), nexoText(value));
}

// The value, or a null QString on a non-zero status (kept in *status).
QString getSetting(const QString &group, const QString &key, long *status = nullptr)
{
    NEXO_CHAR16 sentinel[] = {'x', 0};
    NEXO_CHAR16 *value = sentinel;
    const long result = NEXO_GetSettings(nexoText(group), nexoText(key), &value);
    if (status)
        *status = result;
    if (result != 0)
        return value == nullptr ? QString() : QStringLiteral("<value not cleared>");
    const QString text = QString::fromUtf16(value);
    delete[] value;
    return text.isNull() ? QStringLiteral("") : text;
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes (or, with check, reads back) keys "<prefix><n>" = "value-<prefix><n>" of group "load";
// the keys whose write failed or that do not read back.
QStringList keys(const QString &prefix, int count, bool check)
{
    QStringList failed;
    for (int i = 0; i < count; ++i) {
        const QString key = prefix + QString::number(i);
        if (check ? getSetting("load", key) != "value-" + key
                  : setSetting("load", key, "value-" + key) != 0)
            failed.append(key);
    }
    return failed;
}

} // namespace

// The settings store behind NEXO_GetSettings / NEXO_SetSettings.
class tst_SdkSettings : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // Each function starts in an empty folder, copies kept aside included.
        QVERIFY(QDir(TestFiles::appDir() + "/settings").removeRecursively());
        m_settingsPath =
            TestFiles::useFreshSettings(QTest::currentTestFunction() + QString(".ini"));
        TestFiles::removeAppPath("/config");
    }

    void awkwardTextsRoundTripThroughTheFile()
    {
        const QString emoji = QStringLiteral("\U0001F600\U0001F44D\U0001F3FD");
        // Other scripts, and texts a naive INI format would mangle or mix up.
        const QList<QStringList> entries{
            {"general", "name", QStringLiteral("中文 مرحبا ") + emoji},
            {QStringLiteral("设置"), QStringLiteral("مفتاح") + emoji, "zh-cn"},
            {"line\nbreak", "key\r\nbreak", "first\nsecond\r\n"},
            {"[group]", "k=v]", "=[value];"},
            {";group", "#key", "  value # not a comment  "},
            {"g\\", "\\s\\x41", "C:\\path\\t\\"},
            {"", "", QString(3000, QChar(0x4E2D))},
        };
        for (const QStringList &e : entries)
            QCOMPARE(setSetting(e[0], e[1], e[2]), 0L);
        QVERIFY(readFromACopy());
        for (const QStringList &e : entries) {
            long status = -1;
            QCOMPARE(getSetting(e[0], e[1], &status), e[2]);
            QCOMPARE(status, 0L);
        }
        QCOMPARE(getSetting("group", "k=v]"), QString());
    }

    void settingIsRead_data()
    {
        QTest::addColumn<QByteArray>("userFile"); // null: none
        QTest::addColumn<QString>("key");         // in group "g"; the defaults have only "d"
        QTest::addColumn<QString>("expected");    // null: not found
        const auto row = [](const char *name, const QByteArray &file, const char *key,
                            const QString &expected) {
            QTest::newRow(name) << file << QString(key) << expected;
        };
        row("no file", {}, "k", {});
        row("no file, the defaults' key", {}, "d", "common");
        row("hand-written", "\xEF\xBB\xBF; c\n\n  [g]  \r\n k = a=b \r\n", "k", "a=b");
        // A file that cannot be understood as a whole yields no key at all.
        row("corrupt: line without '='", "[g]\nk=v\njunk\n", "k", {});
        row("user file has the defaults' key", "[g]\nd=acme\n", "d", "acme");
        row("user value is empty", "[g]\nd=\n", "d", "");
        row("user file lacks the key", "[h]\nd=x\n", "d", "common");
        row("user file corrupt", "[g]\nd=acme\n[x\n", "d", "common");
    }

    void settingIsRead()
    {
        QFETCH(QByteArray, userFile);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        if (!userFile.isNull())
            QVERIFY(TestFiles::writeFile(m_settingsPath, userFile));
        QVERIFY(TestFiles::writeAppFile("/config/defaults.ini", "[g]\nd=common\n"));

        long status = -1;
        QCOMPARE(getSetting("g", key, &status), expected);
        QCOMPARE(status, expected.isNull() ? long(NEXO_ERR_NOT_FOUND) : 0L);
        // Reading never copies defaults into the user's file.
        QCOMPARE(readBytes(m_settingsPath), userFile.isNull() ? QByteArray() : userFile);
    }

    void corruptFileIsKeptAside()
    {
        // Twice, likely within one second: each corrupt content gets its own copy.
        const QList<QByteArray> corrupt{"[g]\nold=1\n[broken\n", QByteArray("\x00[\x01]=\xFF", 6)};
        for (const QByteArray &content : corrupt) {
            QVERIFY(TestFiles::writeFile(m_settingsPath, content));
            QCOMPARE(setSetting("g", "new", "value"), 0L);
            // The new file starts afresh: the new value, nothing of the unreadable content.
            QCOMPARE(readBytes(m_settingsPath), QByteArray("[g]\nnew=value\n"));
        }
        // Named "<file>.corrupt-<YYYYMMDDhhmmss>[-n]", so name order is age order.
        const QDir folder = QFileInfo(m_settingsPath).absoluteDir();
        QList<QByteArray> kept;
        for (const QString &name : folder.entryList({"*.ini.corrupt-*"}, QDir::Files, QDir::Name))
            kept.append(readBytes(folder.filePath(name)));
        QCOMPARE(kept, corrupt);
    }

    // A hand edit whose escapes decode to no valid text costs that line only, and survives writes.
    void unrepresentableLineIsRefusedAlone()
    {
        QVERIFY(TestFiles::writeFile(m_settingsPath,
                                     "[g]\nodd=caf\\xe9\nk=v\n[bad\\xff]\nx=1\n[h]\ny=\\x00\n"));
        QCOMPARE(getSetting("g", "k"), QString("v"));
        QCOMPARE(getSetting("g", "odd"), QString());
        QCOMPARE(setSetting("g", "new", "1"), 0L);

        QCOMPARE(readBytes(m_settingsPath),
                 QByteArray("[g]\nk=v\nnew=1\nodd=caf\\xe9\n\n[bad\\xff]\nx=1\n\n[h]\ny=\\x00\n"));
        QCOMPARE(QFileInfo(m_settingsPath).absoluteDir().entryList({"*.corrupt-*"}), QStringList());
        QCOMPARE(getSetting("g", "k"), QString("v"));
    }

    void concurrentThreadsLoseNoKey()
    {
        std::atomic<int> failures{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back(
                [t, &failures] { failures += keys(QString::number(t), 30, false).size(); });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(failures.load(), 0);
        QVERIFY(readFromACopy());
        QCOMPARE(keys("0", 30, true) + keys("1", 30, true) + keys("2", 30, true) +
                     keys("3", 30, true),
                 QStringList());
    }

    // Two processes (this program again) write at the same time.
    void concurrentProcessesLoseNoKey()
    {
        const QString go = m_scratch.filePath("start-writers");
        QProcess writers[2];
        for (int p = 0; p < 2; ++p)
            writers[p].start(QCoreApplication::applicationFilePath(),
                             {"--write", p ? "b" : "a", go});
        QVERIFY(TestFiles::writeFile(go, ""));

        // Meanwhile a reader never sees a key vanish again: no torn or half-written file.
        bool seen = false, vanished = false;
        QDeadlineTimer deadline(60000);
        while (!deadline.hasExpired() && (writers[0].state() != QProcess::NotRunning ||
                                          writers[1].state() != QProcess::NotRunning)) {
            const bool present = !getSetting("load", "a0").isNull();
            vanished = vanished || (seen && !present);
            seen = seen || present;
            writers[0].waitForFinished(5);
            writers[1].waitForFinished(5);
        }
        QVERIFY(!vanished);
        for (QProcess &writer : writers) {
            QCOMPARE(writer.exitStatus(), QProcess::NormalExit);
            QCOMPARE(writer.exitCode(), 0);
        }
        QCOMPARE(keys("a", 200, true) + keys("b", 200, true), QStringList());
    }

private:
    // Points the library at a copy of the file, so that it has to parse what is on disk.
    bool readFromACopy()
    {
        const QString copy = m_scratch.filePath(QString(QTest::currentTestFunction()) + ".ini");
        QFile::remove(copy);
        qputenv("LINKDECK_SETTINGS", QFile::encodeName(copy));
        return QFile::copy(m_settingsPath, copy);
    }

    QString m_settingsPath;
    QTemporaryDir m_scratch;
};

int main(int argc, char **argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--write") == 0) { // "--write <prefix> <go file>"
        for (int i = 0; i < 2000 && !QFile::exists(argv[3]); ++i)
            QThread::msleep(5);
        return qMin(int(keys(argv[2], 200, false).size()), 99);
    }
    QCoreApplication app(argc, argv);
    tst_SdkSettings test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sdksettings.moc"
