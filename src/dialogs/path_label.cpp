#include "dialogs/path_label.h"

#include <QPainter>
#include <QTextLayout>
#include <QtMath>

PathLabel::PathLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

int PathLabel::neededHeight(int labelWidth) const
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(QString(text()).replace(QLatin1Char('\n'), QChar::LineSeparator), font());
    layout.setTextOption(option);
    layout.beginLayout();
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(labelWidth);
        height += line.height();
    }
    layout.endLayout();
    return qCeil(height);
}

void PathLabel::paintEvent(QPaintEvent *)
{
    QTextOption option(alignment());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPainter(this).drawText(QRectF(contentsRect()), text(), option);
}
