// The plugin directory read once per loading pass must select exactly the files, in exactly the
// order, that listing the directory with the plugin's name filter selects.
#include "PluginDirectoryListing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestPluginDirectoryListing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void selectsLikeTheNameFilter_data();
    void selectsLikeTheNameFilter();
    void seesTheDirectoryAsItWasWhenRead();

private:
    QStringList filteredListing(const QString &url) const;
    QTemporaryDir m_dir;
};

void TestPluginDirectoryListing::initTestCase()
{
    QVERIFY(m_dir.isValid());
    const QStringList files{"libFoo.so",     "libFoo.so.1", "LIBFOO.so",   "libFooBar.so",
                            "libfoo_low.so", "libF.so",     "libFo[o].so", ".libFoo.so",
                            "notlib.so",     "libFoo-2.so", "libÄrger.so", "libärger.so",
                            "libFoo.txt",    "xlibFoo.so",  "lib.so",      "libFo?.so"};
    for (const QString &name : files) {
        QFile file(m_dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir(m_dir.path()).mkdir(QStringLiteral("libFooDir")));
    QVERIFY(QFile::link(m_dir.filePath(QStringLiteral("libFoo.so")),
                        m_dir.filePath(QStringLiteral("libFooLink.so"))));
    QVERIFY(QFile::link(m_dir.filePath(QStringLiteral("gone.so")),
                        m_dir.filePath(QStringLiteral("libFooBroken.so"))));
}

QStringList TestPluginDirectoryListing::filteredListing(const QString &url) const
{
    QDir dir(m_dir.path());
    dir.setNameFilters(QStringList(QStringLiteral("lib") + url + QLatin1Char('*')));
    QStringList files;
    for (const QString &name : dir.entryList(QDir::Files, QDir::NoSort))
        files.append(dir.absoluteFilePath(name));
    return files;
}

void TestPluginDirectoryListing::selectsLikeTheNameFilter_data()
{
    QTest::addColumn<QString>("url");
    for (const char *url : {"Foo", "foo", "FOO", "Fo", "F", "", "Foo.so", "FooBar", "Missing",
                            "Ärger", "ärger", "Fo?", "Fo*", "Fo[o]", "F*o", "Foo.so.1", "FooDir"})
        QTest::newRow(url) << QString::fromUtf8(url);
}

void TestPluginDirectoryListing::selectsLikeTheNameFilter()
{
    QFETCH(QString, url);
    const PluginDirectoryListing listing{QDir(m_dir.path())};
    QCOMPARE(listing.filesFor(url), filteredListing(url));
}

void TestPluginDirectoryListing::seesTheDirectoryAsItWasWhenRead()
{
    const PluginDirectoryListing listing{QDir(m_dir.path())};
    const QString late = m_dir.filePath(QStringLiteral("libLate.so"));
    QFile file(late);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(listing.filesFor(QStringLiteral("Late")).isEmpty());
    QCOMPARE(PluginDirectoryListing(QDir(m_dir.path())).filesFor(QStringLiteral("Late")),
             QStringList{late});
    QVERIFY(QFile::remove(late));
}

QTEST_GUILESS_MAIN(TestPluginDirectoryListing)
#include "tst_plugindirectorylisting.moc"
