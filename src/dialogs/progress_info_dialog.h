#pragma once

#include "ui_ProgressDialog.h"

#include <QDialog>
#include <QElapsedTimer>

/// The small dialog of a running scan or save: task, bar, Stop button. The bar is the main window's, which makes a
/// new dialog for every run. Keys and the close box do nothing: only the end of the run or Stop takes it away.
class QProgressInfo : public QDialog, private Ui_ProgressDialog
{
    Q_OBJECT

public:
    explicit QProgressInfo(QWidget *parent);

    /// What runs, "Saving Database File ...".
    void setTask(const QString &text);
    /// The worker gave up: shows why, and that Stop ends the dialog. Grows as the text needs.
    void showEndedEarly(const QString &reason);

    /// Shows at which mailbox the run is and, once that can be told, how long it will still take; `percent` of that
    /// mailbox, or of all where the worker tells no mailboxes, are done.
    void showStep(double percent);

public slots:
    /// Asks whether the run is to be aborted, and if so asks the worker to stop.
    void OnStop();
    /// The run has ended.
    void OnProgressDailogHide();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void init();
    QString timeLeft(double done) const;
    bool confirmAbort();
    void stopSave();
    void stopScan();

    QElapsedTimer m_runs; ///< since the dialog was made
};
