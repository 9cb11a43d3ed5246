#ifndef LINKDECK_TESTS_LOGCAPTURE_H
#define LINKDECK_TESTS_LOGCAPTURE_H

#include <QMutex>
#include <QStringList>

// Collects every log line written while it lives (from any thread) and forwards nothing.
// "Unstamped" texts have a leading time stamp ("hh:mm:ss:zzz: " or "hh:mm:ss:zzz : ") removed.
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
    QStringList unstamped() const;
    bool contains(const QString &text) const { return count(text) > 0; }
    bool containsUnstamped(const QString &text) const { return countUnstamped(text) > 0; }
    int count(const QString &text) const { return texts().count(text); }
    int countUnstamped(const QString &text) const { return unstamped().count(text); }
    // True when the given (unstamped) texts appear in this order, others between them allowed.
    bool containsInOrder(const QStringList &texts) const;
    void clear();

    static QString stripStamp(const QString &text);
    static bool hasStamp(const QString &text) { return stripStamp(text) != text; }

private:
    static void handler(QtMsgType type, const QMessageLogContext &context, const QString &msg);

    mutable QMutex m_mutex;
    QList<Line> m_lines;
    QtMessageHandler m_previous = nullptr;
    LogCapture *m_outer = nullptr;
};

#endif // LINKDECK_TESTS_LOGCAPTURE_H
