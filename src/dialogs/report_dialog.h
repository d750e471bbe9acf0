#pragma once

#include "save/save_report.h"

#include <QDialog>

class QPlainTextEdit;
class QTreeWidget;

/// The account of a save: a table of its folders, below it the reasons with number and path. All of it can be copied
/// and saved as text.
class ReportDialog : public QDialog
{
    Q_OBJECT

public:
    /// `problems`: the sentences of what could not be read or written.
    ReportDialog(const SaveReport &report, const SaveLedger &ledger, const QStringList &problems,
                 QWidget *parent);

private:
    QTreeWidget *newTable(const SaveLedger &ledger);
    QPlainTextEdit *newText(const QStringList &lines);
    void copyText() const;
    void saveText();

    QString m_text;   ///< the whole report
    QString m_folder; ///< where the bundle lies
};

/// What a save has done with its messages, for the closing window: a line of numbers and, where messages were changed or
/// the save was stopped, one each that says so.
QStringList closingNumbers(const SaveReport &report, const SaveLedger &ledger);
/// The result of reading the bundle again.
QString checkSentence(const BundleCheck &check);
