#include "NexoSdk.h"
#include "SdkTestStrings.h"
#include "TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace {

struct Entry
{
    const char *tag;
    QString group;
    QString key;
    QString value;
};

// Texts that a naive INI format would mangle: other scripts, surrogate pairs, line breaks,
// the format's own markers, blanks at the ends, backslashes and escape look-alikes.
QList<Entry> awkwardEntries()
{
    const QString emoji = QStringLiteral("\U0001F600\U0001F680\U0001F44D\U0001F3FD");
    return {
        {"chinese value", "general", "name", QStringLiteral("中文设置值")},
        {"arabic value", "general", "greeting", QStringLiteral("مرحبا بالعالم")},
        {"emoji value", "general", "mood", emoji},
        {"mixed value", "general", "mixed", QStringLiteral("中文 مرحبا ") + emoji + " end"},
        {"chinese group and key", QStringLiteral("设置"), QStringLiteral("语言"), "zh-cn"},
        {"arabic and emoji key", "general", QStringLiteral("مفتاح") + emoji, "v"},
        {"newlines everywhere", "line\nbreak", "key\nwith\r\nbreaks", "first\nsecond\r\n"},
        {"equals signs", "a=b", "k=v=w", "=x=y="},
        {"brackets", "[group]", "[key]", "[value]"},
        {"closing bracket only", "grp]", "]", "]"},
        {"comment markers", ";group", "#key", ";value # not a comment"},
        {"blanks at the ends", "  group  ", "  key  ", "  value  "},
        {"only blanks", " ", "   ", "    "},
        {"tabs", "\tg", "k\t", "\tv\t"},
        {"backslashes", "g\\", "\\k\\", "C:\\path\\to\\"},
        {"escape look-alikes", "\\n", "\\s\\x41", "\\t\\\\n\\="},
        {"control characters", "g", "ctrl",
         QStringLiteral("a\x01"
                        "b\x1f"
                        "c\x7f")},
        {"empty value", "general", "empty", ""},
        {"empty group and key", "", "", "top"},
        {"long value", "general", "long", QString(5000, QChar(0x4E2D)) + emoji},
    };
}

QStringList filesIn(const QString &directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

// The settings store behind NEXO_GetSettings / NEXO_SetSettings.
class tst_SdkSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void roundTripThroughTheFile_data();
    void roundTripThroughTheFile();
    void allAwkwardEntriesShareOneFile();
    void randomTextsRoundTrip();
    void missingKeyGivesErrorAndNull_data();
    void missingKeyGivesErrorAndNull();
    void badArgumentsAreRejected_data();
    void badArgumentsAreRejected();
    void defaultsApplyOnlyWhereUserFileLacksKey_data();
    void defaultsApplyOnlyWhereUserFileLacksKey();
    void handWrittenFileIsRead_data();
    void handWrittenFileIsRead();
    void corruptFileIsKeptAside_data();
    void corruptFileIsKeptAside();
    void eachCorruptionGetsItsOwnCopy();
    void corruptFileIsReportedOnceOnStderr();
    void unreadableFileIsNotReplaced();
    void folderThatIsAFileFailsTheWrite();
    void fileLocation_data();
    void fileLocation();
    void changeByAnotherWriterIsSeen();
    void writeLeavesNoTemporaryFilesAndKeepsMode();
    void symlinkedFileStaysALink();
    void concurrentThreadsLoseNoKey();
    void concurrentProcessesLoseNoKey();

private:
    // Reads the file back through a fresh path so that the library parses it from disk.
    QString readFromCopy(const QString &group, const QString &key, long *status = nullptr);

    QString m_settingsPath;
    QTemporaryDir m_scratch;
};

void tst_SdkSettings::init()
{
    QVERIFY(m_scratch.isValid());
    // Each function starts in an empty folder: copies kept aside and lock files included.
    QVERIFY(QDir(TestFiles::appDir() + QStringLiteral("/settings")).removeRecursively());
    m_settingsPath = TestFiles::useFreshSettings(QString::fromLatin1(QTest::currentTestFunction()) +
                                                 QStringLiteral(".ini"));
    TestFiles::removeAppPath(QStringLiteral("/config"));
}

void tst_SdkSettings::cleanup()
{
    TestFiles::removeAppPath(QStringLiteral("/config"));
}

QString tst_SdkSettings::readFromCopy(const QString &group, const QString &key, long *status)
{
    static int copies = 0;
    const QString copy = m_scratch.filePath(QStringLiteral("copy-%1.ini").arg(++copies));
    QFile::remove(copy);
    if (!QFile::copy(m_settingsPath, copy))
        return QStringLiteral("<no copy>");
    const QByteArray previous = qgetenv("LINKDECK_SETTINGS");
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(copy));
    const QString value = getSetting(group, key, status);
    qputenv("LINKDECK_SETTINGS", previous);
    return value;
}

void tst_SdkSettings::roundTripThroughTheFile_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    for (const Entry &entry : awkwardEntries())
        QTest::newRow(entry.tag) << entry.group << entry.key << entry.value;
}

void tst_SdkSettings::roundTripThroughTheFile()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QString, value);

    QCOMPARE(setSetting(group, key, value), 0L);
    long status = -1;
    QCOMPARE(getSetting(group, key, &status), value);
    QCOMPARE(status, 0L);
    QCOMPARE(readFromCopy(group, key, &status), value);
    QCOMPARE(status, 0L);
    // The file itself is UTF-8 text, one line per key, so people can read and edit it.
    const QByteArray bytes = readBytes(m_settingsPath);
    QVERIFY(!bytes.contains('\r'));
    QCOMPARE(bytes.count('\n'), 2);
}

void tst_SdkSettings::allAwkwardEntriesShareOneFile()
{
    const QList<Entry> entries = awkwardEntries();
    for (const Entry &entry : entries)
        QCOMPARE(setSetting(entry.group, entry.key, entry.value), 0L);
    // Groups and keys that differ only by escaping must stay apart.
    QCOMPARE(setSetting("group", "key", "plain"), 0L);
    for (const Entry &entry : entries)
        QCOMPARE(readFromCopy(entry.group, entry.key), entry.value);
    QCOMPARE(readFromCopy("group", "key"), QStringLiteral("plain"));
    QCOMPARE(readFromCopy("[group]", "key", nullptr), QString());
}

void tst_SdkSettings::randomTextsRoundTrip()
{
    // Texts made of the characters the format treats specially, mixed with other scripts.
    const QVector<QString> pieces{" ",     "\\", "=",  "[",    "]",      ";",      "#",
                                  "\n",    "\r", "\t", "\x01", "a",      "Z",      "\\s",
                                  "\\x41", "é",  "中", "م",    "\u00A0", "\uFEFF", "\U0001F600"};
    QRandomGenerator random(20261122); // fixed: a failure must be reproducible
    const auto randomText = [&] {
        QString text;
        const int length = random.bounded(6);
        for (int i = 0; i < length; ++i)
            text += pieces.at(random.bounded(pieces.size()));
        return text;
    };
    QMap<QPair<QString, QString>, QString> expected;
    for (int i = 0; i < 150; ++i) {
        const QString group = randomText();
        const QString key = randomText();
        const QString value = randomText();
        QCOMPARE(setSetting(group, key, value), 0L);
        expected[{group, key}] = value;
    }
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        long status = -1;
        QCOMPARE(readFromCopy(it.key().first, it.key().second, &status), it.value());
        QCOMPARE(status, 0L);
    }
}

void tst_SdkSettings::missingKeyGivesErrorAndNull_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::newRow("no file") << QByteArray() << "general"
                             << "name";
    QTest::newRow("empty file") << QByteArray("") << "general"
                                << "name";
    QTest::newRow("key in another group") << QByteArray("[other]\nname=x\n") << "general"
                                          << "name";
    QTest::newRow("other key in group") << QByteArray("[general]\nnames=x\n") << "general"
                                        << "name";
    QTest::newRow("case differs") << QByteArray("[general]\nName=x\n") << "general"
                                  << "name";
    QTest::newRow("group name is not a key") << QByteArray("[general]\n") << "general"
                                             << "general";
}

void tst_SdkSettings::missingKeyGivesErrorAndNull()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, group);
    QFETCH(QString, key);
    if (!file.isNull())
        QVERIFY(TestFiles::writeFile(m_settingsPath, file));

    NEXO_CHAR16 sentinel[] = {'x', 0};
    NEXO_CHAR16 *value = sentinel;
    QCOMPARE(NEXO_GetSettings(nexoText(group), nexoText(key), &value), long(NEXO_ERR_NOT_FOUND));
    QVERIFY(value == nullptr);
}

void tst_SdkSettings::badArgumentsAreRejected_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("badPart");
    QTest::addColumn<bool>("isNull");
    const QString high(QChar(0xD83D));
    const QString low(QChar(0xDE00));
    QTest::newRow("null group") << ""
                                << "k"
                                << "v"
                                << "group" << true;
    QTest::newRow("null key") << "g"
                              << ""
                              << "v"
                              << "key" << true;
    QTest::newRow("null value") << "g"
                                << "k"
                                << ""
                                << "value" << true;
    QTest::newRow("lone high surrogate in group") << high << "k"
                                                  << "v"
                                                  << "group" << false;
    QTest::newRow("lone low surrogate in key") << "g" << low << "v"
                                               << "key" << false;
    QTest::newRow("high surrogate at the end of value")
        << "g"
        << "k" << ("abc" + high) << "value" << false;
    QTest::newRow("swapped surrogates in value") << "g"
                                                 << "k" << (low + high) << "value" << false;
}

void tst_SdkSettings::badArgumentsAreRejected()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, badPart);
    QFETCH(bool, isNull);
    const auto text = [&](const QString &part, const QString &string) {
        return isNull && badPart == part ? nullptr : nexoText(string);
    };
    const NEXO_CHAR16 *g = text("group", group);
    const NEXO_CHAR16 *k = text("key", key);

    QCOMPARE(NEXO_SetSettings(g, k, text("value", value)), long(NEXO_ERR_INVALID_ARGUMENT));
    QVERIFY(!QFile::exists(m_settingsPath));

    NEXO_CHAR16 *result = nullptr;
    if (badPart != "value") {
        QCOMPARE(NEXO_GetSettings(g, k, &result), long(NEXO_ERR_INVALID_ARGUMENT));
    } else if (isNull) {
        QCOMPARE(NEXO_GetSettings(g, k, nullptr), long(NEXO_ERR_INVALID_ARGUMENT));
    } else {
        QCOMPARE(NEXO_GetSettings(g, k, &result), long(NEXO_ERR_NOT_FOUND)); // never stored
    }
    QVERIFY(result == nullptr);
}

void tst_SdkSettings::defaultsApplyOnlyWhereUserFileLacksKey_data()
{
    QTest::addColumn<QByteArray>("userFile");
    QTest::addColumn<QByteArray>("defaultsFile");
    QTest::addColumn<QString>("expected"); // null: not found

    const QByteArray defaults("[customize]\noperator=common\n[language]\nactive=_en-us\n");
    QTest::newRow("user file has the key")
        << QByteArray("[customize]\noperator=acme\n") << defaults << "acme";
    QTest::newRow("user value is empty")
        << QByteArray("[customize]\noperator=\n") << defaults << "";
    QTest::newRow("user file lacks the key")
        << QByteArray("[language]\nactive=_de\n") << defaults << "common";
    QTest::newRow("no user file") << QByteArray() << defaults << "common";
    QTest::newRow("user file corrupt")
        << QByteArray("[customize]\noperator=acme\nnonsense\n") << defaults << "common";
    QTest::newRow("neither has it")
        << QByteArray("[a]\nb=c\n") << QByteArray("[x]\ny=z\n") << QString();
    QTest::newRow("no defaults file") << QByteArray("[a]\nb=c\n") << QByteArray() << QString();
    QTest::newRow("defaults file corrupt")
        << QByteArray() << QByteArray("[customize]\noperator=common\n[open\n") << QString();
}

void tst_SdkSettings::defaultsApplyOnlyWhereUserFileLacksKey()
{
    QFETCH(QByteArray, userFile);
    QFETCH(QByteArray, defaultsFile);
    QFETCH(QString, expected);
    if (!userFile.isNull())
        QVERIFY(TestFiles::writeFile(m_settingsPath, userFile));
    if (!defaultsFile.isNull())
        QVERIFY(TestFiles::writeAppFile(QStringLiteral("/config/defaults.ini"), defaultsFile));

    long status = -1;
    const QString value =
        getSetting(QStringLiteral("customize"), QStringLiteral("operator"), &status);
    QCOMPARE(value, expected);
    QCOMPARE(status == 0, !expected.isNull());
    // Reading never copies defaults into the user's file.
    QCOMPARE(readBytes(m_settingsPath), userFile.isNull() ? QByteArray() : userFile);
}

void tst_SdkSettings::handWrittenFileIsRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected"); // null: not found

    QTest::newRow("comments and blank lines")
        << QByteArray("; comment\n\n# another\n[g]\n\n; k=no\nk=yes\n") << "g"
        << "k"
        << "yes";
    QTest::newRow("blanks around the parts") << QByteArray("  [g]  \n   k   =   v w   \n") << "g"
                                             << "k"
                                             << "v w";
    QTest::newRow("windows line ends") << QByteArray("[g]\r\nk=v\r\n") << "g"
                                       << "k"
                                       << "v";
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF[g]\nk=v\n") << "g"
                                     << "k"
                                     << "v";
    QTest::newRow("no line end at the end") << QByteArray("[g]\nk=v") << "g"
                                            << "k"
                                            << "v";
    QTest::newRow("key before any group") << QByteArray("k=top\n[g]\nk=v\n") << ""
                                          << "k"
                                          << "top";
    QTest::newRow("repeated key keeps the last") << QByteArray("[g]\nk=1\nk=2\n") << "g"
                                                 << "k"
                                                 << "2";
    QTest::newRow("repeated group is merged") << QByteArray("[g]\na=1\n[h]\nb=2\n[g]\nc=3\n") << "g"
                                              << "a"
                                              << "1";
    QTest::newRow("escapes") << QByteArray("[g]\nk=\\s\\x41\\t\\\\\\n\\s\n") << "g"
                             << "k"
                             << " A\t\\\n ";
    QTest::newRow("value may hold '='") << QByteArray("[g]\nk=a=b\n") << "g"
                                        << "k"
                                        << "a=b";
    QTest::newRow("utf-8 text") << QByteArray("[组]\n键=值 😀\n") << QStringLiteral("组")
                                << QStringLiteral("键") << QStringLiteral("值 😀");
    // A file that cannot be understood as a whole yields no key at all.
    QTest::newRow("corrupt: line without '='") << QByteArray("[g]\nk=v\njunk\n") << "g"
                                               << "k" << QString();
    QTest::newRow("corrupt: unknown escape") << QByteArray("[g]\nk=v\nx=\\q\n") << "g"
                                             << "k" << QString();
    QTest::newRow("corrupt: escape cut off") << QByteArray("[g]\nk=v\nx=a\\\n") << "g"
                                             << "k" << QString();
    QTest::newRow("corrupt: open header") << QByteArray("[g]\nk=v\n[h\n") << "g"
                                          << "k" << QString();
    QTest::newRow("corrupt: escaped closing bracket") << QByteArray("[g]\nk=v\n[h\\]\n") << "g"
                                                      << "k" << QString();
    QTest::newRow("corrupt: NUL escape") << QByteArray("[g]\nk=v\nx=\\x00\n") << "g"
                                         << "k" << QString();
    QTest::newRow("corrupt: invalid utf-8") << QByteArray("[g]\nk=v\nx=\xC3\x28\n") << "g"
                                            << "k" << QString();
    QTest::newRow("corrupt: overlong utf-8") << QByteArray("[g]\nk=v\nx=\xC0\xAF\n") << "g"
                                             << "k" << QString();
    QTest::newRow("corrupt: raw control character") << QByteArray("[g]\nk=v\nx=a\x01z\n") << "g"
                                                    << "k" << QString();
    QTest::newRow("corrupt: encoded surrogate") << QByteArray("[g]\nk=v\nx=\xED\xA0\x80\n") << "g"
                                                << "k" << QString();
}

void tst_SdkSettings::handWrittenFileIsRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    QVERIFY(TestFiles::writeFile(m_settingsPath, file));

    long status = -1;
    QCOMPARE(getSetting(group, key, &status), expected);
    QCOMPARE(status, expected.isNull() ? long(NEXO_ERR_NOT_FOUND) : 0L);
}

void tst_SdkSettings::corruptFileIsKeptAside_data()
{
    QTest::addColumn<QByteArray>("corrupt");
    QTest::newRow("garbage") << QByteArray("this is not a settings file\n");
    QTest::newRow("invalid utf-8") << QByteArray("[g]\nk=\xFF\xFE\n");
    QTest::newRow("open header") << QByteArray("[g]\nold=1\n[broken\n");
    QTest::newRow("binary") << QByteArray("\x00\x01\x02[\x00]=", 8);
}

void tst_SdkSettings::corruptFileIsKeptAside()
{
    QFETCH(QByteArray, corrupt);
    QVERIFY(TestFiles::writeFile(m_settingsPath, corrupt));

    QCOMPARE(setSetting("g", "new", "value"), 0L);

    const QFileInfo info(m_settingsPath);
    const QStringList copies =
        QDir(info.absolutePath()).entryList({info.fileName() + ".corrupt-*"}, QDir::Files);
    QCOMPARE(copies.size(), 1);
    QVERIFY2(QRegularExpression("\\.corrupt-\\d{14}$").match(copies.first()).hasMatch(),
             qPrintable(copies.first()));
    QCOMPARE(readBytes(info.absolutePath() + "/" + copies.first()), corrupt);
    // The new file starts afresh: the new value, nothing of the unreadable content.
    QCOMPARE(readFromCopy("g", "new"), QStringLiteral("value"));
    QCOMPARE(readFromCopy("g", "old"), QString());
    QCOMPARE(readBytes(m_settingsPath), QByteArray("[g]\nnew=value\n"));
}

void tst_SdkSettings::eachCorruptionGetsItsOwnCopy()
{
    const QByteArray first("first corrupt content\n");
    const QByteArray second("second corrupt content\n");
    QVERIFY(TestFiles::writeFile(m_settingsPath, first));
    QCOMPARE(setSetting("g", "k", "1"), 0L);
    QVERIFY(TestFiles::writeFile(m_settingsPath, second));
    QCOMPARE(setSetting("g", "k", "2"), 0L);

    const QFileInfo info(m_settingsPath);
    const QStringList copies =
        QDir(info.absolutePath()).entryList({info.fileName() + ".corrupt-*"}, QDir::Files);
    QCOMPARE(copies.size(), 2);
    QSet<QByteArray> contents;
    for (const QString &copy : copies)
        contents.insert(readBytes(info.absolutePath() + "/" + copy));
    QCOMPARE(contents, (QSet<QByteArray>{first, second}));
    QCOMPARE(getSetting("g", "k"), QStringLiteral("2"));
}

void tst_SdkSettings::corruptFileIsReportedOnceOnStderr()
{
    QVERIFY(TestFiles::writeFile(m_settingsPath, "corrupt\n"));
    QFile::remove(m_scratch.filePath("go"));
    QVERIFY(TestFiles::writeFile(m_scratch.filePath("go"), ""));

    QProcess writer;
    writer.start(QCoreApplication::applicationDirPath() + "/sdk_settings_writer",
                 {"g", "k", "3", m_scratch.filePath("go")});
    QVERIFY(writer.waitForFinished(30000));
    QCOMPARE(writer.exitStatus(), QProcess::NormalExit);
    QCOMPARE(writer.exitCode(), 0);
    const QList<QByteArray> lines = writer.readAllStandardError().trimmed().split('\n');
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().contains(QFile::encodeName(m_settingsPath) + ".corrupt-"),
             lines.first().constData());
    QCOMPARE(getSetting("g", "k2"), QStringLiteral("value-k2"));
}

void tst_SdkSettings::unreadableFileIsNotReplaced()
{
    // A folder where the file should be: it can be neither read nor kept aside.
    QVERIFY(QDir().mkpath(m_settingsPath));
    QVERIFY(TestFiles::writeFile(m_settingsPath + "/inside", "keep me"));

    QVERIFY(setSetting("g", "k", "v") != 0);
    QVERIFY(QFileInfo(m_settingsPath).isDir());
    QCOMPARE(readBytes(m_settingsPath + "/inside"), QByteArray("keep me"));
    long status = 0;
    QCOMPARE(getSetting("g", "k", &status), QString());
    QCOMPARE(status, long(NEXO_ERR_NOT_FOUND));
    QVERIFY(QDir(m_settingsPath).removeRecursively());
}

void tst_SdkSettings::folderThatIsAFileFailsTheWrite()
{
    const QString blocker = m_scratch.filePath("not-a-folder");
    QVERIFY(TestFiles::writeFile(blocker, "plain file"));
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(blocker + "/sub/settings.ini"));

    QCOMPARE(setSetting("g", "k", "v"), long(NEXO_ERR_IO));
    long status = 0;
    getSetting("g", "k", &status);
    QCOMPARE(status, long(NEXO_ERR_NOT_FOUND));
    QCOMPARE(readBytes(blocker), QByteArray("plain file"));
}

void tst_SdkSettings::fileLocation_data()
{
    QTest::addColumn<QString>("linkdeckSettings"); // relative to a scratch folder; null: unset
    QTest::addColumn<QString>("xdgConfigHome");
    QTest::addColumn<QString>("home");
    QTest::addColumn<QString>("expected");
    QTest::newRow("explicit file, created folders") << "a/b/c/mine.ini"
                                                    << "xdg"
                                                    << "home"
                                                    << "a/b/c/mine.ini";
    QTest::newRow("xdg config home") << QString() << "xdg"
                                     << "home"
                                     << "xdg/linkdeck/settings.ini";
    QTest::newRow("empty explicit file falls back") << ""
                                                    << "xdg"
                                                    << "home"
                                                    << "xdg/linkdeck/settings.ini";
    QTest::newRow("no xdg: home/.config") << QString() << QString() << "home"
                                          << "home/.config/linkdeck/settings.ini";
    QTest::newRow("relative xdg is ignored") << QString() << "relative/xdg"
                                             << "home"
                                             << "home/.config/linkdeck/settings.ini";
}

void tst_SdkSettings::fileLocation()
{
    QFETCH(QString, linkdeckSettings);
    QFETCH(QString, xdgConfigHome);
    QFETCH(QString, home);
    QFETCH(QString, expected);
    QTemporaryDir root;
    QVERIFY(root.isValid());
    const auto absolute = [&](const QString &relative) {
        return QFile::encodeName(root.filePath(relative));
    };
    const QByteArray savedSettings = qgetenv("LINKDECK_SETTINGS");
    const QByteArray savedXdg = qgetenv("XDG_CONFIG_HOME");
    const QByteArray savedHome = qgetenv("HOME");
    const bool hadXdg = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");

    if (linkdeckSettings.isNull())
        qunsetenv("LINKDECK_SETTINGS");
    else
        qputenv("LINKDECK_SETTINGS",
                linkdeckSettings.isEmpty() ? QByteArray() : absolute(linkdeckSettings));
    if (xdgConfigHome.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", xdgConfigHome.startsWith("relative") ? xdgConfigHome.toUtf8()
                                                                        : absolute(xdgConfigHome));
    qputenv("HOME", absolute(home));

    const long status = setSetting("where", "am", "I");
    const QString read = getSetting("where", "am");

    qputenv("LINKDECK_SETTINGS", savedSettings);
    qputenv("HOME", savedHome);
    if (hadXdg)
        qputenv("XDG_CONFIG_HOME", savedXdg);
    else
        qunsetenv("XDG_CONFIG_HOME");

    QCOMPARE(status, 0L);
    QCOMPARE(read, QStringLiteral("I"));
    QCOMPARE(readBytes(root.filePath(expected)), QByteArray("[where]\nam=I\n"));
    QCOMPARE(getSetting("where", "am"), QString()); // back on the test's own file
}

void tst_SdkSettings::changeByAnotherWriterIsSeen()
{
    QCOMPARE(setSetting("g", "k", "1"), 0L);
    QCOMPARE(getSetting("g", "k"), QStringLiteral("1"));
    // Same size, replaced by rename as an editor would: only the file's identity tells.
    QSaveFile editor(m_settingsPath);
    QVERIFY(editor.open(QIODevice::WriteOnly));
    editor.write("[g]\nk=2\n");
    QVERIFY(editor.commit());
    QCOMPARE(getSetting("g", "k"), QStringLiteral("2"));
    // Edited in place with another size.
    QVERIFY(TestFiles::writeFile(m_settingsPath, "[g]\nk=three\n"));
    QCOMPARE(getSetting("g", "k"), QStringLiteral("three"));
    QVERIFY(QFile::remove(m_settingsPath));
    QCOMPARE(getSetting("g", "k"), QString());
    // The next write starts from what is on disk, not from what was read before.
    QVERIFY(TestFiles::writeFile(m_settingsPath, "[g]\nother=x\n"));
    QCOMPARE(setSetting("g", "k", "4"), 0L);
    QCOMPARE(readFromCopy("g", "other"), QStringLiteral("x"));
    QCOMPARE(readFromCopy("g", "k"), QStringLiteral("4"));
}

void tst_SdkSettings::writeLeavesNoTemporaryFilesAndKeepsMode()
{
    QCOMPARE(setSetting("g", "k", "1"), 0L);
    QVERIFY(::chmod(QFile::encodeName(m_settingsPath).constData(), 0640) == 0);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(setSetting("g", "k" + QString::number(i), "v"), 0L);

    const QFileInfo info(m_settingsPath);
    QCOMPARE(filesIn(info.absolutePath()),
             (QStringList{info.fileName(), info.fileName() + ".lock"}));
    struct stat st
    {
    };
    QVERIFY(::stat(QFile::encodeName(m_settingsPath).constData(), &st) == 0);
    QCOMPARE(st.st_mode & 0777, 0640u);
}

void tst_SdkSettings::symlinkedFileStaysALink()
{
    // Settings kept elsewhere (a dotfiles folder) and linked into place.
    const QString target = m_scratch.filePath("linked-target.ini");
    QVERIFY(TestFiles::writeFile(target, "[g]\nold=1\n"));
    QVERIFY(QFile::link(target, m_settingsPath));

    QCOMPARE(setSetting("g", "new", "2"), 0L);

    QVERIFY(QFileInfo(m_settingsPath).isSymLink());
    QCOMPARE(readBytes(target), QByteArray("[g]\nold=1\nnew=2\n"));
    QCOMPARE(getSetting("g", "old"), QStringLiteral("1"));
}

void tst_SdkSettings::concurrentThreadsLoseNoKey()
{
    constexpr int threadCount = 4;
    constexpr int keysPerThread = 30;
    std::atomic<int> failures{0};
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([t, &failures, &go] {
            while (!go.load())
                std::this_thread::yield();
            for (int i = 0; i < keysPerThread; ++i) {
                const QString key = QStringLiteral("t%1-%2").arg(t).arg(i);
                if (setSetting("threads", key, key + "-value") != 0)
                    ++failures;
                if (getSetting("threads", key) != key + "-value")
                    ++failures;
            }
        });
    }
    go = true;
    for (std::thread &thread : threads)
        thread.join();

    QCOMPARE(failures.load(), 0);
    for (int t = 0; t < threadCount; ++t) {
        for (int i = 0; i < keysPerThread; ++i) {
            const QString key = QStringLiteral("t%1-%2").arg(t).arg(i);
            QCOMPARE(readFromCopy("threads", key), key + "-value");
        }
    }
}

void tst_SdkSettings::concurrentProcessesLoseNoKey()
{
    constexpr int keysPerProcess = 200;
    const QString go = m_scratch.filePath("start-writers");
    QFile::remove(go);
    const QString writerPath = QCoreApplication::applicationDirPath() + "/sdk_settings_writer";
    QProcess first;
    QProcess second;
    first.start(writerPath, {"procs", "a", QString::number(keysPerProcess), go});
    second.start(writerPath, {"procs", "b", QString::number(keysPerProcess), go});
    QVERIFY(first.waitForStarted());
    QVERIFY(second.waitForStarted());
    QVERIFY(TestFiles::writeFile(go, "")); // both write from now on, at the same time

    // Meanwhile a reader never sees a key vanish again: no torn or half-written file.
    bool seen = false;
    bool vanished = false;
    QDeadlineTimer deadline(60000);
    while ((first.state() != QProcess::NotRunning || second.state() != QProcess::NotRunning) &&
           !deadline.hasExpired()) {
        const bool present = !getSetting("procs", "a0").isNull();
        vanished = vanished || (seen && !present);
        seen = seen || present;
        first.waitForFinished(5);
        second.waitForFinished(5);
    }
    QVERIFY(!vanished);
    QCOMPARE(first.state(), QProcess::NotRunning);
    QCOMPARE(second.state(), QProcess::NotRunning);
    QCOMPARE(first.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(first.exitCode(), 0);
    QCOMPARE(second.exitCode(), 0);
    for (const QString &prefix : {QStringLiteral("a"), QStringLiteral("b")}) {
        for (int i = 0; i < keysPerProcess; ++i) {
            const QString key = prefix + QString::number(i);
            QCOMPARE(getSetting("procs", key), "value-" + key);
        }
    }
}

QTEST_GUILESS_MAIN(tst_SdkSettings)
#include "tst_sdksettings.moc"
