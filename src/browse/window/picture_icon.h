#pragma once

#include <QIcon>

/// The icon of a row, from a picture's file and its "@2x" twin: a selected row shows the same picture, where the
/// toolkit would blend it with the selection's colour.
inline QIcon pictureIcon(const QString &file)
{
    QIcon icon(file);
    icon.addFile(file, QSize(), QIcon::Selected);
    return icon;
}
