#include "CommonUtils.h"

#include "CharClass.h"

#include <QRegExp>

// The markup is used exactly as the labels have always received it: blanks inside "<a href = ",
// no quotes around the target.
namespace {

const QLatin1String kAnchorOpen("<a href = ");
const QLatin1String kTagEnd(">");
const QLatin1String kAnchorClose("</a>");
const QLatin1String kHttpScheme("http://");
const QLatin1String kHttpsScheme("https://");
const QLatin1String kFtpScheme("ftp://");
const QLatin1String kMailScheme("mailto:");
const QLatin1String kWebPrefix("www.");
const QLatin1String kNbsp("&nbsp;");
const QChar kLineFeed('\n');

QString anchor(QLatin1String scheme, const QString &address)
{
    QString html;
    html.reserve(kAnchorOpen.size() + scheme.size() + 2 * address.size() + kTagEnd.size() +
                 kAnchorClose.size());
    html += kAnchorOpen;
    html += scheme;
    html += address;
    html += kTagEnd;
    html += address;
    html += kAnchorClose;
    return html;
}

QString escapeAngleBrackets(QStringView run)
{
    QString escaped = run.toString();
    if (run.contains(QLatin1Char('<')))
        escaped.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    if (run.contains(QLatin1Char('>')))
        escaped.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    return escaped;
}

bool hasSchemeFollowedByLetterOrDigit(const QString &text, QLatin1String scheme)
{
    return text.startsWith(scheme, Qt::CaseInsensitive) && text.size() > scheme.size() &&
           text.at(scheme.size()).isLetterOrNumber();
}

// The patterns cannot match without an "@" or a "://"; skipping them then changes nothing.
bool isEmailAddress(const QString &text)
{
    return text.contains(QLatin1Char('@')) && CommonUtils::CheckForEmailAddr(text);
}

bool isHttpAddress(const QString &text)
{
    return text.contains(QLatin1String("://")) && CommonUtils::CheckForHttpAddr(text);
}

// An address with "www." twice is left to the other rules.
bool isWebAddress(const QString &text)
{
    return text.startsWith(kWebPrefix, Qt::CaseInsensitive) && CommonUtils::CheckForWebAddr(text) &&
           text.count(kWebPrefix) < 2;
}

// A run that begins with a line feed: the line feed stays in front of the anchor. Every web
// address, https ones included, gets "http://" in front of it, so an address with its own scheme
// has it twice in the target; the labels' users rely on this output. A word that is no address
// keeps its line feed and is not escaped.
QString linkRunAfterLineFeed(QStringView run, QString escaped)
{
    escaped.remove(kLineFeed);
    if (isEmailAddress(escaped))
        return kLineFeed + anchor(kMailScheme, escaped);
    if (isWebAddress(escaped) || isHttpAddress(escaped))
        return kLineFeed + anchor(kHttpScheme, escaped);
    return run.toString();
}

// Appends the run with "<" and ">" escaped.
void appendEscaped(QString &out, QStringView run)
{
    qsizetype plainStart = 0;
    for (qsizetype i = 0; i < run.size(); ++i) {
        const QChar c = run[i];
        if (c != QLatin1Char('<') && c != QLatin1Char('>'))
            continue;
        out += run.mid(plainStart, i - plainStart);
        out += c == QLatin1Char('<') ? QLatin1String("&lt;") : QLatin1String("&gt;");
        plainStart = i + 1;
    }
    out += run.mid(plainStart);
}

// Most runs are plain words: without an "@", a leading line feed, "www." or a scheme no rule
// can apply, and the run comes out escaped. (Escaping changes neither these tests nor, for a
// run that passes them, the first characters.)
bool mayBeLink(QStringView run)
{
    if (run.contains(QLatin1Char('@')))
        return true;
    switch (run.isEmpty() ? 0 : run.front().unicode()) {
    case '\n':
        return true;
    case 'w':
    case 'W':
        return run.startsWith(kWebPrefix, Qt::CaseInsensitive);
    case 'h':
    case 'H':
        return run.startsWith(kHttpScheme, Qt::CaseInsensitive) ||
               run.startsWith(kHttpsScheme, Qt::CaseInsensitive);
    case 'f':
    case 'F':
        return run.startsWith(kFtpScheme, Qt::CaseInsensitive);
    default:
        return false;
    }
}

// An ASCII run of a token. (An e-mail match never begins with a line feed, so the e-mail anchor
// never needs one in front of it.)
void appendLinkedAsciiRun(QString &out, QStringView run)
{
    if (!mayBeLink(run)) {
        appendEscaped(out, run);
        return;
    }
    const QString escaped = escapeAngleBrackets(run);
    if (isEmailAddress(escaped))
        out += anchor(kMailScheme, escaped);
    else if (escaped.startsWith(kLineFeed))
        out += linkRunAfterLineFeed(run, escaped);
    else if (isWebAddress(escaped))
        out += anchor(kHttpScheme, escaped);
    else
        out += CommonUtils::createLinkForHttpAndFtp(escaped);
}

// A link ends where the character class changes: non-ASCII runs pass through untouched.
void appendLinkedToken(QString &out, QStringView token)
{
    CharClass::forEachRun(token, [&out](QStringView run) {
        if (!run.isEmpty() && !CharClass::isAscii(run.front()))
            out += run;
        else
            appendLinkedAsciiRun(out, run);
    });
}

// Tokens are separated by blanks and by "&nbsp;" already in the text; every separator comes out
// as "&nbsp;". A line feed gets a blank in front of it, so it comes out as "&nbsp;" and begins
// the next token.
QString linkLine(const QString &line)
{
    QString out;
    out.reserve(2 * line.size() + 64);
    const QStringView text(line);
    qsizetype tokenStart = 0;
    auto endToken = [&](qsizetype end, qsizetype nextStart) {
        appendLinkedToken(out, text.mid(tokenStart, end - tokenStart));
        out += kNbsp;
        tokenStart = nextStart;
    };
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i];
        if (c == QLatin1Char(' ')) {
            endToken(i, i + 1);
            i += 1;
        } else if (c == kLineFeed) {
            endToken(i, i);
            i += 1;
        } else if (c == QLatin1Char('&') && text.mid(i).startsWith(kNbsp)) {
            endToken(i, i + kNbsp.size());
            i += kNbsp.size();
        } else {
            i += 1;
        }
    }
    appendLinkedToken(out, text.mid(tokenStart));
    return out;
}

} // namespace

// Each thread compiles the expressions once: a QRegExp keeps match state and cannot be shared.

bool CommonUtils::CheckForEmailAddr(QString strText)
{
    thread_local const QRegExp pattern(
        QStringLiteral("^[\\w-]+(\\.[\\w-]+)*@[\\w-]+(\\.[\\w-]+)+$"), Qt::CaseSensitive);
    return pattern.exactMatch(strText);
}

bool CommonUtils::CheckForWebAddr(QString strText)
{
    thread_local const QRegExp pattern(
        QStringLiteral("^([a-z0-9]+\\.)*[a-z0-9]+(\\.[a-z]{2,6}){1,2}$"), Qt::CaseSensitive);
    return pattern.exactMatch(strText);
}

// The scheme part is a character set, kept as it has always been written: any run of h, t, p, s
// and "|" passes (ftp does not), and the tail admits only characters up to U+00FF.
bool CommonUtils::CheckForHttpAddr(QString strText)
{
    thread_local const QRegExp pattern(QStringLiteral("^[http|https]+://[\\0-\\0377]*$"),
                                       Qt::CaseInsensitive);
    return pattern.exactMatch(strText);
}

QString CommonUtils::createLinkForHttpAndFtp(QString strWord)
{
    QString prefix;
    if (strWord.startsWith(kLineFeed)) {
        prefix = kLineFeed;
        strWord.remove(kLineFeed);
    }
    const bool isLink =
        (hasSchemeFollowedByLetterOrDigit(strWord, kHttpScheme) && CheckForHttpAddr(strWord)) ||
        (hasSchemeFollowedByLetterOrDigit(strWord, kHttpsScheme) && CheckForHttpAddr(strWord)) ||
        hasSchemeFollowedByLetterOrDigit(strWord, kFtpScheme);
    if (!isLink)
        return prefix + strWord;
    return prefix + anchor(QLatin1String(), strWord);
}

QString CommonUtils::ParseAndCreateHyperLinks(QString strText)
{
    bool bFlag = false;
    QString result;
    const QStringList lines = SplitAsciiString(strText, bFlag);
    for (const QString &line : lines)
        result += linkLine(line);
    return result;
}
