// Turns mobile-broadband-provider-info's serviceproviders.xml into the status bar's
// OperatorList.xml.
//   mbpi2operatorlist <serviceproviders.xml> <OperatorList.xml>

#include "OperatorTable.h"
#include "ProviderDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

namespace {

int fail(const QString &message)
{
    QTextStream(stderr) << "mbpi2operatorlist: " << message << '\n';
    return 1;
}

int pairCount(const OperatorTable &table)
{
    int count = 0;
    for (const OperatorRegion &region : table.regions)
        count += region.items.size();
    return count;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3)
        return fail(QStringLiteral("usage: mbpi2operatorlist <serviceproviders.xml> "
                                   "<OperatorList.xml>"));
    const QString inputPath = args.at(1);
    const QString outputPath = args.at(2);

    QFile input(inputPath);
    if (!input.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1: %2 (the file comes with the package "
                                   "mobile-broadband-provider-info)")
                        .arg(inputPath, input.errorString()));
    ProviderDatabase database;
    QString errorText;
    if (!readProviderDatabase(&input, database, errorText))
        return fail(QStringLiteral("%1: %2").arg(inputPath, errorText));

    const OperatorTable table = buildOperatorTable(database);
    if (table.regions.isEmpty())
        return fail(QStringLiteral("%1 names no GSM network").arg(inputPath));

    QDir().mkpath(QFileInfo(outputPath).absolutePath());
    QSaveFile output(outputPath);
    if (!output.open(QIODevice::WriteOnly) ||
        !writeOperatorList(table, &output, QFileInfo(inputPath).fileName()) || !output.commit())
        return fail(QStringLiteral("cannot write %1: %2").arg(outputPath, output.errorString()));

    QTextStream(stdout) << "mbpi2operatorlist: " << pairCount(table) << " networks of "
                        << table.regions.size() << " countries, " << table.mccOnly.size()
                        << " country codes -> " << outputPath << '\n';
    return 0;
}
