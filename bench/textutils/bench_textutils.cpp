// Times the text helpers against the bare Qt operation they build on, in one run:
//   (a) ParseAndCreateHyperLinks over 10,000 SMS-sized messages next to QString::toHtmlEscaped
//       (target: at most 20 times slower);
//   (b) StatusBarOpListParse::LoadFile of the shipped operator list next to a bare
//       QXmlStreamReader token loop over the same file (target: at most 2 times slower).
// Each side runs several rounds; the fastest round counts.

#include "CommonUtils.h"
#include "StatusBarOpListParse.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QXmlStreamReader>

#include <cstdio>
#include <functional>
#include <limits>

namespace {

// Words, numbers, addresses and non-Latin text in the proportions of everyday messages.
QStringList generateMessages(int count)
{
    const QStringList words = {"hello", "see", "you",     "at",    "the",     "station", "tomorrow",
                               "call",  "me",  "when",    "ready", "balance", "is",      "your",
                               "code",  "OK",  "thanks!", "(ok)",  "price:",  "<3"};
    const QStringList addresses = {"john.doe@example.com",           "www.example.com",
                                   "http://example.org/offer?id=42", "https://m.example.net/x",
                                   "ftp://files.example.com/a.zip",  "WWW.SHOP.COM"};
    const QStringList foreign = {QStringLiteral("\u4F60\u597D"), QStringLiteral("\u5730\u5740"),
                                 QStringLiteral("\u043F\u0440\u0438\u0432\u0435\u0442"),
                                 QStringLiteral("\u0645\u0631\u062D\u0628\u0627"),
                                 QStringLiteral("\u00E9t\u00E9")};
    QRandomGenerator random(4711);
    QStringList messages;
    messages.reserve(count);
    for (int m = 0; m < count; ++m) {
        QString text;
        const int length = random.bounded(40, 161);
        while (text.size() < length) {
            const int kind = random.bounded(100);
            if (!text.isEmpty())
                text += random.bounded(12) == 0 ? QLatin1Char('\n') : QLatin1Char(' ');
            if (kind < 60)
                text += words.at(random.bounded(words.size()));
            else if (kind < 75)
                text += QString::number(random.bounded(100000));
            else if (kind < 85)
                text += addresses.at(random.bounded(addresses.size()));
            else
                text += foreign.at(random.bounded(foreign.size()));
        }
        messages.append(text.left(160));
    }
    return messages;
}

// The fastest of several rounds, in milliseconds.
double bestOf(int rounds, const std::function<void()> &work)
{
    double best = std::numeric_limits<double>::max();
    for (int r = 0; r < rounds; ++r) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

void report(const char *what, double measured, double baseline, double target)
{
    const double ratio = measured / baseline;
    std::printf("%-60s %9.3f ms vs %9.3f ms  ratio %6.2f  (target <= %.0f) %s\n", what, measured,
                baseline, ratio, target, ratio <= target ? "ok" : "ABOVE TARGET");
}

bool benchHyperlinks()
{
    const QStringList messages = generateMessages(10000);
    qint64 sink = 0;
    const double linked = bestOf(5, [&] {
        for (const QString &message : messages)
            sink += CommonUtils::ParseAndCreateHyperLinks(message).size();
    });
    const double escaped = bestOf(5, [&] {
        for (const QString &message : messages)
            sink += message.toHtmlEscaped().size();
    });
    std::printf("(a) %d messages, output characters checksum %lld\n", int(messages.size()),
                static_cast<long long>(sink));
    report("ParseAndCreateHyperLinks vs QString::toHtmlEscaped", linked, escaped, 20);
    return linked / escaped <= 20;
}

bool benchOperatorList()
{
#ifdef LINKDECK_OPERATOR_LIST
    const QString source = QStringLiteral(LINKDECK_OPERATOR_LIST);
#else
    const QString source;
#endif
    const QString dir = QCoreApplication::applicationDirPath() + "/plugins/StatusBarMgrPlugin";
    const QString path = dir + "/OperatorList.xml";
    QDir().mkpath(dir);
    QFile::remove(path);
    if (source.isEmpty() || !QFile::copy(source, path)) {
        std::printf("(b) skipped: no shipped operator list (%s)\n", qPrintable(source));
        return true;
    }

    StatusBarOpListParse *table = StatusBarOpListParse::GetInstance();
    bool loaded = true;
    const int loads = 20;
    const double parsed = bestOf(5, [&] {
        for (int i = 0; i < loads; ++i)
            loaded = table->LoadFile(QStringLiteral("OperatorList.xml")) && loaded;
    });
    qint64 tokens = 0;
    const double bare = bestOf(5, [&] {
        for (int i = 0; i < loads; ++i) {
            QFile file(path);
            file.open(QIODevice::ReadOnly | QIODevice::Text);
            QXmlStreamReader reader(&file);
            while (!reader.atEnd())
                tokens += reader.readNext();
        }
    });
    std::printf("(b) %s, %lld bytes, loaded %s, token checksum %lld\n", qPrintable(path),
                static_cast<long long>(QFileInfo(path).size()), loaded ? "yes" : "NO",
                static_cast<long long>(tokens));
    report("StatusBarOpListParse::LoadFile vs bare QXmlStreamReader loop", parsed / loads,
           bare / loads, 2);
    StatusBarOpListParse::DestroyInstance();
    return loaded && parsed / bare <= 2;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // The table's progress lines would flood the terminal; integrators filter them the same way.
    QLoggingCategory::setFilterRules(QStringLiteral("linkdeck.core.operators.debug=false"));
    // "links" or "operators" runs one part alone (for a profiler); both run by default.
    const QString only = app.arguments().value(1);
    const bool linksOk = only == QLatin1String("operators") || benchHyperlinks();
    const bool operatorsOk = only == QLatin1String("links") || benchOperatorList();
    return linksOk && operatorsOk ? 0 : 1;
}
