#include "text/remove_all.h"

void removeAll(QString *text, const QString &piece)
{
    int next = text->indexOf(piece);
    if (next < 0 || piece.isEmpty())
        return;
    QString kept;
    kept.reserve(text->size());
    int from = 0;
    for (; next >= 0; next = text->indexOf(piece, from)) {
        kept.append(text->constData() + from, next - from);
        from = next + piece.size();
    }
    kept.append(text->constData() + from, text->size() - from);
    *text = kept;
}
