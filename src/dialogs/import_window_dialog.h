#pragma once

#include "save/save_report.h"
#include "ui_ImportMsgDlg.h"

#include <QDialog>

#include <memory>

class CheckThread;

/// The closing window of a save: where the bundle lies, in numbers what was written, and links to the pages that tell
/// how to import it. While it is open the bundle is read again and compared with what was written.
class QImportWindow : public QDialog, private Ui_ImportMsgDlg
{
    Q_OBJECT

public:
    explicit QImportWindow(QWidget *parent);
    ~QImportWindow() override;

    /// Fills the link label for Apple Mail from the settings property list; a link without a text is hidden.
    void HTImport();
    /// The same for Outlook.
    void HTImport1();

    /// Shows the window with this text, as yet without numbers. `problems` is what could not be read or written. It
    /// grows by what the texts need beyond the form's room.
    void showMessage(const QString &text, const QStringList &problems);
    /// Shows the numbers of the save that has ended, and begins to read its bundle again.
    void showReport(const SaveReport &report, const SaveLedger &ledger);
    /// Whether it is open and still without the numbers of its save.
    bool waitsForReport() const { return isVisible() && !m_hasReport; }
    /// Problems that were told after the window was shown.
    void addProblems(const QStringList &problems);

public slots:
    /// Hides the window; the reading stops.
    void HideDlg();

private:
    void layOut();
    void startCheck();
    void setCheckLine(const QString &line);
    void onChecked();
    void openReport();
    void copyPlace() const;

    SaveReport m_report;
    SaveLedger m_ledger;
    QString m_message;
    QStringList m_problems;
    QStringList m_numbers;
    bool m_hasReport = false;
    int m_moreText = 0;    ///< pixels that the message takes beyond the form's room
    int m_moreNumbers = 0; ///< likewise the numbers
    std::unique_ptr<CheckThread> m_check;
};
