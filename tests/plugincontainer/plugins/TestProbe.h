#ifndef LINKDECK_TESTS_TESTPROBE_H
#define LINKDECK_TESTS_TESTPROBE_H

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QtGlobal>

#if defined(TESTPROBE_LIBRARY)
#define TESTPROBE_EXPORT Q_DECL_EXPORT
#else
#define TESTPROBE_EXPORT Q_DECL_IMPORT
#endif

class QThread;

// Process-wide notebook shared by the test plugins and the tests: plugins write down what is done
// to them ("Initialize:Alpha") and read the options a test sets for them.
namespace TestProbe {

TESTPROBE_EXPORT void record(const QString &event);
TESTPROBE_EXPORT QStringList events();
// Events beginning with prefix, in order.
TESTPROBE_EXPORT QStringList events(const QString &prefix);
TESTPROBE_EXPORT void setOption(const QString &key, const QVariant &value);
TESTPROBE_EXPORT QVariant option(const QString &key, const QVariant &fallback = QVariant());
// Remembers the calling thread under a name.
TESTPROBE_EXPORT void noteThread(const QString &what);
TESTPROBE_EXPORT QThread *thread(const QString &what);
// Forgets events, options and threads.
TESTPROBE_EXPORT void reset();

} // namespace TestProbe

#endif // LINKDECK_TESTS_TESTPROBE_H
