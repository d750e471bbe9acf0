#include "browse/shown_html.h"

#include <QHash>

#include <algorithm>

namespace
{
// Elements that hold nothing, or that the next of their kind ends: a long list of them is not deep.
constexpr const char *shallow[] = {"area",   "base",  "br", "col",   "dd",   "dt",     "embed", "hr",
                                   "img",    "input", "li", "link",  "meta", "option", "p",     "param",
                                   "source", "tbody", "td", "tfoot", "th",   "thead",  "tr",    "wbr"};

bool isLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool endsName(QChar c)
{
    return c.isSpace() || c == QLatin1Char('/') || c == QLatin1Char('>');
}

bool isShallow(const QString &name)
{
    return std::any_of(std::begin(shallow), std::end(shallow),
                       [&](const char *element) { return name == QLatin1String(element); });
}

// The elements that are open. An end tag closes one of its name, wherever that lies: what a browser might leave open
// stays counted.
class Depth
{
public:
    void open(const QString &name)
    {
        if (isShallow(name))
            return;
        ++m_open[name];
        ++m_depth;
    }
    void close(const QString &name)
    {
        const auto found = m_open.find(name);
        if (found == m_open.end() || *found == 0)
            return;
        --*found;
        --m_depth;
    }
    int value() const { return m_depth; }

private:
    QHash<QString, int> m_open;
    int m_depth = 0;
};
} // namespace

ShownHtml shownHtml(const QString &html)
{
    ShownHtml shown{html.left(shownCharacters), html.size() > shownCharacters};
    QString &text = shown.html;
    Depth depth;
    for (int at = text.indexOf(QLatin1Char('<')); at >= 0; at = text.indexOf(QLatin1Char('<'), at + 1)) {
        const bool isEnd = at + 1 < text.size() && text.at(at + 1) == QLatin1Char('/');
        const int begin = at + (isEnd ? 2 : 1);
        if (begin >= text.size() || !isLetter(text.at(begin)))
            continue;
        int end = begin;
        while (end < text.size() && !endsName(text.at(end)) && end - begin < 64)
            ++end;
        const QString name = text.mid(begin, end - begin).toLower();
        if (name == QLatin1String("use"))
            text.insert(begin, QLatin1String("no-"));
        else if (isEnd)
            depth.close(name);
        else
            depth.open(name);
        if (depth.value() > shownDepth) {
            text.truncate(at);
            shown.isCut = true;
        }
    }
    return shown;
}
