#include "dialogs/report_dialog.h"

#include "app/shared_state.h"
#include "dialogs/problem_text.h"
#include "platform/window/open_url.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace
{
QString number(qint64 value)
{
    return QLocale().toString(value);
}

// The mailboxes of a save that was stopped, by whether all their messages stand in them.
QStringList mailboxesByWholeness(const SaveLedger &ledger)
{
    QStringList whole;
    QStringList cut;
    for (const FolderCount &folder : ledger.folders())
        (folder.leftOut > 0 ? cut : whole) += folder.mailboxes;
    QStringList lines;
    for (const QString &mailbox : qAsConst(whole))
        if (!cut.contains(mailbox))
            lines.append(ReportDialog::tr("Whole: %1").arg(mailbox));
    for (const QString &mailbox : qAsConst(cut))
        lines.append(ReportDialog::tr("Not whole: %1").arg(mailbox));
    return lines;
}

} // namespace

ReportDialog::ReportDialog(const SaveReport &report, const SaveLedger &ledger, const QStringList &problems,
                           QWidget *parent)
    : QDialog(parent),
      m_text(wholeReportText(report, ledger)),
      m_folder(QFileInfo(report.bundle).absolutePath())
{
    setObjectName(QStringLiteral("ReportDialog"));
    setWindowTitle(tr("Report"));
    setModal(true);
    QStringList lines = reportSentences(report, ledger);
    QStringList more = problems;
    if (report.end == SaveReport::End::Stopped)
        more = mailboxesByWholeness(ledger) + more;
    lines += more;
    for (const LeftOutItem &item : ledger.leftOutItems())
        if (!item.path.isEmpty() && !item.text.isEmpty())
            lines.append(item.path + QStringLiteral(": ") + item.text);
    lines.removeDuplicates();
    if (!more.isEmpty())
        m_text += QLatin1Char('\n') + more.join(QLatin1Char('\n')) + QLatin1Char('\n');

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    QPushButton *save = buttons->addButton(tr("&Save as Text ..."), QDialogButtonBox::ActionRole);
    QPushButton *open = buttons->addButton(tr("&Open Folder"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &ReportDialog::copyText);
    connect(save, &QPushButton::clicked, this, &ReportDialog::saveText);
    connect(open, &QPushButton::clicked, this, [this] { openUrl(QUrl::fromLocalFile(m_folder)); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(newTable(ledger), 3);
    layout->addWidget(newText(lines), 2);
    layout->addWidget(buttons);
    resize(680, 480);
}

QTreeWidget *ReportDialog::newTable(const SaveLedger &ledger)
{
    auto *table = new QTreeWidget(this);
    table->setObjectName(QStringLiteral("folderTable"));
    table->setAccessibleName(tr("Folders"));
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setAlternatingRowColors(true);
    table->setTextElideMode(Qt::ElideLeft); // a path tells most at its end
    table->setHeaderLabels(
        {tr("Folder"), tr("Found"), tr("Written"), tr("Joined"), tr("Left out"), tr("Changed")});
    const auto addRow = [table](const QString &name, const FolderCount &count) {
        auto *row =
            new QTreeWidgetItem(table, {name, number(count.found), number(count.written),
                                        number(count.joined), number(count.leftOut), number(count.changed)});
        row->setToolTip(0, (QStringList(name) + count.mailboxes).join(QLatin1Char('\n')));
        for (int column = 1; column < table->columnCount(); ++column)
            row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        return row;
    };
    for (const FolderCount &folder : ledger.folders())
        addRow(folder.tree, folder);
    QTreeWidgetItem *total = addRow(tr("All folders"), ledger.total());
    QFont bold = table->font();
    bold.setBold(true);
    for (int column = 0; column < table->columnCount(); ++column)
        total->setFont(column, bold);
    for (int column = 1; column < table->columnCount(); ++column)
        table->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    table->header()->setStretchLastSection(false);
    table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    return table;
}

QPlainTextEdit *ReportDialog::newText(const QStringList &lines)
{
    auto *text = new QPlainTextEdit(lines.join(QLatin1Char('\n')), this);
    text->setObjectName(QStringLiteral("reasons"));
    text->setAccessibleName(tr("Reasons"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return text;
}

void ReportDialog::copyText() const
{
    QGuiApplication::clipboard()->setText(m_text);
}

void ReportDialog::saveText()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save as Text"), m_folder + QLatin1Char('/') + tr("Report") + QStringLiteral(".txt"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_text.toUtf8()) < 0 || !file.commit())
        showBox(this, QMessageBox::Warning, tr("Report"),
                tr("The report can't be saved: %1: %2").arg(path, file.errorString()));
}

QStringList closingNumbers(const SaveReport &report, const SaveLedger &ledger)
{
    const FolderCount &total = ledger.total();
    QString numbers =
        ReportDialog::tr("Messages: %1 found, %2 written").arg(number(total.found), number(total.written));
    if (total.joined > 0)
        numbers += ReportDialog::tr(", %1 joined to the one before").arg(number(total.joined));
    if (total.leftOut > 0)
        numbers += ReportDialog::tr(", %1 left out").arg(number(total.leftOut));
    QStringList lines{numbers};
    if (report.end == SaveReport::End::Stopped)
        lines += ReportDialog::tr("The report tells which mailboxes are whole.");
    const qint64 changed = total.changed;
    if (changed > 0 && bExactCopies)
        lines += ReportDialog::tr("Changed: %1, see the report.").arg(number(changed));
    else if (changed > 0)
        lines += ReportDialog::tr("Changed: %1. Exact copies keep them as they are.").arg(number(changed));
    return lines;
}

QString checkSentence(const BundleCheck &check)
{
    if (check.stopped)
        return ReportDialog::tr("The result was not read to its end again.");
    if (!check.differences.isEmpty())
        return ReportDialog::tr("Read again: %n difference(s), see the report.", nullptr,
                                check.differences.size());
    return ReportDialog::tr("Read again: %n mailbox(es), all as written.", nullptr,
                            static_cast<int>(check.mailboxes));
}
