#include "ToolBarLogic.h"

#include "LogCapture.h"

#include <QSignalSpy>
#include <QtTest>

namespace {
const QString kSource = QStringLiteral("../../src/core/ToolBar/ToolBarLogic.cpp");
}

class tst_SearchLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void arrowsMoveCursor_data();
    void arrowsMoveCursor();
    void controlKeys_data();
    void controlKeys();
    void otherKeysTyped();
};

void tst_SearchLineEdit::arrowsMoveCursor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("selected");

    QTest::newRow("up moves left") << int(Qt::Key_Up) << Qt::KeyboardModifiers() << 2 << 1 << "";
    QTest::newRow("down moves right")
        << int(Qt::Key_Down) << Qt::KeyboardModifiers() << 2 << 3 << "";
    QTest::newRow("up at the start") << int(Qt::Key_Up) << Qt::KeyboardModifiers() << 0 << 0 << "";
    QTest::newRow("down at the end")
        << int(Qt::Key_Down) << Qt::KeyboardModifiers() << 4 << 4 << "";
    QTest::newRow("shift+up selects left")
        << int(Qt::Key_Up) << Qt::KeyboardModifiers(Qt::ShiftModifier) << 2 << 1 << "b";
    QTest::newRow("shift+down selects right")
        << int(Qt::Key_Down) << Qt::KeyboardModifiers(Qt::ShiftModifier) << 2 << 3 << "c";
}

void tst_SearchLineEdit::arrowsMoveCursor()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, start);
    QFETCH(int, cursor);
    QFETCH(QString, selected);

    SearchLineEdit edit;
    edit.setText(QStringLiteral("abcd"));
    edit.setCursorPosition(start);
    QTest::keyClick(&edit, Qt::Key(key), modifiers);
    QCOMPARE(edit.cursorPosition(), cursor);
    QCOMPARE(edit.selectedText(), selected);
    QCOMPARE(edit.text(), QStringLiteral("abcd"));
}

void tst_SearchLineEdit::controlKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("controlN");
    QTest::addColumn<int>("controlF");
    QTest::addColumn<QString>("logged");

    const Qt::KeyboardModifiers ctrl(Qt::ControlModifier);
    QTest::newRow("ctrl+n") << int(Qt::Key_N) << ctrl << 1 << 0
                            << kSource +
                                   QStringLiteral(
                                       ": keyPressEvent Cntrl N pressed in the Search Edit Box");
    QTest::newRow("ctrl+f") << int(Qt::Key_F) << ctrl << 0 << 1
                            << kSource +
                                   QStringLiteral(
                                       ": keyPressEvent Cntrl F pressed in the Search Edit Box");
    QTest::newRow("ctrl+shift+n")
        << int(Qt::Key_N) << (ctrl | Qt::ShiftModifier) << 1 << 0
        << kSource + QStringLiteral(": keyPressEvent Cntrl N pressed in the Search Edit Box");
    QTest::newRow("n") << int(Qt::Key_N) << Qt::KeyboardModifiers() << 0 << 0 << QString();
    QTest::newRow("alt+f") << int(Qt::Key_F) << Qt::KeyboardModifiers(Qt::AltModifier) << 0 << 0
                           << QString();
    QTest::newRow("ctrl+g") << int(Qt::Key_G) << ctrl << 0 << 0 << QString();
}

void tst_SearchLineEdit::controlKeys()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, controlN);
    QFETCH(int, controlF);
    QFETCH(QString, logged);

    SearchLineEdit edit;
    QSignalSpy spyN(&edit, &SearchLineEdit::controlN);
    QSignalSpy spyF(&edit, &SearchLineEdit::controlF);
    LogCapture log;
    QTest::keyClick(&edit, Qt::Key(key), modifiers);
    QCOMPARE(spyN.count(), controlN);
    QCOMPARE(spyF.count(), controlF);
    if (logged.isEmpty()) {
        QVERIFY(!log.unstamped().join(QLatin1Char('\n')).contains(QLatin1String("Cntrl")));
    } else {
        QVERIFY(log.containsUnstamped(logged));
        QVERIFY(LogCapture::hasStamp(log.texts().constLast()));
    }
}

void tst_SearchLineEdit::otherKeysTyped()
{
    SearchLineEdit edit;
    QSignalSpy spyN(&edit, &SearchLineEdit::controlN);
    QTest::keyClicks(&edit, QStringLiteral("fNn1"));
    QCOMPARE(edit.text(), QStringLiteral("fNn1"));
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QCOMPARE(edit.text(), QStringLiteral("fNn"));
    QCOMPARE(spyN.count(), 0);
}

QTEST_MAIN(tst_SearchLineEdit)
#include "tst_searchlineedit.moc"
