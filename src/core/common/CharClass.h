#ifndef LINKDECK_CHARCLASS_H
#define LINKDECK_CHARCLASS_H

#include <QChar>
#include <QStringView>

// The two character classes of the text helpers. A character is ASCII when its 8-bit form is not
// zero, so every character up to U+00FF counts (accented Latin-1 letters too) except NUL.
namespace CharClass {

inline bool isAscii(QChar c)
{
    return c.toLatin1() != 0;
}

// Calls visit(run) for each maximal run of characters of one class, in order. An empty text is
// one empty run.
template<typename Visitor>
void forEachRun(QStringView text, Visitor visit)
{
    qsizetype runStart = 0;
    for (qsizetype i = 1; i < text.size(); ++i) {
        if (isAscii(text[i]) != isAscii(text[i - 1])) {
            visit(text.mid(runStart, i - runStart));
            runStart = i;
        }
    }
    visit(text.mid(runStart));
}

} // namespace CharClass

#endif // LINKDECK_CHARCLASS_H
