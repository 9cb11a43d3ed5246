// Cost of Change::tr for an identifier that is present, next to the least any translation
// lookup has to do: a two-level QHash lookup under a QMutex. Prints both and their ratio.
#include "Change.h"
#include "CommonUtils.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

const int kIdentifiers = 200;
const int kLookupsPerRound = 200000;
const int kRounds = 15;

QString identifier(int i) { return QStringLiteral("IDS_TEXT_%1").arg(i); }

bool writeLanguageFile(const QString &plugin)
{
    const QString dir = CommonUtils::GetPluginLibraryPath() + "/plugins/" + plugin;
    QDir().mkpath(dir);
    QFile file(dir + "/" + plugin + "_en-us.lang");
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QByteArray xml = "<language>\n";
    for (int i = 0; i < kIdentifiers; ++i)
        xml += "<item name=\"" + identifier(i).toLatin1() + "\">Text number " + QByteArray::number(i) +
               "</item>\n";
    xml += "</language>\n";
    return file.write(xml) == xml.size();
}

template<typename Lookup>
double nanosecondsPerLookup(const QStringList &ids, const QString &plugin, Lookup lookup)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype total = 0;
    for (int n = 0; n < kLookupsPerRound; ++n)
        total += lookup(ids.at(n % ids.size()), plugin).size();
    const double elapsed = double(timer.nsecsElapsed());
    if (total == 0)
        std::fprintf(stderr, "no text found\n");
    return elapsed / kLookupsPerRound;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir settingsDir;
    qputenv("LINKDECK_SETTINGS", QFile::encodeName(settingsDir.filePath("settings.ini")));

    const QString plugin = QStringLiteral("BenchPlugin");
    if (!writeLanguageFile(plugin))
        return 1;
    QStringList ids;
    for (int i = 0; i < kIdentifiers; ++i)
        ids.append(identifier(i));

    // The baseline holds the same texts the language file gives.
    QHash<QString, QHash<QString, QString>> table;
    QMutex mutex;
    for (const QString &id : ids)
        table[plugin][id] = Change::tr(id, plugin);

    const auto bare = [&](const QString &id, const QString &p) {
        QMutexLocker locker(&mutex);
        const auto texts = table.constFind(p);
        return texts == table.constEnd() ? QString() : texts->value(id);
    };
    const auto translated = [](const QString &id, const QString &p) { return Change::tr(id, p); };

    std::vector<double> bareTimes, trTimes;
    for (int round = 0; round < kRounds; ++round) {
        bareTimes.push_back(nanosecondsPerLookup(ids, plugin, bare));
        trTimes.push_back(nanosecondsPerLookup(ids, plugin, translated));
    }
    const double bareNs = median(bareTimes);
    const double trNs = median(trTimes);
    std::printf("bare QHash+QMutex lookup: %8.1f ns\n", bareNs);
    std::printf("Change::tr (present id):  %8.1f ns\n", trNs);
    std::printf("ratio tr / bare:          %8.2f (target <= 1.50)\n", trNs / bareNs);
    return 0;
}
