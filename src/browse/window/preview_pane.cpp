#include "app/window/main_window.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/olm_preview.h"
#include "browse/window/mail_view.h"
#include "dialogs/problem_text.h"

#include <QScrollBar>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTreeWidget>

namespace
{
// The web view lays out some four million characters a second, and nothing else can be done meanwhile.
constexpr int shownCharacters = 256 * 1024;

QString shownPart(const QString &html)
{
    if (html.size() <= shownCharacters)
        return html;
    return html.left(shownCharacters) + QStringLiteral("<hr><p><i>") +
           QConverterMainWindow::tr("Only the beginning of this long message is shown. All of it is saved.") +
           QStringLiteral("</i></p>");
}

// As QTextEdit::append, but foreign text is never taken as markup.
void appendPlain(QTextBrowser *pane, const HeaderLine &line)
{
    QTextCursor cursor(pane->document());
    cursor.movePosition(QTextCursor::End);
    if (!pane->document()->isEmpty())
        cursor.insertBlock();
    QTextCharFormat format;
    format.setFontWeight(line.bold ? QFont::Bold : QFont::Normal);
    cursor.insertText(line.text, format);
}
} // namespace

void QConverterMainWindow::OnMessageSubjectKey()
{
    const QList<QTreeWidgetItem *> selected = m_pMessageList->selectedItems();
    if (!selected.isEmpty())
        ShowindivisualMailItemsCenter(selected.first(), 0);
}

void QConverterMainWindow::ShowindivisualMailItemsCenter(QTreeWidgetItem *item, int column)
{
    m_pSecondPane->clear();
    if (bOlmFileFound)
        OnMessageSubjectClicked(item, column);
    else if (bMboxFileFound)
        OnWebViewForMboxFileInHTML(item->text(2), item->text(3), item->text(4));
    else
        OnWebViewInHTML(item->text(2));
}

void QConverterMainWindow::OnMessageSubjectClicked(QTreeWidgetItem *item, int)
{
    if (!item)
        return;
    if (const std::optional<PreviewText> preview = previewOfOlmMessage(item->text(3), item->text(4)))
        showPreview(*preview);
}

void QConverterMainWindow::OnWebViewForMboxFileInHTML(const QString &path, const QString &offset,
                                                      const QString &length)
{
    showPreview(previewOfMailboxMessage(path, offset, length));
}

void QConverterMainWindow::OnWebViewInHTML(const QString &path)
{
    showPreview(previewOfFile(path));
}

void QConverterMainWindow::showPreview(const PreviewText &preview)
{
    clearPreview();
    for (const HeaderLine &line : preview.header)
        appendPlain(m_pHeaderPane, line);
    // What a message could not be shown for is said in its place. (A worker's problems wait for its end.)
    if (m_run == Run::None && hasProblems())
        appendPlain(m_pHeaderPane, {problemText(takeProblems())});
    m_pHeaderPane->moveCursor(QTextCursor::Start);
    m_pHeaderPane->verticalScrollBar()->setValue(0);
    if (!preview.html)
        return;
    // Shown before it is filled: the other way round a text is laid out twice, which a long one makes felt.
    m_pWebView->show();
    m_pWebView->setHtml(shownPart(*preview.html), QUrl());
}

void QConverterMainWindow::clearPreview()
{
    m_pHeaderPane->clear();
    m_pSecondPane->clear();
    m_pWebView->hide();
    m_pWebView->setHtml(QString());
}
