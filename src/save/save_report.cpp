#include "save/save_report.h"

#include "app/passed_over.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace
{
// In the order of LeftOutReason.
constexpr const char *reasonTexts[] = {
    QT_TRANSLATE_NOOP("Report", "can't be read whole"),
    QT_TRANSLATE_NOOP("Report", "can't be written"),
    QT_TRANSLATE_NOOP("Report", "gone since the scan"),
    QT_TRANSLATE_NOOP("Report", "a part can't be read"),
    QT_TRANSLATE_NOOP("Report", "too large to be put together"),
    QT_TRANSLATE_NOOP("Report", "the save was stopped"),
    QT_TRANSLATE_NOOP("Report", "in a mailbox that begins with a byte order mark"),
    QT_TRANSLATE_NOOP("Report", "news feeds, which are not taken"),
    QT_TRANSLATE_NOOP("Report", "the save ended before"),
};
static_assert(std::size(reasonTexts) == leftOutReasons);

// In the order of ChangeKind; %1: how often, %2: in how many messages.
constexpr const char *changeTexts[] = {
    QT_TRANSLATE_NOOP("Report", "%1 character(s) became \"?\", which Latin-1 lacks, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 character(s) are one byte of Latin-1 now, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 first line(s) that are no byte count were dropped, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 line(s) got \">\" before \"From \", in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 byte(s) at the end were not written, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 header(s) \"Received-Spf:\" were dropped, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 part(s) did not get their content back, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 message id(s) were replaced by a new one, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 date(s) are the present time, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 header value(s) are too long and were dropped, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 attachment(s) were not written, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 list(s) of recipients are empty, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 attachment(s) stand behind no boundary that is told, in %2 message(s)"),
    QT_TRANSLATE_NOOP("Report", "%1 text(s) were cut at an XML declaration, in %2 message(s)"),
};
static_assert(std::size(changeTexts) == changeKinds);

/// The words of the report.
class Report
{
    Q_DECLARE_TR_FUNCTIONS(Report)

public:
    static QString ending(const SaveReport &report, const SaveLedger &ledger);
    static QString totals(const SaveReport &report, const SaveLedger &ledger);
    static QString leftOut(const SaveLedger &ledger, LeftOutReason reason);
    static QString because(LeftOutReason reason);
    static QString changed(const SaveLedger &ledger, ChangeKind kind);
    static QString change(ChangeKind kind);
    static QStringList oddities(const SaveLedger &ledger);
    static QStringList passedOverFiles();
    static QStringList check(const BundleCheck &check);
    static QString folder(const FolderCount &folder);
    static QString item(const LeftOutItem &item);
    static QString shared(const TargetCount &target, const SaveLedger &ledger);

private:
    static QString example(const QString &path, qint64 offset);
};

QString Report::ending(const SaveReport &report, const SaveLedger &ledger)
{
    const QString place = report.bundle;
    if (report.dryRun && report.end == SaveReport::End::Finished)
        return tr("Nothing was written, as asked for; the place would be %1 (%2)")
            .arg(place)
            .arg(report.files);
    if (report.dryRun)
        return tr("Nothing was written, as asked for; not all could be looked at");
    if (ledger.bytes() == 0)
        return report.bundleStands
                   ? tr("No message was saved; what there is stands at location %1").arg(place)
                   : tr("Nothing was saved: no message was written");
    if (!report.bundleStands)
        return tr("What was saved is no longer at location %1").arg(place);
    if (report.end == SaveReport::End::Finished)
        return tr("File saved successfully at location %1 (%2)").arg(place).arg(report.files);
    return tr("What was saved so far is at location %1").arg(place);
}

QString Report::totals(const SaveReport &report, const SaveLedger &ledger)
{
    const FolderCount &total = ledger.total();
    return tr("Messages found: %1, written: %2, joined to the one before: %3, left out: %4; bytes: %5 (free "
              "before: "
              "%6)")
        .arg(total.found)
        .arg(total.written)
        .arg(total.joined)
        .arg(total.leftOut)
        .arg(ledger.bytes())
        .arg(report.freeBytes);
}

QString Report::example(const QString &path, qint64 offset)
{
    if (path.isEmpty())
        return {};
    return offset > 0 ? tr(", for example %1 at byte %2").arg(path).arg(offset)
                      : tr(", for example %1").arg(path);
}

QString Report::because(LeftOutReason reason)
{
    return tr(reasonTexts[static_cast<size_t>(reason)]);
}

QString Report::leftOut(const SaveLedger &ledger, LeftOutReason reason)
{
    QString sentence = tr("Left out, %1: %2 message(s)").arg(because(reason)).arg(ledger.leftOut(reason));
    qint64 unknown = 0;
    const LeftOutItem *first = nullptr;
    for (const LeftOutItem &item : ledger.leftOutItems()) {
        if (item.reason != reason)
            continue;
        first = first ? first : &item;
        unknown += item.messages ? 0 : 1;
    }
    if (unknown > 0)
        sentence += tr(", and those of %1 file(s) whose number is not known").arg(unknown);
    if (!first)
        return sentence;
    sentence += example(first->path, first->offset);
    return first->text.isEmpty() ? sentence : sentence + QStringLiteral(": ") + first->text;
}

QString Report::change(ChangeKind kind)
{
    return tr(changeTexts[static_cast<size_t>(kind)]);
}

QString Report::changed(const SaveLedger &ledger, ChangeKind kind)
{
    const ChangeCount &sum = ledger.change(kind);
    return tr("Changed: ") + change(kind).arg(sum.count).arg(sum.messages) + example(sum.path, sum.offset);
}

QStringList Report::oddities(const SaveLedger &ledger)
{
    QStringList sentences;
    if (ledger.total().joined > 0)
        sentences.append(
            tr("Joined: %1 message(s) have no separator of their own, a reader takes them for a part of "
               "the message before")
                .arg(ledger.total().joined) +
            example(ledger.firstJoined().path, ledger.firstJoined().offset));
    if (ledger.strays() > 0)
        sentences.append(tr("%1 other line(s) start with \"From \", a reader may split a message there")
                             .arg(ledger.strays()) +
                         example(ledger.firstStray().path, ledger.firstStray().offset));
    qint64 shared = 0;
    QString first;
    for (const TargetCount &target : ledger.targets()) {
        if (target.folders.size() < 2)
            continue;
        first = shared++ == 0 ? target.mailbox : first;
    }
    if (shared > 0)
        sentences.append(tr("%1 mailbox(es) hold more than one folder").arg(shared) + example(first, 0));
    return sentences;
}

QStringList Report::passedOverFiles()
{
    if (passedOver.count() == 0)
        return {};
    return {tr("Passed over: %1 file(s) or folder(s) of the store stand in no folder of the list")
                .arg(passedOver.count()) +
            example(passedOver.files().front().path, 0)};
}

QStringList Report::check(const BundleCheck &check)
{
    QStringList sentences = check.differences;
    if (check.stopped)
        sentences.append(tr("The look at the bundle was stopped after %1 mailbox(es)").arg(check.mailboxes));
    else
        sentences.append(tr("Read again: %1 mailbox(es), %2 byte(s), %3 line(s) that start with \"From \", "
                            "differences: %4")
                             .arg(check.mailboxes)
                             .arg(check.bytes)
                             .arg(check.separators)
                             .arg(check.differences.size()));
    return sentences;
}

QString Report::folder(const FolderCount &folder)
{
    return tr("%1: found %2, written %3, joined %4, left out %5")
        .arg(folder.tree)
        .arg(folder.found)
        .arg(folder.written)
        .arg(folder.joined)
        .arg(folder.leftOut);
}

QString Report::shared(const TargetCount &target, const SaveLedger &ledger)
{
    QStringList trees;
    for (const FolderCount &folder : ledger.folders())
        if (std::find(target.folders.begin(), target.folders.end(), folder.id) != target.folders.end())
            trees.append(folder.tree);
    return tr("%1 holds %2").arg(target.mailbox, trees.join(QStringLiteral(", ")));
}

QString Report::item(const LeftOutItem &item)
{
    const QString messages = item.messages ? QString::number(*item.messages) : tr("unknown");
    const QString path = item.path.isEmpty() ? tr("others") : item.path;
    QString line =
        tr("%1, byte %2: %3 message(s), %4").arg(path).arg(item.offset).arg(messages, because(item.reason));
    return item.text.isEmpty() ? line : line + QStringLiteral(": ") + item.text;
}
} // namespace

QStringList reportSentences(const SaveReport &report, const SaveLedger &ledger)
{
    QStringList sentences{Report::ending(report, ledger), Report::totals(report, ledger)};
    for (int i = 0; i < leftOutReasons; ++i)
        if (const auto reason = static_cast<LeftOutReason>(i); ledger.itemsLeftOut(reason) > 0)
            sentences.append(Report::leftOut(ledger, reason));
    sentences += Report::oddities(ledger);
    for (int i = 0; i < changeKinds; ++i)
        if (const auto kind = static_cast<ChangeKind>(i); ledger.change(kind).messages > 0)
            sentences.append(Report::changed(ledger, kind));
    sentences += Report::passedOverFiles();
    if (report.check)
        sentences += Report::check(*report.check);
    return sentences;
}

QString wholeReportText(const SaveReport &report, const SaveLedger &ledger)
{
    QStringList lines = reportSentences(report, ledger);
    lines.append(QString());
    for (const FolderCount &folder : ledger.folders())
        lines.append(Report::folder(folder));
    for (const LeftOutItem &item : ledger.leftOutItems())
        lines.append(Report::item(item));
    if (const std::optional<LeftOutItem> rest = ledger.itemsNotKept())
        lines.append(Report::item(*rest));
    for (const TargetCount &target : ledger.targets())
        if (target.folders.size() > 1)
            lines.append(Report::shared(target, ledger));
    lines += passedOver.sentences();
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
