#include "browse/window/header_pane.h"

#include "platform/window/focus_frame.h"
#include "platform/window/text_fit.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QToolTip>

namespace
{
constexpr int paneHeight = 110;    ///< pixels
constexpr int emptyLineHeight = 4; ///< pixels
constexpr int markWidth = 10;      ///< pixels
} // namespace

HeaderPane::HeaderPane(QWidget *parent) : QTextBrowser(parent)
{
    setReadOnly(true);
    setAcceptRichText(false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFocusPolicy(Qt::StrongFocus);
    setFont(lucidaFont(11));
    setFixedHeight(paneHeight);
    document()->setDocumentMargin(1); // six lines just fit
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *copy = new QAction(tr("&Copy"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, &HeaderPane::copyAll);
    addAction(copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, viewport(), QOverload<>::of(&QWidget::update));
}

void HeaderPane::appendLine(const HeaderLine &line)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    if (!document()->isEmpty())
        cursor.insertBlock();
    QTextCharFormat format;
    format.setFontWeight(line.bold ? QFont::Bold : QFont::Normal);
    cursor.insertText(line.text, format);
}

void HeaderPane::finish()
{
    QTextBlockFormat low;
    low.setLineHeight(emptyLineHeight, QTextBlockFormat::FixedHeight);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        if (block.text().isEmpty())
            QTextCursor(block).mergeBlockFormat(low);
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
}

void HeaderPane::focusInEvent(QFocusEvent *event)
{
    QTextBrowser::focusInEvent(event);
    viewport()->update(); // its frame
}

void HeaderPane::focusOutEvent(QFocusEvent *event)
{
    QTextBrowser::focusOutEvent(event);
    viewport()->update();
}

bool HeaderPane::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTextBrowser::viewportEvent(event);
    const bool isWhole = verticalScrollBar()->maximum() == 0;
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       isWhole ? QString() : Qt::convertFromPlainText(toPlainText(), Qt::WhiteSpaceNormal),
                       this);
    return true;
}

void HeaderPane::copyAll() const
{
    QGuiApplication::clipboard()->setText(toPlainText().trimmed());
}

// A small arrow in the corner where the text goes on below.
void HeaderPane::paintEvent(QPaintEvent *event)
{
    QTextBrowser::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(viewport());
        drawFocusFrame(&painter, viewport()->rect(), palette().color(QPalette::Highlight));
    }
    if (verticalScrollBar()->value() >= verticalScrollBar()->maximum())
        return;
    const QRect place = viewport()->rect();
    const bool leansRight = document()->begin().textDirection() == Qt::RightToLeft; // by what it says
    const int left = leansRight ? place.left() + 4 : place.right() - markWidth - 4;
    const int top = place.bottom() - markWidth / 2 - 3;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(left - 3, top - 4, markWidth + 6, markWidth / 2 + 8, palette().base());
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().text());
    painter.drawPolygon(
        QPolygon({{left, top}, {left + markWidth, top}, {left + markWidth / 2, top + markWidth / 2}}));
}

void HeaderPane::keyPressEvent(QKeyEvent *event)
{
    using Action = QAbstractSlider::SliderAction;
    const QHash<int, Action> scrolls = {
        {Qt::Key_Up, Action::SliderSingleStepSub},   {Qt::Key_Down, Action::SliderSingleStepAdd},
        {Qt::Key_PageUp, Action::SliderPageStepSub}, {Qt::Key_PageDown, Action::SliderPageStepAdd},
        {Qt::Key_Home, Action::SliderToMinimum},     {Qt::Key_End, Action::SliderToMaximum}};
    if (scrolls.contains(event->key()))
        verticalScrollBar()->triggerAction(scrolls.value(event->key()));
    else
        QTextBrowser::keyPressEvent(event);
}
