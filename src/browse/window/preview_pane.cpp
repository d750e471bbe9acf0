#include "app/window/main_window.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/shown_html.h"
#include "browse/window/header_pane.h"
#include "browse/window/mail_view.h"
#include "dialogs/problem_text.h"

#include <QTreeWidget>

namespace
{
QString shownPart(const QString &text)
{
    const ShownHtml shown = shownHtml(text);
    if (!shown.isCut)
        return shown.html;
    return shown.html + QStringLiteral("<hr><p><i>") +
           QConverterMainWindow::tr("Only the beginning of this long message is shown. All of it is saved.") +
           QStringLiteral("</i></p>");
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
        m_pHeaderPane->appendLine(line);
    // What a message could not be shown for is said in its place. (A worker's problems wait for its end.)
    if (m_run == Run::None && hasProblems())
        m_pHeaderPane->appendLine({problemText(takeProblems())});
    m_pHeaderPane->finish();
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
