#include "LogCapture.h"

#include <QMutexLocker>
#include <QRegularExpression>

namespace {
LogCapture *s_active = nullptr;
QMutex s_activeMutex;
const QRegularExpression &stampPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d ?: "));
    return pattern;
}
} // namespace

LogCapture::LogCapture()
{
    QMutexLocker locker(&s_activeMutex);
    m_outer = s_active;
    s_active = this;
    m_previous = qInstallMessageHandler(&LogCapture::handler);
}

LogCapture::~LogCapture()
{
    QMutexLocker locker(&s_activeMutex);
    s_active = m_outer;
    qInstallMessageHandler(m_previous);
}

void LogCapture::handler(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    QMutexLocker activeLocker(&s_activeMutex);
    if (!s_active)
        return;
    QMutexLocker locker(&s_active->m_mutex);
    s_active->m_lines.append({type, msg, QString::fromLatin1(context.category)});
}

QList<LogCapture::Line> LogCapture::lines() const
{
    QMutexLocker locker(&m_mutex);
    return m_lines;
}

QStringList LogCapture::texts() const
{
    QStringList result;
    for (const Line &line : lines())
        result.append(line.text);
    return result;
}

QStringList LogCapture::unstamped() const
{
    QStringList result;
    for (const Line &line : lines())
        result.append(stripStamp(line.text));
    return result;
}

bool LogCapture::contains(const QString &text) const
{
    return count(text) > 0;
}

bool LogCapture::containsUnstamped(const QString &text) const
{
    return countUnstamped(text) > 0;
}

int LogCapture::count(const QString &text) const
{
    return texts().count(text);
}

int LogCapture::countUnstamped(const QString &text) const
{
    return unstamped().count(text);
}

bool LogCapture::containsInOrder(const QStringList &wanted) const
{
    int next = 0;
    for (const QString &text : unstamped()) {
        if (next < wanted.size() && text == wanted.at(next))
            ++next;
    }
    return next == wanted.size();
}

void LogCapture::clear()
{
    QMutexLocker locker(&m_mutex);
    m_lines.clear();
}

QString LogCapture::stripStamp(const QString &text)
{
    const QRegularExpressionMatch match = stampPattern().match(text);
    return match.hasMatch() ? text.mid(match.capturedLength()) : text;
}

bool LogCapture::hasStamp(const QString &text)
{
    return stampPattern().match(text).hasMatch();
}
