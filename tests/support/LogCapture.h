#ifndef LINKDECK_TESTS_LOGCAPTURE_H
#define LINKDECK_TESTS_LOGCAPTURE_H

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// Collects every log line written while it lives (from any thread) and forwards nothing.
// Lines are matched exactly or with a time stamp ("hh:mm:ss:zzz: ", or "hh:mm:ss:zzz : " as one
// line has it) taken off the front.
class LogCapture
{
public:
    struct Line
    {
        QtMsgType type;
        QString text;
        QString category;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QList<Line> lines() const;
    QStringList texts() const;
    // The texts with a leading time stamp removed.
    QStringList unstamped() const;
    bool contains(const QString &text) const;
    bool containsUnstamped(const QString &text) const;
    int count(const QString &text) const;
    int countUnstamped(const QString &text) const;
    // True when the given texts appear in this order (others may stand between them).
    bool containsInOrder(const QStringList &texts) const;
    void clear();

    static QString stripStamp(const QString &text);
    static bool hasStamp(const QString &text);

private:
    static void handler(QtMsgType type, const QMessageLogContext &context, const QString &msg);

    mutable QMutex m_mutex;
    QList<Line> m_lines;
    QtMessageHandler m_previous = nullptr;
    LogCapture *m_outer = nullptr;
};

#endif // LINKDECK_TESTS_LOGCAPTURE_H
