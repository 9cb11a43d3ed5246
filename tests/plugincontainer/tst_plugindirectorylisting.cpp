// The plugin directory read once per loading pass must select exactly the files, in exactly the
// order, that listing the directory with the plugin's name filter selects.
#include "PluginDirectoryListing.h"

#include <QTemporaryDir>
#include <QtTest>

class TestPluginDirectoryListing : public QObject
{
    Q_OBJECT

private slots:
    void selectsLikeTheNameFilterAndKeepsItsSnapshot()
    {
        QTemporaryDir tmp;
        QDir dir(tmp.path());
        for (const char *name : {"libFoo.so", "libFoo.so.1", "LIBFOO.so", "libFooBar.so", "libF.so",
                                 "libFo[o].so", ".libFoo.so", "notlib.so", "libFoo-2.so",
                                 "libÄrger.so", "libärger.so", "libFoo.txt", "lib.so", "libFo?.so"})
            QVERIFY(QFile(dir.filePath(QString::fromUtf8(name))).open(QIODevice::WriteOnly));
        QVERIFY(dir.mkdir(QStringLiteral("libFooDir")));
        QVERIFY(QFile::link(dir.filePath("libFoo.so"), dir.filePath("libFooLink.so")));
        QVERIFY(QFile::link(dir.filePath("gone.so"), dir.filePath("libFooBroken.so")));

        const PluginDirectoryListing listing{dir};
        for (const char *url : {"Foo", "foo", "Fo", "", "Foo.so", "Missing", "Ärger", "ärger",
                                "Fo?", "Fo*", "Fo[o]", "F*o", "FooDir"}) {
            dir.setNameFilters({"lib" + QString::fromUtf8(url) + '*'});
            QStringList expected;
            for (const QString &name : dir.entryList(QDir::Files, QDir::NoSort))
                expected.append(dir.absoluteFilePath(name));
            QVERIFY2(listing.filesFor(QString::fromUtf8(url)) == expected, url);
        }

        // A file added later is seen by the next listing only.
        QVERIFY(QFile(dir.filePath("libLate.so")).open(QIODevice::WriteOnly));
        QVERIFY(listing.filesFor(QStringLiteral("Late")).isEmpty());
        QCOMPARE(PluginDirectoryListing(dir).filesFor(QStringLiteral("Late")).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestPluginDirectoryListing)
#include "tst_plugindirectorylisting.moc"
